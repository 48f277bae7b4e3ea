#include <array>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/options/Enumerations.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// A pie repeats its first series; a word processor wants it once.
void keepOneSeriesOfPie(ChartPart& part)
{
    while (part.series.size() > 1) {
        part.group->removeChild(part.series.back().element)->release();
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
    removeChildren(part.group, u"c:gapWidth");
}

void addGroupingOfBars(ChartPart& part)
{
    auto* direction = findChild(part.group, u"c:barDir");
    auto* grouping = makeElement(part.doc, u"c:grouping", u"clustered");
    insertAfter(part.group, grouping, direction);
    insertAfter(part.group, makeElement(part.doc, u"c:varyColors", u"0"), grouping);
}

/// Bars of one stack stand upon each other unless the author moves them apart.
void placeBars(ChartPart& part)
{
    const auto& options = part.context.options;
    if (options.gap)
        replaceInOrder(part.group, u"c:gapWidth", num2str(static_cast<unsigned long>(*options.gap)).c_str());
    auto overlap = options.overlap;
    if (options.stacking && !overlap) overlap = 100;
    if (overlap) replaceInOrder(part.group, u"c:overlap", toUtf16(std::to_string(*overlap)).c_str());
}

void stackSeries(ChartPart& part)
{
    const auto& stacking = part.context.options.stacking;
    if (stacking) replaceInOrder(part.group, u"c:grouping", findRow(stackingRows, *stacking).token);
}

/// Slices differ in colour. Where they may not, a reader gives those with the colour of the series one of its
/// own.
void varyColorsOfSlices(ChartPart& part)
{
    findChild(part.group, u"c:varyColors")->setAttribute(u"val", u"1");
}

void keepColorOfPoints(ChartPart& part)
{
    findChild(part.group, u"c:varyColors")->setAttribute(u"val", u"0");
}

constexpr std::array rules = {
    Rule{pieKinds, keepOneSeriesOfPie},
    Rule{barKinds, finishBarSeries},
    Rule{lineKinds, finishLineSeries},
    Rule{pieKinds, finishPieSeries},
    Rule{lineKinds, dropGapWidthOfLines},
    Rule{barKinds, addGroupingOfBars},
    Rule{pieKinds, varyColorsOfSlices},
    Rule{lineKinds, keepColorOfPoints},
    Rule{barKinds, placeBars},
    Rule{axisKinds, stackSeries},
};

}  // namespace

const std::span<const Rule> seriesRules = rules;

}  // namespace quillon::report
