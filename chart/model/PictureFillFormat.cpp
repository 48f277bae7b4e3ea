#include "chart/model/PictureFillFormat.h"

namespace quillon::chart {

const char* PictureFillFormat::getFullyQualifiedOrcaTypeName() const
{
    return "quillon.chart.PictureFillFormat";
}

}  // namespace quillon::chart
