#pragma once

#include <type_traits>

#include "chart/model/ShapeFormat.h"

namespace quillon::chart {

/// The shape format of one data point. Its objects report a host name other than the registered class name.
class QUILLON_EXPORT DataPointShapeFormat : public ShapeFormat {
 public:
    using ShapeFormat::ShapeFormat;
    DataPointShapeFormat() = default;
    DataPointShapeFormat(const DataPointShapeFormat& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<DataPointShapeFormat> create(Args&&... args)
    {
        struct DataPointShapeFormatCreator final : Retracting<DataPointShapeFormat> {
            using Retracting<DataPointShapeFormat>::Retracting;
        };
        return std::make_shared<DataPointShapeFormatCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<DataPointShapeFormat> /*type*/)
{
    return "quillon.chart.DataPointShapeFormat";
}

}  // namespace quillon::chart
