#include "report/finish/AltText.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <vector>

#include "report/finish/Rules.h"
#include "report/options/Enumerations.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using SeriesList = std::vector<std::shared_ptr<chart::DataSeries>>;

/// The series that the chart shows: of a pie, the first alone.
SeriesList getShownSeries(const ChartContext& context)
{
    auto shown = *context.data.dataSet->getSeriesList();
    if (context.kind == ChartKind::Pie && shown.size() > 1) shown.resize(1);
    return shown;
}

/// "values from 1.5 to 20", or nothing for a chart without numbers.
std::u16string describeRange(const SeriesList& shown)
{
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const auto& series : shown)
        for (const auto& point : series->getPoints()) {
            low = std::fmin(low, point->getValue());
            high = std::fmax(high, point->getValue());
        }
    return low <= high ? u"; values from " + num2str(low) + u" to " + num2str(high) : u"";
}

std::u16string describeSeriesNames(const SeriesList& shown)
{
    constexpr unsigned long named = 5;
    std::u16string names;
    for (unsigned long i = 0; i < std::min(shown.size(), named); ++i)
        names += (i == 0 ? u"; series " : u", ") + escapeCharacters(shown[i]->getName());
    if (shown.size() > named) names += u" and " + num2str(shown.size() - named) + u" more";
    return names;
}

/// The whole text of a title; a handle may be empty.
std::u16string joinRuns(const chart::Paragraph& paragraph)
{
    std::u16string text;
    for (const auto& run : paragraph.getContent())
        if (run) text += run->getContent();
    return text;
}

}  // namespace

std::u16string makeAltText(const ChartContext& context)
{
    std::u16string text = toUtf16(findRow(kindRows, context.kind).meaning);
    if (const auto& title = context.chart.getTitle())
        text += u": " + escapeCharacters(joinRuns(*title->getText()));
    const auto shown = getShownSeries(context);
    return text + describeSeriesNames(shown) + describeRange(shown);
}

}  // namespace quillon::report
