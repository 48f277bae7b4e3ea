#pragma once

#include <type_traits>

#include "chart/model/Object.h"

namespace quillon::chart {

/// A three-dimensional effect; it has no settings.
class QUILLON_EXPORT ThreeDEffect : public Object {
 public:
    ThreeDEffect() = default;
    ThreeDEffect(const ThreeDEffect& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<ThreeDEffect> create(Args&&... args)
    {
        struct ThreeDEffectCreator final : Retracting<ThreeDEffect> {
            using Retracting<ThreeDEffect>::Retracting;
        };
        return std::make_shared<ThreeDEffectCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<ThreeDEffect> /*type*/)
{
    return "quillon.chart.ThreeDEffect";
}

}  // namespace quillon::chart
