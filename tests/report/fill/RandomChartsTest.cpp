#include <gtest/gtest.h>

#include <cmath>

#include "report/document/Document.h"
#include "report/fill/Template.h"
#include "report/finish/ShownChart.h"
#include "report/package/Xml.h"
#include "support/Text.h"
#include "tests/validate/RandomChart.h"

namespace quillon::report {
namespace {

constexpr ChartKinds errorKinds{ChartKind::Bar,  ChartKind::Column,  ChartKind::Line,
                                ChartKind::Area, ChartKind::Scatter, ChartKind::Bubble};

std::string print(const std::vector<double>& numbers)
{
    std::string text;
    // Minus 0 is 0 to a fill.
    for (const double number : numbers) text += toUtf8(num2str(number + 0.0)) + ",";
    return text;
}

/// What a chart shows of its data: series of equal length, with X where they have places of their own.
std::string print(const ChartData& data, ChartKind kind, bool hasErrors)
{
    const auto& set = *data.dataSet;
    std::string text;
    if (!pointKinds.contains(kind)) {
        const bool areTexts = data.categoryKind == CategoryKind::Text;
        for (const auto& name : set.getCategories())
            text += areTexts ? toUtf8(escapeCharacters(name)) + "," : "";
        if (!areTexts) text += print(data.categoryValues);
        for (const auto& level : data.levels)
            for (std::size_t i = 0; i < set.getCategories().size(); ++i)
                text += "/" + (i < level.size() ? toUtf8(escapeCharacters(level[i])) : "");
    }
    std::size_t count = 0;
    for (std::size_t s = 0; s < set.getSeriesCount(); ++s)
        count = std::max(count, set.getSeries(s)->getSize());
    for (std::size_t s = 0; s < set.getSeriesCount(); ++s) {
        const auto series = set.getSeries(s);
        text += "\n" + toUtf8(escapeCharacters(series->getName())) + ":";
        for (std::size_t i = 0; i < count; ++i) {
            const bool isThere = i < series->getSize();
            if (pointKinds.contains(kind)) text += print({isThere ? series->getPoint(i)->getX() : NAN});
            text += print({isThere ? series->getPoint(i)->getY() : NAN});
        }
        const auto& details = data.getDetails(s);
        const auto printAmounts = [&](std::vector<double> amounts) {
            if (!amounts.empty()) amounts.resize(count, NAN);
            text += "+" + print(amounts);
        };
        if (kind == ChartKind::Bubble) printAmounts(details.sizes);
        if (hasErrors) printAmounts(details.errorsPlus);
        if (hasErrors) printAmounts(details.errorsMinus);
    }
    return text;
}

ChartData getShown(const RandomChart& random)
{
    const Listener nobody;
    auto data =
        prepareChart({*random.chart, random.data, random.options, random.kind, 1, "rId1", nobody}).data;
    // The slices of a pie are those of the first series.
    if (random.kind != ChartKind::Pie) return data;
    auto first = chart::DataSet::create(data.dataSet->getCategories());
    first->appendSeries(data.dataSet->getSeries(0));
    data.dataSet = first;
    return data;
}

Template makeTemplate(const RandomChart& random)
{
    Document document;
    document.addChart(random.chart, random.options, random.data);
    return Template(document.toBytes());
}

bool isFillable(const RandomChart& random)
{
    return random.chart->getDataSet()->getSeriesCount() > 0 &&
           !random.data.dataSet->getCategories().empty() &&
           makeTemplate(random).getCharts()[0].problem.empty();
}

RandomChart pickChart(std::optional<ChartKind> kind = {})
{
    while (true)
        if (auto random = makeRandomChart(kind); random.options.workbook && isFillable(random)) return random;
}

/// A random scale cuts off random values.
std::vector<std::string> fill(Template& document, const ChartData& data)
{
    auto warnings = document.fill("1", data).warnings;
    std::erase_if(warnings,
                  [](const auto& sentence) { return sentence.find("does not show") != std::string::npos; });
    return warnings;
}

TEST(RandomCharts, GiveBackTheDataThatTheyWereMadeOfAndFilledWith)
{
    for (int i = 0; i < 200; ++i) {
        const auto random = pickChart();
        auto other = getShown(pickChart(random.kind));
        for (auto& details : other.series) details.errorsPlus = details.errorsMinus = {};
        // Without any name the series would keep theirs.
        const auto first = other.dataSet->getSeries(0);
        if (first->getName().empty()) first->setName(u"First");
        const bool hasErrors = errorKinds.contains(random.kind) && !random.options.errorBars;
        const auto original = makeTemplate(random);
        const auto own = original.getChartData("1");
        EXPECT_EQ(print(own, random.kind, hasErrors), print(getShown(random), random.kind, hasErrors)) << i;

        auto document = original;
        EXPECT_EQ(fill(document, own), std::vector<std::string>()) << i;
        EXPECT_TRUE(document.toBytes() == original.toBytes()) << i;

        if (random.kind == ChartKind::Stock &&
            other.dataSet->getSeriesCount() != own.dataSet->getSeriesCount())
            continue;
        EXPECT_EQ(fill(document, other), std::vector<std::string>()) << i;
        EXPECT_EQ(print(document.getChartData("1"), random.kind, false), print(other, random.kind, false))
            << i;
        const auto filled = document.toBytes();
        document.fill("1", document.getChartData("1"));
        EXPECT_TRUE(document.toBytes() == filled) << i;
    }
}

}  // namespace
}  // namespace quillon::report
