#include "chart/model/PatternFillFormat.h"

namespace quillon::chart {

const char* PatternFillFormat::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.PatternFillFormat";
}

}  // namespace quillon::chart
