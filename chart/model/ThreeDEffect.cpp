#include "chart/model/ThreeDEffect.h"

namespace quillon::chart {

const char* ThreeDEffect::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<ThreeDEffect>());
}

}  // namespace quillon::chart
