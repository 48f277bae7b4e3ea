#include "chart/model/DataPointShapeFormat.h"

namespace quillon::chart {

const char* DataPointShapeFormat::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.DataPointFormat";
}

}  // namespace quillon::chart
