#pragma once

#include "chart/host/CosObjectClassInfo.h"
#include "chart/model/ElementArea.h"
#include "chart/model/LegendPosition.h"
#include "chart/model/PlotArea.h"

/// Areas and legend positions.
namespace quillon::chart::mi {

struct CosAreaBase : CosClass<AreaBase> {
    CosAreaBase() : CosClass("A rectangular region of a chart: its size, and a shape format.")
    {
        constructor<>();
        constructor<std::u16string, std::u16string>({"height", "width"});
        property<&AreaBase::getHeight, &AreaBase::setHeight>("Height", "A length as text, such as \"2in\".");
        property<&AreaBase::getWidth, &AreaBase::setWidth>("Width", "A length as text, such as \"3in\".");
        property<&AreaBase::getFormat>("Format", "Border, fill and effects of the region.");
    }
};

struct CosElementArea : CosClass<ElementArea, AreaBase> {
    CosElementArea() : CosClass("A plain area.")
    {
        constructor<>();
        constructor<std::u16string, std::u16string>({"height", "width"});
    }
};

struct CosPlotArea : CosClass<PlotArea, AreaBase> {
    using Text = std::u16string;

    CosPlotArea() : CosClass("The plot region of a chart: an area with a position.")
    {
        constructor<>();
        constructor<Text, Text, Text, Text>({"x", "y", "height", "width"});
        property<&PlotArea::getX, &PlotArea::setX>("X", "The distance from the left, a length as text.");
        property<&PlotArea::getY, &PlotArea::setY>("Y", "The distance from the top, a length as text.");
    }
};

struct CosLegendPosition : CosClass<LegendPosition> {
    CosLegendPosition() : CosClass("Where the legend of a chart stands; it has no settings.") {}
};

struct CosLegendPositionRelative : CosClass<LegendPosition::Relative> {
    CosLegendPositionRelative() : CosClass("A legend position relative to the chart; it has no settings.") {}
};

}  // namespace quillon::chart::mi
