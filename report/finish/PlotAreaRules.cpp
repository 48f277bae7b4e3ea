#include <algorithm>
#include <array>
#include <cmath>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/Shapes.h"
#include "report/options/ChartError.h"
#include "report/options/Length.h"
#include "report/options/QuotedText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// One direction of a plot area: where it starts, and how far it goes.
struct Extent {
    const char* startName;
    std::u16string start;
    const char* sizeName;
    std::u16string size;
    /// The same direction of the chart: "width".
    const char* chartName;
    std::string chartSize;
};

[[noreturn]] void refuse(const char* name, const std::string& sentence)
{
    throw ChartError(std::string("plot area, ") + name, sentence);
}

std::string describeChart(const Extent& extent)
{
    return std::string("the chart, whose ") + extent.chartName + " is " + extent.chartSize;
}

/// The share of the chart's size that a length has; nothing for an empty text.
std::optional<double> readShare(const Extent& extent, const char* name, const std::u16string& text)
{
    if (text.empty()) return {};
    double share = 0;
    try {
        share = readLength(toUtf8(escapeCharacters(text))) / readLength(extent.chartSize);
    } catch (const std::runtime_error& error) {
        refuse(name, error.what());
    }
    if (!(share >= 0 && share <= 1))
        refuse(name, "expected a length inside " + describeChart(extent) + ", got " + quoteText(text) + ".");
    return share;
}

/// Both as shares of the chart's size.
struct Span {
    std::optional<double> start;
    std::optional<double> size;

    bool isSet() const { return start || size; }
};

Span readSpan(const Extent& extent)
{
    const Span span = {readShare(extent, extent.startName, extent.start),
                       readShare(extent, extent.sizeName, extent.size)};
    // Lengths in centimetres may add up to a little more than the whole.
    constexpr double whole = 1 + 1e-9;
    if (span.start && span.size && *span.start + *span.size > whole)
        refuse(extent.sizeName, quoteText(extent.size) + " from " + quoteText(extent.start) +
                                    " on ends outside " + describeChart(extent) + ".");
    return span;
}

/// Some readers take a layout only with all of its numbers: what is not set is between `from` and `to`, where
/// it leaves room for texts.
Span complete(const Span& span, double from, double to)
{
    const double start = span.start.value_or(std::min(from, 1 - span.size.value_or(0)));
    const double end = start < to ? to : 1;
    return {start, span.size.value_or(end - start)};
}

/// The plot itself is placed, without the labels of its axes.
void placePlotArea(ChartPart& part, const chart::PlotArea& area)
{
    const auto& options = part.context.options;
    const auto across = readSpan({"X", area.getX(), "Width", area.getWidth(), "width", options.width});
    const auto down = readSpan({"Y", area.getY(), "Height", area.getHeight(), "height", options.height});
    if (!across.isSet() && !down.isSet()) return;
    const auto [x, width] = complete(across, 0.1, 0.95);
    const auto [y, height] = complete(down, part.context.chart.getTitle() ? 0.15 : 0.05, 0.85);
    auto* layout = appendElement(findChild(part.plotArea, u"c:layout"), u"c:manualLayout");
    appendElement(layout, u"c:layoutTarget", u"inner");
    appendElement(layout, u"c:xMode", u"edge");
    appendElement(layout, u"c:yMode", u"edge");
    const std::pair<const char16_t*, double> numbers[] = {
        {u"c:x", *x}, {u"c:y", *y}, {u"c:w", *width}, {u"c:h", *height}};
    for (const auto& [name, number] : numbers)
        appendElement(layout, name, num2str(std::round(number * 1e9) / 1e9).c_str());
}

void shapePlotArea(ChartPart& part, const chart::PlotArea& area)
{
    auto settings = readShape(part, area.getFormat().get(), {.what = "plot area"});
    if (isOutlineHidden(settings)) settings.border = {};
    if (settings.fill.isSet() || settings.border.isSet())
        setShape(insertInOrder(part.plotArea, u"c:spPr"), settings);
}

void finishPlotArea(ChartPart& part)
{
    const auto& area = part.context.chart.getPlotArea();
    if (!area) return;
    placePlotArea(part, *area);
    shapePlotArea(part, *area);
}

constexpr std::array rules = {Rule{allKinds, finishPlotArea}};

}  // namespace

const std::span<const Rule> plotAreaRules = rules;

}  // namespace quillon::report
