#pragma once

#include <type_traits>

#include "chart/model/AreaBase.h"

namespace quillon::chart {

/// A plain area.
class QUILLON_EXPORT ElementArea : public AreaBase {
 public:
    ElementArea() = default;
    /// The height comes first.
    ElementArea(const std::u16string& height, const std::u16string& width) : AreaBase(height, width) {}
    ElementArea(const ElementArea& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<ElementArea> create(Args&&... args)
    {
        struct ElementAreaCreator final : Retracting<ElementArea> {
            using Retracting<ElementArea>::Retracting;
        };
        return std::make_shared<ElementAreaCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<ElementArea> /*type*/)
{
    return "quillon.chart.ElementArea";
}

}  // namespace quillon::chart
