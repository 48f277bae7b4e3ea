#include "report/finish/LabelColors.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <string_view>

#include "report/finish/LabelTexts.h"
#include "report/finish/NumberFormats.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

// --- How light a fill is ---

/// Red, green and blue, 0 to 1.
using Rgb = std::array<double, 3>;

Rgb toRgb(std::uint32_t number)
{
    const auto channel = [number](unsigned shift) { return (number >> shift & 0xFFU) / 255.0; };
    return {channel(16), channel(8), channel(0)};
}

/// A part of the whole that a child of a colour says.
double readShare(const DOMElement* color, const char16_t* name, double standard)
{
    const auto* child = findChild(color, name);
    return child == nullptr ? standard : static_cast<double>(str2uint(child->getAttribute(u"val"))) / 1e5;
}

/// Lighter or darker, in the same hue and saturation.
Rgb changeLightness(const Rgb& color, double factor, double offset)
{
    const auto [low, high] = std::minmax({color[0], color[1], color[2]});
    const double lightness = (low + high) / 2;
    const double changed = std::clamp(lightness * factor + offset, 0.0, 1.0);
    const double reach = std::min(lightness, 1 - lightness);
    const double scale = reach > 0 ? std::min(changed, 1 - changed) / reach : 0;
    Rgb made{};
    for (std::size_t i = 0; i < made.size(); ++i) made[i] = changed + (color[i] - lightness) * scale;
    return made;
}

Rgb readColor(const DOMElement* color, const ThemeColors& theme)
{
    const std::u16string_view value = color->getAttribute(u"val");
    if (std::u16string_view(color->getTagName()) == u"a:srgbClr")
        return toRgb(static_cast<std::uint32_t>(std::stoul(toUtf8(value), nullptr, 16)));
    constexpr std::u16string_view accent = u"accent";
    if (!value.starts_with(accent)) return {1, 1, 1};
    const auto number = static_cast<std::size_t>(value[accent.size()] - u'1');
    return changeLightness(toRgb(theme.accents.at(number)), readShare(color, u"a:lumMod", 1),
                           readShare(color, u"a:lumOff", 0));
}

/// As the eye adds up red, green and blue: 0 for black, 1 for white.
double getLuminance(const Rgb& color)
{
    constexpr Rgb weights = {0.2126, 0.7152, 0.0722};
    double sum = 0;
    for (std::size_t i = 0; i < weights.size(); ++i)
        sum +=
            weights[i] * (color[i] <= 0.04045 ? color[i] / 12.92 : std::pow((color[i] + 0.055) / 1.055, 2.4));
    return sum;
}

const DOMElement* findFill(const DOMElement* shape)
{
    for (const auto* name : {u"a:solidFill", u"a:gradFill", u"a:pattFill"})
        if (const auto* fill = shape == nullptr ? nullptr : findChild(shape, name)) return fill;
    return nullptr;
}

/// Gradients and patterns are half white; what shines through is white.
TextColor chooseColor(const DOMElement* fill, const ThemeColors& theme)
{
    const bool isSolid = std::u16string_view(fill->getTagName()) == u"a:solidFill";
    const auto* color = fill->getFirstElementChild();
    while (!std::u16string_view(color->getTagName()).ends_with(u"Clr") ||
           color->getAttributeNode(u"val") == nullptr)
        color = color->getFirstElementChild();
    const double share = readShare(color, u"a:alpha", 1) * (isSolid ? 1 : 0.5);
    auto seen = readColor(color, theme);
    for (auto& channel : seen) channel = channel * share + 1 - share;
    // Where small texts in black and in white are read equally well.
    constexpr double middle = 0.36;
    return getLuminance(seen) < middle ? TextColor::White : TextColor::Black;
}

// --- Whether a label has room ---

constexpr double textSize = 9;
constexpr double digitHeight = 0.7;
constexpr double lineHeight = 1.2;

struct Extent {
    double width;
    double height;
};

double getTextSize(const ChartPart& part)
{
    return part.context.options.fontSize.value_or(textSize);
}

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
    const auto points = [](const std::string& length) {
        return static_cast<double>(parseLength(length)) / emuPerPoint;
    };
    return {points(part.context.options.width) * 0.85, points(part.context.options.height) * 0.65};
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
                        hasRoom(bars, point->getValue(), measure(text, getTextSize(part))));
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
        if (rooms[i] && fill != nullptr) colors[i] = chooseColor(fill, part.context.theme);
    }
    return colors;
}

}  // namespace quillon::report
