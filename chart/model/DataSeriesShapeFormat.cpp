#include "chart/model/DataSeriesShapeFormat.h"

namespace quillon::chart {

const char* DataSeriesShapeFormat::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.DataSeriesShapeFormat";
}

}  // namespace quillon::chart
