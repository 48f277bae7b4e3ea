#include "chart/writer/DOCXChartWriter.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "chart/writer/DOCXColumnChartWriter.h"
#include "chart/writer/DOCXPieChartWriter.h"
#include "tests/ThrownText.h"
#include "tests/writer/TestCharts.h"

namespace quillon::chart {
namespace {

using xercesc::DOMElement;

/// Opens the operation of one point.
template <typename Writer>
struct PointWriter : Writer {
    using Writer::c_dPt;
    using Writer::Writer;
};

/// A writer of someone else's, who may use what a writer is made of.
struct BlockWriter : DOCXColumnChartWriter {
    using DOCXColumnChartWriter::c_cat;
    using DOCXColumnChartWriter::c_catAx;
    using DOCXColumnChartWriter::c_chart;
    using DOCXColumnChartWriter::c_chartTypeGroup;
    using DOCXColumnChartWriter::c_dLbls;
    using DOCXColumnChartWriter::c_ser;
    using DOCXColumnChartWriter::c_serShapeProps;
    using DOCXColumnChartWriter::c_title;
    using DOCXColumnChartWriter::c_val;
    using DOCXColumnChartWriter::c_valAx;
    using DOCXColumnChartWriter::DOCXColumnChartWriter;

    static const std::u16string& letterOf(unsigned long number) { return Number2Letter_[number]; }
};

std::u16string getFirstText(const Document& document, const char16_t* elementName)
{
    const auto* element =
        static_cast<const DOMElement*>(document->getElementsByTagName(elementName)->item(0));
    return element->getTextContent();
}

TEST(DOCXChartWriter, WritesTheSameTreeAgainAndFollowsTheChart)
{
    const auto chart = makeChart(LineChart::create, makeSales());
    const auto writer = chart->getDOCXWriter();
    const Document documents[] = {makeDocument(), makeDocument(), makeDocument()};
    for (const auto i : {0, 1}) writer->createChartDOMDocContent(documents[i].get());
    chart->getDataSet()->getSeries(1)->getPoint(0)->setValue(0.25);
    writer->createChartDOMDocContent(documents[2].get());
    EXPECT_TRUE(documents[0]->isEqualNode(documents[1].get()));
    EXPECT_FALSE(documents[0]->isEqualNode(documents[2].get()));
}

TEST(DOCXChartWriter, RefusesAChartThatItCannotWrite)
{
    const std::tuple<std::shared_ptr<DataSet>, std::shared_ptr<Title>, const char*> cases[] = {
        {nullptr, Title::create(), "The chart has no data set; set its DataSet before writing."},
        {makeSales(), Title::create(std::shared_ptr<Paragraph>()),
         "The chart's title holds an empty paragraph handle."},
        {makeSales(), Title::create(std::shared_ptr<Text>()),
         "The chart's title begins with an empty text run handle."},
    };
    for (const auto create : {BarChart::create, ColumnChart::create, LineChart::create, PieChart::create})
        for (const auto& [data, title, failure] : cases) {
            const auto chart = makeChart(create, data, title);
            auto document = makeDocument();
            const auto fill = [&] { chart->getDOCXWriter()->createChartDOMDocContent(document.get()); };
            EXPECT_EQ(thrownText(fill), failure);
            EXPECT_EQ(document->getDocumentElement(), nullptr);
        }
}

TEST(DOCXChartWriter, CannotTitleAChartWithAParagraphWithoutRuns)
{
    const auto chart = makeChart(BarChart::create, makeSales(), Title::create(Paragraph::create()));
    auto document = makeDocument();
    EXPECT_THROW(chart->getDOCXWriter()->createChartDOMDocContent(document.get()), std::out_of_range);
    EXPECT_EQ(getFirstText(document, u"a:t"), u"Chart Title");
    EXPECT_EQ(document->getElementsByTagName(u"c:plotArea")->getLength(), 0);
}

TEST(DOCXChartWriter, RefusesDocumentsThatItCannotFill)
{
    const auto chart = makeChart(BarChart::create, makeSales());
    const auto writer = chart->getDOCXWriter();
    auto document = makeDocument(u"w:p");
    auto other = makeDocument(u"w:p");
    auto* parent = document->getDocumentElement();
    const auto fill = [&](xercesc::DOMDocument* doc) { writer->createChartDOMDocContent(doc); };
    const auto draw = [&](xercesc::DOMDocument* doc, DOMElement* element) {
        writer->createChartDOMElemContent(doc, element, u"1", u"rId1");
    };
    constexpr auto null = "createChartDOMElemContent: expected a document and a parent element, got null.";
    const std::pair<std::function<void()>, std::string> cases[] = {
        {[&] { fill(nullptr); }, "createChartDOMDocContent: expected a document, got null."},
        {[&] { fill(document.get()); }, "createChartDOMDocContent: expected an empty document."},
        {[&] { draw(nullptr, parent); }, null},
        {[&] { draw(document.get(), nullptr); }, null},
        {[&] { draw(other.get(), parent); },
         "createChartDOMElemContent: the parent element is not of the document."},
        {[] { DOCXPieChartWriter(nullptr).createChartDOMDocContent(makeDocument().get()); },
         "The writer has no chart."},
    };
    for (const auto& [action, failure] : cases) EXPECT_EQ(thrownText(action), failure);
    EXPECT_EQ(parent->getFirstChild(), nullptr);
}

TEST(DOCXChartWriter, RefusesToPutAnythingIntoAnotherDocument)
{
    const auto chart = makeChart(ColumnChart::create, makeSales(), Title::create());
    const auto series = chart->getDataSet()->getSeries(0);
    auto document = makeDocument(u"c:ser");
    auto* parent = document->getDocumentElement();
    auto other = makeDocument();
    const BlockWriter writer(chart.get());
    const std::function<void(xercesc::DOMDocument*, DOMElement*)> blocks[] = {
        [&](auto* doc, auto* element) { writer.c_title(doc, element); },
        [&](auto* doc, auto* element) { writer.c_catAx(doc, element); },
        [&](auto* doc, auto* element) { writer.c_valAx(doc, element); },
        [&](auto* doc, auto* element) { writer.c_serShapeProps(doc, element, series, 0); },
        [&](auto* doc, auto* element) { writer.c_chart(doc, element); },
        [&](auto* doc, auto* element) { writer.c_chartTypeGroup(doc, element); },
        [&](auto* doc, auto* element) { writer.c_ser(doc, element, 0); },
        [&](auto* doc, auto* element) { writer.c_cat(doc, element); },
        [&](auto* doc, auto* element) { writer.c_val(doc, element, 0); },
        [&](auto* doc, auto* element) { writer.c_dLbls(doc, element); },
    };
    for (const auto& append : blocks) {
        for (const auto& [doc, element] :
             {std::pair(other.get(), parent), std::pair<xercesc::DOMDocument*, DOMElement*>(nullptr, parent),
              std::pair<xercesc::DOMDocument*, DOMElement*>(document.get(), nullptr)})
            EXPECT_EQ(thrownText([&, d = doc, e = element] { append(d, e); }),
                      "DOCXChartWriter could not import parsed markup.");
        EXPECT_EQ(parent->getFirstChild(), nullptr);
    }
}

TEST(DOCXChartWriter, OffersItsColumnLettersToWritersOfOthers)
{
    EXPECT_EQ(BlockWriter::letterOf(25), u"Z");
    EXPECT_EQ(BlockWriter::letterOf(26), u"");
    EXPECT_EQ(ColumnLetters()[1], u"B");
}

TEST(DOCXChartWriter, HasNoPointPastTheEnd)
{
    const auto chart = makeChart(ColumnChart::create, makeSales());
    const auto series = chart->getDataSet()->getSeries(0);
    auto document = makeDocument(u"c:ser");
    auto* parent = document->getDocumentElement();
    const PointWriter<DOCXColumnChartWriter> columns(chart.get());
    const PointWriter<DOCXPieChartWriter> slices(chart.get());
    EXPECT_THROW(columns.c_dPt(document.get(), parent, series, 2), std::out_of_range);
    EXPECT_THROW(slices.c_dPt(document.get(), parent, series, 2), std::out_of_range);
    EXPECT_EQ(parent->getFirstChild(), nullptr);
}

TEST(DOCXChartWriter, KeepsTextsThatXmlCannotHold)
{
    for (const auto* text : {u"\xD800", u"a\xDC00z", u"\x0001\x001F", u"\xFFFE"}) {
        const auto chart =
            makeChart(ColumnChart::create, makeDataSet({text}, {{u"Series", {1}}}), Title::create(text));
        const auto document = writeChart(*chart);
        EXPECT_EQ(getFirstText(document, u"a:t"), text);
        EXPECT_EQ(getFirstText(document, u"c:cat"), std::u16string(u"Sheet1!$A$2:$A$2") + text);
    }
}

TEST(DOCXChartWriter, LeavesTheStyleAndColoursDocumentsAsTheyAre)
{
    const auto chart = makeChart(BarChart::create, makeSales());
    const auto writer = chart->getDOCXWriter();
    auto empty = makeDocument();
    auto filled = makeDocument(u"cs:chartStyle");
    for (auto* document : {empty.get(), filled.get(), static_cast<xercesc::DOMDocument*>(nullptr)}) {
        writer->createChartStyleDOMDocContent(document);
        writer->createChartColorsDOMDocContent(document);
    }
    EXPECT_FALSE(empty->hasChildNodes());
    EXPECT_TRUE(filled->isEqualNode(makeDocument(u"cs:chartStyle").get()));
}

}  // namespace
}  // namespace quillon::chart
