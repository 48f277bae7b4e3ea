#include "report/finish/AltText.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "report/finish/Rules.h"
#include "report/options/Enumerations.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// "values from 1.5 to 20", or nothing for a chart without numbers.
std::u16string describeRange(const std::vector<double>& values)
{
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    for (const double value : values) {
        low = std::fmin(low, value);
        high = std::fmax(high, value);
    }
    return low <= high ? u"; values from " + num2str(low) + u" to " + num2str(high) : u"";
}

std::u16string describeSeriesNames(const std::vector<std::u16string>& names)
{
    constexpr std::size_t named = 5;
    std::u16string list;
    for (std::size_t i = 0; i < std::min(names.size(), named); ++i)
        list += (i == 0 ? u"; series " : u", ") + escapeCharacters(names[i]);
    if (names.size() > named) list += u" and " + num2str(names.size() - named) + u" more";
    return list;
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
    ShownData shown{context.kind};
    if (const auto& title = context.chart.getTitle()) shown.title = joinRuns(*title->getText());
    const auto series = context.data.dataSet->getSeriesList();
    for (const auto& one : *series) {
        shown.names.push_back(one->getName());
        for (const auto& point : one->getPoints()) shown.values.push_back(point->getValue());
        if (context.kind == ChartKind::Pie) break;
    }
    return makeAltText(shown);
}

std::u16string makeAltText(const ShownData& shown)
{
    std::u16string text = toUtf16(findRow(kindRows, shown.kind).meaning);
    if (shown.title) text += u": " + escapeCharacters(*shown.title);
    return text + describeSeriesNames(shown.names) + describeRange(shown.values);
}

}  // namespace quillon::report
