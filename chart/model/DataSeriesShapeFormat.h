#pragma once

#include <type_traits>

#include "chart/model/ShapeFormat.h"

namespace quillon::chart {

/// The shape format of a data series.
class QUILLON_EXPORT DataSeriesShapeFormat : public ShapeFormat {
 public:
    using ShapeFormat::ShapeFormat;
    DataSeriesShapeFormat() = default;
    DataSeriesShapeFormat(const DataSeriesShapeFormat& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<DataSeriesShapeFormat> create(Args&&... args)
    {
        struct DataSeriesShapeFormatCreator final : Retracting<DataSeriesShapeFormat> {
            using Retracting<DataSeriesShapeFormat>::Retracting;
        };
        return std::make_shared<DataSeriesShapeFormatCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<DataSeriesShapeFormat> /*type*/)
{
    return "quillon.chart.DataSeriesShapeFormat";
}

}  // namespace quillon::chart
