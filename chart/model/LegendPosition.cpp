#include "chart/model/LegendPosition.h"

namespace quillon::chart {

LegendPosition::LegendPosition() : relative_(Relative::create()) {}

LegendPosition::LegendPosition(const LegendPosition& other)
    : Object(other), relative_(copyOf(other.relative_))
{
}

const char* LegendPosition::Relative::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<LegendPosition::Relative>());
}

const char* LegendPosition::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<LegendPosition>());
}

}  // namespace quillon::chart
