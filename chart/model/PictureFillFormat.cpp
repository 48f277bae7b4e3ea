#include "chart/model/PictureFillFormat.h"

namespace quillon::chart {

const char* PictureFillFormat::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<PictureFillFormat>());
}

}  // namespace quillon::chart
