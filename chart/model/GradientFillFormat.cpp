#include "chart/model/GradientFillFormat.h"

namespace quillon::chart {

const char* GradientFillFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<GradientFillFormat>());
}

}  // namespace quillon::chart
