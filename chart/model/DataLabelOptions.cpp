#include "chart/model/DataLabelOptions.h"

namespace quillon::chart {

DataLabelOptions::DataLabelOptions()
    : shapeFormat_(ShapeFormat::create()),
      effects_(Effects::create()),
      contentOptions_(DataLabelContentOptions::create())
{
}

DataLabelOptions::DataLabelOptions(const DataLabelOptions& other)
    : Object(other),
      shapeFormat_(copyOf(other.shapeFormat_)),
      effects_(copyOf(other.effects_)),
      contentOptions_(copyOf(other.contentOptions_))
{
}

const char* DataLabelOptions::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<DataLabelOptions>());
}

}  // namespace quillon::chart
