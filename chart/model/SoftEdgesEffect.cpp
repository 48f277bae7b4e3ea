#include "chart/model/SoftEdgesEffect.h"

namespace quillon::chart {

const char* SoftEdgesEffect::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.SoftEdgesEffect";
}

}  // namespace quillon::chart
