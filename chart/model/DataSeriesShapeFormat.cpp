#include "chart/model/DataSeriesShapeFormat.h"

namespace quillon::chart {

const char* DataSeriesShapeFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<DataSeriesShapeFormat>());
}

}  // namespace quillon::chart
