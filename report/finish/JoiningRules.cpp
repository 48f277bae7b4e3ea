#include <array>
#include <string_view>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/Shapes.h"
#include "report/package/Xml.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

void addBars(DOMElement* upDownBars, const char16_t* name, const char16_t* color)
{
    auto* properties = appendElement(appendElement(upDownBars, name), u"c:spPr");
    appendElement(appendElement(properties, u"a:solidFill"), u"a:schemeClr", color);
    drawThinLine(appendElement(properties, u"a:ln"));
}

void addUpDownBars(DOMElement* group)
{
    auto* bars = insertInOrder(group, u"c:upDownBars");
    appendElement(bars, u"c:gapWidth", u"150");
    addBars(bars, u"c:upBars", u"bg1");
    addBars(bars, u"c:downBars", u"tx1");
}

void joinPoints(ChartPart& part)
{
    const auto& options = part.context.options;
    for (auto* group : part.groups) {
        const std::u16string_view name = group->getTagName();
        const bool isLine = name == u"c:lineChart";
        if (options.dropLines && (isLine || name == u"c:areaChart"))
            drawGreyLine(insertInOrder(group, u"c:dropLines"));
        if (options.highLowLines && isLine) drawGreyLine(insertInOrder(group, u"c:hiLowLines"));
        if (options.upDownBars && isLine) addUpDownBars(group);
    }
}

/// From low to high; with an open series, bars from open to close.
void joinPrices(ChartPart& part)
{
    constexpr std::size_t withOpen = 4;
    auto* group = part.groups.front();
    drawGreyLine(insertInOrder(group, u"c:hiLowLines"));
    if (part.series.size() == withOpen) addUpDownBars(group);
}

constexpr std::array rules = {Rule{ChartKinds(ChartKind::Line, ChartKind::Area), joinPoints},
                              Rule{ChartKinds(ChartKind::Stock), joinPrices}};

}  // namespace

const std::span<const Rule> joiningRules = rules;

}  // namespace quillon::report
