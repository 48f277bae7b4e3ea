#include "chart/model/ShadowEffect.h"

namespace quillon::chart {

const char* ShadowEffect::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.ShadowEffect";
}

}  // namespace quillon::chart
