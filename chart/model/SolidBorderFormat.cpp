#include "chart/model/SolidBorderFormat.h"

namespace quillon::chart {

const char* SolidBorderFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<SolidBorderFormat>());
}

}  // namespace quillon::chart
