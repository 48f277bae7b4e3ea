#include "report/finish/LabelColors.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <string_view>

#include "report/finish/FillLightness.h"
#include "report/finish/LabelTexts.h"
#include "report/finish/NumberFormats.h"
#include "report/finish/Shapes.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

constexpr double digitHeight = 0.7;
constexpr double lineHeight = 1.2;

struct Extent {
    double width;
    double height;
};

Extent measure(const std::u16string& text, double size)
{
    double width = 0;
    const auto lines = splitLines(text);
    for (const auto& line : lines) width = std::max(width, getTextWidth(line));
    return {width * size, (digitHeight + lineHeight * static_cast<double>(lines.size() - 1)) * size};
}

/// About what axes, title and legend leave of a chart, in points.
Extent getPlotSize(const ChartPart& part)
{
    return {parsePoints(part.context.options.width) * 0.85, parsePoints(part.context.options.height) * 0.65};
}

double readNumber(const DOMElement* parent, const char16_t* name, double standard)
{
    const auto* child = findChild(parent, name);
    return child == nullptr ? standard : std::stod(toUtf8(child->getAttribute(u"val")));
}

/// The bars of a series, in points.
struct Bars {
    bool isHorizontal;
    double thickness;
    double lengthPerUnit;
    /// Whether a label that is longer than its bar stands on other bars.
    bool isBetweenOthers;
};

double getThickness(const DOMElement* group, double plotLength, std::size_t categoryCount, bool isStacked)
{
    const double gap = readNumber(group, u"c:gapWidth", 219) / 100;
    const double overlap = readNumber(group, u"c:overlap", 0) / 100;
    const double count = isStacked ? 1 : static_cast<double>(findChildren(group, u"c:ser").size());
    return plotLength / static_cast<double>(categoryCount) / (count - (count - 1) * overlap + gap);
}

Bars measureBars(const ChartPart& part, const SeriesPart& series)
{
    const auto* group = static_cast<const DOMElement*>(series.element->getParentNode());
    const auto scale =
        getScale(part, standsOn(part, series, ScaleKind::Second) ? ScaleKind::Second : ScaleKind::Value);
    const auto plot = getPlotSize(part);
    const bool isHorizontal = part.context.kind == ChartKind::Bar;
    const double across = isHorizontal ? plot.height : plot.width;
    const double span = findSpan(part, scale);
    const bool isLong = scale.log || scale.isShare || !(span > 0);
    return {
        isHorizontal, getThickness(group, across, series.series.getSize(), scale.isStacked),
        isLong ? HUGE_VAL : (isHorizontal ? plot.width : plot.height) / span,
        scale.isStacked && part.context.kind != ChartKind::Waterfall && part.context.options.hidden.empty()};
}

bool hasRoom(const Bars& bars, double value, const Extent& text)
{
    const double along = bars.isHorizontal ? text.width : text.height;
    const double across = bars.isHorizontal ? text.height : text.width;
    return across <= bars.thickness &&
           (bars.isBetweenOthers || along <= std::abs(value) * bars.lengthPerUnit);
}

std::vector<bool> findRoomOnBars(const ChartPart& part, const SeriesPart& series,
                                 const LabelSettings& settings)
{
    const auto bars = measureBars(part, series);
    std::vector<bool> rooms;
    for (const auto& point : series.series.getPoints()) {
        const auto text = composeLabel(part, series, settings, rooms.size(), point->getValue());
        rooms.push_back(std::isnan(point->getValue()) ||
                        hasRoom(bars, point->getValue(), measure(text, getTextSize(part.context.options))));
    }
    return rooms;
}

/// Names need more of the circle than numbers do, and do not fit into a ring.
std::vector<bool> findRoomOnSlices(const ChartPart& part, const SeriesPart& series,
                                   const LabelSettings& settings)
{
    const bool isLong = settings.category || settings.series;
    const bool isRing = part.context.kind == ChartKind::Doughnut;
    const double needed = !isLong ? 0.05 : isRing ? HUGE_VAL : 0.15;
    double sum = 0;
    for (const auto& point : series.series.getPoints())
        if (!std::isnan(point->getValue())) sum += std::abs(point->getValue());
    std::vector<bool> rooms;
    for (const auto& point : series.series.getPoints())
        rooms.push_back(std::isnan(point->getValue()) || std::abs(point->getValue()) > needed * sum);
    return rooms;
}

bool standOnBars(const ChartPart& part, const SeriesPart& series, const LabelSettings& settings)
{
    if (getGroupName(series) != u"c:barChart") return false;
    if (settings.position) return settings.position != LabelPosition::OutsideEnd;
    return part.context.options.stacking || part.context.kind == ChartKind::Waterfall;
}

bool standOnSlices(const SeriesPart& series, const LabelSettings& settings)
{
    if (getGroupName(series) == u"c:doughnutChart") return true;
    return getGroupName(series) == u"c:pieChart" &&
           (settings.position == LabelPosition::InsideEnd || settings.position == LabelPosition::Center);
}

std::map<std::size_t, const DOMElement*> findFillsOfPoints(const SeriesPart& series)
{
    std::map<std::size_t, const DOMElement*> fills;
    for (const auto* point : findChildren(series.element, u"c:dPt"))
        if (const auto* fill = findFill(findChild(point, u"c:spPr")))
            fills.emplace(str2uint(findChild(point, u"c:idx")->getAttribute(u"val")), fill);
    return fills;
}

}  // namespace

bool haveSlicesRoom(const ChartPart& part, const SeriesPart& series, const LabelSettings& settings)
{
    const auto rooms = findRoomOnSlices(part, series, settings);
    return std::find(rooms.begin(), rooms.end(), false) == rooms.end();
}

std::vector<TextColor> chooseLabelColors(const ChartPart& part, const SeriesPart& series,
                                         const LabelSettings& settings)
{
    const bool areSlices = standOnSlices(series, settings);
    if (!areSlices && !standOnBars(part, series, settings)) return {};
    const auto rooms =
        areSlices ? findRoomOnSlices(part, series, settings) : findRoomOnBars(part, series, settings);
    const auto* ofSeries = findFill(findChild(series.element, u"c:spPr"));
    const auto ofPoints = findFillsOfPoints(series);
    std::vector<TextColor> colors(rooms.size(), TextColor::Grey);
    for (std::size_t i = 0; i < rooms.size(); ++i) {
        const auto own = ofPoints.find(i);
        const auto* fill = own == ofPoints.end() ? ofSeries : own->second;
        if (rooms[i] && fill != nullptr) colors[i] = chooseTextColor(fill, part.context.theme);
    }
    return colors;
}

}  // namespace quillon::report
