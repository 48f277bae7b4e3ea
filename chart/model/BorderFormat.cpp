#include "chart/model/BorderFormat.h"

namespace quillon::chart {

const char* BorderFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<BorderFormat>());
}

}  // namespace quillon::chart
