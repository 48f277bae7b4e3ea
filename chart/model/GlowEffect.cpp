#include "chart/model/GlowEffect.h"

namespace quillon::chart {

const char* GlowEffect::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<GlowEffect>());
}

}  // namespace quillon::chart
