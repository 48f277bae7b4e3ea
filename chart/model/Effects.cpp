#include "chart/model/Effects.h"

namespace quillon::chart {

Effects::Effects()
    : threeD_(ThreeDEffect::create()),
      shadow_(ShadowEffect::create()),
      glow_(GlowEffect::create()),
      softEdges_(SoftEdgesEffect::create())
{
}

Effects::Effects(const Effects& other)
    : Object(other),
      threeD_(copyOf(other.threeD_)),
      shadow_(copyOf(other.shadow_)),
      glow_(copyOf(other.glow_)),
      softEdges_(copyOf(other.softEdges_))
{
}

const char* Effects::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<Effects>());
}

}  // namespace quillon::chart
