#include "chart/model/GradientBorderFormat.h"

namespace quillon::chart {

const char* GradientBorderFormat::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.GradientBorderFormat";
}

}  // namespace quillon::chart
