#include "report/document/ChartParts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <stdexcept>
#include <vector>

#include "chart/model/ColumnChart.h"
#include "chart/model/PieChart.h"
#include "report/document/Document.h"
#include "tests/ThrownText.h"
#include "tests/report/TestDocuments.h"

namespace quillon::report {
namespace {

std::string getDrawing(const std::string& markup)
{
    const std::string end = "</w:drawing>";
    const auto from = markup.find("<w:drawing>");
    return markup.substr(from, markup.find(end) + end.size() - from);
}

TEST(ChartParts, AreThoseOfADocument)
{
    const ChartOptions options{.width = "10cm", .legend = Legend::Left, .altText = "\"Sales\" & more"};
    for (const auto& chart : {makeChart<chart::ColumnChart>(), makeChart<chart::PieChart>()}) {
        Document document;
        document.addChart(chart, options);
        const auto package = document.toBytes();
        const auto parts = makeChartParts(*chart, options, 1, "rId1");
        EXPECT_EQ(parts.chart, readPart(package, "word/charts/chart1.xml"));
        EXPECT_EQ(parts.workbook, readPart(package, "word/embeddings/data1.xlsx"));
        EXPECT_EQ(getDrawing(parts.run), getDrawing(readPart(package, "word/document.xml")));
    }
}

TEST(ChartParts, StandOnTheirOwn)
{
    const auto parts = makeChartParts(*makeChart<chart::ColumnChart>(), {.workbook = false}, 12, "rId7");
    EXPECT_EQ(parts.workbook, "");
    EXPECT_EQ(parts.chart.find("externalData"), std::string::npos);
    const std::string start =
        "<w:r xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\" "
        "xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" "
        "xmlns:wp=\"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing\"><w:drawing>";
    EXPECT_EQ(parts.run.substr(0, start.size()), start);
    EXPECT_NE(parts.run.find("id=\"12\" name=\"Chart 12\""), std::string::npos);
    EXPECT_NE(parts.run.find("r:id=\"rId7\""), std::string::npos);
}

TEST(ChartParts, TellWhatWasReplacedAndWhatIsRefused)
{
    auto chart = makeChart<chart::ColumnChart>();
    chart->getDataSet()->getSeries(0)->setFormat(chart::DataSeriesShapeFormat::create(u"nonsense"));
    std::vector<std::string> warnings;
    makeChartParts(*chart, {}, 3, "rId1",
                   {.warning = [&](const auto& sentence) { warnings.push_back(sentence); }});
    ASSERT_EQ(warnings.size(), 2U);
    EXPECT_EQ(warnings[0].substr(0, 45), "chart 3, series 1 (\"North\"), fill: \"nonsense\"");
    EXPECT_EQ(warnings[1].substr(0, 47), "chart 3, series 1 (\"North\"), border: \"nonsense\"");

    const std::tuple<std::shared_ptr<chart::Chart>, ChartOptions, std::string> refused[] = {
        {chart, {.width = "1pt"}, "chart 3: width: expected 0.1in to 22in, got \"1pt\"."},
        {chart::ColumnChart::create(),
         {},
         "chart 3: The chart has no data set; set its DataSet before writing."},
        {makeChart<chart::ColumnChart>(1, {INFINITY}),
         {},
         "chart 3, series 1 (\"North\"), point 1: the value is INF; a chart can show numbers as large as "
         "9.99999999999999e+307, and gaps for NaN."},
    };
    for (const auto& [bad, options, sentence] : refused)
        EXPECT_EQ(thrownText([&b = *bad, &o = options] { makeChartParts(b, o, 3, "rId1"); }), sentence);
}

}  // namespace
}  // namespace quillon::report
