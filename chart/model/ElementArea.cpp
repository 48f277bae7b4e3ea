#include "chart/model/ElementArea.h"

namespace quillon::chart {

const char* ElementArea::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<ElementArea>());
}

}  // namespace quillon::chart
