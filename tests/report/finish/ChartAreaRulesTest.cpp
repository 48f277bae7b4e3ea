#include <gtest/gtest.h>

#include "chart/model/ColumnChart.h"
#include "chart/model/PieChart.h"
#include "chart/model/PieChartDataSeriesFormatOptions.h"
#include "tests/ThrownText.h"
#include "tests/report/MarkupReader.h"
#include "tests/report/finish/FinishedPart.h"

// What stands around the series: the title, the plot area, and how a pie is laid out.

namespace quillon::report {
namespace {

using chart::PieChartDataSeriesFormatOptions;

constexpr auto runs = "c:title/c:tx/c:rich/a:p/a:r/";

TEST(Titles, HaveAllRunsAndTheirColours)
{
    auto chart = makeChart<chart::ColumnChart>();
    const auto title = chart::Title::create(u"Sales ");
    const auto text = title->getText();
    text->appendText(chart::Text::create(u"and "))->setColor(chart::Color::create(u"#000000"));
    text->appendText(nullptr);
    text->appendText(chart::Text::create(u"costs "))->setColor(chart::Color::create(u"nonsense"));
    text->appendText(chart::Text::create(u"2026"))->setColor(nullptr);
    chart->setTitle(title);
    const std::string color = std::string(runs) + "a:rPr/a:solidFill/a:srgbClr/@val";
    const FinishedPart plain(chart);
    EXPECT_EQ(plain.find(std::string(runs) + "a:t"), "Sales  and  costs  2026");
    EXPECT_EQ(plain.find(color), "000000");
    EXPECT_EQ(plain.getWarnings(),
              std::vector<std::string>{
                  "chart 1, title: \"nonsense\" is not a colour; expected a colour name, #rrggbb, "
                  "or rgb(r,g,b) with numbers up to 255. The default is used."});
    text->setColor(chart::Color::create(u"red"));
    EXPECT_EQ(FinishedPart(chart).find(color), "FF0000 000000 FF0000 FF0000");
    EXPECT_NE(makeChartParts(*chart, {}, 1, "rId1").run.find("Column chart: Sales and costs 2026;"),
              std::string::npos);
    text->appendText(chart::Text::create(u"\x01"));
    EXPECT_EQ(thrownText([&] { FinishedPart{chart}; }).substr(0, 45),
              "chart 1, title: character 1 (U+0001) cannot s");
}

TEST(Titles, HaveABreakBetweenLines)
{
    auto chart = makeChart<chart::ColumnChart>();
    const auto title = chart::Title::create(u"Sales\r\nin\n");
    title->getText()->appendText(chart::Text::create(u"2026"))->setColor(chart::Color::create(u"red"));
    chart->setTitle(title);
    const auto part = makeChartParts(*chart, {}, 1, "rId1").chart;
    const std::string paragraph = "//c:title/c:tx/c:rich/a:p/";
    EXPECT_EQ(readXPath(part, paragraph + "a:r/a:t"), "Sales|in||2026");
    EXPECT_EQ(readXPath(part, "count(" + paragraph + "a:br)"), "2");
    EXPECT_EQ(readXPath(part, "name(" + paragraph + "a:r[2]/preceding-sibling::*[1])"), "a:br");
    EXPECT_EQ(readXPath(part, paragraph + "a:r[.='2026']//a:srgbClr/@val"), "FF0000");
    EXPECT_EQ(readXPath(part, "count(" + paragraph + "a:r//a:srgbClr)"), "1");
}

TEST(PlotAreas, StandWhereTheyAreTold)
{
    // Of a chart of 10 by 10 cm: the lengths, and the layout or the sentence that refuses them.
    const std::tuple<std::array<const char16_t*, 4>, std::string> cases[] = {
        {{u"", u"", u"", u""}, "- - - -"},
        {{u"1cm", u"20mm", u"3cm", u"4cm"}, "0.1 0.2 0.4 0.3"},
        {{u"2cm", u"", u"", u""}, "0.2 0.05 0.75 0.8"},
        {{u"", u"", u"", u"95mm"}, "0.05 0.05 0.95 0.8"},
        {{u"", u"10cm", u"", u""}, "0.1 1 0.85 0"},
        {{u"9.9cm", u"", u"", u"0.1cm"}, "0.99 0.05 0.01 0.8"},
        {{u"1", u"", u"", u""},
         "plot area, X: expected one of the units cm, mm, in, pt after the number, as in 15cm, got \"1\"."},
        {{u"", u"half", u"", u""},
         "plot area, Y: expected a number followed by cm, mm, in or pt, as in 15cm, got \"half\"."},
        {{u"", u"", u"-1cm", u""},
         "plot area, Height: expected a length inside the chart, whose height is 10cm, got \"-1cm\"."},
        {{u"nancm", u"", u"", u""},
         "plot area, X: expected a length inside the chart, whose width is 10cm, got \"nancm\"."},
        {{u"", u"", u"", u"10.1cm\x01"},
         "plot area, Width: expected one of the units cm, mm, in, pt after the number, as in 15cm, got "
         "\"10.1cm_x0001_\"."},
        {{u"7cm", u"", u"", u"4cm"},
         "plot area, Width: \"4cm\" from \"7cm\" on ends outside the chart, whose width is 10cm."},
    };
    for (const auto& [lengths, expected] : cases) {
        auto chart = makeChart<chart::ColumnChart>();
        chart->setPlotArea(chart::PlotArea::create(lengths[0], lengths[1], lengths[2], lengths[3]));
        std::string layout;
        const auto error = thrownText([&] {
            const FinishedPart part(chart);
            for (const auto* name : {"x", "y", "w", "h"})
                layout += (layout.empty() ? "" : " ") +
                          part.find(std::string("c:manualLayout/c:") + name + "/@val");
        });
        EXPECT_EQ(layout.empty() ? error : layout, (layout.empty() ? "chart 1, " : "") + expected);
    }
}

TEST(Pies, TakeWhatStandsClosestToTheSeries)
{
    const auto make = PieChartDataSeriesFormatOptions::create<std::uint32_t, std::uint32_t>;
    const std::shared_ptr<PieChartDataSeriesFormatOptions> none;
    const std::tuple<std::shared_ptr<PieChartDataSeriesFormatOptions>,
                     std::shared_ptr<PieChartDataSeriesFormatOptions>, ChartOptions, const char*>
        cases[] = {
            {none, none, {}, "- -"},
            {none, none, {.startAngle = 10, .explosion = 20}, "20 10"},
            {none, make(30, 0), {.startAngle = 10, .explosion = 20}, "30 10"},
            {make(0, 40), make(30, 50), {.startAngle = 10}, "30 40"},
        };
    for (const auto& [own, ofChart, given, expected] : cases) {
        auto chart = makeChart<chart::PieChart>(2, {1, 2});
        chart->getDataSet()->getSeries(0)->setFormatOptions(own);
        auto options = given;
        options.formatOptions = ofChart;
        const FinishedPart part(chart, options);
        EXPECT_EQ(part.find("c:ser/c:explosion/@val") + " " + part.find("c:pieChart/c:firstSliceAng/@val"),
                  expected);
    }
}

TEST(Pies, HaveOptionsOfTheirOwn)
{
    auto chart = makeChart<chart::ColumnChart>();
    chart->getDataSet()->getSeries(0)->setFormatOptions(PieChartDataSeriesFormatOptions::create(5));
    const FinishedPart part(chart, {.formatOptions = PieChartDataSeriesFormatOptions::create()});
    EXPECT_EQ(part.getWarnings(),
              std::vector<std::string>{
                  "chart 1, series 1 (\"North\"): an explosion or first slice angle is for pies. "
                  "It is left out."});
    const ChartOptions options{.formatOptions = PieChartDataSeriesFormatOptions::create(0, 5)};
    EXPECT_EQ(thrownText([&] { FinishedPart(chart, options); }),
              "chart 1: the format options hold an explosion or first slice angle, which are for pies.");
}

}  // namespace
}  // namespace quillon::report
