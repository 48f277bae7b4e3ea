#include "chart/model/GradientBorderFormat.h"

namespace quillon::chart {

const char* GradientBorderFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<GradientBorderFormat>());
}

}  // namespace quillon::chart
