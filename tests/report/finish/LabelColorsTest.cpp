#include <gtest/gtest.h>

#include <cmath>
#include <string>
#include <vector>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/PatternFillFormat.h"
#include "chart/model/PieChart.h"
#include "report/document/Document.h"
#include "report/fill/Placeholders.h"
#include "report/options/Options.h"
#include "report/package/ThemeColors.h"
#include "tests/report/TestFolder.h"
#include "tests/report/finish/FinishedPart.h"

namespace quillon::report {
namespace {

constexpr auto gap = std::numeric_limits<double>::quiet_NaN();

using Values = std::vector<double>;
using Texts = std::vector<std::pair<const char*, const char*>>;

ChartOptions makeOptions(const Texts& texts)
{
    ChartOptions options{.width = "12cm", .height = "10cm"};
    for (const auto& [name, text] : texts) {
        const auto* option = findOption(name);
        setOption(options, *option, readOptionText(*option, text, name), name);
    }
    return options;
}

/// Of the labels of the first series, and behind them those of its single points, with their positions.
std::string listColors(const MarkupReader& markup)
{
    const auto color = [&markup](const std::string& labels) {
        const auto found = markup.find(labels + "/c:txPr//a:schemeClr/@val");
        return found == "bg1" ? "white" : found == "tx1" ? "black" : "grey";
    };
    std::string colors = color("c:ser[1]/c:dLbls");
    const auto points = markup.list("//c:ser[1]/c:dLbls/c:dLbl/c:idx/@val");
    for (std::size_t i = 0; i < points.size(); ++i)
        colors += " " + points[i] + " " + color("c:ser[1]/c:dLbls/c:dLbl[" + std::to_string(i + 1) + "]");
    return colors;
}

template <typename Type>
std::string findColors(const Values& values, const Texts& texts, const ThemeColors& theme = {})
{
    const auto chart = makeChart<Type>(2, values);
    return listColors(
        MarkupReader(makeChartParts(*chart, makeOptions(texts), 1, "rId1", {}, {}, theme).chart));
}

TEST(LabelColors, SuitTheFillThatTheLabelStandsOn)
{
    const auto column = [](const char* color) {
        return findColors<chart::ColumnChart>(
            {8, 9}, {{"labels", "value"}, {"label-position", "ctr"}, {"gap", "50"}, {"colors", color}});
    };
    for (const auto* dark : {"black", "navy", "#4472C4", "#ED7D31", "#70AD47", "#999999"})
        EXPECT_EQ(column(dark), "white") << dark;
    for (const auto* light : {"white", "#FFC000", "#A5A5A5", "lime", "#BDD7EE"})
        EXPECT_EQ(column(light), "black") << light;
}

TEST(LabelColors, AreThoseOfPaperWhereLabelsStandOnIt)
{
    const std::tuple<Values, Texts, const char*> columns[] = {
        {{8, 9}, {}, "grey"},
        {{8, 9}, {{"label-position", "outEnd"}}, "grey"},
        {{8, 9}, {{"label-position", "inBase"}}, "white"},
        {{8, 9}, {{"stacking", "normal"}}, "white"},
        {{8, 9}, {{"type", "line"}, {"label-position", "ctr"}}, "grey"},
        // A label that is longer than its bar stands partly on paper, unless others are above and below.
        {{8, 0.1, 9, gap}, {{"label-position", "inEnd"}}, "white 1 grey"},
        {{-8, -0.1}, {{"label-position", "inEnd"}}, "white 1 grey"},
        {{8, 0.1, 9}, {{"stacking", "normal"}}, "white"},
        {{8, 0.1, 9}, {{"log", "10"}, {"label-position", "inEnd"}}, "white"},
        {{8, 9}, {{"label-position", "ctr"}, {"label-format", "0.000000000000000000"}}, "grey"},
        {{8, 9}, {{"label-position", "ctr"}, {"font-size", "120"}}, "grey"},
        {Values(60, 8), {{"label-position", "ctr"}}, "grey"},
        {{8, 9}, {{"label-position", "ctr"}, {"category-colors", "c=yellow"}}, "black"},
    };
    for (auto [values, texts, colors] : columns) {
        texts.emplace_back("labels", "value");
        texts.emplace_back("gap", "50");
        if (texts.front().second == std::string("line")) texts.pop_back();
        EXPECT_EQ(findColors<chart::ColumnChart>(values, texts), colors) << testing::PrintToString(texts);
    }
    EXPECT_EQ(
        findColors<chart::BarChart>({80'000, 10'000}, {{"labels", "value"}, {"label-position", "inEnd"}}),
        "white");
    EXPECT_EQ(findColors<chart::BarChart>({80'000, 1000}, {{"labels", "value"}, {"label-position", "inEnd"}}),
              "white 1 grey");
}

TEST(LabelColors, OfSlicesDifferFromSliceToSlice)
{
    const std::tuple<Values, Texts, const char*, const char*> cases[] = {
        {{5, 4, 3}, {{"labels", "percent"}}, "white 2 black", "inEnd"},
        {{5, 4, 3, 1},
         {{"labels", "percent"}, {"colors", "navy,yellow,yellow,yellow"}},
         "black 0 white",
         "inEnd"},
        {{5, 4, 0.1}, {{"labels", "percent"}}, "grey", "outEnd"},
        {{5, 4, 0}, {{"labels", "value"}}, "grey", "outEnd"},
        {{5, gap, 4}, {{"labels", "value"}}, "white 2 black", "inEnd"},
        {{5, 4, 0.1}, {{"labels", "percent"}, {"label-position", "ctr"}}, "white 2 grey", "ctr"},
        {{5, 4, 3}, {{"labels", "percent"}, {"label-position", "bestFit"}}, "grey", "bestFit"},
        {{5, 4, 1}, {{"labels", "category,percent"}}, "grey", "outEnd"},
        {{5, 4, 1}, {{"labels", "percent"}, {"type", "doughnut"}}, "white 2 black", "-"},
        {{5, 4, 1}, {{"labels", "category,percent"}, {"type", "doughnut"}}, "grey", "-"},
    };
    for (const auto& [values, texts, colors, position] : cases) {
        const FinishedPart part(makeChart<chart::PieChart>(1, values), makeOptions(texts));
        EXPECT_EQ(listColors(MarkupReader(part.getBytes())), colors) << testing::PrintToString(texts);
        EXPECT_EQ(part.find("c:ser/c:dLbls/c:dLblPos/@val"), position);
    }
}

TEST(LabelColors, FollowTransparencyAndRoundsOfAccents)
{
    const auto write = [](const std::shared_ptr<chart::DataSeriesShapeFormat>& format, std::size_t series) {
        const auto chart = makeChart<chart::ColumnChart>(series + 1, {8, 9});
        chart->getDataSet()->getSeries(series)->setFormat(format);
        const FinishedPart part(chart, makeOptions({{"labels", "value"}, {"stacking", "normal"}}));
        return part.find("c:ser[" + std::to_string(series + 1) + "]/c:dLbls/c:txPr//a:schemeClr/@val");
    };
    const auto faint = chart::DataSeriesShapeFormat::create(u"navy");
    faint->getFill()->setTransparency(80);
    EXPECT_EQ(write(faint, 0), "tx1");
    faint->getFill()->setTransparency(20);
    EXPECT_EQ(write(faint, 0), "bg1");
    const auto striped = chart::DataSeriesShapeFormat::create(u"navy");
    striped->setFill(chart::PatternFillFormat::create(u"navy"));
    EXPECT_EQ(write(striped, 0), "bg1");
    // The fourth accent is light; at 60 % of its lightness it is dark, at 60 % and 40 % more it is light
    // again.
    const std::pair<std::size_t, const char*> rounds[] = {
        {3, "tx1"}, {9, "bg1"}, {24, "tx1"}, {27, "tx1"}, {33, "bg1"}};
    for (const auto& [position, color] : rounds) EXPECT_EQ(write(nullptr, position), color) << position;
}

TEST(LabelColors, OfAPointWithALabelOfItsOwnSuitIt)
{
    const auto chart = makeChart<chart::ColumnChart>(1, {8, 9, 7});
    chart->getDataSet()->getSeries(0)->getPoint(1)->setLabelFormat(chart::DataLabelFormat::create());
    chart->getDataSet()->getSeries(0)->getPoint(0)->setFormat(chart::DataPointShapeFormat::create(u"yellow"));
    const FinishedPart part(chart,
                            makeOptions({{"label-position", "ctr"}, {"gap", "50"}, {"labels", "series"}}));
    EXPECT_EQ(listColors(MarkupReader(part.getBytes())), "white 0 black 1 white");
    EXPECT_EQ(part.find("c:dLbl/c:showCatName/@val"), "0 1");
}

TEST(LabelColors, FollowTheThemeOfTheDocument)
{
    const Texts texts = {{"labels", "value"}, {"stacking", "normal"}};
    ThemeColors theme;
    EXPECT_EQ(findColors<chart::ColumnChart>({8, 9}, texts, theme), "white");
    theme.accents[0] = 0xFFEE88;
    EXPECT_EQ(findColors<chart::ColumnChart>({8, 9}, texts, theme), "black");

    Document document;
    EXPECT_EQ(readThemeColors(readPart(document.toBytes(), "word/theme/theme1.xml")).accents,
              ThemeColors().accents);
    const auto read = [](const std::string& accent) {
        return readThemeColors(
                   R"(<a:theme xmlns:a="http://schemas.openxmlformats.org/drawingml/2006/main"><a:themeElements>)"
                   R"(<a:clrScheme>)" +
                   accent + "</a:clrScheme></a:themeElements></a:theme>")
            .accents[1];
    };
    EXPECT_EQ(read(R"(<a:accent2><a:srgbClr val="0a0B0c"/></a:accent2>)"), 0x0A0B0CU);
    EXPECT_EQ(read(R"(<a:accent2><a:sysClr val="window" lastClr="010203"/></a:accent2>)"), 0x010203U);
    for (const auto* damaged :
         {"", "<a:accent2/>", R"(<a:accent2><a:srgbClr val="12345G"/></a:accent2>)", "<a:accent2>"})
        EXPECT_EQ(read(damaged), 0xED7D31U) << damaged;
}

TEST(LabelColors, FollowTheThemeOfADocumentThatExists)
{
    Document plain;
    plain.addParagraph("{{sales}}");
    Package package(plain.toBytes());
    constexpr auto part = "word/theme/theme1.xml";
    auto theme = package.getPart(part);
    theme.replace(theme.find("4472C4"), 6, "FFEE88");
    package.setPart(part, theme);
    const auto chart = makeChart<chart::ColumnChart>(1, {8, 9});
    const auto options = makeOptions({{"labels", "value"}, {"stacking", "normal"}, {"width", "10cm"}});

    const TestFolder folder;
    writeText(folder / "look.docx", package.toBytes());
    Document like(folder / "look.docx");
    like.addChart(chart, options);
    EXPECT_EQ(listColors(MarkupReader(readPart(like.toBytes(), "word/charts/chart1.xml"))), "black");

    auto damaged = package;
    damaged.setPart(part, "<a:theme>");
    insertChart(damaged, "sales", {*chart, options, {}, {}});
    EXPECT_EQ(listColors(MarkupReader(damaged.getPart("word/charts/chart1.xml"))), "white");
    insertChart(package, "sales", {*chart, options, {}, {}});
    EXPECT_EQ(listColors(MarkupReader(package.getPart("word/charts/chart1.xml"))), "black");
}

}  // namespace
}  // namespace quillon::report
