#include <array>

#include "report/finish/Rules.h"
#include "report/finish/Shapes.h"
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

/// The outline of a point stays 1.5 pt wide until its border says otherwise.
void shapePoint(const SeriesPart& series, DOMElement* point, const ShapeSettings& settings,
                const Paint& paint)
{
    auto* properties = findChild(point, u"c:spPr");
    setPaint(properties, paint);
    const bool isOwn = settings.hasBorder && !isLine(series);
    setLine(findChild(properties, u"a:ln"), settings.border,
            isOwn ? resolve(settings.border.fill, white) : paint);
}

/// A slice without a format of its own has that of its series. What a point leaves open is as its series has
/// it; where that leaves the colour open too, a slice has an automatic colour of its own.
void shapePoints(ChartPart& part, const SeriesPart& series, const ShapeSettings& seriesSettings)
{
    const bool isSliced = hasSlices(series);
    for (auto* element : findChildren(series.element, u"c:dPt")) {
        const auto index = str2uint(findChild(element, u"c:idx")->getAttribute(u"val"));
        const auto& own = series.series.getPoint(index)->getFormat();
        const Paint standard{part.colors.get(isSliced ? index : series.index)};
        const auto ofSeries = resolve(series, seriesSettings, standard);
        if (!own) {
            shapePoint(series, element, seriesSettings, ofSeries);
            continue;
        }
        const auto settings = readShape(part, own.get(), {&series, index});
        shapePoint(series, element, settings, resolve(series, settings, ofSeries));
    }
}

void shapeAllSeries(ChartPart& part)
{
    for (const auto& series : part.series) {
        const auto settings = readShape(part, series.series.getFormat().get(), {&series});
        const Paint standard{part.colors.get(series.index)};
        shapeSeries(series, settings, resolve(series, settings, standard));
        shapePoints(part, series, settings);
    }
}

constexpr std::array rules = {Rule{allKinds, shapeAllSeries}};

}  // namespace

const std::span<const Rule> shapeRules = rules;

}  // namespace quillon::report
