#include "chart/model/SolidBorderFormat.h"

namespace quillon::chart {

const char* SolidBorderFormat::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.SolidBorderFormat";
}

}  // namespace quillon::chart
