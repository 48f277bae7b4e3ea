#include "chart/model/DataPoint.h"

namespace quillon::chart {

DataPoint::DataPoint(const DataPoint& other)
    : Object(other),
      x_(other.x_),
      y_(other.y_),
      format_(copyOf(other.format_)),
      labelFormat_(copyOf(other.labelFormat_))
{
}

const char* DataPoint::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<DataPoint>());
}

}  // namespace quillon::chart
