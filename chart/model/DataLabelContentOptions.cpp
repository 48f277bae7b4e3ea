#include "chart/model/DataLabelContentOptions.h"

namespace quillon::chart {

const char* DataLabelContentOptions::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<DataLabelContentOptions>());
}

}  // namespace quillon::chart
