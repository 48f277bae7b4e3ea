#pragma once

#include <type_traits>

#include "chart/model/Object.h"

namespace quillon::chart {

/// Settings of all series of one chart type. Bar, column and line charts have none.
class QUILLON_EXPORT DataSeriesFormatOptions : public Object {
 public:
    DataSeriesFormatOptions() = default;
    DataSeriesFormatOptions(const DataSeriesFormatOptions& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<DataSeriesFormatOptions> create(Args&&... args)
    {
        struct DataSeriesFormatOptionsCreator final : Retracting<DataSeriesFormatOptions> {
            using Retracting<DataSeriesFormatOptions>::Retracting;
        };
        return std::make_shared<DataSeriesFormatOptionsCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<DataSeriesFormatOptions> /*type*/)
{
    return "quillon.chart.DataSeriesFormatOptions";
}

}  // namespace quillon::chart
