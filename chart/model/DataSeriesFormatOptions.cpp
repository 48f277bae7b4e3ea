#include "chart/model/DataSeriesFormatOptions.h"

namespace quillon::chart {

const char* DataSeriesFormatOptions::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<DataSeriesFormatOptions>());
}

}  // namespace quillon::chart
