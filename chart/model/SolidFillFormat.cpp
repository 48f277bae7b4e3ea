#include "chart/model/SolidFillFormat.h"

namespace quillon::chart {

SolidFillFormat::SolidFillFormat(const SolidFillFormat& other) : FillFormat(other.getColor()->getText()) {}

const char* SolidFillFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<SolidFillFormat>());
}

}  // namespace quillon::chart
