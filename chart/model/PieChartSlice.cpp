#include "chart/model/PieChartSlice.h"

namespace quillon::chart {

const char* PieChartSlice::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.PieChartSlice";
}

}  // namespace quillon::chart
