#include "chart/model/DataLabelContentOptions.h"

namespace quillon::chart {

const char* DataLabelContentOptions::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.DataLabelContentOptions";
}

}  // namespace quillon::chart
