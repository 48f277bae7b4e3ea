#include "chart/model/ElementArea.h"

namespace quillon::chart {

const char* ElementArea::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.ElementArea";
}

}  // namespace quillon::chart
