#include <array>

#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/Shapes.h"
#include "report/finish/Waterfall.h"
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
        const Paint standard{part.colors.get(isSliced ? index : part.getColorPosition(series))};
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

void hideBaseOfWaterfall(ChartPart& part)
{
    for (const auto& series : part.series)
        if (series.index == static_cast<std::size_t>(WaterfallPart::Base))
            hide(findChild(series.element, u"c:spPr"));
}

constexpr std::array rules = {
    Rule{allKinds, shapeAllSeries},
    Rule{ChartKinds(ChartKind::Stock), hideLinesOfStocks},
    Rule{ChartKinds(ChartKind::Waterfall), hideBaseOfWaterfall},
};

}  // namespace

const std::span<const Rule> shapeRules = rules;

}  // namespace quillon::report
