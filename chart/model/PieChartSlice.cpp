#include "chart/model/PieChartSlice.h"

namespace quillon::chart {

const char* PieChartSlice::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<PieChartSlice>());
}

}  // namespace quillon::chart
