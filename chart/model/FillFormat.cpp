#include "chart/model/FillFormat.h"

namespace quillon::chart {

const char* FillFormat::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.FillFormat";
}

}  // namespace quillon::chart
