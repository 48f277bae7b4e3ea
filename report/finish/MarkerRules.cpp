#include <array>
#include <cmath>
#include <vector>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/Shapes.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// A disc in the colour of the line.
void fillMarker(DOMElement* marker, const DOMElement* shape)
{
    appendElement(marker, u"c:symbol", u"circle");
    appendElement(marker, u"c:size", u"5");
    const auto* fill = findFill(shape == nullptr ? nullptr : findChild(shape, u"a:ln"));
    if (fill == nullptr) return;
    auto* properties = appendElement(marker, u"c:spPr");
    properties->appendChild(fill->cloneNode(true));
    appendElement(properties, u"a:ln")->appendChild(fill->cloneNode(true));
}

void hideLine(DOMElement* element)
{
    if (auto* line = findPath(element, {u"c:spPr", u"a:ln"})) hide(line);
}

DOMElement* renewMarker(DOMElement* parent)
{
    removeChildren(parent, u"c:marker");
    return insertInOrder(parent, u"c:marker");
}

/// The positions of the points that draw no line, so that only a marker shows them: between gaps, or alone in
/// their series.
std::vector<std::size_t> findLonePoints(const chart::DataSeries& series, Blank blank)
{
    const auto& points = series.getPoints();
    const auto isShown = [&](std::size_t i) {
        return i < points.size() && (blank == Blank::Zero || !std::isnan(points[i]->getValue()));
    };
    std::vector<std::size_t> lone;
    std::size_t shown = 0;
    for (std::size_t i = 0; i < points.size(); ++i) {
        if (!isShown(i)) continue;
        ++shown;
        if ((i == 0 || !isShown(i - 1)) && !isShown(i + 1)) lone.push_back(i);
    }
    if (blank == Blank::Connect && shown > 1) lone.clear();
    return lone;
}

void markLonePoints(const SeriesPart& series, Blank blank)
{
    for (const auto index : findLonePoints(series.series, blank)) {
        auto* point = getPoint(series.element, index);
        const auto* own = findChild(point, u"c:spPr");
        fillMarker(renewMarker(point), own != nullptr ? own : findChild(series.element, u"c:spPr"));
    }
}

void markAll(const SeriesPart& series)
{
    fillMarker(renewMarker(series.element), findChild(series.element, u"c:spPr"));
}

/// Of lines, also those of combinations and radars.
void markPoints(ChartPart& part)
{
    const auto& options = part.context.options;
    for (const auto& series : part.series) {
        if (!isLine(series)) continue;
        if (options.markers)
            markAll(series);
        else if (getGroupName(series) == u"c:lineChart")
            markLonePoints(series, options.blank.value_or(Blank::Gap));
    }
}

/// Points take the colour of the line, which goes where points alone are wanted.
void markScatteredPoints(ChartPart& part)
{
    const auto style = part.context.options.scatterStyle.value_or(ScatterStyle::Points);
    for (const auto& series : part.series) {
        if (style == ScatterStyle::Lines) {
            markLonePoints(series, part.context.options.blank.value_or(Blank::Gap));
            continue;
        }
        markAll(series);
        for (auto* point : findChildren(series.element, u"c:dPt"))
            if (auto* shape = findChild(point, u"c:spPr")) fillMarker(renewMarker(point), shape);
        if (style == ScatterStyle::Both) continue;
        hideLine(series.element);
        for (auto* point : findChildren(series.element, u"c:dPt")) hideLine(point);
    }
}

/// A dash at the close; the line between high and low is there already.
void markCloses(ChartPart& part)
{
    constexpr std::size_t closeWithoutOpen = 2;
    if (part.series.size() != closeWithoutOpen + 1) return;
    auto* marker = renewMarker(part.series[closeWithoutOpen].element);
    appendElement(marker, u"c:symbol", u"dash");
    appendElement(marker, u"c:size", u"8");
    auto* properties = appendElement(marker, u"c:spPr");
    properties->appendChild(makeFill(part.doc, findPaint(part, part.series[closeWithoutOpen])));
    appendElement(appendElement(properties, u"a:ln"), u"a:noFill");
}

constexpr std::array rules = {
    Rule{ChartKinds(ChartKind::Line, ChartKind::Column, ChartKind::Area, ChartKind::Radar), markPoints},
    Rule{ChartKinds(ChartKind::Scatter), markScatteredPoints},
    Rule{ChartKinds(ChartKind::Stock), markCloses},
};

}  // namespace

const std::span<const Rule> markerRules = rules;

}  // namespace quillon::report
