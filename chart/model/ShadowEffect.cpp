#include "chart/model/ShadowEffect.h"

namespace quillon::chart {

const char* ShadowEffect::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<ShadowEffect>());
}

}  // namespace quillon::chart
