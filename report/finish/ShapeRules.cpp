#include <array>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/SeriesNames.h"
#include "report/finish/Shapes.h"
#include "report/options/ChartError.h"
#include "report/options/ColorText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// White is the default colour of borders, and so of an outline that is set in another way.
const Paint white{{u"FFFFFF"}};

void shapeSeries(const SeriesPart& series, const ShapeSettings& settings, const Paint& paint)
{
    auto* properties = findChild(series.element, u"c:spPr");
    auto* line = findChild(properties, u"a:ln");
    if (isLine(series)) return setLine(line, settings.border, paint);
    setPaint(properties, paint);
    if (!isOutlineHidden(settings)) setLine(line, settings.border, resolve(settings.border.fill, white));
}

/// The outline of a point stays 1.5 pt wide until its border says otherwise. Rings whose slices have the same
/// colours would run into each other: white keeps them apart.
void shapePoint(const ChartPart& part, const SeriesPart& series, DOMElement* point,
                const ShapeSettings& settings, const Paint& paint)
{
    const bool isRing = hasSlices(series) && part.series.size() > 1;
    auto* properties = findChild(point, u"c:spPr");
    setPaint(properties, paint);
    const bool isOwn = settings.hasBorder && !isLine(series);
    setLine(findChild(properties, u"a:ln"), settings.border,
            isOwn    ? resolve(settings.border.fill, white)
            : isRing ? white
                     : paint);
}

/// A slice without a format of its own has that of its series. What a point leaves open is as its series has
/// it; where that leaves the colour open too, a slice has an automatic colour of its own.
void shapePoints(ChartPart& part, const SeriesPart& series, const ShapeSettings& seriesSettings)
{
    const bool isSliced = hasSlices(series);
    for (auto* element : findChildren(series.element, u"c:dPt")) {
        const auto index = str2uint(findChild(element, u"c:idx")->getAttribute(u"val"));
        const auto& own = series.series.getPoint(index)->getFormat();
        const Paint standard{isSliced ? part.colors.get(index) : part.getStandardColor(series)};
        const auto ofSeries = resolve(series, seriesSettings, standard);
        if (!own) {
            shapePoint(part, series, element, seriesSettings, ofSeries);
            continue;
        }
        const auto settings = readShape(part, own.get(), {&series, index});
        shapePoint(part, series, element, settings, resolve(series, settings, ofSeries));
    }
}

void shapeAllSeries(ChartPart& part)
{
    for (const auto& series : part.series) {
        const auto settings = readShape(part, series.series.getFormat().get(), {&series});
        shapeSeries(series, settings, resolve(series, settings, getStandardPaint(part, series)));
        shapePoints(part, series, settings);
    }
}

/// Lines from the highest to the lowest value say it all.
void hideLinesOfStocks(ChartPart& part)
{
    for (const auto& series : part.series) hide(findPath(series.element, {u"c:spPr", u"a:ln"}));
}

/// The bars of a category, of all series but those whose points say something else.
void colorBars(ChartPart& part, std::size_t category, const Paint& paint)
{
    for (const auto& series : part.series) {
        if (getGroupName(series) != u"c:barChart" || category >= series.series.getSize()) continue;
        const auto& own = series.series.getPoint(category)->getFormat();
        if (readShape(part, own.get(), {&series, category}).fill.isSet()) continue;
        auto* point = getPoint(series.element, category);
        auto* properties = findChild(point, u"c:spPr");
        setPaint(properties == nullptr ? insertInOrder(point, u"c:spPr") : properties, paint);
    }
}

void colorCategories(ChartPart& part)
{
    const auto& categories = part.context.chart.getDataSet()->getCategories();
    for (const auto& [name, color] : part.context.options.categoryColors)
        for (const auto category : findCategories(categories, toUtf16(name), "category-colors"))
            colorBars(part, category, {{*findColorDigits(toUtf16(color))}});
}

/// A dash that the objects of the chart ask for stays.
void dashLine(DOMElement* element)
{
    auto* line = findPath(element, {u"c:spPr", u"a:ln"});
    if (line != nullptr && findChild(line, u"a:prstDash") == nullptr)
        insertInOrder(line, u"a:prstDash", u"dash");
}

void dashLines(ChartPart& part)
{
    const auto& options = part.context.options;
    for (const auto index : findSeries(*part.context.chart.getDataSet(), options.dashed, "dashed")) {
        const auto& series = part.series[index];
        if (!isLine(series))
            throw ChartError(ChartPart::describe(series),
                             "it is not drawn as a line, and dashed is for lines.");
        dashLine(series.element);
        for (auto* point : findChildren(series.element, u"c:dPt")) dashLine(point);
    }
}

void hideSeries(ChartPart& part)
{
    for (const auto& series : part.series) {
        if (!part.isHidden(series)) continue;
        hide(findChild(series.element, u"c:spPr"));
        removeChildren(series.element, u"c:dPt");
    }
}

constexpr std::array rules = {
    Rule{allKinds, shapeAllSeries},
    Rule{ChartKinds(ChartKind::Stock), hideLinesOfStocks},
    Rule{ChartKinds(ChartKind::Bar, ChartKind::Column), colorCategories},
    Rule{axisKinds, dashLines},
    Rule{ChartKinds(ChartKind::Bar, ChartKind::Column, ChartKind::Area, ChartKind::Waterfall), hideSeries},
};

}  // namespace

const std::span<const Rule> shapeRules = rules;

}  // namespace quillon::report
