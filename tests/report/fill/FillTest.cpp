#include <gtest/gtest.h>

#include <algorithm>
#include <regex>

#include "tests/ThrownText.h"
#include "tests/report/fill/TestTemplates.h"

namespace quillon::report {
namespace {

const auto accent1 = makeAccent("<a:schemeClr val=\"accent1\"><a:alpha val=\"50000\"/></a:schemeClr>");
const auto accent2 = makeAccent("<a:schemeClr val=\"accent2\"/>");
const auto brand = makeAccent("<a:srgbClr val=\"C00000\"/>");

/// Columns "North" and "South", and a line "Goal" on axes of its own.
std::string makeCombination(const std::string& behind = "")
{
    return makeChartPart(
        makeGroup("barChart", columnSettings,
                  {{0, "North", {"1", "2.50", "3"}, accent1}, {1, "South", {"4", "", "6"}, accent2}}, "12") +
            makeGroup("lineChart", lineSettings,
                      {{2,
                        "Goal",
                        {"0.1", "0.2", "0.3"},
                        brand,
                        makeTextReference('A', {"Jan", "Feb", "Mar"}),
                        "0%"}},
                      "34") +
            textAxes + makeAxis("catAx", '3', '4') + makeAxis("valAx", '4', '3'),
        "", behind);
}

std::vector<std::string> findAll(const std::string& text, const std::string& pattern)
{
    std::vector<std::string> found;
    const std::regex expression(pattern);
    for (std::sregex_iterator at(text.begin(), text.end(), expression), end; at != end; ++at)
        found.push_back(at->size() > 1 ? (*at)[1].str() : at->str());
    return found;
}

using Texts = std::vector<std::string>;

Texts getSeriesNames(const std::string& part)
{
    return findAll(part, "\\$[A-Z]\\$1</c:f><c:strCache><c:ptCount val=\"1\"/><c:pt idx=\"0\"><c:v>([^<]*)");
}

/// The markup of the series of a name.
std::string getSeries(const std::string& part, const std::string& name)
{
    const auto at = part.find("<c:v>" + name + "</c:v>");
    const auto begin = part.rfind("<c:ser>", at);
    return part.substr(begin, part.find("</c:ser>", at) - begin);
}

const Texts months = {"Jan", "Feb", "Mar"};

TEST(Fill, MatchesSeriesByNameAndKeepsTheLookOfEach)
{
    auto document = makeTemplate({makeCombination()});
    const auto before = getChartPart(document);
    const auto report = document.fill(
        "1", makeData(months, {{"Goal", {0.4, 0.5, 0.6}}, {"North", {1, 2.5, 9}}, {"South", {4, gap, 6}}}));
    const auto part = getChartPart(document);
    EXPECT_EQ(report.count(FillReport::Change::Matched), 3U);
    // The values that stay keep their text, and "South" all but its place in the order.
    EXPECT_NE(
        getSeries(part, "North").find("<c:pt idx=\"1\"><c:v>2.50</c:v></c:pt><c:pt idx=\"2\"><c:v>9</c:v>"),
        std::string::npos);
    EXPECT_NE(getSeries(part, "Goal").find("<c:formatCode>0%</c:formatCode>"), std::string::npos);
    EXPECT_NE(part.find("<c:lineChart>" + lineSettings + "<c:ser><c:idx val=\"2\"/><c:order val=\"0\"/>"),
              std::string::npos);
    auto south = getSeries(before, "South");
    south.replace(south.find("<c:order val=\"1\""), 16, "<c:order val=\"2\"");
    EXPECT_EQ(getSeries(part, "South"), south);
    // Readers that take the markup's order for the order of series see the new one, too.
    document.fill("1",
                  makeData(months, {{"South", {4, gap, 6}}, {"North", {1, 2.5, 9}}, {"Goal", {1, 2, 3}}}));
    EXPECT_EQ(getSeriesNames(getChartPart(document)), (Texts{"South", "North", "Goal"}));
}

TEST(Fill, GivesWhatIsLeftOverToWhatIsLeftOverInOrder)
{
    auto document = makeTemplate({makeCombination()});
    const auto report = document.fill(
        "1", makeData(months, {{"East", {1, 2, 3}}, {"South", {4, 5, 6}}, {"West", {7, 8, 9}}}));
    ASSERT_EQ(report.series.size(), 3U);
    EXPECT_EQ(report.series[0].before, "North");
    EXPECT_EQ(report.series[2].before, "Goal");
    EXPECT_EQ(report.count(FillReport::Change::Renamed), 2U);
    EXPECT_EQ(getSeriesNames(getChartPart(document)), (Texts{"East", "South", "West"}));
    document.fill("1", makeData(months, {{"West", {1, 2, 3}}, {"South", {4, 5, 6}}, {"East", {7, 8, 9}}}),
                  {.match = Match::Position});
    EXPECT_EQ(getSeriesNames(getChartPart(document)), (Texts{"West", "South", "East"}));
}

TEST(Fill, MatchesEqualNamesByPosition)
{
    auto document = makeTemplate({makeChartPart(
        makeGroup("barChart", columnSettings,
                  {{0, "A", {"1", "2", "3"}, accent1}, {1, "A", {"4", "5", "6"}, accent2}}, "12") +
        textAxes)});
    const auto before = getChartPart(document);
    const auto report = document.fill("1", makeData(months, {{"A", {1, 2, 3}}, {"A", {4, 5, 6}}}));
    EXPECT_EQ(report.count(FillReport::Change::Matched), 2U);
    EXPECT_EQ(getChartPart(document), before);
}

TEST(Fill, AddsSeriesThatLookLikeTheirNeighbour)
{
    auto document = makeTemplate({makeCombination()});
    const auto report = document.fill("1", makeData(months, {{"North", {1, 2.5, 3}},
                                                             {"South", {4, gap, 6}},
                                                             {"East", {1, 2, 3}},
                                                             {"Goal", {0.1, 0.2, 0.3}},
                                                             {"Limit", {1, 1, 1}}}));
    EXPECT_EQ(report.count(FillReport::Change::Added), 2U);
    EXPECT_EQ(report.series[2].before, "South");
    const auto part = getChartPart(document);
    EXPECT_EQ(getSeriesNames(part), (Texts{"North", "South", "East", "Goal", "Limit"}));
    EXPECT_LT(part.find("East"), part.find("</c:barChart>"));
    EXPECT_GT(part.find("Limit"), part.find("<c:lineChart>"));
    EXPECT_EQ(findAll(part, "<c:idx val=\"(\\d+)\"/><c:order"), (Texts{"0", "1", "3", "2", "4"}));
    EXPECT_EQ(findAll(part, "<c:order val=\"(\\d+)\""), (Texts{"0", "1", "2", "3", "4"}));
    EXPECT_EQ(findAll(part, "uniqueId val=\"\\{(\\d+)"),
              (Texts{"00000000", "00000001", "00000003", "00000002", "00000004"}));
    EXPECT_NE(getSeries(part, "East").find(makeAccent("<a:schemeClr val=\"accent4\"></a:schemeClr>")),
              std::string::npos);
    EXPECT_NE(getSeries(part, "Limit").find("<a:schemeClr val=\"accent5\">"), std::string::npos);
    EXPECT_NE(getSeries(part, "Limit").find("<c:formatCode>0%</c:formatCode>"), std::string::npos);
}

TEST(Fill, KeepsTheShadeOfTheColourThatANewSeriesTakes)
{
    auto document = makeTemplate({makeChartPart(
        makeGroup("barChart", columnSettings, {{0, "North", {"1", "2", "3"}, accent1}}, "12") + textAxes)});
    document.fill("1", makeData(months, {{"North", {1, 2, 3}}, {"South", {1, 2, 3}}}));
    EXPECT_NE(getSeries(getChartPart(document), "South")
                  .find("<a:schemeClr val=\"accent2\"><a:alpha val=\"50000\"/>"),
              std::string::npos);
}

TEST(Fill, RemovesSeriesWithTheirEntriesAndEmptyGroupsWithTheirAxes)
{
    const std::string legend =
        "<c:legend><c:legendPos val=\"b\"/><c:legendEntry><c:idx val=\"1\"/><c:delete "
        "val=\"1\"/></c:legendEntry>"
        "<c:legendEntry><c:idx val=\"2\"/><c:delete val=\"1\"/></c:legendEntry></c:legend>";
    auto document = makeTemplate({makeCombination(legend), makeCombination(legend), makeCombination()});
    auto report = document.fill("1", makeData(months, {{"South", {4, gap, 6}}, {"Goal", {0.1, 0.2, 0.3}}}));
    EXPECT_EQ(report.series.back().name, "North");
    EXPECT_EQ(report.count(FillReport::Change::Removed), 1U);
    EXPECT_EQ(findAll(getChartPart(document), "<c:legendEntry><c:idx val=\"(\\d)"), (Texts{"0", "1"}));
    EXPECT_EQ(findAll(getChartPart(document), "<c:axId").size(), 8U);

    document.fill("2", makeData(months, {{"North", {1, 2, 3}}, {"South", {4, gap, 6}}}));
    const auto part = getChartPart(document, 2);
    EXPECT_EQ(part.find("lineChart"), std::string::npos);
    EXPECT_EQ(findAll(part, "<c:axId val=\"(\\d)"), (Texts{"1", "2", "1", "2"}));
    EXPECT_EQ(findAll(part, "<c:legendEntry><c:idx val=\"(\\d)"), (Texts{"1"}));

    // An axis that goes is not made one of dates.
    auto dates = makeData(months, {{"North", {1, 2, 3}}});
    dates.categoryKind = CategoryKind::Date;
    dates.categoryValues = {46023, 46054, 46082};
    document.fill("3", dates);
    EXPECT_EQ(findAll(getChartPart(document, 3), "<c:(cat|date)Ax>"), (Texts{"date"}));
}

TEST(Fill, KeepsAxesThatAnotherGroupStandsOn)
{
    auto document = makeTemplate({makeChartPart(
        makeGroup("barChart", columnSettings, {{0, "North", {"1", "2", "3"}}}, "12") +
        makeGroup("lineChart", lineSettings, {{1, "Goal", {"1", "2", "3"}}}, "12") + textAxes)});
    document.fill("1", makeData(months, {{"Goal", {1, 2, 3}}}));
    const auto part = getChartPart(document);
    EXPECT_EQ(part.find("barChart"), std::string::npos);
    EXPECT_EQ(findAll(part, "<c:axId val=\"(\\d)"), (Texts{"1", "2", "1", "2"}));
}

const std::string redPoint =
    "<c:dPt><c:idx val=\"1\"/><c:spPr><a:solidFill><a:srgbClr "
    "val=\"FF0000\"/></a:solidFill></c:spPr></c:dPt>";
const std::string labels =
    "<c:dLbls><c:dLbl><c:idx val=\"0\"/><c:delete val=\"1\"/></c:dLbl><c:dLbl><c:idx val=\"1\"/><c:delete "
    "val=\"1\"/></c:dLbl>"
    "<c:showVal val=\"1\"/></c:dLbls>";

TEST(Fill, MovesFormatsOfPointsWithTheirCategories)
{
    const auto part = makeChartPart(
        makeGroup("barChart", columnSettings, {{0, "North", {"1", "2", "3"}, redPoint + labels}}, "12") +
        textAxes);
    const struct {
        Texts categories;
        Texts points;
        Texts labels;
    } cases[] = {
        {{"Feb", "Mar", "Apr"}, {"0"}, {"0", "2"}},
        {{"X", "Y", "Z"}, {"1"}, {"0", "1"}},
        {{"Jan"}, {}, {"0"}},
        {{"New", "Jan", "More", "Feb", "Mar"}, {"3"}, {"1", "3"}},
    };
    for (const auto& row : cases) {
        auto document = makeTemplate({part});
        document.fill("1",
                      makeData(row.categories, {{"North", std::vector<double>(row.categories.size(), 7)}}));
        const auto filled = getChartPart(document);
        EXPECT_EQ(findAll(filled, "<c:dPt><c:idx val=\"(\\d)"), row.points) << row.categories[0];
        EXPECT_EQ(findAll(filled, "<c:dLbl><c:idx val=\"(\\d)"), row.labels) << row.categories[0];
    }
}

TEST(Fill, MovesNumberFormatsOfPointsWithTheirCategories)
{
    auto part = makeChartPart(makeGroup("barChart", columnSettings, {{0, "North", {"1", "2", "2"}}}, "12") +
                              textAxes);
    const std::string point = "<c:pt idx=\"1\"><c:v>2";
    part.replace(part.find(point), point.size(), "<c:pt idx=\"1\" formatCode='0\"%\"'><c:v>2");
    auto document = makeTemplate({part});
    document.fill("1", makeData({"Feb", "Mar", "Apr"}, {{"North", {1, 2, 2}}}));
    EXPECT_NE(
        getChartPart(document).find("<c:pt idx=\"0\" formatCode='0\"%\"'><c:v>1</c:v></c:pt>"
                                    "<c:pt idx=\"1\"><c:v>2</c:v></c:pt><c:pt idx=\"2\"><c:v>2</c:v></c:pt>"),
        std::string::npos);
}

TEST(Fill, ContinuesTheSlicesOfAPie)
{
    const auto slice = [](int index, const std::string& accent) {
        return "<c:dPt><c:idx val=\"" + std::to_string(index) + "\"/><c:bubble3D val=\"0\"/>" +
               (index == 2 ? "<c:explosion val=\"8\"/>" : "") +
               makeAccent("<a:schemeClr val=\"" + accent + "\"/>") + makeUniqueId(index + 3) + "</c:dPt>";
    };
    const auto format = slice(0, "accent1") + slice(1, "accent2") + slice(2, "accent3");
    auto document = makeTemplate({makeChartPart(
        makeGroup("pieChart", "<c:varyColors val=\"1\"/>", {{0, "Share", {"1", "2", "3"}, format}}, ""))});
    Texts categories = months;
    for (const auto* more : {"Apr", "May", "Jun", "Jul"}) categories.emplace_back(more);
    document.fill("1", makeData(categories, {{"Share", std::vector<double>(7, 1)}}));
    const auto part = getChartPart(document);
    EXPECT_EQ(findAll(part, "<c:dPt><c:idx val=\"(\\d)"), (Texts{"0", "1", "2", "3", "4", "5", "6"}));
    EXPECT_EQ(findAll(part, "accent\\d"),
              (Texts{"accent1", "accent2", "accent3", "accent4", "accent5", "accent6", "accent1"}));
    EXPECT_NE(part.find("accent1\"><a:lumMod val=\"60000\"/>"), std::string::npos);
    EXPECT_EQ(findAll(part, "explosion").size(), 1U);
    auto ids = findAll(part, "uniqueId val=\"(\\{\\d+)");
    std::sort(ids.begin(), ids.end());
    EXPECT_EQ(std::unique(ids.begin(), ids.end()), ids.end());

    document.fill("1", makeData({"Mar", "Jul"}, {{"Share", {1, 2}}}));
    EXPECT_EQ(findAll(getChartPart(document), "accent\\d"), (Texts{"accent3", "accent1"}));
    EXPECT_EQ(document.fill("1", makeData({"Mar"}, {{"Share", {1}}, {"New", {2}}})).warnings,
              Texts{"a pie shows one series, \"Share\"; the others do not show."});
}

TEST(Fill, WritesGapsAsMissingPointsAndNumbersInFull)
{
    auto document = makeTemplate({makeCombination()});
    document.fill("1", makeData(months, {{"North", {0.1 + 0.2, gap, 1e300}},
                                         {"South", {-0.0, 1e-9, gap}},
                                         {"Goal", {1, 2, 3}}}));
    const auto part = getChartPart(document);
    EXPECT_NE(part.find("<c:ptCount val=\"3\"/><c:pt idx=\"0\"><c:v>0.30000000000000004</c:v></c:pt><c:pt "
                        "idx=\"2\"><c:v>1e+300</c:v></c:pt></c:numCache>"),
              std::string::npos);
    EXPECT_EQ(part.find("null"), std::string::npos);
    EXPECT_EQ(part.find("NaN"), std::string::npos);
}

TEST(Fill, WritesTextsThatMarkupCannotHold)
{
    auto document = makeTemplate({makeCombination()});
    const auto data = makeData({"<&>\"", " leading", "_x0041_\x01\r\n"}, {{"North & \"South\"", {1, 2, 3}}});
    document.fill("1", data);
    const auto read = document.getChartData("1");
    EXPECT_EQ(read.dataSet->getCategories(), data.dataSet->getCategories());
    EXPECT_EQ(read.dataSet->getSeries(0)->getName(), u"North & \"South\"");
    EXPECT_NE(getChartPart(document).find("<c:v>&lt;&amp;&gt;\"</c:v>"), std::string::npos);
    EXPECT_NE(getChartPart(document).find("<c:v>_x005F_x0041__x0001_"), std::string::npos);
}

TEST(Fill, RefusesWhatTheChartCannotShow)
{
    const auto combination = makeCombination();
    const auto replace = [&](const std::string& what, const std::string& with) {
        auto part = combination;
        return part.replace(part.find(what), what.size(), with);
    };
    const auto data = makeData(months, {{"North", {1, 2, 3}}});
    const std::tuple<std::string, ChartData, std::string> refused[] = {
        {combination, makeData(months, {}), "The data has no series; a chart shows one at least."},
        {combination, ChartData(), "The data has no series; a chart shows one at least."},
        {combination, makeData({}, {{"North", {}}}), "The data has no points; a chart shows one at least."},
        {combination, makeData(months, {{"A", {1, 2, 3}}, {"North", {1, INFINITY, 3}}}),
         "series 2 (\"North\"), point 2: the value is INF; a chart can show numbers as large as "
         "9.99999999999999e+307, and gaps for NaN."},
        {replace("<c:chart>",
                 "<c:pivotSource><c:name>p</c:name><c:fmtId val=\"0\"/></c:pivotSource><c:chart>"),
         data, "The chart cannot be filled: it is a pivot chart; its numbers come from a pivot table."},
        {makeChartPart(makeGroup("surfaceChart", "", {{0, "North", {"1"}}}, "123")), data,
         "The chart cannot be filled: it is a surface chart, whose colours are bands of values."},
        {replace("<c:axId",
                 "<c:extLst><c:ext uri=\"x\"><c15:filteredBarSeries "
                 "xmlns:c15=\"http://schemas.microsoft.com/office/drawing/2012/chart\"/></c:ext></"
                 "c:extLst><c:axId"),
         data, "The chart cannot be filled: a chart filter hides series or categories; show them all first."},
        {replace("<c:axId",
                 "<c:extLst><c:ext uri=\"x\"><c15:datalabelsRange "
                 "xmlns:c15=\"http://schemas.microsoft.com/office/drawing/2012/chart\"/></c:ext></"
                 "c:extLst><c:axId"),
         data,
         "The chart cannot be filled: labels take their text from cells (\"Value From Cells\"); switch that "
         "off first."},
        {makeChartPart(
             makeGroup("stockChart", "", {{0, "High", {"1"}}, {1, "Low", {"1"}}, {2, "Close", {"1"}}}, "12") +
             textAxes),
         data, "A stock chart shows as many series as it was made for, 3; the data has 1."},
        {makeChartPart(""), data,
         "The chart cannot be filled: it has no series whose look new ones could take."},
        {"<x/>", data, "The chart cannot be filled: its part is not a chart of a known kind."},
        {"<x", data, "word/charts/chart1.xml, line 1: it is not well-formed XML (unclosed token)."},
        {replace("<c:ptCount val=\"3\"", "<c:ptCount val=\"4294967296\""), data,
         "word/charts/chart1.xml: a series has 4294967296 points; a worksheet has 1,048,576 rows."},
        {replace("<c:pt idx=\"1\"", "<c:pt idx=\"-1\""), data,
         "word/charts/chart1.xml: \"-1\" is not a position or number of points."},
    };
    for (const auto& [part, bad, sentence] : refused) {
        auto document = makeTemplate({part});
        const auto before = document.toBytes();
        EXPECT_EQ(thrownText([&, &b = bad] { document.fill("1", b); }), sentence);
        EXPECT_EQ(document.toBytes(), before);
    }
}

TEST(Fill, RefusesTextsThatNoPartHolds)
{
    auto document = makeTemplate(
        {makeChartPart(makeGroup("barChart", columnSettings, {{0, "A", {"1"}}}, "12") + textAxes)});
    const auto before = document.toBytes();
    auto data = makeData({"x"}, {{"A", {2}}});
    const auto refuse = [&](const FillOptions& options) {
        return thrownText([&] { document.fill("1", data, options); });
    };
    const std::string control =
        ": character 1 (U+0001) cannot stand in a document; only tab and line break of the "
        "control characters can.";
    EXPECT_EQ(refuse({.title = "\x01"}), "title" + control);
    EXPECT_EQ(refuse({.numberFormat = "\x01"}), "number format" + control);
    data.series = {{}, {.numberFormat = "\x01"}};
    EXPECT_EQ(refuse({}), "number format of series 2" + control);
    data.categoryFormat = "0\xC3";
    EXPECT_NE(refuse({}).find("number format of the categories"), std::string::npos);
    EXPECT_EQ(document.toBytes(), before);
}

TEST(Fill, TakesATitleAndANumberFormat)
{
    const std::string title =
        "<c:title><c:tx><c:rich><a:bodyPr/><a:p><a:pPr/><a:r><a:rPr "
        "b=\"1\"/><a:t>Ju</a:t></a:r><a:r><a:t>ne</a:t></a:r></a:p></c:rich></c:tx></c:title>";
    const auto bars = makeGroup("barChart", columnSettings, {{0, "North", {"1", "2", "3"}}}, "12") + textAxes;
    auto document =
        makeTemplate({makeChartPart(bars, title), makeChartPart(bars), makeChartPart(bars, "<c:title/>")});
    EXPECT_EQ(document.getCharts()[0].title, "June");
    EXPECT_EQ(document.getCharts()[2].title, "North");
    for (const auto* number : {"1", "2", "3"})
        document.fill(number, document.getChartData(number),
                      {.title = "July & more", .numberFormat = "0.0\"x\""});
    for (const auto& chart : document.getCharts()) EXPECT_EQ(chart.title, "July & more");
    EXPECT_NE(getChartPart(document).find("<a:r><a:rPr b=\"1\"/><a:t>July &amp; more</a:t></a:r></a:p>"),
              std::string::npos);
    EXPECT_NE(getChartPart(document).find("<c:formatCode>0.0\"x\"</c:formatCode>"), std::string::npos);
    EXPECT_NE(getChartPart(document, 2).find("<c:autoTitleDeleted val=\"0\"/>"), std::string::npos);
    auto lines = makeTemplate({makeChartPart(bars, title), makeChartPart(bars)});
    for (const auto* number : {"1", "2"})
        lines.fill(number, lines.getChartData(number), {.title = "July\r\n& more"});
    for (const auto& chart : lines.getCharts()) EXPECT_EQ(chart.title, "July\n& more");
    EXPECT_NE(
        getChartPart(lines).find("<a:r><a:rPr b=\"1\"/><a:t>July</a:t></a:r><a:br/><a:r><a:rPr b=\"1\"/>"
                                 "<a:t>&amp; more</a:t></a:r></a:p>"),
        std::string::npos);
}

}  // namespace
}  // namespace quillon::report
