/// Whole chart parts and the inline drawing against the files in golden/.

#include <gtest/gtest.h>

#include <limits>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "chart/writer/DOCXChartWriter.h"
#include "support/Text.h"
#include "tests/writer/GoldenFile.h"
#include "tests/writer/TestCharts.h"

namespace quillon::chart {
namespace {

/// Only the first run is written, whatever follows it.
std::shared_ptr<Title> makeTitleOfTwoRuns()
{
    auto paragraph = Paragraph::create(u"Revenue");
    paragraph->appendText(Text::create(u" and costs"));
    paragraph->appendText(nullptr);
    return Title::create(paragraph);
}

/// The last series, the 27th, stands two columns past Z.
std::shared_ptr<DataSet> makeWideData()
{
    std::vector<SeriesData> series;
    for (unsigned long i = 0; i < 27; ++i) series.push_back({u"S" + num2str(i), {static_cast<double>(i)}});
    return makeDataSet({}, series);
}

/// The first series has a format of its own, and so has one point of each.
std::shared_ptr<DataSet> makeFormattedSales()
{
    auto data = makeSales();
    data->getSeries(0)->setFormat(DataSeriesShapeFormat::create(u"green", u"navy"));
    data->getSeries(0)->getPoint(1)->setFormat(DataPointShapeFormat::create(u"red", u"blue"));
    data->getSeries(1)->getPoint(0)->setFormat(DataPointShapeFormat::create(u"gold"));
    return data;
}

/// One series for each colour, one whose format has lost its fill, and a point with neither fill nor border.
std::shared_ptr<DataSet> makeOddColours()
{
    auto data = DataSet::create();
    for (const auto* text : {u"#00ff00", u"rgb(0,128,255)", u"Rgb(0,128,255)", u"no such colour", u"", u"RED",
                             u"00FF00", u"#\"<&>"})
        data->appendSeries(DataSeries::create(text))->setFormat(DataSeriesShapeFormat::create(text));
    const auto triplet = data->appendSeries(DataSeries::create(u"triplet"));
    triplet->setFormat(DataSeriesShapeFormat::create());
    triplet->getFormat()->getFill()->getColor()->setFromTriplet(1, 0, 0);
    const auto none = data->appendSeries(DataSeries::create(u"none"));
    none->setFormat(DataSeriesShapeFormat::create(u"red"));
    none->getFormat()->setFill(nullptr);
    const auto point = none->appendPoint(1);
    point->setFormat(DataPointShapeFormat::create(u"red"));
    point->getFormat()->setFill(nullptr);
    point->getFormat()->setBorder(nullptr);
    return data;
}

std::shared_ptr<DataSet> makeAwkwardTexts()
{
    std::u16string longText;
    while (longText.size() < 400) longText += u"four hundred characters ";
    longText.resize(400);
    constexpr auto infinity = std::numeric_limits<double>::infinity();
    return makeDataSet(
        {u"a & b < c > d", u"\"double\" and 'single'", u"", u"\U0001F600\u00E9\u4E2D", longText, u"  "},
        {{u"]]> &amp; <!-- -->", {std::numeric_limits<double>::quiet_NaN(), infinity, -infinity}},
         {u"", {-0.0}}});
}

TEST(ChartPart, IsThatOfTheGoldenFile)
{
    const auto sevenSlices =
        makeDataSet({u"Mo", u"Tu", u"We", u"Th", u"Fr", u"Sa", u"Su"}, {{u"Visits", {7, 6, 5, 4, 3, 2, 1}}});
    const auto differingSizes =
        makeDataSet({u"A", u"B", u"C"}, {{u"One", {1}}, {u"Two", {1, 2}}, {u"None", {}}});
    const auto oneValue = makeDataSet({}, {{u"Only", {3}}});
    const std::pair<const char*, std::shared_ptr<Chart>> charts[] = {
        {"bar-with-title", makeChart(BarChart::create, makeSales(), Title::create(u"Revenue and costs"))},
        {"column-with-title-of-two-runs", makeChart(ColumnChart::create, makeSales(), makeTitleOfTwoRuns())},
        {"line-with-default-title", makeChart(LineChart::create, makeSales(), Title::create())},
        {"pie-of-two-series-with-title", makeChart(PieChart::create, makeSales(), Title::create(u"Revenue"))},
        {"bar-past-column-z", makeChart(BarChart::create, makeWideData())},
        {"column-without-categories", makeChart(ColumnChart::create, oneValue)},
        {"line-without-series-and-with-empty-title",
         makeChart(LineChart::create, DataSet::create(), Title::create(u""))},
        {"line-of-differing-sizes", makeChart(LineChart::create, differingSizes)},
        {"pie-of-seven-slices", makeChart(PieChart::create, sevenSlices)},
        {"column-formats", makeChart(ColumnChart::create, makeFormattedSales())},
        {"line-formats", makeChart(LineChart::create, makeFormattedSales())},
        {"pie-formats", makeChart(PieChart::create, makeFormattedSales())},
        {"column-odd-colours", makeChart(ColumnChart::create, makeOddColours())},
        {"column-awkward-texts",
         makeChart(ColumnChart::create, makeAwkwardTexts(), Title::create(u"<R&D> \"\U0001F4C8\""))},
    };
    for (const auto& [name, chart] : charts)
        EXPECT_TRUE(matchesGolden(name, *writeChart(*chart)->getDocumentElement()));
}

TEST(InlineDrawing, IsTheSameForEveryChartTypeAndFollowsTheOthers)
{
    for (const auto create : {BarChart::create, ColumnChart::create, LineChart::create, PieChart::create}) {
        auto document = makeDocument(u"w:p");
        auto* paragraph = document->getDocumentElement();
        // It names the chart part and nothing of the chart, which needs no data yet.
        const auto chart = create();
        const auto writer = chart->getDOCXWriter();
        writer->createChartDOMElemContent(document.get(), paragraph, u"12", u"rId7");
        EXPECT_TRUE(matchesGolden("inline-drawing", *paragraph));
        writer->createChartDOMElemContent(document.get(), paragraph, u"<&\">", u"rId8");
        const auto* second = writer->findElem(paragraph, u"wp:docPr", 1);
        EXPECT_EQ(std::u16string(second->getAttribute(u"name")), u"Chart <&\">");
    }
}

}  // namespace
}  // namespace quillon::chart
