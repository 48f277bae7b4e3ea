#include "chart/model/DataSeriesFormatOptions.h"

namespace quillon::chart {

const char* DataSeriesFormatOptions::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.DataSeriesFormatOptions";
}

}  // namespace quillon::chart
