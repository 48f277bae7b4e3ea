#include <algorithm>
#include <array>

#include "report/finish/Rules.h"
#include "report/package/Xml.h"

namespace quillon::report {
namespace {

/// A pie repeats its first series; a word processor wants it once.
void keepOneSeriesOfPie(ChartPart& part)
{
    const auto all = *part.context.data.dataSet->getSeriesList();
    if (std::any_of(all.begin(), all.end(), [&all](const auto& one) { return one != all.front(); }))
        part.warn("", "a pie shows its first series alone; type doughnut shows all " +
                          std::to_string(part.series.size()) + " as rings.");
    while (part.series.size() > 1) {
        part.groups.front()->removeChild(part.series.back().element)->release();
        part.series.pop_back();
    }
}

/// Bars have no marker, and they and their points must say that negative values keep their colour.
void finishBarSeries(ChartPart& part)
{
    for (const auto& [element, index, series] : part.series) {
        removeChildren(element, u"c:marker");
        auto* invert = findChild(element, u"c:invertIfNegative");
        invert->setAttribute(u"val", u"0");
        insertAfter(element, invert, findChild(element, u"c:spPr"));
        for (auto* point : findChildren(element, u"c:dPt"))
            insertAfter(point, makeElement(part.doc, u"c:invertIfNegative", u"0"),
                        findChild(point, u"c:idx"));
    }
}

/// Lines cannot be inverted, and must say whether they are straight.
void finishLineSeries(ChartPart& part)
{
    for (const auto& [element, index, series] : part.series) {
        removeChildren(element, u"c:invertIfNegative");
        appendElement(element, u"c:smooth", part.context.options.smooth ? u"1" : u"0");
    }
}

/// Slices have no marker and cannot be inverted.
void finishPieSeries(ChartPart& part)
{
    for (const auto& [element, index, series] : part.series) {
        removeChildren(element, u"c:marker");
        removeChildren(element, u"c:invertIfNegative");
    }
}

void dropGapWidthOfLines(ChartPart& part)
{
    removeChildren(part.groups.front(), u"c:gapWidth");
}

void addGroupingOfBars(ChartPart& part)
{
    auto* group = part.groups.front();
    auto* grouping = makeElement(part.doc, u"c:grouping", u"clustered");
    insertAfter(group, grouping, findChild(group, u"c:barDir"));
    insertAfter(group, makeElement(part.doc, u"c:varyColors", u"0"), grouping);
}

/// Slices differ in colour. Where they may not, a reader gives those with the colour of the series one of its
/// own.
void varyColorsOfSlices(ChartPart& part)
{
    replaceAttribute(findChild(part.groups.front(), u"c:varyColors"), u"val", u"1");
}

void keepColorOfPoints(ChartPart& part)
{
    replaceAttribute(findChild(part.groups.front(), u"c:varyColors"), u"val", u"0");
}

constexpr std::array rules = {
    Rule{ChartKinds(ChartKind::Pie), keepOneSeriesOfPie},
    Rule{barKinds, finishBarSeries},
    Rule{lineKinds, finishLineSeries},
    Rule{sliceKinds, finishPieSeries},
    Rule{lineKinds, dropGapWidthOfLines},
    Rule{barKinds, addGroupingOfBars},
    Rule{sliceKinds, varyColorsOfSlices},
    Rule{lineKinds, keepColorOfPoints},
};

}  // namespace

const std::span<const Rule> seriesRules = rules;

}  // namespace quillon::report
