#pragma once

#include <type_traits>

#include "chart/model/GlowEffect.h"
#include "chart/model/Object.h"
#include "chart/model/ShadowEffect.h"
#include "chart/model/SoftEdgesEffect.h"
#include "chart/model/ThreeDEffect.h"

namespace quillon::chart {

/// The visual effects of a shape. None of the four is ever null. They have no settings, so documents show
/// none of them.
class QUILLON_EXPORT Effects : public Object {
 public:
    Effects();
    /// Copies each effect into a new one.
    Effects(const Effects& other);

    /// Makes a host-bindable object from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<Effects> create(Args&&... args)
    {
        struct EffectsCreator final : Retracting<Effects> {
            using Retracting<Effects>::Retracting;
        };
        return std::make_shared<EffectsCreator>(std::forward<Args>(args)...);
    }

    std::shared_ptr<ThreeDEffect> getThreeD() const { return threeD_; }
    std::shared_ptr<ShadowEffect> getShadow() const { return shadow_; }
    std::shared_ptr<GlowEffect> getGlow() const { return glow_; }
    std::shared_ptr<SoftEdgesEffect> getSoftEdges() const { return softEdges_; }

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::shared_ptr<ThreeDEffect> threeD_;
    std::shared_ptr<ShadowEffect> shadow_;
    std::shared_ptr<GlowEffect> glow_;
    std::shared_ptr<SoftEdgesEffect> softEdges_;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<Effects> /*type*/)
{
    return "quillon.chart.Effects";
}

}  // namespace quillon::chart
