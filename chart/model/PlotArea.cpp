#include "chart/model/PlotArea.h"

namespace quillon::chart {

PlotArea::PlotArea(const std::u16string& x, const std::u16string& y, const std::u16string& height,
                   const std::u16string& width)
    : AreaBase(height, width), x_(x), y_(y)
{
}

const char* PlotArea::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<PlotArea>());
}

}  // namespace quillon::chart
