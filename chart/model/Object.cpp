#include "chart/model/Object.h"

namespace quillon::chart {

Object::~Object()
{
    orca::factory::full::retract(this);
}

const char* Object::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.Object";
}

}  // namespace quillon::chart
