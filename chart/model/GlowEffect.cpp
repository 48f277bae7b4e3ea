#include "chart/model/GlowEffect.h"

namespace quillon::chart {

const char* GlowEffect::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.GlowEffect";
}

}  // namespace quillon::chart
