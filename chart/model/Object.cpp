#include "chart/model/Object.h"

namespace quillon::chart {

Object::~Object()
{
    orca::factory::full::retract(this);
}

const char* Object::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<Object>());
}

}  // namespace quillon::chart
