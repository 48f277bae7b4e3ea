#include "chart/model/FillFormat.h"

namespace quillon::chart {

const char* FillFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<FillFormat>());
}

}  // namespace quillon::chart
