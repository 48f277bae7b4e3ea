#include "chart/model/Text.h"

namespace quillon::chart {

const char* Text::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.Text";
}

}  // namespace quillon::chart
