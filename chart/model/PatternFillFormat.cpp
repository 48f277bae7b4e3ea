#include "chart/model/PatternFillFormat.h"

namespace quillon::chart {

const char* PatternFillFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<PatternFillFormat>());
}

}  // namespace quillon::chart
