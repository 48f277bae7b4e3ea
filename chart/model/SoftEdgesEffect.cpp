#include "chart/model/SoftEdgesEffect.h"

namespace quillon::chart {

const char* SoftEdgesEffect::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<SoftEdgesEffect>());
}

}  // namespace quillon::chart
