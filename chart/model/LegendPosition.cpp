#include "chart/model/LegendPosition.h"

namespace quillon::chart {

LegendPosition::LegendPosition() : relative_(Relative::create()) {}

LegendPosition::LegendPosition(const LegendPosition& other)
    : Object(other), relative_(copyOf(other.relative_))
{
}

const char* LegendPosition::Relative::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.LegendPositionRelative";
}

const char* LegendPosition::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.LegendPosition";
}

}  // namespace quillon::chart
