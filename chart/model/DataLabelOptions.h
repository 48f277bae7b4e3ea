#pragma once

#include <type_traits>

#include "chart/model/DataLabelContentOptions.h"
#include "chart/model/Effects.h"
#include "chart/model/Object.h"
#include "chart/model/ShapeFormat.h"

namespace quillon::chart {

/// What a data label says, and a shape format and effects that no host property shows.
class QUILLON_EXPORT DataLabelOptions : public Object {
 public:
    DataLabelOptions();
    /// Copies each held object into a new one.
    DataLabelOptions(const DataLabelOptions& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<DataLabelOptions> create(Args&&... args)
    {
        struct DataLabelOptionsCreator final : Retracting<DataLabelOptions> {
            using Retracting<DataLabelOptions>::Retracting;
        };
        return std::make_shared<DataLabelOptionsCreator>(std::forward<Args>(args)...);
    }

    std::shared_ptr<ShapeFormat> getShapeFormat() const { return shapeFormat_; }
    std::shared_ptr<Effects> getEffects() const { return effects_; }
    std::shared_ptr<DataLabelContentOptions> getContentOptions() const { return contentOptions_; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::shared_ptr<ShapeFormat> shapeFormat_;
    std::shared_ptr<Effects> effects_;
    std::shared_ptr<DataLabelContentOptions> contentOptions_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<DataLabelOptions> /*type*/)
{
    return "quillon.chart.DataLabelOptions";
}

}  // namespace quillon::chart
