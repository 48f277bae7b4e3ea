#pragma once

#include <type_traits>

#include "chart/model/Object.h"

namespace quillon::chart {

/// A shadow; it has no settings.
class QUILLON_EXPORT ShadowEffect : public Object {
 public:
    ShadowEffect() = default;
    ShadowEffect(const ShadowEffect& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<ShadowEffect> create(Args&&... args)
    {
        struct ShadowEffectCreator final : Retracting<ShadowEffect> {
            using Retracting<ShadowEffect>::Retracting;
        };
        return std::make_shared<ShadowEffectCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<ShadowEffect> /*type*/)
{
    return "quillon.chart.ShadowEffect";
}

}  // namespace quillon::chart
