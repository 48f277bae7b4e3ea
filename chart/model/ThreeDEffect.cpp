#include "chart/model/ThreeDEffect.h"

namespace quillon::chart {

const char* ThreeDEffect::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.ThreeDEffect";
}

}  // namespace quillon::chart
