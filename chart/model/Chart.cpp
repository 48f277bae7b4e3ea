#include "chart/model/Chart.h"

namespace quillon::chart {

Chart::Chart(const Chart& other)
    : Object(other),
      dataSet_(copyOf(other.dataSet_)),
      plotArea_(copyOf(other.plotArea_)),
      title_(copyOf(other.title_))
{
}

const char* Chart::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<Chart>());
}

}  // namespace quillon::chart
