#include <gtest/gtest.h>

#include <cmath>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "report/document/Document.h"
#include "report/options/Enumerations.h"
#include "report/options/Options.h"
#include "tests/ThrownText.h"
#include "tests/report/MarkupReader.h"
#include "tests/report/TestDocuments.h"

namespace quillon::report {
namespace {

using Values = std::vector<std::vector<double>>;

constexpr auto chartPart = "word/charts/chart1.xml";
constexpr auto mainPart = "word/document.xml";
constexpr ChartKinds basicKinds{ChartKind::Bar, ChartKind::Column, ChartKind::Line, ChartKind::Pie};
constexpr ChartKinds bars{ChartKind::Bar, ChartKind::Column};
constexpr ChartKinds bar{ChartKind::Bar};
constexpr ChartKinds upright{ChartKind::Column, ChartKind::Line};
constexpr ChartKinds axes{ChartKind::Bar, ChartKind::Column, ChartKind::Line};
constexpr ChartKinds line{ChartKind::Line};
constexpr ChartKinds pie{ChartKind::Pie};
const auto gap = std::nan("");

std::shared_ptr<chart::Chart> createChart(ChartKind kind)
{
    switch (kind) {
        case ChartKind::Bar:
            return chart::BarChart::create();
        case ChartKind::Column:
            return chart::ColumnChart::create();
        case ChartKind::Line:
            return chart::LineChart::create();
        default:
            return chart::PieChart::create();
    }
}

/// Series "S1", "S2" ... over categories "C1", "C2" ...
std::shared_ptr<chart::Chart> makeSeries(ChartKind kind, const Values& values)
{
    const auto number = [](std::size_t i) { return std::u16string(1, static_cast<char16_t>(u'1' + i)); };
    std::vector<std::u16string> categories;
    for (std::size_t i = 0; !values.empty() && i < values.front().size(); ++i)
        categories.push_back(u"C" + number(i));
    auto data = chart::DataSet::create(categories);
    for (std::size_t i = 0; i < values.size(); ++i) appendSeries(*data, u"S" + number(i), values[i]);
    auto chart = createChart(kind);
    chart->setDataSet(data);
    return chart;
}

struct Written {
    std::string chart;
    std::string main;
    std::vector<std::string> warnings;
};

Written write(const std::shared_ptr<chart::Chart>& chart, const ChartOptions& options,
              const ChartData& data = {})
{
    Document document;
    document.addChart(chart, options, data);
    Written written;
    const auto bytes =
        document.toBytes({.warning = [&](const auto& text) { written.warnings.push_back(text); }});
    written.chart = readPart(bytes, chartPart);
    written.main = readPart(bytes, mainPart);
    return written;
}

/// An option as on the command line.
void set(ChartOptions& options, const std::string& name, const std::string& text)
{
    const auto* option = findOption(name);
    setOption(options, *option, readOptionText(*option, text, name), name);
}

ChartOptions makeOptions(const std::map<std::string, std::string>& texts)
{
    ChartOptions options;
    for (const auto& [name, text] : texts) set(options, name, text);
    return options;
}

// --- What each option does ---

struct Row {
    const char* option;
    /// Null for an option that is not given.
    const char* value;
    /// Of the kinds that the option fits.
    ChartKinds kinds;
    /// In the chart part; in the main part when it begins with "//w".
    const char* path;
    const char* expected;
    /// What the option needs beside it.
    std::vector<Label> labels = {};
};

const std::vector<Label> valueLabels = {Label::Value};
const std::vector<Label> twoLabels = {Label::Value, Label::Category};
constexpr auto labelSeparator = "//c:ser[1]/c:dLbls/c:separator";
constexpr auto labelPlace = "//c:ser[1]/c:dLbls/c:dLblPos/@val";
constexpr auto labelFormat = "//c:ser[1]/c:dLbls/c:numFmt/@formatCode";

const Row rows[] = {
    {"width", "2in", basicKinds, "//wp:extent/@cx", "1828800"},
    {"width", "300pt", basicKinds, "//wp:extent/@cx", "3810000"},
    {"height", "2.54cm", basicKinds, "//wp:extent/@cy", "914400"},
    {"height", "80mm", basicKinds, "//wp:extent/@cy", "2880000"},
    {"legend", "Right", basicKinds, "//c:legend/c:legendPos/@val", "r"},
    {"legend", "none", basicKinds, "count(//c:legend)", "0"},
    {"alt-text", "Up & down", basicKinds, "//wp:docPr/@descr", "Up & down"},
    {"alt-text", "a", basicKinds, "//wp:docPr/@descr", "a"},
    {"no-workbook", "", basicKinds, "count(//c:externalData)", "0"},
    {"no-workbook", nullptr, basicKinds, "count(//c:externalData)", "1"},
    {"float", "left", basicKinds, "//wp:anchor/wp:positionH/wp:align", "left"},
    {"float", "right", basicKinds, "//wp:anchor/wp:positionH/wp:align", "right"},
    {"float", "right", basicKinds,
     "//wp:anchor[wp:extent/following-sibling::*[2][self::wp:wrapSquare]]/wp:wrapSquare/@wrapText",
     "bothSides"},
    {"float", nullptr, basicKinds, "count(//wp:anchor)", "0"},

    {"category-title", "Month", basicKinds, "//c:catAx/c:title//a:t", "Month"},
    {"category-title", "a\nb", basicKinds, "//c:catAx/c:title//a:p/a:r/a:t", "a|b"},
    {"category-title", "Month", bar, "//c:catAx/c:title//a:bodyPr/@rot", "-5400000"},
    {"category-title", "Month", upright, "count(//c:catAx/c:title//a:bodyPr/@rot)", "0"},
    {"value-title", "EUR <net>", basicKinds, "//c:valAx/c:title//a:t", "EUR <net>"},
    {"value-title", "USD", basicKinds, "//c:valAx/c:title/c:overlay/@val", "0"},
    {"value-title", "USD", upright, "//c:valAx/c:title//a:bodyPr/@rot", "-5400000"},
    {"value-title", "USD", bar, "count(//c:valAx/c:title//a:bodyPr/@rot)", "0"},
    {"number-format", "0.000", basicKinds, "//c:ser[1]/c:val//c:formatCode", "0.000"},
    {"number-format", "#,##0 \"kg\"", basicKinds, "//c:ser[1]/c:val//c:formatCode", "#,##0 \"kg\""},
    {"number-format", "0.000", basicKinds, "//c:valAx/c:numFmt/@formatCode", "0.000"},
    {"number-format", "[Red]0;-0", basicKinds, "//c:valAx/c:numFmt/@formatCode", "[Red]0;-0"},
    {"number-format", "0.000", basicKinds, "//c:valAx/c:numFmt/@sourceLinked", "0"},
    {"value-min", "-5", basicKinds, "//c:valAx/c:scaling/c:min/@val", "-5"},
    {"value-min", "0.25", basicKinds, "//c:valAx/c:scaling/c:min/@val", "0.25"},
    {"value-max", "2000", basicKinds, "//c:valAx/c:scaling/c:max/@val", "2000"},
    {"value-max", "1e21", basicKinds, "//c:valAx/c:scaling/c:max/@val", "1e+21"},
    {"value-step", "500", basicKinds, "//c:valAx/c:majorUnit/@val", "500"},
    {"value-step", "2.5", basicKinds, "//c:valAx/c:majorUnit/@val", "2.5"},
    {"log", "10", basicKinds, "//c:valAx/c:scaling/c:logBase/@val", "10"},
    {"log", "2.5", basicKinds, "//c:valAx/c:scaling/c:logBase/@val", "2.5"},
    {"log", "2", basicKinds, "//c:catAx/c:crosses/@val", "min"},
    {"reverse", "", bar, "//c:catAx/c:scaling/c:orientation/@val", "minMax"},
    {"reverse", "", upright, "//c:catAx/c:scaling/c:orientation/@val", "maxMin"},
    {"reverse", "", upright, "//c:valAx/c:crosses/@val", "max"},
    {"reverse", nullptr, bar, "//c:catAx/c:scaling/c:orientation/@val", "maxMin"},
    {"reverse", nullptr, bar, "//c:valAx/c:crosses/@val", "max"},
    {"reverse", nullptr, upright, "//c:catAx/c:scaling/c:orientation/@val", "minMax"},
    {"reverse", nullptr, upright, "//c:valAx/c:crosses/@val", "autoZero"},
    {"units", "thousands", basicKinds, "//c:valAx/c:dispUnits[c:dispUnitsLbl]/c:builtInUnit/@val",
     "thousands"},
    {"units", "billions", basicKinds, "//c:valAx/c:dispUnits[c:dispUnitsLbl]/c:builtInUnit/@val", "billions"},
    {"gridlines", "none", basicKinds, "count(//c:majorGridlines)", "0"},
    {"gridlines", "category", basicKinds, "name(//c:majorGridlines/..)", "c:catAx"},
    {"gridlines", "both", basicKinds,
     "count(//c:catAx/c:majorGridlines//a:ln | //c:valAx/c:majorGridlines//a:ln)", "2"},
    {"gridlines", nullptr, basicKinds, "name(//c:majorGridlines/..)", "c:valAx"},
    {"no-value-axis", "", basicKinds, "//c:valAx/c:tickLblPos/@val", "none"},
    {"no-value-axis", nullptr, basicKinds, "//c:valAx/c:tickLblPos/@val", "nextTo"},
    {"tick-labels", "high", basicKinds, "//c:catAx/c:tickLblPos/@val", "high"},
    {"tick-labels", "next", basicKinds, "//c:catAx/c:tickLblPos/@val", "nextTo"},
    {"tick-labels", nullptr, basicKinds, "//c:catAx/c:tickLblPos/@val", "low"},
    {"tick-rotation", "45", basicKinds, "//c:catAx/c:txPr/a:bodyPr/@rot", "-2700000"},
    {"tick-rotation", "-0.5", basicKinds, "//c:catAx/c:txPr/a:bodyPr/@rot", "30000"},
    {"tick-interval", "3", basicKinds, "//c:catAx/c:tickLblSkip/@val", "3"},
    {"tick-interval", "12", basicKinds, "//c:catAx/c:tickLblSkip/@val", "12"},

    {"labels", "value", basicKinds, "//c:ser[1]/c:dLbls/c:showVal/@val", "1"},
    {"labels", "value", basicKinds, "count(//c:ser[1]/c:dLbls/*[@val = 1])", "1"},
    {"labels", "series,category", basicKinds, "//c:ser[1]/c:dLbls/c:showCatName/@val", "1"},
    {"labels", "Series,CATEGORY", basicKinds, "//c:ser[1]/c:dLbls/c:showSerName/@val", "1"},
    {"labels", "series,category", basicKinds, "//c:ser[1]/c:dLbls/c:showVal/@val", "0"},
    {"labels", "percent", pie, "//c:ser[1]/c:dLbls[c:showPercent/@val = 1]/c:numFmt/@formatCode", "0%"},
    {"labels", nullptr, basicKinds, "count(//c:ser/c:dLbls)", "0"},

    {"label-position", "ctr", basicKinds, labelPlace, "ctr", valueLabels},
    {"label-position", "inEnd", bars, labelPlace, "inEnd", valueLabels},
    {"label-position", "inBase", bars, labelPlace, "inBase", valueLabels},
    {"label-position", "outEnd", bars, labelPlace, "outEnd", valueLabels},
    {"label-position", "t", line, labelPlace, "t", valueLabels},
    {"label-position", "b", line, labelPlace, "b", valueLabels},
    {"label-position", "l", line, labelPlace, "l", valueLabels},
    {"label-position", "r", line, labelPlace, "r", valueLabels},
    {"label-position", "bestFit", pie, labelPlace, "bestFit", valueLabels},
    {"label-position", "inEnd", pie, labelPlace, "inEnd", valueLabels},
    {"label-position", "outEnd", pie, labelPlace, "outEnd", valueLabels},
    {"label-position", nullptr, axes, "count(//c:dLblPos)", "0", valueLabels},
    {"label-position", nullptr, pie, labelPlace, "outEnd", valueLabels},
    {"label-separator", "semicolon", basicKinds, labelSeparator, "; ", twoLabels},
    {"label-separator", "newline", basicKinds, labelSeparator, "\n", twoLabels},
    {"label-separator", nullptr, axes, labelSeparator, ", ", twoLabels},
    {"label-separator", nullptr, pie, labelSeparator, "\n", twoLabels},
    {"label-separator", nullptr, basicKinds, "count(//c:separator)", "0", valueLabels},
    {"label-format", "0.0000", basicKinds, labelFormat, "0.0000", valueLabels},
    {"label-format", "0%", basicKinds, labelFormat, "0%", valueLabels},
    {"label-format", "0%", basicKinds, "//c:ser[1]/c:val//c:formatCode", "General", valueLabels},

    {"gap", "0", basicKinds, "//c:barChart/c:gapWidth/@val", "0"},
    {"gap", "500", basicKinds, "//c:barChart/c:gapWidth/@val", "500"},
    {"overlap", "-100", basicKinds, "//c:barChart/c:overlap/@val", "-100"},
    {"overlap", "25", basicKinds, "//c:barChart/c:overlap/@val", "25"},
    {"stacking", "normal", basicKinds, "//c:grouping/@val", "stacked"},
    {"stacking", "percent", basicKinds, "//c:grouping/@val", "percentStacked"},
    {"stacking", "normal", bars, "//c:barChart/c:overlap/@val", "100"},
    {"stacking", "percent", basicKinds, "//c:valAx/c:numFmt/@formatCode", "0%"},
    {"markers", "", line, "//c:ser[2]/c:marker/c:symbol/@val", "circle"},
    {"markers", nullptr, line, "//c:ser/c:marker/c:symbol/@val", "none|none"},
    {"smooth", "", line, "//c:ser/c:smooth/@val", "1|1"},
    {"smooth", nullptr, line, "//c:ser/c:smooth/@val", "0|0"},
    {"blank", "zero", basicKinds, "//c:dispBlanksAs/@val", "zero"},
    {"blank", "connect", basicKinds, "//c:dispBlanksAs/@val", "span"},
    {"blank", nullptr, basicKinds, "//c:dispBlanksAs/@val", "gap"},

    {"colors", "red,#123456", axes, "(//c:ser[2]/c:spPr//a:srgbClr)[1]/@val", "123456"},
    {"colors", "red,#123456", pie, "//c:dPt[2]/c:spPr/a:solidFill/a:srgbClr/@val", "123456"},
    {"palette", "lime", axes, "(//c:ser[2]/c:spPr//a:srgbClr)[1]/@val", "00FF00"},
    {"palette", "red,lime", pie, "//c:dPt/c:spPr/a:solidFill/a:srgbClr/@val", "FF0000|00FF00|FF0000"},
    {"series-colors", "S2=rgb(1,2,3)", axes, "//c:ser/c:spPr//a:srgbClr[1]/@val", "010203"},
    {"series-colors", "C3=lime", pie, "//c:dPt/c:spPr/a:solidFill/a:srgbClr/@val", "00FF00"},
    {"category-colors", "C2=red", bars, "//c:ser[2]/c:dPt/c:spPr/a:solidFill/a:srgbClr/@val", "FF0000"},
    {"category-colors", "C3=lime,C1=red", bars, "//c:ser[1]/c:dPt/c:idx/@val", "0|2"},
    {"dashed", "S2", line, "//c:ser[c:spPr/a:ln/a:prstDash/@val = 'dash']/c:idx/@val", "1"},
    {"dashed", "S1,S2", line, "count(//a:prstDash)", "2"},
    {"start-angle", "90", basicKinds, "//c:pieChart/c:firstSliceAng/@val", "90"},
    {"start-angle", "360", basicKinds, "//c:pieChart/c:firstSliceAng/@val", "360"},
    {"explosion", "25", basicKinds, "//c:ser[1]/c:explosion/@val", "25"},
    {"explosion", "100", basicKinds, "//c:ser[1]/c:explosion/@val", "100"},

    {"font", "Arial", basicKinds, "count(//a:latin[@typeface != \"Arial\"])", "0"},
    {"font", "Noto Sans", basicKinds, "/c:chartSpace/c:txPr//a:cs/@typeface", "Noto Sans"},
    {"font-size", "12", basicKinds, "/c:chartSpace/c:txPr//a:defRPr/@sz", "1200"},
    {"font-size", "10.5", basicKinds, "//c:valAx/c:txPr//a:defRPr/@sz", "1050"},
    {"font-size", nullptr, basicKinds, "/c:chartSpace/c:txPr//a:defRPr/@sz", "900"},
    {"font-size", nullptr, basicKinds, "/c:chartSpace/c:txPr//a:schemeClr/a:lumMod/@val", "65000"},
    {"font-size", "12", basicKinds, "//c:chart/c:title//a:defRPr/@sz", "1800|1800"},
    {"frame", "", basicKinds, "count(/c:chartSpace/c:spPr/a:ln[@w > 0]/a:solidFill)", "1"},
    {"frame", nullptr, basicKinds, "count(/c:chartSpace/c:spPr/a:ln/a:noFill)", "1"},
    {"frame", "", basicKinds, "/c:chartSpace/c:roundedCorners/@val", "0"},
    {"data-table", "", basicKinds, "//c:plotArea/c:dTable/c:showKeys/@val", "1"},
    {"data-table", nullptr, basicKinds, "count(//c:dTable)", "0"},
};

/// Of axes and of bars there are some in some kinds of chart only.
bool canShow(const Row& row, ChartKind kind)
{
    const std::string path = row.path;
    const bool hasAxes = kind != ChartKind::Pie;
    if (!hasAxes && (path.find("Ax") != std::string::npos || path.find("Gridlines") != std::string::npos))
        return false;
    return findOption(row.option)->kinds.contains(kind) && row.kinds.contains(kind);
}

std::string toPart(const Written& written, const std::string& path)
{
    return path.find("wp:") != std::string::npos ? written.main : written.chart;
}

TEST(ChartOptions, ShowInTheDocument)
{
    for (const auto& row : rows)
        for (const auto& kind : kindRows) {
            if (!canShow(row, kind.value)) continue;
            Values values = {{1234.5, 800, 20}, {1, 2, 3}};
            if (kind.value == ChartKind::Pie) values.pop_back();
            auto chart = makeSeries(kind.value, values);
            chart->setTitle(chart::Title::create(u"T"));
            ChartOptions options;
            options.labels = row.labels;
            if (row.value != nullptr) set(options, row.option, row.value);
            const auto written = write(chart, options);
            EXPECT_EQ(readXPath(toPart(written, row.path), row.path), row.expected)
                << kind.name << " " << row.option << " " << (row.value != nullptr ? row.value : "not given");
            EXPECT_EQ(written.warnings, std::vector<std::string>{});
        }
}

TEST(ChartOptions, EachShowsInTwoWays)
{
    std::map<std::string, int> counts;
    for (const auto& row : rows) ++counts[row.option];
    counts["category-format"] = 2;  // Needs data of its own: NumberFormats.OfCategoriesNeedDatesOrNumbers.
    // The options of some types and combinations have tests of their own: ChartTypes.
    const std::set<std::string> ofTypes = {
        "type",           "category-type", "second",     "second-title", "second-format", "second-min",
        "second-max",     "second-step",   "second-log", "x-title",      "x-format",      "x-min",
        "x-max",          "x-step",        "x-log",      "line",         "area",          "column",
        "hole",           "filled",        "totals",     "size-series",  "scatter-style", "drop-lines",
        "high-low-lines", "up-down-bars",  "hidden"};
    for (const auto& option : getOptions())
        if (option.group != OptionGroup::Trends && !ofTypes.contains(option.name)) {
            EXPECT_GE(counts[option.name], 2) << option.name;
        }
}

TEST(ChartOptions, KeepAChartOnItsSide)
{
    const auto written = write(makeSeries(ChartKind::Pie, {{1}}), {.floating = Float::Right});
    const auto path = std::string("//wp:anchor/*");
    std::string names;
    for (int i = 1; i <= 8; ++i)
        names += readXPath(written.main, "name(" + path + "[" + std::to_string(i) + "])") + " ";
    EXPECT_EQ(names,
              "wp:simplePos wp:positionH wp:positionV wp:extent wp:effectExtent wp:wrapSquare wp:docPr "
              "wp:cNvGraphicFramePr ");
    EXPECT_EQ(readXPath(written.main, "count(//wp:inline)"), "0");
}

// --- Numbers ---

TEST(NumberFormats, FollowTheValues)
{
    const double third = 1.0 / 3;
    struct Case {
        Values values;
        std::map<std::string, std::string> options;
        const char* axis;
        const char* labels;
    };
    const Case cases[] = {
        {{{1000, 20, -5}}, {}, "#,##0", "#,##0"},
        {{{1000, 20.5, gap}}, {}, "#,##0.0", "#,##0.0"},
        {{{1.25, 10}}, {}, "#,##0.00", "#,##0.00"},
        {{{third, 1e15 + 0.5, 9e307}}, {}, "#,##0", "#,##0.00"},
        {{{40.25, 1'800.5}}, {}, "#,##0.00", "#,##0.00"},
        {{{0.1 + 0.2, 6}}, {}, "#,##0.0", "#,##0.0"},
        // Gridlines stand between whole numbers.
        {{{1, 2, 3}}, {}, "#,##0.0", "#,##0"},
        {{{1001, 1002, 1004}}, {}, "#,##0", "#,##0"},
        {{{1001, 1002, 1004}}, {{"value-min", "1000"}}, "#,##0.0", "#,##0"},
        {{{5}}, {}, "#,##0", "#,##0"},
        {{{1, 2, 3}, {3, 2, 3}}, {{"stacking", "normal"}}, "#,##0", "#,##0"},
        {{{1, -2}, {2, -3}}, {{"stacking", "normal"}}, "#,##0", "#,##0"},
        {{{1, 2, 3}}, {{"value-max", "10"}}, "#,##0", "#,##0"},
        {{{1, 2, 3}}, {{"value-step", "1"}}, "#,##0", "#,##0"},
        {{{10, 20}}, {{"value-step", "0.25"}}, "#,##0.00", "#,##0"},
        {{{0.5, 100}}, {{"log", "10"}}, "#,##0.0", "#,##0.0"},
        {{{0.05, 0.1}}, {{"log", "2"}}, "General", "General"},
        // Two decimals do not tell the gridlines apart.
        {{{0.001, 0.004}}, {}, "General", "General"},
        {{{1500, 9000}}, {{"units", "thousands"}}, "#,##0.0", "#,##0.0"},
        {{{1500, 9000}}, {{"units", "hundreds"}}, "#,##0", "#,##0"},
        {{{1, 2}}, {{"stacking", "percent"}}, "0%", "#,##0"},
        {{{1, 2}}, {{"stacking", "percent"}, {"number-format", "0.0%"}}, "0.0%", "0.0%"},
        {{{1, 2}}, {{"stacking", "percent"}, {"number-format", "0.0"}}, "0%", "0.0"},
        {{{1, 2}}, {{"number-format", "0.0"}, {"label-format", "0"}}, "0.0", "0"},
        {{{0, 0}}, {}, "#,##0.0", "#,##0"},
        {{{gap}}, {}, "#,##0.0", "#,##0"},
        {{}, {}, "#,##0.0", ""},
    };
    for (const auto& [values, texts, axis, labels] : cases) {
        auto options = makeOptions(texts);
        options.labels = {Label::Value};
        const auto part = write(makeSeries(ChartKind::Column, values), options).chart;
        EXPECT_EQ(readXPath(part, "//c:valAx/c:numFmt/@formatCode"), axis) << testing::PrintToString(values);
        EXPECT_EQ(readXPath(part, "//c:ser[1]/c:dLbls/c:numFmt/@formatCode"), labels)
            << testing::PrintToString(values);
        if (options.numberFormat.empty() && !values.empty()) {
            EXPECT_EQ(readXPath(part, "//c:ser[1]//c:formatCode"), "General");
        }
    }
}

TEST(NumberFormats, OfSeriesShowInCachesAndLabels)
{
    const auto chart = makeSeries(ChartKind::Column, {{1, 2}, {1, 2}, {1, 2}});
    ChartData data(chart->getDataSet());
    data.series = {{}, {.numberFormat = "0%"}};
    const ChartOptions options{.labels = {Label::Value}};
    auto part = write(chart, options, data).chart;
    EXPECT_EQ(readXPath(part, "//c:formatCode"), "General|0%|General");
    EXPECT_EQ(readXPath(part, "//c:ser/c:dLbls/c:numFmt/@formatCode"), "#,##0|0%|#,##0");
    EXPECT_EQ(readXPath(part, "//c:valAx/c:numFmt/@formatCode"), "0%");
    // What the author says of an axis wins.
    const std::pair<ChartOptions, const char*> cases[] = {
        {{.numberFormat = "0.0"}, "0.0|0.0|0.0"},
        {{.numberFormat = "0.0", .second = {"S2"}}, "0.0|0.0|0%"},
        {{.numberFormat = "0.0", .second = {"S3"}}, "0.0|0.0|0.0"},
        {{.second = {"S2"}, .secondFormat = "0"}, "General|General|0"},
        {{.second = {"S3"}, .secondFormat = "0"}, "General|0%|0"},
    };
    for (const auto& [given, codes] : cases)
        EXPECT_EQ(readXPath(write(chart, given, data).chart, "//c:formatCode"), codes);
}

TEST(NumberFormats, OfSeriesShowNoDecimalsBesideThousands)
{
    const std::pair<const char*, const char*> cases[] = {
        {"#,##0.00 \"S.0\"", "#,##0 \"S.0\""},
        {"#,##0.0##;[Red]-0.0", "#,##0;[Red]-0"},
        {"0.0,", "0.0,"},
        {"0.00E+00", "0.00E+00"},
        {".00", ".00"},
        {"General", "General"},
    };
    for (const auto& [own, axis] : cases) {
        const auto chart = makeSeries(ChartKind::Column, {{1500, 90'000}});
        ChartData data(chart->getDataSet());
        data.series = {{.numberFormat = own}};
        const auto part = write(chart, {.labels = {Label::Value}}, data).chart;
        EXPECT_EQ(readXPath(part, "//c:valAx/c:numFmt/@formatCode"), axis);
        EXPECT_EQ(readXPath(part, "//c:ser/c:dLbls/c:numFmt/@formatCode"), own);
    }
}

TEST(Labels, OfTheChartTreeWinOverOptions)
{
    const auto chart = makeSeries(ChartKind::Column, {{1, 2.5}, {1, 2}});
    const auto series = chart->getDataSet()->getSeries(0);
    auto format = chart::DataLabelFormat::create();
    format->getOptions()->getContentOptions()->setContainsValue(false);
    series->setLabelFormat(format);
    series->getPoint(1)->setLabelFormat(chart::DataLabelFormat::create());
    const auto written = write(chart, {.labels = {Label::Series}, .labelPosition = LabelPosition::Center});
    EXPECT_EQ(readXPath(written.chart, "//c:ser/c:dLbls/c:showSerName/@val"), "0|1");
    EXPECT_EQ(readXPath(written.chart, "//c:ser/c:dLbls/c:showCatName/@val"), "1|0");
    EXPECT_EQ(readXPath(written.chart, "//c:ser/c:dLbls/c:dLblPos/@val"), "ctr|ctr");
    EXPECT_EQ(readXPath(written.chart, "//c:ser/c:dLbls/c:numFmt/@formatCode"), "#,##0.0|#,##0.0");
    EXPECT_EQ(readXPath(written.chart, "//c:dLbl/*[self::c:dLblPos or self::c:showSerName]/@val"), "ctr|0");
    EXPECT_EQ(readXPath(written.chart, "//c:dLbl/c:numFmt/@formatCode"), "#,##0.0");
}

TEST(Labels, AreMissedWhereOnlyTheirPlaceIsGiven)
{
    const auto chart = makeSeries(ChartKind::Column, {{1}});
    EXPECT_EQ(write(chart, {.labelFormat = "0"}).warnings,
              std::vector<std::string>{
                  "chart 1: label-position and label-format are for data labels, and the chart has "
                  "none; say what they show (labels value)."});
}

TEST(NumberFormats, OfCategoriesNeedDatesOrNumbers)
{
    const auto chart = makeSeries(ChartKind::Column, {{1, 2}});
    ChartData data(chart->getDataSet());
    auto written = write(chart, {.categoryFormat = "mmm yy"}, data);
    EXPECT_EQ(written.warnings, std::vector<std::string>{
                                    "chart 1: category-format is for categories that are dates or numbers; "
                                    "these are texts."});
    data.categoryKind = CategoryKind::Date;
    data.categoryValues = {45000, 45031};
    written = write(chart, {.categoryFormat = "mmm yy"}, data);
    EXPECT_EQ(written.warnings, std::vector<std::string>{});
    EXPECT_EQ(readXPath(written.chart, "//c:cat//c:v"), "Mar 23|Apr 23");
}

TEST(ValueAxis, StartsAtZeroWhereBarsShowItsNumbers)
{
    using enum ChartKind;
    const std::tuple<ChartKind, Values, std::map<std::string, std::string>, const char*> cases[] = {
        {Column, {{1001, 1050}}, {}, "0"},
        {Bar, {{-1001, -1050}}, {}, "0"},
        {Column, {{1001, 1050}}, {{"type", "area"}}, "0"},
        {Column, {{1001, 1050}, {10, 20}}, {{"stacking", "normal"}}, "0"},
        {Line, {{1001, 1050}}, {}, ""},
        {Line, {{1001, 1050}, {1002, 1003}}, {{"column", "S2"}}, "0"},
        // Word processors start at 0 themselves, and below it when the data is changed.
        {Column, {{10, 1050}}, {}, ""},
        {Column, {{1001, 1050}}, {{"value-min", "1000"}}, "1000"},
        {Column, {{1001, 1050}}, {{"value-max", "-5"}}, "-5"},
        {Column, {{1001, 1050}}, {{"log", "10"}}, ""},
        {Column, {{1001, 1050}}, {{"stacking", "percent"}}, ""},
        {Bar, {{45'000, 45'010}, {5, 6}}, {{"stacking", "normal"}, {"hidden", "S1"}}, ""},
    };
    for (const auto& [kind, values, texts, end] : cases)
        EXPECT_EQ(readXPath(write(makeSeries(kind, values), makeOptions(texts)).chart,
                            "//c:valAx/c:scaling/*[self::c:min or self::c:max]/@val"),
                  end)
            << testing::PrintToString(values) << testing::PrintToString(texts);
    const auto second = makeOptions({{"second", "S2"}, {"line", "S1"}});
    EXPECT_EQ(readXPath(write(makeSeries(Column, {{1, 2}, {90, 91}}), second).chart,
                        "//c:valAx[c:axPos/@val = 'r']/c:scaling/c:min/@val"),
              "0");
}

// --- Points and legends ---

TEST(Markers, ShowPointsThatDrawNoLine)
{
    struct Case {
        std::vector<double> values;
        const char* blank;
        const char* marked;
    };
    const Case cases[] = {
        {{1, 2, 3}, "gap", ""},       {{1, gap, 3, 4, gap, 6}, "gap", "0|5"},
        {{gap, 2, gap}, "gap", "1"},  {{5}, "gap", "0"},
        {{gap, gap}, "gap", ""},      {{}, "gap", ""},
        {{1, gap, 3}, "connect", ""}, {{gap, 2, gap}, "connect", "1"},
        {{gap, 2, gap}, "zero", ""},  {{5}, "zero", "0"},
    };
    for (const auto& [values, blank, marked] : cases) {
        const auto part = write(makeSeries(ChartKind::Line, {values}), makeOptions({{"blank", blank}})).chart;
        const std::string points = "//c:dPt[c:marker/c:symbol/@val = 'circle']";
        EXPECT_EQ(readXPath(part, points + "/c:idx/@val"), marked) << testing::PrintToString(values) << blank;
        EXPECT_EQ(readXPath(part, "count(" + points + "/c:marker/c:spPr/a:solidFill/*)"),
                  readXPath(part, "count(" + points + ")"));
    }
}

TEST(Markers, StandBesideThePointsOfTheAuthor)
{
    const auto chart = makeSeries(ChartKind::Line, {{1, gap, 3, gap, 5, 6, gap, 8}});
    for (const std::size_t own : {1U, 2U, 5U})
        chart->getDataSet()->getSeries(0)->getPoint(own)->setFormat(
            chart::DataPointShapeFormat::create(u"#ff0000", u"#00ff00"));
    const auto part = write(chart, {}).chart;
    EXPECT_EQ(readXPath(part, "//c:dPt/c:idx/@val"), "0|1|2|5|7");
    EXPECT_EQ(readXPath(part, "//c:dPt[c:idx/@val = 2]/c:marker/c:spPr/a:solidFill/a:srgbClr/@val"),
              "FF0000");
    EXPECT_EQ(readXPath(part, "//c:dPt[c:marker]/c:idx/@val"), "0|2|7");
}

TEST(Legend, StandsWhereItLeavesRoom)
{
    const std::string crowded =
        "chart 1: the legend takes more than a third of the chart; make the chart larger, shorten the names, "
        "or leave "
        "the legend out (legend none).";
    const std::string sliced =
        "chart 1: the pie has 13 slices; more than 12 are hard to tell apart. Add up the smallest, or use a "
        "bar chart.";
    struct Case {
        ChartKind kind;
        std::size_t entries;
        std::size_t nameLength;
        std::map<std::string, std::string> options;
        const char* place;
        std::vector<std::string> warnings;
    };
    const Case cases[] = {
        {ChartKind::Column, 1, 5, {}, "", {}},
        {ChartKind::Column, 2, 5, {}, "b", {}},
        {ChartKind::Column, 8, 10, {}, "b", {}},
        {ChartKind::Line, 16, 20, {}, "r", {}},
        {ChartKind::Line, 16, 20, {{"font-size", "20"}}, "b", {crowded}},
        {ChartKind::Line, 16, 20, {{"height", "9in"}}, "b", {}},
        {ChartKind::Bar, 40, 30, {}, "b", {crowded}},
        {ChartKind::Bar, 40, 30, {{"legend", "right"}}, "r", {}},
        {ChartKind::Bar, 3, 1000, {}, "b", {crowded}},
        {ChartKind::Pie, 12, 5, {}, "b", {}},
        {ChartKind::Pie, 13, 5, {}, "b", {sliced}},
        {ChartKind::Pie, 1, 0, {}, "b", {}},
        {ChartKind::Pie, 0, 0, {}, "b", {}},
    };
    for (const auto& [kind, entries, nameLength, texts, place, warnings] : cases) {
        const bool isPie = kind == ChartKind::Pie;
        auto chart =
            makeSeries(kind, Values(isPie ? 1 : entries, std::vector<double>(isPie ? entries : 1, 1.0)));
        const std::u16string name(nameLength, u'n');
        chart->getDataSet()->setCategories(std::vector<std::u16string>(isPie ? entries : 1, name));
        const auto list = chart->getDataSet()->getSeriesList();
        for (const auto& series : *list) series->setName(name);
        const auto written = write(chart, makeOptions(texts));
        EXPECT_EQ(readXPath(written.chart, "//c:legendPos/@val"), place) << entries << " entries";
        EXPECT_EQ(written.warnings, warnings) << entries << " entries";
    }
}

// --- What is refused ---

TEST(ChartOptions, AreRefusedInASentence)
{
    const auto control = [](const std::string& place) {
        return "chart 1, " + place +
               " (U+0001) cannot stand in a document; only tab and line break of the control characters can.";
    };
    const auto format = [](const std::string& code, const std::string& sentence) {
        return "number-format: \"" + code + "\" is not a number format; " + sentence;
    };
    using enum LabelPosition;
    struct Case {
        ChartKind kind;
        ChartOptions options;
        std::string sentence;
    };
    const Case cases[] = {
        {ChartKind::Pie,
         {.valueTitle = "EUR"},
         "value-title is for charts other than pie, doughnut or radar; this is a pie chart."},
        {ChartKind::Line, {.gap = 10}, "gap is for column, bar or waterfall charts; this is a line chart."},
        {ChartKind::Bar, {.gap = 501}, "gap: expected a whole number from 0 to 500, got 501."},
        {ChartKind::Bar, {.valueMin = NAN}, "value-min: expected a number, got NaN."},
        {ChartKind::Bar, {.valueMin = 5, .valueMax = 5}, "value-min must be below value-max; got 5 and 5."},
        {ChartKind::Bar,
         {.valueMin = 0, .valueMax = 1e6, .valueStep = 1},
         "value-step is 1; from 0 to 1e+06 there can be at most 1000 steps."},
        {ChartKind::Line, {.valueStep = 0}, "value-step: expected a number above 0, got 0."},
        {ChartKind::Column,
         {.overlap = -50, .stacking = Stacking::Normal},
         "overlap is 100 where bars are stacked; leave it out."},
        {ChartKind::Column,
         {.log = 10, .stacking = Stacking::Percent},
         "stacking percent shows shares from 0 to 100 %; a logarithmic axis (log) has no 0."},
        {ChartKind::Line, {.log = 1.5}, "log: expected a number from 2 to 1000, got 1.5."},
        {ChartKind::Line,
         {.valueMin = 0, .log = 10},
         "value-min is 0; a logarithmic axis (log) shows numbers above 0."},
        {ChartKind::Line,
         {.valueStep = 10, .log = 10},
         "value-step is for a linear axis; the gridlines of a logarithmic one (log) stand at the "
         "powers of its "
         "base."},
        {ChartKind::Line,
         {.log = 10},
         "chart 1, series 2 (\"S2\"), point 1: the value is 0; a logarithmic axis (log) shows numbers "
         "above 0."},
        {ChartKind::Column,
         {.labelPosition = Top},
         "label-position: the labels of a column chart stand at ctr, inEnd, inBase or outEnd, not at t."},
        {ChartKind::Bar,
         {.labelPosition = OutsideEnd, .stacking = Stacking::Normal},
         "label-position: the labels of a stacked bar chart stand at ctr, inEnd or inBase, not at outEnd."},
        {ChartKind::Line,
         {.labelPosition = InsideEnd, .stacking = Stacking::Percent},
         "label-position: the labels of a stacked line chart stand at t, b, l, r or ctr, not at inEnd."},
        {ChartKind::Pie,
         {.labelPosition = InsideBase},
         "label-position: the labels of a pie chart stand at bestFit, ctr, inEnd or outEnd, not at inBase."},
        {ChartKind::Line,
         {.labels = {Label::Value, Label::Percent}},
         "labels: percent is for pie and doughnut charts; the labels of a line chart say value, category or "
         "series."},
        {ChartKind::Bar,
         {.labels = {Label::Value}, .labelSeparator = LabelSeparator::Space},
         "label-separator stands between what labels say; name two things or more (labels category,value)."},
        {ChartKind::Bar,
         {.hidden = {"S1"}},
         "hidden is for series that carry others; stack them (stacking normal)."},
        {ChartKind::Column,
         {.dashed = {"S2"}},
         "chart 1, series 2 (\"S2\"): it is not drawn as a line, and dashed is for lines."},
        {ChartKind::Bar,
         {.categoryColors = {{"C2", "red"}}},
         "chart 1: category-colors: there is no category \"C2\"; the categories are \"C1\"; did you mean "
         "\"C1\"?"},
        {ChartKind::Bar, {.numberFormat = "0 \"kg"}, format("0 \"kg", "a quote stays open.")},
        {ChartKind::Bar, {.numberFormat = "[Red0"}, format("[Red0", "a bracket stays open.")},
        {ChartKind::Bar, {.numberFormat = "0]"}, format("0]", "a bracket closes that was not open.")},
        {ChartKind::Bar, {.numberFormat = "0\\"}, format("0\\", "a character is missing behind \\.")},
        {ChartKind::Bar,
         {.numberFormat = "0;0;0;@;0"},
         format("0;0;0;@;0", "expected at most 4 parts with ; between, got 5.")},
        {ChartKind::Bar,
         {.numberFormat = "0 EUR"},
         format("0 EUR", "text in it stands in quotes, as in #,##0 \"kg\", and \"U\" does not.")},
        {ChartKind::Bar,
         {.categoryFormat = std::string(256, '0')},
         "category-format: expected a number format of at most 255 characters, got 256."},
        {ChartKind::Pie,
         {.labelFormat = "\""},
         "label-format: \"\"\" is not a number format; a quote stays open."},
        {ChartKind::Bar, {.categoryTitle = "a\x01"}, control("category-title: character 2")},
        {ChartKind::Bar, {.valueTitle = "\x01"}, control("value-title: character 1")},
        {ChartKind::Bar, {.numberFormat = "0\x01"}, control("number-format: character 2")},
        {ChartKind::Bar,
         {.labels = {Label::Value}, .labelFormat = "\x01"},
         control("label-format: character 1")},
        {ChartKind::Pie, {.font = "a\x01"}, control("font: character 2")},
        {ChartKind::Bar,
         {.font = std::string(32, 'f')},
         "font: expected the name of a typeface, of at most 31 characters, got 32."},
        {ChartKind::Bar,
         {.seriesColors = {{"S1", "red"}, {"S2", "red"}, {"S1", "blue"}}},
         "series-colors: \"S1\" has two colours; give one for each name."},
    };
    for (const auto& [kind, options, sentence] : cases)
        EXPECT_EQ(thrownText([&, &kind = kind, &options = options] {
                      write(makeSeries(kind, {{1}, {0}}), options);
                  }),
                  sentence);
}

TEST(ChartOptions, OfAxesLeaveOutWhatNobodyCouldRead)
{
    const auto chart = makeSeries(ChartKind::Column, {{1e6, 2}});
    const auto written = write(chart, {.valueStep = 0.5});
    EXPECT_EQ(readXPath(written.chart, "count(//c:majorUnit)"), "0");
    EXPECT_EQ(
        written.warnings,
        std::vector<std::string>{"chart 1: value-step is 0.5, which gives more than 1000 gridlines for these "
                                 "values. It is left out."});
}

TEST(NumberFormats, AreTakenAsCellsTakeThem)
{
    for (const auto* format : {"", "General", "#,##0.00;[Red]-#,##0.00;\"none\";@", "0.0%", "0.00E+00",
                               "# ?/?", "_-* #,##0\\ \"]\"", "mmm yy", "[$-409]d. mmmm yyyy;@", "h:mm AM/PM",
                               "[h]:mm", "0 \xE2\x82\xAC", "\\k\\g 0", "ggge"})
        EXPECT_NO_THROW(checkOptions({.numberFormat = format}, ChartKind::Bar)) << format;
}

TEST(ChartOptions, RefuseMoreThanASheetHoldsBeforeTheWork)
{
    const auto point = chart::DataPoint::create(1.0);
    const auto series = chart::DataSeries::create(u"S");
    auto wide = chart::DataSet::create();
    for (int i = 0; i < 16'384; ++i) wide->appendSeries(series);
    const auto tall = chart::DataSet::create();
    const auto column = chart::DataSeries::create(u"S");
    for (int i = 0; i < 1'048'576; ++i) column->appendPoint(point);
    tall->appendSeries(column);
    const std::pair<std::shared_ptr<chart::DataSet>, const char*> cases[] = {
        {wide, "chart 1: a chart takes at most 16383 series, got 16384."},
        {tall, "chart 1: a series takes at most 1048575 points, got 1048576."}};
    for (const auto& [data, sentence] : cases) {
        const auto chart = createChart(ChartKind::Line);
        chart->setDataSet(data);
        EXPECT_EQ(thrownText([&, &chart = chart] { write(chart, {}); }), sentence);
    }
}

}  // namespace
}  // namespace quillon::report
