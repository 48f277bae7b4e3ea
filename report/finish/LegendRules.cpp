#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <vector>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/TextBody.h"
#include "report/options/Enumerations.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// The most slices that people tell apart.
constexpr std::size_t maximumSlices = 12;

/// Of a text or a legend, in points.
struct Extent {
    double width;
    double height;
};

/// Key, gap and text of one series or slice.
Extent getEntryExtent(const std::u16string& text, double size)
{
    constexpr double keyAndGaps = 2.5;
    constexpr double lineHeight = 1.6;
    return {(keyAndGaps + getTextWidth(text)) * size, lineHeight * size};
}

/// Entries stand in rows as columns of equal width, an entry too long for the chart on several lines.
double getHeightBelow(const std::vector<Extent>& entries, double chartWidth)
{
    double widest = 0;
    for (const auto& entry : entries) widest = std::max(widest, entry.width);
    const double inRow = std::max(1.0, std::floor(chartWidth / widest));
    const double lines = std::ceil(widest / chartWidth);
    return std::ceil(static_cast<double>(entries.size()) / inRow) * lines * entries.front().height;
}

/// One below the other, in as many columns as the height of the chart demands.
double getWidthAtRight(const std::vector<Extent>& entries, double chartHeight)
{
    double widest = 0;
    for (const auto& entry : entries) widest = std::max(widest, entry.width);
    const double inColumn = std::max(1.0, std::floor(chartHeight / entries.front().height));
    return std::ceil(static_cast<double>(entries.size()) / inColumn) * widest;
}

/// Below the plot, or right of it where the legend would crowd out the plot.
Legend choosePlace(ChartPart& part, const std::vector<std::u16string>& texts)
{
    const double size = getTextSize(part.context.options);
    std::vector<Extent> entries;
    entries.reserve(texts.size());
    for (const auto& text : texts) entries.push_back(getEntryExtent(text, size));
    const double width = parsePoints(part.context.options.width);
    const double height = parsePoints(part.context.options.height);
    constexpr double share = 3;
    if (entries.empty() || getHeightBelow(entries, width) <= height / share) return Legend::Bottom;
    if (getWidthAtRight(entries, height) <= width / share) return Legend::Right;
    part.warn("",
              "the legend takes more than a third of the chart; make the chart larger, shorten the names, or "
              "leave the legend out (legend none).");
    return Legend::Bottom;
}

Legend placeSlices(ChartPart& part)
{
    return choosePlace(part, part.context.chart.getDataSet()->getCategories());
}

Legend placeSeries(ChartPart& part)
{
    std::vector<std::u16string> names;
    names.reserve(part.series.size());
    for (const auto& series : part.series)
        if (!part.isHidden(series)) names.push_back(series.series.getName());
    return names.size() < 2 ? Legend::None : choosePlace(part, names);
}

/// High, low and close say themselves which is which.
Legend placeNothing(ChartPart& /*part*/)
{
    return Legend::None;
}

template <Legend (*placeAutomatically)(ChartPart&)>
void addLegend(ChartPart& part)
{
    const auto wish = part.context.options.legend;
    const auto place = wish == Legend::Automatic ? placeAutomatically(part) : wish;
    if (place == Legend::None) return;
    auto* legend = insertInOrder(part.chart, u"c:legend");
    appendElement(legend, u"c:legendPos", findRow(legendRows, place).token);
    appendElement(legend, u"c:overlay", u"0");
}

/// What is not seen, and what a waterfall shows below 0 in the colours of the parts above.
bool isLeftOut(const ChartPart& part, const xercesc::DOMElement* element)
{
    const auto found = std::find_if(part.series.begin(), part.series.end(),
                                    [element](const auto& series) { return series.element == element; });
    return part.isHidden(*found) ||
           (part.context.kind == ChartKind::Waterfall && part.getColorPosition(*found) != found->index);
}

/// Entries are counted in the order in which their series are drawn.
void leaveOutEntries(ChartPart& part)
{
    auto* legend = findChild(part.chart, u"c:legend");
    if (legend == nullptr) return;
    unsigned long index = 0;
    for (auto* group : part.groups)
        for (const auto* series : findChildren(group, u"c:ser")) {
            const auto number = num2str(index++);
            if (!isLeftOut(part, series)) continue;
            auto* entry = insertInOrder(legend, u"c:legendEntry");
            appendElement(entry, u"c:idx", number.c_str());
            appendElement(entry, u"c:delete", u"1");
        }
}

void countSlices(ChartPart& part)
{
    for (const auto& series : part.series)
        if (series.series.getSize() > maximumSlices)
            part.warn("",
                      "the pie has " + std::to_string(series.series.getSize()) +
                          " slices; more than 12 are hard to tell apart. Add up the smallest, or use a bar "
                          "chart.");
}

constexpr ChartKinds stockKind{ChartKind::Stock};

constexpr std::array rules = {
    Rule{sliceKinds, countSlices},
    Rule{sliceKinds, addLegend<placeSlices>},
    Rule{stockKind, addLegend<placeNothing>},
    Rule{allKinds.without(sliceKinds).without(stockKind), addLegend<placeSeries>},
    Rule{stackKinds, leaveOutEntries},
};

}  // namespace

const std::span<const Rule> legendRules = rules;

}  // namespace quillon::report
