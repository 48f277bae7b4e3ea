#pragma once

#include <type_traits>

#include "chart/model/Object.h"

namespace quillon::chart {

/// A slice of a pie chart; it has no settings.
class QUILLON_EXPORT PieChartSlice : public Object {
 public:
    PieChartSlice() = default;
    PieChartSlice(const PieChartSlice& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<PieChartSlice> create(Args&&... args)
    {
        struct PieChartSliceCreator final : Retracting<PieChartSlice> {
            using Retracting<PieChartSlice>::Retracting;
        };
        return std::make_shared<PieChartSliceCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<PieChartSlice> /*type*/)
{
    return "quillon.chart.PieChartSlice";
}

}  // namespace quillon::chart
