#include "report/finish/LabelTexts.h"

#include <vector>

#include "report/finish/NumberFormats.h"
#include "report/options/NumberText.h"
#include "support/Text.h"

namespace quillon::report {

std::u16string composeLabel(const ChartPart& part, const SeriesPart& series, const LabelSettings& settings,
                            std::size_t point, double value)
{
    const auto& categories = part.context.chart.getDataSet()->getCategories();
    const double inUnits = value / getUnit(part.context.options.units);
    std::vector<std::u16string> texts;
    if (settings.series) texts.push_back(series.series.getName());
    if (settings.category && point < categories.size()) texts.push_back(categories[point]);
    if (settings.value) texts.push_back(toUtf16(formatNumber(inUnits, toUtf8(settings.numberFormat))));
    if (settings.percent) texts.emplace_back(u"100%");
    const auto* between = settings.separator == nullptr ? standardSeparator : settings.separator;
    std::u16string label;
    for (const auto& text : texts) label += (label.empty() ? u"" : between) + text;
    return label;
}

}  // namespace quillon::report
