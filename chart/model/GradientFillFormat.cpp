#include "chart/model/GradientFillFormat.h"

namespace quillon::chart {

const char* GradientFillFormat::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.GradientFillFormat";
}

}  // namespace quillon::chart
