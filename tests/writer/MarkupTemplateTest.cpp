#include <gtest/gtest.h>

#include "chart/model/ColumnChart.h"
#include "chart/writer/DOCXColumnChartWriter.h"
#include "chart/writer/DOCXLineChartWriter.h"
#include "chart/writer/Templates.h"
#include "tests/writer/TestCharts.h"

namespace quillon::chart {
namespace {

using xercesc::DOMDocument;
using xercesc::DOMElement;

/// Opens the operations that build a template.
template <typename Writer>
struct TemplateWriter : Writer {
    using Writer::c_catAx;
    using Writer::c_dPt;
    using Writer::c_serShapeProps;
    using Writer::c_title;
    using Writer::c_valAx;
    using Writer::Writer;
};

using ColumnWriter = TemplateWriter<DOCXColumnChartWriter>;
using LineWriter = TemplateWriter<DOCXLineChartWriter>;

/// The n-th element of that name takes the value.
struct Value {
    const char16_t* elementName;
    unsigned long n;
    const char16_t* value;
};

struct TemplateCase {
    const char16_t* markup;
    std::vector<Value> values;
    void (*append)(const Chart&, DOMDocument*, DOMElement*);
};

const TemplateCase templateCases[] = {
    {templates::title,
     {{u"a:t", 0, u"A & B"}},
     [](const Chart& chart, DOMDocument* doc, DOMElement* parent) {
         ColumnWriter(&chart).c_title(doc, parent);
     }},
    {templates::categoryAxis,
     {{u"c:axId", 0, u"751708752"}, {u"c:crossAx", 0, u"713724112"}},
     [](const Chart& chart, DOMDocument* doc, DOMElement* parent) {
         ColumnWriter(&chart).c_catAx(doc, parent);
     }},
    {templates::valueAxis,
     {{u"c:axId", 0, u"713724112"}, {u"c:crossAx", 0, u"751708752"}},
     [](const Chart& chart, DOMDocument* doc, DOMElement* parent) {
         ColumnWriter(&chart).c_valAx(doc, parent);
     }},
    {templates::seriesFill,
     {{u"a:srgbClr", 0, u"5B9BD5"}},
     [](const Chart& chart, DOMDocument* doc, DOMElement* parent) {
         ColumnWriter(&chart).c_serShapeProps(doc, parent, chart.getDataSet()->getSeries(0), 4);
     }},
    {templates::seriesLine,
     {{u"a:srgbClr", 0, u"70AD47"}},
     [](const Chart& chart, DOMDocument* doc, DOMElement* parent) {
         LineWriter(&chart).c_serShapeProps(doc, parent, chart.getDataSet()->getSeries(0), 5);
     }},
    {templates::dataPoint,
     {{u"c:idx", 0, u"1"}, {u"a:srgbClr", 0, u"#1"}, {u"a:srgbClr", 1, u"#2"}},
     [](const Chart& chart, DOMDocument* doc, DOMElement* parent) {
         ColumnWriter(&chart).c_dPt(doc, parent, chart.getDataSet()->getSeries(0), 1);
     }},
};

/// The template parsed afresh, imported, and its values set one by one.
DOMElement* appendParsed(const Chart& chart, const TemplateCase& row, DOMDocument* doc)
{
    const ColumnWriter writer(&chart);
    auto* made = writer.appendParsedElement(row.markup, doc, doc->getDocumentElement());
    for (const auto& [name, n, value] : row.values) {
        auto* element = writer.findElem(made, name, n);
        if (element->hasAttribute(u"val"))
            element->setAttribute(u"val", value);
        else
            element->setTextContent(value);
    }
    return made;
}

TEST(MarkupTemplate, BuildsTheTreeOfTheParsedMarkupEachTime)
{
    const auto chart = makeChart(ColumnChart::create, makeSales(), Title::create(u"A & B"));
    chart->getDataSet()->getSeries(0)->getPoint(1)->setFormat(DataPointShapeFormat::create(u"#1", u"#2"));
    for (const auto& row : templateCases) {
        auto parsed = makeDocument(u"parent");
        const auto* expected = appendParsed(*chart, row, parsed.get());
        for (int use = 0; use < 2; ++use) {
            auto built = makeDocument(u"parent");
            row.append(*chart, built.get(), built->getDocumentElement());
            EXPECT_TRUE(isSameTree(*expected, *built->getDocumentElement()->getFirstElementChild()));
        }
    }
}

}  // namespace
}  // namespace quillon::chart
