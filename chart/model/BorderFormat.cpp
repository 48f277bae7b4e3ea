#include "chart/model/BorderFormat.h"

namespace quillon::chart {

const char* BorderFormat::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.BorderFormat";
}

}  // namespace quillon::chart
