#include "report/document/Document.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <filesystem>
#include <regex>
#include <stdexcept>
#include <tuple>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "tests/ThrownText.h"
#include "tests/report/TestDocuments.h"
#include "tests/report/TestFolder.h"

namespace quillon::report {
namespace {

using chart::DataPointShapeFormat;
using chart::DataSeriesShapeFormat;

const auto makeColumns = makeChart<chart::ColumnChart>;
const auto makePie = makeChart<chart::PieChart>;

std::string writeChart(const std::shared_ptr<chart::Chart>& chart, const ChartOptions& options = {},
                       const std::function<void(const std::string&)>& warning = nullptr)
{
    Document document;
    document.addChart(chart, options);
    return document.toBytes({.warning = warning});
}

std::string getChartPart(const std::string& bytes)
{
    return readPart(bytes, "word/charts/chart1.xml");
}

std::string getMainPart(const std::string& bytes)
{
    return readPart(bytes, "word/document.xml");
}

/// What the first group of the pattern finds, one behind the other.
std::vector<std::string> findAll(const std::string& text, const std::string& pattern)
{
    const std::regex regex(pattern);
    std::vector<std::string> found;
    for (std::sregex_iterator it(text.begin(), text.end(), regex); it != std::sregex_iterator(); ++it)
        found.push_back((*it)[1]);
    return found;
}

TEST(Document, HoldsItsBlocksInOrder)
{
    Document document;
    document.addHeading("Sales", 2);
    document.addParagraph("a\tb\r\nc\n<&> \xC3\xA9");
    document.addParagraph("");
    document.addChart(makeColumns(1, {1}));
    auto text = getMainPart(document.toBytes());
    text = std::regex_replace(text, std::regex("<w:drawing>.*</w:drawing>"), "<drawing/>");
    text = findAll(text, "<w:body>(.*)<w:sectPr>").at(0);
    EXPECT_EQ(
        text,
        "<w:p><w:pPr><w:pStyle w:val=\"Heading2\"/></w:pPr>"
        "<w:r><w:t xml:space=\"preserve\">Sales</w:t></w:r></w:p>"
        "<w:p><w:r><w:t xml:space=\"preserve\">a</w:t><w:tab/><w:t xml:space=\"preserve\">b</w:t><w:br/>"
        "<w:t xml:space=\"preserve\">c</w:t><w:br/>"
        "<w:t xml:space=\"preserve\">&lt;&amp;&gt; \xC3\xA9</w:t></w:r></w:p>"
        "<w:p/><w:p><w:r><drawing/></w:r></w:p>");
}

TEST(Document, DrawsAChartAsWordProcessorsWantIt)
{
    const auto bytes = writeChart(makeColumns(1, {1}), {.altText = "\"Sales\" & more"});
    EXPECT_EQ(findAll(getMainPart(bytes), "(<w:drawing>.*<a:graphic )").at(0),
              "<w:drawing><wp:inline distB=\"0\" distL=\"0\" distR=\"0\" distT=\"0\">"
              "<wp:extent cx=\"5486400\" cy=\"3200400\"/><wp:effectExtent b=\"0\" l=\"0\" r=\"0\" t=\"0\"/>"
              "<wp:docPr descr=\"&quot;Sales&quot; &amp; more\" id=\"1\" name=\"Chart 1\"/>"
              "<wp:cNvGraphicFramePr/><a:graphic ");
}

TEST(Document, DescribesAChartThatHasNoAlternativeText)
{
    auto chart = makeColumns(7, {1.5, NAN, -3});
    chart->setTitle(chart::Title::create(u"Sales"));
    const auto getDescription = [](const auto& described) {
        return findAll(getMainPart(writeChart(described)), "descr=\"([^\"]*)\"").at(0);
    };
    EXPECT_EQ(
        getDescription(chart),
        "Column chart: Sales; series North, North, North, North, North and 2 more; values from -3 to 1.5");
    EXPECT_EQ(getDescription(makePie(0, {})), "Pie chart");
}

TEST(Document, ReadsLengths)
{
    const std::pair<const char*, const char*> cases[] = {
        {"2.54cm", "914400"},
        {"25.4mm", "914400"},
        {"72pt", "914400"},
        {"0.1in", "91440"},
        {"22in", "20116800"},
        {"", "3200400"},
        {"cm", "height: expected a number followed by cm, mm, in or pt, as in 15cm, got \"cm\"."},
        {"15", "height: expected one of the units cm, mm, in, pt after the number, as in 15cm, got \"15\"."},
        {"15 cm",
         "height: expected one of the units cm, mm, in, pt after the number, as in 15cm, got \"15 cm\"."},
        {"0in", "height: expected 0.1in to 22in, got \"0in\"."},
        {"-5cm", "height: expected 0.1in to 22in, got \"-5cm\"."},
        {"22.1in", "height: expected 0.1in to 22in, got \"22.1in\"."},
        {"1e30in", "height: expected 0.1in to 22in, got \"1e30in\"."},
        {"nanin", "height: expected 0.1in to 22in, got \"nanin\"."},
    };
    for (const auto& [text, expected] : cases) {
        std::string height;
        const auto error = thrownText([&, &t = text] {
            const auto bytes = writeChart(makeColumns(1, {1}), {.height = t});
            height = findAll(getMainPart(bytes), "cy=\"([0-9]*)\"").at(0);
        });
        EXPECT_EQ(height.empty() ? error : height, expected);
    }
}

TEST(Document, PlacesTheLegend)
{
    const std::tuple<std::shared_ptr<chart::Chart>, Legend, std::vector<std::string>> cases[] = {
        {makeColumns(1, {1}), Legend::Automatic, {}}, {makeColumns(2, {1}), Legend::Automatic, {"b"}},
        {makePie(1, {1}), Legend::Automatic, {"b"}},  {makePie(1, {1}), Legend::None, {}},
        {makeColumns(1, {1}), Legend::Right, {"r"}},  {makeColumns(1, {1}), Legend::Top, {"t"}},
        {makeColumns(1, {1}), Legend::Left, {"l"}},   {makeColumns(1, {1}), Legend::Bottom, {"b"}},
    };
    for (const auto& [chart, legend, places] : cases) {
        const auto part = getChartPart(writeChart(chart, {.legend = legend}));
        EXPECT_EQ(findAll(part, "<c:legendPos val=\"(.)\"/>"), places);
    }
}

TEST(Document, LeavesOutTheWorkbook)
{
    const auto bytes = writeChart(makeColumns(1, {1}), {.workbook = false});
    EXPECT_EQ(getChartPart(bytes).find("externalData"), std::string::npos);
    EXPECT_THROW(readPart(bytes, "word/embeddings/data1.xlsx"), std::runtime_error);
}

TEST(Document, GivesEqualBytesForEqualContent)
{
    EXPECT_EQ(writeChart(makeColumns(3, {1, NAN})), writeChart(makeColumns(3, {1, NAN})));
    // The first record's time: the first day that zip files know, at midnight.
    EXPECT_EQ(Document().toBytes().substr(10, 4), std::string("\0\0\x21\0", 4));
}

/// The names of the children of the first element of that name, each with its val behind it.
std::string listChildren(const std::string& text, const std::string& element)
{
    std::string names;
    int depth = 0;
    const auto inside = findAll(text, "<" + element + ">(.*?)</" + element + ">").at(0);
    for (const auto& tag : findAll(inside, "<([^>]*)>")) {
        if (tag[0] == '/') {
            --depth;
            continue;
        }
        if (depth == 0) names += std::regex_replace(tag, std::regex("^([^ /]*)( val=\"(.*)\")?/?$"), "$1$3 ");
        if (tag.back() != '/') ++depth;
    }
    return names;
}

TEST(Document, OrdersTheElementsOfEachType)
{
    const std::string columns =
        "c:barDircol c:groupingclustered c:varyColors0 c:ser c:ser c:dLbls c:gapWidth219 c:axId751708752 "
        "c:axId713724112 | c:idx0 c:order0 c:tx c:spPr c:invertIfNegative0 c:dPt c:cat c:val | "
        "c:idx1 c:invertIfNegative0 c:bubble3D0 c:spPr ";
    const std::pair<std::shared_ptr<chart::Chart>, std::string> cases[] = {
        {makeChart<chart::BarChart>(2), std::regex_replace(columns, std::regex("col "), "bar ")},
        {makeChart<chart::ColumnChart>(2), columns},
        {makeChart<chart::LineChart>(2),
         "c:groupingstandard c:varyColors0 c:ser c:ser c:dLbls c:axId751708752 c:axId713724112 | "
         "c:idx0 c:order0 c:tx c:spPr c:marker c:dPt c:cat c:val c:smooth0 | c:idx1 c:bubble3D0 c:spPr "},
        {makeChart<chart::PieChart>(2),
         "c:varyColors1 c:ser c:dLbls | c:idx0 c:order0 c:tx c:spPr c:dPt c:dPt c:cat c:val | "
         "c:idx0 c:bubble3D0 c:spPr "},
    };
    for (const auto& [chart, expected] : cases) {
        chart->getDataSet()->getSeries(0)->getPoint(1)->setFormat(DataPointShapeFormat::create(u"red"));
        const auto part = getChartPart(writeChart(chart));
        EXPECT_EQ(listChildren(part, "c:(?:bar|line|pie)Chart") + "| " + listChildren(part, "c:ser") + "| " +
                      listChildren(part, "c:dPt"),
                  expected);
    }
}

TEST(Document, NamesColumnsPastTheAlphabet)
{
    const auto part = getChartPart(writeChart(makeColumns(702, {1})));
    const auto references = findAll(part, "<c:f>(Sheet1![$][B-Z][^<]*|Sheet1![$]A[A-Z][^<]*)</c:f>");
    ASSERT_EQ(references.size(), 2 * 702U);
    const std::tuple<std::size_t, const char*, const char*> cases[] = {
        {24, "$Z$1", "$Z$2:$Z$2"},       {25, "$AA$1", "$AA$2:$AA$2"},  {50, "$AZ$1", "$AZ$2:$AZ$2"},
        {51, "$BA$1", "$BA$2:$BA$2"},    {699, "$ZY$1", "$ZY$2:$ZY$2"}, {700, "$ZZ$1", "$ZZ$2:$ZZ$2"},
        {701, "$AAA$1", "$AAA$2:$AAA$2"}};
    for (const auto& [series, name, values] : cases) {
        EXPECT_EQ(references[2 * series], std::string("Sheet1!") + name);
        EXPECT_EQ(references[2 * series + 1], std::string("Sheet1!") + values);
    }
}

TEST(Document, ShowsMissingValuesAsGaps)
{
    const auto part = getChartPart(writeChart(makeColumns(1, {NAN, 5, NAN})));
    EXPECT_NE(part.find("<c:ptCount val=\"3\"/><c:pt idx=\"1\"><c:v>5</c:v></c:pt></c:numCache>"),
              std::string::npos);
    EXPECT_NE(part.find("<c:plotVisOnly val=\"1\"/><c:dispBlanksAs val=\"gap\"/>"), std::string::npos);
}

TEST(Document, ReportsTextsThatAreNoColour)
{
    const auto expected = [](const std::string& place, const std::string& text) {
        return "chart 1, series 1 (\"North\")" + place + ": \"" + text +
               "\" is not a colour; expected a colour name, #rrggbb, or rgb(r,g,b) with numbers up to 255. "
               "The default is used.";
    };
    const auto write = [](const std::shared_ptr<chart::Chart>& chart) {
        const auto series = chart->getDataSet()->getSeries(0);
        series->setFormat(DataSeriesShapeFormat::create(u"#00ff0", u"#00ff00"));
        series->getPoint(1)->setFormat(DataPointShapeFormat::create(u"rgb(0,128,255)", u"\x01"));
        std::vector<std::string> warnings;
        const auto part =
            getChartPart(writeChart(chart, {}, [&](const auto& text) { warnings.push_back(text); }));
        return std::pair(warnings, findAll(part, "<a:srgbClr val=\"([^\"]*)\"/>"));
    };
    const std::vector<std::string> warnings = {expected(", fill", "#00ff0"),
                                               expected(", point 2, border", "\\x01")};
    EXPECT_EQ(write(makeColumns(1, {1, 2})),
              std::pair(warnings, std::vector<std::string>{"00FF00", "0080FF", "FFFFFF"}));
    EXPECT_EQ(write(makePie(1, {1, 2})),
              std::pair(warnings, std::vector<std::string>{"00FF00", "00FF00", "0080FF", "FFFFFF"}));
}

std::string warnOf(const std::shared_ptr<chart::Chart>& chart)
{
    std::string sentences;
    writeChart(chart, {}, [&](const auto& text) { sentences += text + "\n"; });
    return sentences;
}

/// Names come from tables, and sentences go to terminals.
TEST(Document, SentencesAreForTerminals)
{
    const auto chart = makeColumns(1, {1});
    const auto series = chart->getDataSet()->getSeries(0);
    series->setName(
        u"\x9B"
        u"1m\u202E\n" +
        std::u16string(30'000, u'n'));
    series->setFormat(DataSeriesShapeFormat::create(u"#00ff00", std::u16string(100'000, u'c')));
    EXPECT_EQ(
        warnOf(chart),
        R"(chart 1, series 1 ("\x9B1m\u202E\n)" + std::string(35, 'n') +
            R"(..." (30,005 characters)), border: ")" + std::string(40, 'c') +
            R"(..." (100,000 characters) is not a colour; expected a colour name, #rrggbb, or rgb(r,g,b) )"
            "with numbers up to 255. The default is used.\n");
    series->getPoint(0)->setValue(INFINITY);
    EXPECT_LT(thrownText([&] { writeChart(chart); }).size(), 300U);
    EXPECT_LT(thrownText([&] { writeChart(chart, {.width = std::string(100'000, 'w')}); }).size(), 300U);
}

/// Where something is described costs time only when there is something to say of it.
TEST(Document, LongNamesCostNothingWhereAllIsWell)
{
    const auto measure = [](std::size_t nameLength) {
        const auto pie = makePie(1, std::vector<double>(4'000, 1));
        const auto series = pie->getDataSet()->getSeries(0);
        series->setName(std::u16string(nameLength, u'n'));
        for (const auto& point : series->getPoints())
            point->setFormat(DataPointShapeFormat::create(u"red", u"#00ff00"));
        const auto start = std::clock();
        warnOf(pie);
        return std::clock() - start;
    };
    const auto usual = measure(5);
    EXPECT_LT(measure(30'000), 2 * usual);
}

TEST(Document, RefusesWhatNoDocumentHolds)
{
    const auto titled = makeColumns(1, {1});
    titled->setTitle(chart::Title::create(u"a\x1F"));
    const auto infinite = makeColumns(1, {1, INFINITY});
    const auto huge = makeColumns(1, {1, -1e308});
    const auto hidden = makePie(2, {1, 2});
    hidden->getDataSet()->getSeries(1)->getPoint(1)->setValue(INFINITY);
    const std::string control =
        " cannot stand in a document; only tab and line break of the control characters can.";
    const std::string large =
        "; a chart can show numbers as large as 9.99999999999999e+307, and gaps for NaN.";
    const std::string point = "chart 1, series 1 (\"North\"), point 2: the value is ";
    const std::pair<std::function<void(Document&)>, std::string> cases[] = {
        {[](auto& d) { d.addHeading("x", 0); }, "Heading level: expected 1 to 9, got 0."},
        {[](auto& d) { d.addHeading("a\x01"); }, "Heading: character 2 (U+0001)" + control},
        {[](auto& d) { d.addParagraph("\xEF\xBF\xBE"); }, "Paragraph: character 1 (U+FFFE)" + control},
        {[](auto& d) { d.addChart(nullptr); }, "addChart: expected a chart, got an empty handle."},
        {[&](auto& d) { d.addChart(titled); }, "chart 1, title: character 2 (U+001F)" + control},
        {[&](auto& d) { d.addChart(infinite); }, point + "INF" + large},
        {[&](auto& d) { d.addChart(huge); }, point + "-1e+308" + large},
        {[&](auto& d) { d.addChart(hidden); },
         "chart 1, series 2 (\"North\"), point 2: the value is INF" + large},
    };
    for (const auto& [add, message] : cases) {
        Document document;
        const auto write = [&, &a = add] {
            a(document);
            document.toBytes();
        };
        EXPECT_EQ(thrownText(write), message);
    }
}

TEST(Document, LeavesNoHalfWrittenFile)
{
    const TestFolder folder;
    std::filesystem::create_directories(folder / "taken.docx");
    const auto path = folder / "old.docx";
    writeText(path, "old");

    Document document;
    document.addParagraph("new");
    const auto taken = folder / "taken.docx";
    EXPECT_EQ(thrownText([&] { document.save(taken); }), "Cannot write \"" + taken + "\": Is a directory.");
    const auto missing = folder / "missing/x.docx";
    EXPECT_EQ(thrownText([&] { document.save(missing); }),
              "Cannot write \"" + missing + "\": No such file or directory.");
    document.addChart(makeColumns(1, {INFINITY}));
    EXPECT_THROW(document.save(path), std::runtime_error);

    EXPECT_EQ(readText(path), "old");
    EXPECT_EQ(folder.countFiles(), 2);
}

TEST(Document, StaysAsItIsWhileItIsWritten)
{
    const std::string refusal = "The document is being written; change it afterwards.";
    Document document;
    for (int i = 0; i < 2; ++i) document.addChart(makeColumns(1, {1}));
    const auto bytes = document.toBytes();
    const auto change = [&](std::size_t, std::size_t) {
        EXPECT_EQ(document.toBytes(), bytes);
        EXPECT_EQ(thrownText([&] { document.addHeading("more"); }), refusal);
        EXPECT_EQ(thrownText([&] { document.addParagraph("more"); }), refusal);
        EXPECT_EQ(thrownText([&] { document.addChart(makeColumns(1, {1})); }), refusal);
    };
    EXPECT_EQ(document.toBytes({.progress = change}), bytes);

    const auto moveAway = [&](std::size_t, std::size_t) { document = Document(); };
    EXPECT_EQ(document.toBytes({.progress = moveAway}), bytes);
    document.addParagraph("goes on");
}

TEST(Document, IsEmptyWhenMovedFrom)
{
    Document document;
    document.addParagraph("text");
    const Document moved = std::move(document);
    // NOLINTNEXTLINE(bugprone-use-after-move): it is what is tested.
    EXPECT_EQ(document.toBytes(), Document().toBytes());
    document.addParagraph("text");
    EXPECT_EQ(document.toBytes(), moved.toBytes());
}

TEST(Document, TellsItsProgress)
{
    Document document;
    std::vector<std::pair<std::size_t, std::size_t>> calls;
    for (int i = 0; i < 2; ++i) document.addChart(makeColumns(1, {1}));
    document.toBytes(
        {.progress = [&](std::size_t done, std::size_t total) { calls.emplace_back(done, total); }});
    EXPECT_EQ(calls, (std::vector<std::pair<std::size_t, std::size_t>>{{1, 2}, {2, 2}}));
}

TEST(Document, DescribesTheSeriesThatAPieShows)
{
    const auto pie = makePie(1, {1, 2});
    const auto hidden = chart::DataSeries::create(u"hidden");
    hidden->appendPoint(100);
    hidden->appendPoint(NAN);
    pie->getDataSet()->appendSeries(hidden);
    EXPECT_NE(getMainPart(writeChart(pie)).find("series North; values from 1 to 2\""), std::string::npos);
}

TEST(Document, TakesColoursThatWereSetByNumbers)
{
    const auto chart = makeColumns(1, {1});
    chart->getDataSet()->getSeries(0)->setFormat(DataSeriesShapeFormat::create(u"red"));
    chart->getDataSet()->getSeries(0)->getFormat()->getFill()->getColor()->setFromTriplet(0.1, 0.5, 1);
    const auto part = getChartPart(writeChart(chart, {}, [](const auto& text) { ADD_FAILURE() << text; }));
    EXPECT_NE(part.find("<a:srgbClr val=\"1A80FF\"/>"), std::string::npos);
}

TEST(Document, SavesItsBytes)
{
    const TestFolder folder;
    Document document;
    document.addChart(makeColumns(1, {1}));
    document.save(folder / "out.docx");
    EXPECT_EQ(readText(folder / "out.docx"), document.toBytes());
}

}  // namespace
}  // namespace quillon::report
