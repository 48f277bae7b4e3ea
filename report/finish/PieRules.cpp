#include <algorithm>
#include <array>

#include "chart/model/PieChartDataSeriesFormatOptions.h"
#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/Shapes.h"
#include "report/options/ChartError.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using chart::PieChartDataSeriesFormatOptions;

namespace {

struct PieSettings {
    /// Percent of the radius, 0 to 100.
    std::uint32_t explosion = 0;
    /// Degrees, 0 to 360, clockwise from the top.
    std::uint32_t startAngle = 0;
};

PieSettings read(const chart::DataSeriesFormatOptions* options)
{
    const auto* pie = dynamic_cast<const PieChartDataSeriesFormatOptions*>(options);
    if (pie == nullptr) return {};
    return {pie->getPieExplosion(), pie->getFirstSliceAngle()};
}

/// What the series says wins over the chart, and objects win over plain options; 0 says nothing.
PieSettings choose(const ChartOptions& options, const chart::DataSeries& series)
{
    PieSettings chosen;
    for (const auto& settings :
         {read(series.getFormatOptions().get()), read(options.formatOptions.get()),
          PieSettings{options.explosion.value_or(0), options.startAngle.value_or(0)}}) {
        if (chosen.explosion == 0) chosen.explosion = settings.explosion;
        if (chosen.startAngle == 0) chosen.startAngle = settings.startAngle;
    }
    return chosen;
}

std::u16string toText(std::uint32_t number)
{
    return num2str(static_cast<unsigned long>(number));
}

void finishPie(ChartPart& part)
{
    for (const auto& series : part.series) {
        if (!hasSlices(series)) continue;
        const auto settings = choose(part.context.options, series.series);
        if (settings.explosion != 0)
            insertInOrder(series.element, u"c:explosion", toText(settings.explosion).c_str());
        auto* group = static_cast<xercesc::DOMElement*>(series.element->getParentNode());
        if (settings.startAngle != 0)
            replaceInOrder(group, u"c:firstSliceAng", toText(settings.startAngle).c_str());
    }
}

/// Word processors draw such a slice as if the value had no sign.
void tellOfNegativeSlices(ChartPart& part)
{
    for (const auto& series : part.series) {
        const auto& points = series.series.getPoints();
        const auto negative = std::find_if(points.begin(), points.end(),
                                           [](const auto& point) { return point->getValue() < 0; });
        if (negative == points.end()) continue;
        const auto index = static_cast<std::size_t>(negative - points.begin());
        part.warn({&series, index}, "the value is " + toUtf8(num2str((*negative)->getValue())) +
                                        "; a slice shows only its size.");
    }
}

bool isSet(const chart::DataSeriesFormatOptions* options)
{
    const auto settings = read(options);
    return settings.explosion != 0 || settings.startAngle != 0;
}

/// What only slices have is not dropped in silence elsewhere.
void refuseOptionsOfPies(ChartPart& part)
{
    if (isSet(part.context.options.formatOptions.get()))
        throw ChartError("",
                         "the format options hold an explosion or first slice angle, which are for pies.");
    for (const auto& series : part.series)
        if (isSet(series.series.getFormatOptions().get()))
            part.warn(Place{&series}, "an explosion or first slice angle is for pies. It is left out.");
}

constexpr std::array rules = {Rule{allKinds, finishPie}, Rule{sliceKinds, tellOfNegativeSlices},
                              Rule{allKinds.without(sliceKinds), refuseOptionsOfPies}};

}  // namespace

const std::span<const Rule> pieRules = rules;

}  // namespace quillon::report
