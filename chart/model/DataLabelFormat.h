#pragma once

#include <type_traits>

#include "chart/model/DataLabelOptions.h"
#include "chart/model/Effects.h"
#include "chart/model/Object.h"
#include "chart/model/ShapeFormat.h"

namespace quillon::chart {

/// How a data label is drawn and what it says.
class QUILLON_EXPORT DataLabelFormat : public Object {
 public:
    DataLabelFormat();
    /// Copies each held object into a new one.
    DataLabelFormat(const DataLabelFormat& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<DataLabelFormat> create(Args&&... args)
    {
        struct DataLabelFormatCreator final : Retracting<DataLabelFormat> {
            using Retracting<DataLabelFormat>::Retracting;
        };
        return std::make_shared<DataLabelFormatCreator>(std::forward<Args>(args)...);
    }

    std::shared_ptr<ShapeFormat> getShapeFormat() const { return shapeFormat_; }
    std::shared_ptr<Effects> getEffects() const { return effects_; }
    std::shared_ptr<DataLabelOptions> getOptions() const { return options_; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::shared_ptr<ShapeFormat> shapeFormat_;
    std::shared_ptr<Effects> effects_;
    std::shared_ptr<DataLabelOptions> options_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<DataLabelFormat> /*type*/)
{
    return "quillon.chart.DataLabelFormat";
}

}  // namespace quillon::chart
