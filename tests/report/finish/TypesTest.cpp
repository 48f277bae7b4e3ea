#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <string>
#include <vector>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/PieChart.h"
#include "report/document/ChartParts.h"
#include "report/document/Document.h"
#include "report/fill/Template.h"
#include "report/options/Options.h"
#include "support/Text.h"
#include "tests/ThrownText.h"
#include "tests/report/MarkupReader.h"
#include "tests/report/TestDocuments.h"

namespace quillon::report {
namespace {

using Texts = std::map<std::string, std::string>;
using Values = std::vector<std::vector<double>>;

const auto gap = std::nan("");
/// 1 January 2026, and the first days of the months behind it.
const std::vector<double> months = {46'023, 46'054, 46'082, 46'113};

/// Series "A", "B" ... over categories "1", "2" ...
ChartData makeData(const Values& values)
{
    std::vector<std::u16string> categories;
    for (std::size_t i = 0; !values.empty() && i < values.front().size(); ++i)
        categories.push_back(toUtf16(std::to_string(i + 1)));
    ChartData data(chart::DataSet::create(categories));
    for (std::size_t i = 0; i < values.size(); ++i)
        appendSeries(*data.dataSet, std::u16string(1, static_cast<char16_t>(u'A' + i)), values[i]);
    return data;
}

ChartOptions makeOptions(const Texts& texts)
{
    ChartOptions options;
    for (const auto& [name, text] : texts) {
        const auto* option = findOption(name);
        setOption(options, *option, readOptionText(*option, text, name), name);
    }
    return options;
}

struct Made {
    std::string chart;
    std::string workbook;
    std::string run;
    std::vector<std::string> warnings;
};

Made make(const ChartData& data, const Texts& texts)
{
    const auto chart = chart::ColumnChart::create();
    chart->setDataSet(data.dataSet);
    Made made;
    const Listener listener = {.warning = [&](const auto& text) { made.warnings.push_back(text); }};
    const auto options = makeOptions(texts);
    checkOptions(options, getKind(*chart, options));
    auto parts = makeChartParts(*chart, options, 1, "rId1", listener, data);
    return {parts.chart, parts.workbook, parts.run, made.warnings};
}

std::string refusal(const ChartData& data, const Texts& texts)
{
    return thrownText([&] { make(data, texts); });
}

const Values three = {{1, 2, 4, 3}, {2, 3, 3, 5}, {4, 1, 2, 2}};

struct Row {
    Texts options;
    const char* path;
    const char* expected;
};

void expectRows(const ChartData& data, const std::vector<Row>& rows)
{
    for (const auto& [options, path, expected] : rows) {
        const auto made = make(data, options);
        EXPECT_EQ(readXPath(made.chart, path), expected) << path << testing::PrintToString(options);
        EXPECT_EQ(made.warnings, std::vector<std::string>{}) << path;
    }
}

TEST(ChartTypes, HaveTheirGroupsAndAxes)
{
    const auto groups = "//c:plotArea/*[c:ser]";
    const std::string name = std::string("name(") + groups + ")";
    const std::string axes = "count(//c:plotArea/*[c:crossAx])";
    struct Kind {
        const char* type;
        const char* element;
        const char* axisCount;
        const char* seriesCount;
    };
    for (const auto& [type, element, axisCount, seriesCount] :
         {Kind{"bar", "c:barChart", "2", "3"}, Kind{"column", "c:barChart", "2", "3"},
          Kind{"line", "c:lineChart", "2", "3"}, Kind{"pie", "c:pieChart", "0", "1"},
          Kind{"area", "c:areaChart", "2", "3"}, Kind{"doughnut", "c:doughnutChart", "0", "3"},
          Kind{"scatter", "c:scatterChart", "2", "3"}, Kind{"radar", "c:radarChart", "2", "3"},
          Kind{"stock", "c:stockChart", "2", "3"}}) {
        const auto made = make(makeData(three), {{"type", type}});
        EXPECT_EQ(readXPath(made.chart, name), element);
        EXPECT_EQ(readXPath(made.chart, axes), axisCount) << type;
        EXPECT_EQ(readXPath(made.chart, "count(//c:ser)"), seriesCount) << type;
    }
}

TEST(ChartTypes, SetThousandsOfXApartWhereAYearHasNone)
{
    const std::pair<std::vector<double>, const char*> cases[] = {
        {{1998, 9999}, "General"},
        {{120, 10'000}, "#,##0"},
        {{-10'000, 5}, "#,##0"},
        {{0.5, 20'000}, "General"},
    };
    for (const auto& [xs, format] : cases) {
        auto data = makeData({{1, 2}});
        for (std::size_t i = 0; i < 2; ++i) data.dataSet->getSeries(0)->getPoint(i)->setX(xs[i]);
        expectRows(data,
                   {{{{"type", "scatter"}}, "//c:valAx[c:axPos/@val='b']/c:numFmt/@formatCode", format}});
    }
}

TEST(ChartTypes, LetBubblesBeSeenThroughOneAnother)
{
    expectRows(makeData({{1, 2}}), {{{{"type", "area"}}, "count(//c:ser//a:alpha)", "0"}});
    expectRows(
        makeData({{1, 2}, {3, 4}}),
        {{{{"type", "bubble"}, {"size-series", "B"}}, "//c:ser/c:spPr/a:solidFill//a:alpha/@val", "70000"}});
}

TEST(ChartTypes, DrawTheWebOfARadar)
{
    const auto count = "count(//c:catAx/c:majorGridlines) + 10 * count(//c:valAx/c:majorGridlines)";
    expectRows(makeData(three), {{{{"type", "radar"}}, count, "11"},
                                 {{{"type", "radar"}, {"gridlines", "both"}}, count, "11"},
                                 {{{"type", "radar"}, {"gridlines", "value"}}, count, "10"},
                                 {{{"type", "radar"}, {"gridlines", "none"}}, count, "0"}});
}

TEST(ChartTypes, ShowTheirOptions)
{
    const Texts scatter = {{"type", "scatter"}};
    const auto with = [](Texts texts, const char* option, const char* value) {
        texts[option] = value;
        return texts;
    };
    const auto x = "//c:valAx[c:axPos/@val='b']";
    const auto second = "//c:valAx[c:axPos/@val='r']";
    const Texts combined = {{"second", "C"}};
    const Texts bubble = {{"type", "bubble"}, {"size-series", "C"}};
    const std::string xs = x;
    const std::string seconds = second;
    const std::string xTitle = xs + "/c:title//a:t";
    const std::string secondTitle = seconds + "/c:title//a:t";
    const std::string xCode = xs + "/c:numFmt/@formatCode";
    const std::string secondCode = seconds + "/c:numFmt/@formatCode";
    const std::string xMin = xs + "/c:scaling/c:min/@val";
    const std::string xMax = xs + "/c:scaling/c:max/@val";
    const std::string secondMin = seconds + "/c:scaling/c:min/@val";
    const std::string secondMax = seconds + "/c:scaling/c:max/@val";
    const std::string xStep = xs + "/c:majorUnit/@val";
    const std::string secondStep = seconds + "/c:majorUnit/@val";
    const std::string xLog = xs + "/c:scaling/c:logBase/@val";
    const std::string secondLog = seconds + "/c:scaling/c:logBase/@val";
    expectRows(
        makeData(three),
        {
            {{{"type", "doughnut"}}, "//c:holeSize/@val", "40"},
            {{{"type", "doughnut"}, {"hole", "35"}}, "//c:holeSize/@val", "35"},
            {{{"type", "doughnut"}},
             "//c:ser/c:val//c:f",
             "Sheet1!$B$2:$B$5|Sheet1!$C$2:$C$5|Sheet1!$D$2:$D$5"},
            {{{"type", "doughnut"}}, "//c:ser[3]/c:val//c:v", "4|1|2|2"},
            {{{"type", "doughnut"}}, "//c:ser[3]/c:dPt[2]//a:solidFill/*/@val", "accent2|FFFFFF"},
            {{{"type", "doughnut"}, {"colors", "red,lime"}},
             "//c:dPt[2]/c:spPr/a:solidFill/*/@val",
             "00FF00|00FF00|00FF00"},
            {{{"type", "doughnut"}, {"labels", "percent"}}, "//c:ser/c:dLbls/c:showPercent/@val", "1|1|1"},
            {{{"type", "doughnut"}, {"explosion", "5"}}, "//c:ser/c:explosion/@val", "5|5|5"},
            {{{"type", "doughnut"}, {"labels", "value,percent"}},
             "//c:ser[1]//c:formatCode|//c:ser[1]/c:dLbls/c:numFmt",
             "#,##0"},
            {{{"type", "doughnut"}, {"labels", "value,percent"}, {"label-format", "0.0"}},
             "//c:ser[1]//c:formatCode|//c:ser[1]/c:dLbls/c:numFmt/@formatCode",
             "0.0|General"},
            {{{"stacking", "percent"}, {"second", "C"}}, "//c:valAx/c:numFmt/@formatCode", "0%|0%"},
            {{{"stacking", "percent"}, {"line", "A,B"}, {"second", "C"}},
             "//c:valAx/c:numFmt/@formatCode",
             "#,##0|0%"},
            {{{"type", "radar"}}, "//c:radarStyle/@val", "marker"},
            {{{"type", "radar"}, {"filled", ""}}, "//c:radarStyle/@val", "filled"},
            {{{"type", "radar"}, {"filled", ""}}, "count(//c:ser/c:spPr/a:solidFill//a:alpha)", "3"},
            {{{"type", "area"}, {"stacking", "percent"}}, "//c:grouping/@val", "percentStacked"},
            {{{"type", "area"}, {"stacking", "normal"}}, "count(//c:ser//a:alpha)", "0"},
            {{{"type", "stock"}}, "count(//c:stockChart/c:hiLowLines)", "1"},
            {{{"type", "stock"}}, "count(//c:stockChart/c:grouping | //c:stockChart/c:varyColors)", "0"},
            {{{"type", "stock"}}, "count(//c:ser/c:spPr/a:ln/a:noFill)", "3"},
            {{{"type", "stock"}}, "//c:ser[3]/c:marker/c:symbol/@val", "dash"},
            {{{"type", "stock"}}, "count(//c:upDownBars)", "0"},
            {scatter, "count(//c:ser/c:spPr/a:ln/a:noFill)", "3"},
            {scatter, "//c:ser[2]/c:xVal//c:f", "Sheet1!$A$2:$A$5"},
            {scatter, "//c:ser[2]/c:xVal//c:v", "1|2|3|4"},
            {scatter, "//c:ser[2]/c:yVal//c:f", "Sheet1!$C$2:$C$5"},
            {with(scatter, "scatter-style", "lines"), "count(//c:ser/c:spPr/a:ln/a:solidFill)", "3"},
            {with(scatter, "scatter-style", "lines"), "//c:marker/c:symbol/@val", "none|none|none"},
            {with(scatter, "scatter-style", "both"), "//c:marker/c:symbol/@val", "circle|circle|circle"},
            {with(scatter, "x-title", "Size"), xTitle.c_str(), "Size"},
            {with(scatter, "x-format", "0.0"), xCode.c_str(), "0.0"},
            {scatter, xCode.c_str(), "General"},
            {with(scatter, "x-min", "0.5"), xMin.c_str(), "0.5"},
            {with(scatter, "x-max", "9"), xMax.c_str(), "9"},
            {with(scatter, "x-step", "2"), xStep.c_str(), "2"},
            {with(scatter, "x-log", "2"), xLog.c_str(), "2"},
            {bubble, "count(//c:ser)", "2"},
            {bubble, "//c:ser[2]/c:bubbleSize//c:v", "4|1|2|2"},
            {bubble, "//c:ser[2]/c:bubbleSize//c:f", "Sheet1!$E$2:$E$5"},
            {bubble, "//c:ser[2]/c:yVal//c:f", "Sheet1!$D$2:$D$5"},
            {{{"type", "line"}, {"drop-lines", ""}}, "count(//c:lineChart/c:dropLines)", "1"},
            {{{"type", "area"}, {"drop-lines", ""}}, "count(//c:areaChart/c:dropLines)", "1"},
            {{{"type", "line"}, {"high-low-lines", ""}}, "count(//c:lineChart/c:hiLowLines)", "1"},
            {{{"type", "line"}, {"up-down-bars", ""}}, "count(//c:upDownBars/c:upBars|//c:downBars)", "2"},
            {combined, "count(//c:barChart)", "2"},
            {combined, "//c:barChart[2]/c:ser/c:idx/@val", "2"},
            {combined, "count(//c:plotArea/*[c:crossAx])", "4"},
            {combined, "//c:catAx/c:delete/@val", "0|1"},
            {combined, "//c:valAx/c:crosses/@val", "autoZero|max"},
            {combined, "count(//c:majorGridlines)", "1"},
            {with(combined, "reverse", ""), "//c:valAx/c:crosses/@val", "max|autoZero"},
            {with(combined, "second-title", "Share"), secondTitle.c_str(), "Share"},
            {with(combined, "second-format", "0%"), secondCode.c_str(), "0%"},
            {with(combined, "second-min", "-1"), secondMin.c_str(), "-1"},
            {with(combined, "second-max", "8"), secondMax.c_str(), "8"},
            {with(combined, "second-step", "2"), secondStep.c_str(), "2"},
            {with(combined, "second-log", "10"), secondLog.c_str(), "10"},
        });
}

TEST(ChartTypes, TellWhatTheyDoNotShow)
{
    const Values rings = {{1, -2}, {3, 4}};
    const std::string start = "chart 1: ";
    const std::string negative =
        "chart 1, series 1 (\"A\"), point 2: the value is -2; a slice shows only its size.";
    const std::tuple<Values, Texts, std::vector<std::string>> cases[] = {
        {rings, {{"type", "doughnut"}}, {negative}},
        {rings,
         {{"type", "pie"}},
         {start + "a pie shows its first series alone; type doughnut shows all 2 as rings.", negative}},
        {three,
         {{"value-min", "6"}},
         {start + "value-min is 6, and the numbers end at 5; the plot shows none of them."}},
        {three, {{"value-min", "6"}, {"stacking", "normal"}}, {}},
        {{{0, 2}}, {{"type", "pie"}}, {}},
        {three,
         {{"value-min", "2"}, {"stacking", "percent"}},
         {start + "value-min is 2, and the numbers end at 1; the plot shows none of them."}},
        {three,
         {{"type", "line"}, {"value-max", "0.5"}},
         {start + "value-max is 0.5, and the numbers start at 1; the plot shows none of them."}},
        {three,
         {{"second", "C"}, {"second-max", "0.5"}},
         {start + "second-max is 0.5, and the numbers start at 1; the plot shows none of them."}},
        {three, {{"type", "scatter"}, {"x-min", "4"}}, {}},
        {three,
         {{"type", "scatter"}, {"x-min", "4.5"}},
         {start + "x-min is 4.5, and the numbers end at 4; the plot shows none of them."}},
    };
    for (const auto& [values, options, warnings] : cases)
        EXPECT_EQ(make(makeData(values), options).warnings, warnings) << testing::PrintToString(options);
}

TEST(ChartTypes, NameTheRingsAndColourTheLongest)
{
    auto data = makeData({{1, 2}, {3, 4}});
    data.dataSet->getSeries(1)->appendPoint(5);
    const auto made = make(data, {{"type", "doughnut"}, {"colors", "red,lime,blue"}});
    EXPECT_NE(made.run.find("Doughnut chart; series A, B; values from 1 to 5"), std::string::npos);
    EXPECT_EQ(readXPath(made.chart, "//c:ser[2]/c:dPt[3]/c:spPr/a:solidFill/*/@val"), "0000FF");
}

TEST(ChartTypes, CombineEachSeriesInItsOwnWay)
{
    const auto path = "//c:plotArea/*[c:ser]";
    const auto names = [&](const Texts& options) {
        const auto chart = make(makeData(three), options).chart;
        std::string all;
        for (int i = 1; i <= 3; ++i) {
            const auto step = std::string(path) + "[" + std::to_string(i) + "]";
            all +=
                readXPath(chart, "name((" + std::string(path) + ")[" + std::to_string(i) + "])") + " " +
                readXPath(chart, "(" + std::string(path) + ")[" + std::to_string(i) + "]/c:ser/c:idx/@val") +
                " ";
        }
        return all;
    };
    EXPECT_EQ(names({{"line", "A"}, {"area", "C"}}), "c:areaChart 2 c:barChart 1 c:lineChart 0 ");
    EXPECT_EQ(names({{"type", "line"}, {"column", "B,C"}}), "c:barChart 1|2 c:lineChart 0   ");
    EXPECT_EQ(names({{"type", "area"}, {"line", "C"}, {"second", "C"}}), "c:areaChart 0|1 c:lineChart 2   ");
    EXPECT_EQ(names({{"line", "A,B,C"}}), "c:lineChart 0|1|2     ");
    expectRows(
        makeData(three),
        {
            {{{"line", "A"}}, "count(//c:lineChart/c:ser/c:spPr/a:solidFill)", "0"},
            {{{"line", "A"}}, "count(//c:lineChart//c:invertIfNegative)", "0"},
            {{{"line", "A"}, {"stacking", "normal"}}, "//c:grouping/@val", "stacked|standard"},
            {{{"type", "line"}, {"column", "A"}}, "//c:barChart/c:gapWidth/@val", "219"},
            {{{"type", "area"}}, "//c:crossBetween/@val", "midCat"},
            {{{"type", "area"}, {"line", "C"}, {"second", "C"}}, "//c:crossBetween/@val", "midCat|midCat"},
            {{{"type", "area"}, {"column", "C"}}, "//c:crossBetween/@val", "between"},
            {{{"type", "line"}}, "//c:crossBetween/@val", "between"},
            {{{"line", "A"}, {"markers", ""}}, "//c:lineChart/c:ser/c:marker/c:symbol/@val", "circle"},
            {{{"line", "C"}, {"labels", "value"}, {"label-position", "t"}, {"type", "line"}, {"column", "A"}},
             "count(//c:lineChart//c:dLblPos)",
             "2"},
            {{{"type", "line"}, {"area", "A,B,C"}, {"labels", "value"}, {"label-position", "t"}},
             "count(//c:dLblPos)",
             "0"},
            {{{"type", "line"}, {"column", "A"}, {"labels", "value"}, {"label-position", "t"}},
             "count(//c:barChart//c:dLblPos)",
             "0"},
        });
}

TEST(ChartTypes, RefuseWhatDoesNotFit)
{
    const auto data = makeData(three);
    auto words = makeData({{1, 2}});
    words.dataSet->setCategories({u"one", u"2"});
    auto negative = makeData({{1, -2, 3}});
    EXPECT_EQ(refusal(data, {{"line", "X\x1B[2J"}}),
              "chart 1: line: there is no series \"X\\x1B[2J\"; the series are \"A\", \"B\", \"C\".");
    EXPECT_EQ(refusal(data, {{"second", "A,B,C"}}),
              "chart 1: second: at least one series stands on the first value axis; all are named.");
    EXPECT_EQ(refusal(data, {{"line", "A"}, {"area", "A"}}),
              "chart 1, series 1 (\"A\"): line and area both name it; a series is drawn in one way.");
    for (const auto* type : {"bar", "pie", "radar", "stock", "doughnut", "scatter"})
        EXPECT_EQ(refusal(data, {{"type", type}, {"line", "A"}}),
                  std::string("line is for column, line or area charts; this is a ") + type + " chart.");
    EXPECT_EQ(refusal(data, {{"second-title", "x"}}).substr(0, 60),
              "second-title, second-format, second-min, second-max, second-");
    EXPECT_EQ(
        refusal(words, {{"type", "scatter"}}),
        "chart 1, series 1 (\"A\"): every X is 0, and the categories are not numbers; a scatter chart needs "
        "points with X, or categories that are numbers or dates; --x names the column of a table that "
        "holds them.");
    EXPECT_EQ(
        refusal(words, {{"type", "stock"}}),
        "chart 1: a stock chart has 3 series, high, low and close, or 4, open, high, low and close; got 1.");
    EXPECT_EQ(
        refusal(data, {{"type", "bubble"}}),
        "chart 1, series 1 (\"A\"): a bubble chart needs the sizes of its bubbles; name the series that hold "
        "them (size-series).");
    EXPECT_EQ(refusal(makeData({{1}, {1}, {1}, {1}, {1}}), {{"type", "bubble"}, {"size-series", "A,B"}}),
              "chart 1: size-series: 2 series hold amounts for 3 others; name one for each, or one for all.");
    EXPECT_EQ(refusal(data, {{"type", "waterfall"}}),
              "chart 1: a waterfall chart has one series, of changes and totals; got 3.");
    EXPECT_EQ(refusal(words, {{"type", "waterfall"}, {"totals", "onne"}}),
              "chart 1: totals: there is no category \"onne\"; the categories are \"one\", \"2\"; did you "
              "mean \"one\"?");
    EXPECT_EQ(refusal(words, {{"category-type", "date"}}),
              "chart 1: category-type date: category 1 is \"one\"; expected a date, as in 2026-07-31.");
    EXPECT_EQ(refusal(words, {{"category-type", "number"}}),
              "chart 1: category-type number: category 1 is \"one\"; expected a number, as in 1.5.");
    EXPECT_EQ(refusal(data, {{"trendline", "linear"}, {"stacking", "normal"}}),
              "trendline is for series that are not stacked.");
    EXPECT_EQ(refusal(data, {{"trendline", "linear"}, {"type", "area"}}),
              "trendline is for column, bar, line, scatter or bubble charts; this is an area chart.");
    EXPECT_EQ(refusal(data, {{"trendline", "linear"}, {"order", "3"}}), "order is for trendline polynomial.");
    EXPECT_EQ(
        refusal(negative, {{"trendline", "exponential"}}),
        "chart 1, series 1 (\"A\"), point 2: the value is -2; trendline exponential is for numbers above 0.");
    auto fromZero = makeData({{1, 2}});
    fromZero.dataSet->setCategories({u"0", u"1"});
    EXPECT_EQ(refusal(fromZero, {{"type", "scatter"}, {"trendline", "power"}}),
              "chart 1, series 1 (\"A\"), point 1: X is 0; trendline power is for numbers above 0.");
    EXPECT_EQ(refusal(data, {{"error-value", "3"}}),
              "error-value is for error-bars fixed, percent and deviation.");
    EXPECT_EQ(refusal(data, {{"markers", ""}}),
              "markers is for lines; name the series that are drawn as lines (line).");
    EXPECT_EQ(refusal(data, {{"type", "scatter"}, {"x-log", "10"}, {"x-min", "0"}}),
              "x-min is 0; a logarithmic axis (x-log) shows numbers above 0.");
    EXPECT_EQ(refusal(data, {{"hole", "95"}, {"type", "doughnut"}}),
              "hole: expected a whole number from 10 to 90, got 95.");
}

TEST(ChartTypes, PlacePointsOfTheirOwn)
{
    ChartData data(chart::DataSet::create());
    for (const auto* name : {u"A", u"B"}) data.dataSet->appendSeries(chart::DataSeries::create(name));
    data.dataSet->getSeries(0)->appendPoint(1, 10);
    data.dataSet->getSeries(0)->appendPoint(2.5, 20);
    data.dataSet->getSeries(1)->appendPoint(-3, 30);
    expectRows(data, {
                         {{{"type", "scatter"}}, "//c:ser[1]/c:xVal//c:v", "1|2.5"},
                         {{{"type", "scatter"}}, "//c:ser[2]/c:xVal//c:v", "-3"},
                         {{{"type", "scatter"}}, "//c:ser[1]/c:xVal//c:f", "Sheet1!$D$2:$D$3"},
                         {{{"type", "scatter"}}, "//c:ser[2]/c:xVal//c:f", "Sheet1!$E$2:$E$2"},
                     });
    ChartData shared(chart::DataSet::create());
    for (const auto* name : {u"A", u"B"}) shared.dataSet->appendSeries(chart::DataSeries::create(name));
    for (const double x : {1.0, gap, 3.0})
        for (const unsigned long i : {0UL, 1UL}) shared.dataSet->getSeries(i)->appendPoint(x, 10);
    expectRows(shared, {{{{"type", "scatter"}}, "//c:ser[2]/c:xVal//c:f", "Sheet1!$A$2:$A$4"}});
}

// --- Waterfalls ---

std::string readValues(const std::string& chart, const char* series)
{
    return readXPath(chart, "//c:ser[c:tx//c:v='" + std::string(series) + "']/c:val//c:v");
}

TEST(Waterfalls, StandOnAnInvisibleBase)
{
    const auto made = make(makeData({{100, 50, -120, gap}}), {{"type", "waterfall"}, {"totals", "1,4"}});
    EXPECT_EQ(readValues(made.chart, "Increase"), "50");
    EXPECT_EQ(readValues(made.chart, "Decrease"), "120");
    EXPECT_EQ(readValues(made.chart, "Total"), "100|30");
    EXPECT_EQ(readValues(made.chart, "Base"), "100|30");
    const std::string base = "//c:ser[c:tx//c:v='Base']";
    EXPECT_EQ(readXPath(made.chart, base + "/c:order/@val"), "0");
    EXPECT_EQ(readXPath(made.chart, "count(" + base + "/c:spPr/a:noFill)"), "1");
    EXPECT_EQ(readXPath(made.chart, "//c:ser[1]/c:tx//c:v"), "Base");
    EXPECT_EQ(readXPath(made.chart, "//c:grouping/@val"), "stacked");
    EXPECT_EQ(readXPath(made.chart, "//c:overlap/@val"), "100");
    EXPECT_EQ(readXPath(made.chart, "//c:gapWidth/@val"), "50");
    EXPECT_EQ(readXPath(made.chart, "//c:legendEntry[c:delete/@val='1']/c:idx/@val"), "0");
    EXPECT_EQ(readXPath(made.chart, "//c:ser[1]/c:val//c:f"), "Sheet1!$F$2:$F$5");
    EXPECT_NE(made.run.find("Waterfall chart; series A; values from -120 to 100"), std::string::npos);
}

TEST(Waterfalls, SplitBarsThatCrossZero)
{
    const auto made = make(makeData({{100, -150, 80, -50}}), {{"type", "waterfall"}, {"labels", "value"}});
    EXPECT_EQ(readValues(made.chart, "Increase"), "100|30");
    EXPECT_EQ(readValues(made.chart, "Increase below 0"), "-50");
    EXPECT_EQ(readValues(made.chart, "Decrease"), "100|30");
    EXPECT_EQ(readValues(made.chart, "Decrease below 0"), "-50|-20");
    EXPECT_EQ(readXPath(made.chart, "//c:legendEntry/c:idx/@val"), "0|4|5|6");
    EXPECT_EQ(readXPath(made.chart, "count(//c:ser[1]/c:dLbls)"), "0");
    EXPECT_EQ(readXPath(made.chart, "count(//c:ser[c:tx//c:v='Increase below 0']/c:dLbls)"), "0");
    const std::string decrease = "//c:ser[c:tx//c:v='Decrease']/c:dLbls";
    EXPECT_EQ(readXPath(made.chart, decrease + "/c:dLbl//a:t"), "-150|-50");
    EXPECT_EQ(readXPath(made.chart, decrease + "/c:numFmt/@formatCode"), "-#,##0;-#,##0");
    EXPECT_EQ(readXPath(made.chart, "//c:ser[c:tx//c:v='Decrease below 0']/c:spPr//a:schemeClr/@val"),
              "accent2");
    const auto other =
        make(makeData({{1000, -1500}}),
             {{"type", "waterfall"}, {"labels", "value,category,series"}, {"units", "thousands"}});
    EXPECT_EQ(readXPath(other.chart, decrease + "/c:dLbl//a:t"), "Decrease, 2, -1.5");
}

TEST(Hidden, SeriesCarryThoseThatAreSeen)
{
    const Texts ranges = {{"type", "bar"}, {"stacking", "normal"}, {"hidden", "B"}, {"labels", "value"}};
    auto pairs = ranges;
    pairs["hidden"] = "A,B";
    auto lines = ranges;
    lines["type"] = "column";
    lines["line"] = "A";
    auto named = ranges;
    named["colors"] = "red,lime,blue";
    expectRows(makeData(three),
               {
                   {ranges, "//c:ser[c:spPr/a:noFill]/c:idx/@val", "1"},
                   {ranges, "//c:ser/c:spPr/a:solidFill/a:schemeClr/@val", "accent1|accent2"},
                   {ranges, "//c:ser[c:dLbls]/c:idx/@val", "0|2"},
                   {ranges, "//c:legendEntry[c:delete/@val='1']/c:idx/@val", "1"},
                   {named, "//c:ser/c:spPr/a:solidFill/*/@val", "FF0000|0000FF"},
                   // The entry of the columns comes before that of the line.
                   {lines, "//c:legendEntry/c:idx/@val", "0"},
                   {pairs, "count(//c:legend)", "0"},
               });
}

// --- Dates and levels ---

TEST(Categories, MakeADateAxis)
{
    auto data = makeData({{1, 2, 4, 3}});
    data.categoryValues = months;
    expectRows(
        data,
        {
            {{{"type", "line"}}, "count(//c:dateAx)", "1"},
            {{{"type", "line"}}, "//c:dateAx/c:baseTimeUnit/@val", "months"},
            {{{"type", "line"}}, "//c:dateAx/c:numFmt/@formatCode", "mmm yy"},
            {{{"type", "line"}}, "//c:cat/c:numRef//c:v", "46023|46054|46082|46113"},
            {{{"type", "line"}}, "//c:cat//c:f", "Sheet1!$A$2:$A$5"},
            {{{"type", "line"}, {"category-format", "d.m."}}, "//c:dateAx/c:numFmt/@formatCode", "d.m."},
            {{{"type", "column"}}, "count(//c:dateAx)", "0"},
            {{{"type", "column"}}, "//c:cat/c:strRef//c:v", "Jan 2026|Feb 2026|Mar 2026|Apr 2026"},
            {{{"type", "column"}, {"category-type", "date"}}, "count(//c:dateAx)", "1"},
            {{{"type", "line"}, {"category-type", "text"}}, "//c:cat/c:strRef//c:v", "1|2|3|4"},
            {{{"type", "line"}, {"category-type", "number"}}, "count(//c:catAx)", "1"},
            {{{"type", "line"}, {"category-type", "number"}}, "count(//c:cat/c:numRef)", "1"},
        });
}

TEST(Categories, ChooseTheUnitOfDates)
{
    struct Case {
        std::vector<double> dates;
        const char* base;
        const char* unit;
        const char* step;
        const char* format;
    };
    for (const auto& [dates, base, unit, step, format] :
         {Case{{46'023, 46'024, 46'030}, "days", "days", "1", "d mmm"},
          Case{{46'023, 46'024, 46'043}, "days", "days", "7", "d mmm"},
          Case{{46'023, 46'024, 46'100}, "days", "days", "14", "d mmm"},
          Case{{46'023, 46'024, 46'300}, "days", "months", "1", "mmm yy"},
          Case{{46'023, 46'054, 46'800}, "months", "months", "3", "mmm yy"},
          Case{{45'658, 46'023, 46'388}, "years", "years", "1", "yyyy"},
          Case{{36'526, 46'023, 46'388}, "years", "years", "3", "yyyy"}}) {
        auto data = makeData({std::vector<double>(dates.size(), 1)});
        data.categoryValues = dates;
        const auto chart = make(data, {{"type", "area"}}).chart;
        EXPECT_EQ(readXPath(chart, "//c:baseTimeUnit/@val"), base) << format;
        EXPECT_EQ(readXPath(chart, "//c:majorTimeUnit/@val"), unit) << format;
        EXPECT_EQ(readXPath(chart, "//c:dateAx/c:majorUnit/@val"), step) << format;
        EXPECT_EQ(readXPath(chart, "//c:dateAx/c:numFmt/@formatCode"), format);
    }
}

TEST(Categories, AreTextsWhereDatesDoNotAscendOrAreTooEarly)
{
    auto data = makeData({{1, 2, 4}});
    data.categoryValues = {46'023, 46'023, 46'024};
    EXPECT_EQ(readXPath(make(data, {{"type", "line"}}).chart, "//c:cat/c:strRef//c:v"),
              "2026-01-01|2026-01-01|2026-01-02");
    EXPECT_EQ(make(data, {{"type", "line"}}).warnings, std::vector<std::string>{});
    EXPECT_EQ(make(data, {{"type", "line"}, {"category-type", "date"}}).warnings,
              std::vector<std::string>{
                  "chart 1: the dates do not ascend, each on a day of its own; the categories are texts."});
    data.categoryValues = {46'023, 46'023.5, 46'024};
    EXPECT_EQ(readXPath(make(data, {{"type", "line"}}).chart, "count(//c:dateAx)"), "0");
    data.categoryValues = {-10'000, 20, 46'024};
    const auto early = make(data, {{"type", "line"}});
    EXPECT_EQ(readXPath(early.chart, "//c:cat/c:strRef//c:v"), "1|1900-01-19|2026-01-02");
    EXPECT_EQ(early.warnings, std::vector<std::string>{"chart 1: dates before March 1900 cannot stand in a "
                                                       "worksheet; the categories are texts."});
}

TEST(Categories, HaveLevels)
{
    auto data = makeData({{1, 2, 4}, {1, 2, 3}});
    data.levels = {{u"2025", u"", u"2026"}, {u"H1", u"H2", u"H1"}};
    const auto chart = make(data, {}).chart;
    EXPECT_EQ(readXPath(chart, "//c:ser[2]/c:cat/c:multiLvlStrRef/c:f"), "Sheet1!$A$2:$C$4");
    EXPECT_EQ(readXPath(chart, "//c:ser[2]/c:cat//c:lvl[1]//c:v"), "1|2|3");
    EXPECT_EQ(readXPath(chart, "//c:ser[2]/c:cat//c:lvl[2]//c:v"), "H1|H2|H1");
    EXPECT_EQ(readXPath(chart, "//c:ser[2]/c:cat//c:lvl[3]//c:v"), "2025|2026");
    EXPECT_EQ(readXPath(chart, "//c:ser[2]/c:cat//c:lvl[3]/c:pt/@idx"), "0|2");
    EXPECT_EQ(readXPath(chart, "//c:ser/c:val//c:f"), "Sheet1!$D$2:$D$4|Sheet1!$E$2:$E$4");
}

// --- Trends ---

TEST(Trends, ShowTheirOptions)
{
    const auto trend = [](Texts texts) {
        texts.try_emplace("trendline", "linear");
        return texts;
    };
    expectRows(
        makeData(three),
        {
            {trend({}), "//c:ser/c:trendline/c:trendlineType/@val", "linear|linear|linear"},
            {trend({{"trendline-series", "B"}}), "//c:ser[c:trendline]/c:idx/@val", "1"},
            {trend({{"trendline", "polynomial"}}), "//c:ser[1]//c:order/@val", "0|2"},
            {trend({{"trendline", "polynomial"}, {"order", "3"}}), "//c:ser[1]/c:trendline/c:order/@val",
             "3"},
            {trend({{"trendline", "moving-average"}}), "//c:ser[1]//c:period/@val", "2"},
            {trend({{"trendline", "moving-average"}, {"period", "3"}}), "//c:ser[1]//c:period/@val", "3"},
            {trend({{"trendline", "exponential"}}), "//c:ser[1]//c:trendlineType/@val", "exp"},
            {trend({{"trendline", "logarithmic"}}), "//c:ser[1]//c:trendlineType/@val", "log"},
            {trend({{"trendline", "power"}}), "//c:ser[1]//c:trendlineType/@val", "power"},
            {trend({{"forecast", "1.5"}}), "//c:ser[1]//c:forward/@val", "1.5"},
            {trend({{"backcast", "0.5"}}), "//c:ser[1]//c:backward/@val", "0.5"},
            {trend({{"equation", ""}}), "//c:ser[1]//c:dispEq/@val", "1"},
            {trend({{"r-squared", ""}}), "//c:ser[1]//c:dispRSqr/@val", "1"},
            {trend({}), "//c:ser[1]//c:dispEq/@val|//c:ser[1]//c:dispRSqr/@val", "0|0"},
            {trend({}), "count(//c:trendlineLbl)", "0"},
            {{{"error-bars", "percent"}}, "//c:ser[1]/c:errBars/c:errValType/@val", "percentage"},
            {{{"error-bars", "percent"}}, "//c:ser[1]/c:errBars/c:val/@val", "5"},
            {{{"error-bars", "fixed"}, {"error-value", "0.25"}}, "//c:ser[1]/c:errBars/c:val/@val", "0.25"},
            {{{"error-bars", "deviation"}}, "//c:ser[1]//c:errValType/@val", "stdDev"},
            {{{"error-bars", "error"}}, "count(//c:errBars/c:val)", "0"},
            {{{"error-bars", "fixed"}, {"type", "scatter"}}, "//c:ser[1]//c:errDir/@val", "y"},
            {{{"plus-series", "B"}, {"minus-series", "C"}}, "//c:errBars/c:errBarType/@val", "both"},
            {{{"plus-series", "B"}, {"minus-series", "C"}}, "//c:errBars/c:plus//c:f", "Sheet1!$C$2:$C$5"},
            {{{"plus-series", "B"}, {"minus-series", "C"}}, "//c:errBars/c:minus//c:v", "4|1|2|2"},
            {{{"minus-series", "C"}}, "//c:errBars/c:errBarType/@val", "minus|minus"},
            {{{"minus-series", "C"}}, "//c:errBars/c:minus//c:f", "Sheet1!$D$2:$D$5|Sheet1!$E$2:$E$5"},
        });
    expectRows(makeData({{1, 2}, {3, 4}, {5, 6}, {7, 8}}),
               {{{{"plus-series", "C,D"}}, "//c:errBars/c:plus//c:v", "5|6|7|8"}});
}

TEST(Trends, ShowTheDigitsThatTheirNumbersNeed)
{
    const std::tuple<std::vector<double>, Texts, const char*> cases[] = {
        {{1, 2, 4, 3}, {{"equation", ""}}, "#,##0.00"},
        {{0.01, 0.02, 0.04, 0.03}, {{"equation", ""}}, "#,##0.0000"},
        {{1e-7, 2e-7, 4e-7}, {{"equation", ""}}, "0.00E+00"},
        {{10'000, 20'000, 40'000}, {{"equation", ""}}, "#,##0"},
        {{10'000, 20'000, 40'000}, {{"equation", ""}, {"r-squared", ""}}, "#,##0.00"},
        {{1e-7, 2e-7, 4e-7}, {{"r-squared", ""}}, "#,##0.00"},
        {{1, 2, 4, 65}, {{"equation", ""}, {"trendline", "polynomial"}, {"order", "3"}}, "#,##0.00"},
        {{1, 2, 4, 3, 5}, {{"equation", ""}, {"trendline", "exponential"}}, "#,##0.000"},
        {{1, 2, 4, 30}, {{"equation", ""}, {"trendline", "logarithmic"}}, "#,##0.0"},
        {{1, 2, 4, 9}, {{"equation", ""}, {"trendline", "power"}}, "#,##0.00"},
        {{5, 5, 5}, {{"equation", ""}}, "#,##0.00"},
        {{5, gap, gap, 9}, {{"equation", ""}}, "#,##0.00"},
    };
    for (auto [values, options, format] : cases) {
        options.try_emplace("trendline", "linear");
        EXPECT_EQ(readXPath(make(makeData({values}), options).chart, "//c:trendlineLbl/c:numFmt/@formatCode"),
                  format)
            << testing::PrintToString(values) << testing::PrintToString(options);
    }
    auto points = makeData({{1, 2}});
    points.dataSet->setCategories({u"1000", u"3000"});
    EXPECT_EQ(readXPath(make(points, {{"type", "scatter"}, {"trendline", "linear"}, {"equation", ""}}).chart,
                        "//c:trendlineLbl/c:numFmt/@formatCode"),
              "#,##0.000000");
}

TEST(Trends, NeedEnoughPoints)
{
    const auto made = make(makeData({{1, 2, gap}}), {{"trendline", "polynomial"}});
    EXPECT_EQ(readXPath(made.chart, "count(//c:trendline)"), "0");
    EXPECT_EQ(made.warnings,
              std::vector<std::string>{"chart 1, series 1 (\"A\"): the trendline needs 3 points, and "
                                       "there are 2. It is left out."});
}

// --- Read back ---

ChartData readBack(const ChartData& data, const Texts& texts)
{
    const auto chart = chart::ColumnChart::create();
    chart->setDataSet(data.dataSet);
    Document document;
    document.addChart(chart, makeOptions(texts), data);
    return Template(document.toBytes()).getChartData("1");
}

Values listValues(const ChartData& data)
{
    Values all;
    const auto list = data.dataSet->getSeriesList();
    for (const auto& series : *list) {
        all.emplace_back();
        for (const auto& point : series->getPoints()) all.back().push_back(point->getValue());
    }
    return all;
}

TEST(ChartTypes, GiveTheirDataBack)
{
    for (const auto* type : {"bar", "column", "line", "area", "scatter", "radar", "stock", "doughnut"}) {
        const auto data = readBack(makeData(three), {{"type", type}});
        EXPECT_EQ(listValues(data), three) << type;
        if (std::string(type) == "scatter") {
            EXPECT_EQ(data.dataSet->getSeries(1)->getPoint(3)->getX(), 4);
        } else {
            EXPECT_EQ(data.dataSet->getCategories(), makeData(three).dataSet->getCategories()) << type;
        }
    }
    for (const auto* type : {"pie", "doughnut", "waterfall"}) {
        const auto data = readBack(makeData({{1, -2, 4}}), {{"type", type}});
        EXPECT_EQ(listValues(data), (Values{{1, -2, 4}})) << type;
        EXPECT_EQ(data.dataSet->getSeries(0)->getName(), u"A") << type;
    }
    const auto bubbles = readBack(makeData(three), {{"type", "bubble"}, {"size-series", "B"}});
    EXPECT_EQ(listValues(bubbles), (Values{three[0], three[2]}));
    EXPECT_EQ(bubbles.getDetails(1).sizes, three[1]);
    auto formatted = makeData(three);
    formatted.series = {{.numberFormat = "0.0"}, {.numberFormat = "0%"}, {.numberFormat = "0.000"}};
    EXPECT_EQ(readXPath(make(formatted, {{"type", "bubble"}, {"size-series", "A"}}).chart,
                        "//c:ser[1]/c:yVal//c:formatCode"),
              "0%");
    const auto errors = readBack(makeData(three), {{"plus-series", "B"}, {"minus-series", "C"}});
    EXPECT_EQ(errors.getDetails(0).errorsPlus, three[1]);
    EXPECT_EQ(errors.getDetails(0).errorsMinus, three[2]);
    const auto combined = readBack(makeData(three), {{"line", "B"}, {"area", "C"}, {"second", "A"}});
    EXPECT_EQ(listValues(combined), three);
}

TEST(ChartTypes, GiveWhatTheirCategoriesAreBack)
{
    auto data = makeData({{1, 2, 4, 3}});
    data.categoryValues = months;
    const auto dates = readBack(data, {{"type", "line"}});
    EXPECT_EQ(dates.categoryKind, CategoryKind::Date);
    EXPECT_EQ(dates.categoryValues, months);
    data.categoryValues.clear();
    data.levels = {{u"2025", u"", u"2026", u""}};
    EXPECT_EQ(readBack(data, {}).levels, data.levels);
    const auto waterfall = readBack(makeData({{1, 2, gap}}), {{"type", "waterfall"}, {"totals", "3"}});
    EXPECT_EQ(waterfall.totals, std::vector<std::u16string>{u"3"});
}

}  // namespace
}  // namespace quillon::report
