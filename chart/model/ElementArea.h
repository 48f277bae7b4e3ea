#pragma once

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

}  // namespace quillon::chart
