#include "chart/model/Text.h"

namespace quillon::chart {

const char* Text::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<Text>());
}

}  // namespace quillon::chart
