#include "chart/model/DataLabelFormat.h"

namespace quillon::chart {

DataLabelFormat::DataLabelFormat()
    : shapeFormat_(ShapeFormat::create()), effects_(Effects::create()), options_(DataLabelOptions::create())
{
}

DataLabelFormat::DataLabelFormat(const DataLabelFormat& other)
    : Object(other),
      shapeFormat_(copyOf(other.shapeFormat_)),
      effects_(copyOf(other.effects_)),
      options_(copyOf(other.options_))
{
}

const char* DataLabelFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<DataLabelFormat>());
}

}  // namespace quillon::chart
