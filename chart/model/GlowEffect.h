#pragma once

#include <type_traits>

#include "chart/model/Object.h"

namespace quillon::chart {

/// A glow; it has no settings.
class QUILLON_EXPORT GlowEffect : public Object {
 public:
    GlowEffect() = default;
    GlowEffect(const GlowEffect& other) = default;

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<GlowEffect> create(Args&&... args)
    {
        struct GlowEffectCreator final : Retracting<GlowEffect> {
            using Retracting<GlowEffect>::Retracting;
        };
        return std::make_shared<GlowEffectCreator>(std::forward<Args>(args)...);
    }

    const char* getFullyQualifiedOrcaTypeName() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<GlowEffect> /*type*/)
{
    return "quillon.chart.GlowEffect";
}

}  // namespace quillon::chart
