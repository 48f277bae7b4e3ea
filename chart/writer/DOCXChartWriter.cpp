#include "chart/writer/DOCXChartWriter.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/util/PanicHandler.hpp>
#include <xercesc/util/PlatformUtils.hpp>
#include <xercesc/util/XMLUni.hpp>

#include "chart/model/Chart.h"
#include "chart/writer/DomElements.h"
#include "chart/writer/ErrorHandler.h"
#include "chart/writer/MarkupTemplate.h"
#include "chart/writer/Templates.h"
#include "chart/writer/WriterColors.h"
#include "support/ForkLock.h"
#include "support/Text.h"

namespace quillon::chart {

using xercesc::DOMDocument;
using xercesc::DOMElement;

namespace {

constexpr char16_t categoryAxisId[] = u"751708752";
constexpr char16_t valueAxisId[] = u"713724112";

/// Not from the registry: it has a lock, which a process that is forked off meanwhile would never get.
xercesc::DOMImplementationLS* getImplementation()
{
    auto* implementation = xercesc::DOMImplementation::getImplementation();
    if (implementation == nullptr)
        throw std::runtime_error("Xerces-C offers no load and save implementation.");
    return implementation;
}

/// The message of the first error of a parse.
std::string describe(const ErrorHandler& errors, const xercesc::DOMConfiguration& configuration)
{
    if (errors.getMessage() == u"invalid document structure" &&
        configuration.getParameter(xercesc::XMLUni::fgDOMDisallowDoctype) != nullptr)
        return "Doctype not allowed.";
    return toUtf8(errors.getMessage());
}

/// "Sheet1!$B$2:$B$4": the cells of a column below the header row, empty or not.
std::u16string getCellRange(const std::u16string& column, unsigned long count)
{
    return u"Sheet1!$" + column + u"$2:$" + column + u"$" + num2str(count + 1);
}

/// One c:pt of a cache: its position and its text.
void appendCachedPoint(DOMDocument* doc, DOMElement* cache, const char16_t* pointName,
                       const char16_t* indexName, const char16_t* valueName, unsigned long index,
                       const std::u16string& text)
{
    auto* point = appendElement(doc, cache, pointName);
    point->setAttribute(indexName, num2str(index).c_str());
    appendTextElement(doc, point, valueName, text);
}

/// Where memory runs out while Xerces starts, it says no more than "Unknown reason" and ends the program.
class PanicHandler : public xercesc::PanicHandler {
 public:
    void panic(PanicReasons /*reason*/) override { throw std::bad_alloc(); }
};

}  // namespace

const DOCXChartWriter::XercesPlatform DOCXChartWriter::_xerces_init;
ColumnLetters DOCXChartWriter::Number2Letter_;

DOCXChartWriter::XercesPlatform::XercesPlatform()
{
    // Xerces keeps it.
    static PanicHandler panicHandler;
    xercesc::XMLPlatformUtils::Initialize(xercesc::XMLUni::fgXercescDefaultLocale, nullptr, &panicHandler);
}

DOCXChartWriter::DOCXChartWriter(const Chart* chart) : chart_(chart)
{
    const ForkLock lock;
    auto* parser =
        getImplementation()->createLSParser(xercesc::DOMImplementationLS::MODE_SYNCHRONOUS, nullptr,
                                            xercesc::XMLPlatformUtils::fgMemoryManager, nullptr);
    parser_ = std::shared_ptr<xercesc::DOMLSParser>(parser, Release());
    auto* configuration = parser_->getDomConfig();
    configuration->setParameter(xercesc::XMLUni::fgXercesUserAdoptsDOMDocument, true);
    configuration->setParameter(xercesc::XMLUni::fgDOMDisallowDoctype, true);
}

std::shared_ptr<DOMDocument> DOCXChartWriter::parseString(const std::u16string& markup) const
{
    const std::string bytes = toUtf8(markup);
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(), u"markup",
                                      false);
    const std::unique_ptr<xercesc::DOMLSInput, Release> input(
        getImplementation()->createLSInput(xercesc::XMLPlatformUtils::fgMemoryManager));
    input->setByteStream(&source);
    input->setEncoding(xercesc::XMLUni::fgUTF8EncodingString);

    ErrorHandler errors;
    auto* configuration = parser_->getDomConfig();
    configuration->setParameter(xercesc::XMLUni::fgDOMErrorHandler, &errors);
    // The templates use prefixes that only the target document declares.
    configuration->setParameter(xercesc::XMLUni::fgDOMNamespaces, false);

    std::shared_ptr<DOMDocument> document;
    try {
        if (auto* parsed = parser_->parse(input.get())) document.reset(parsed, Release());
    } catch (const xercesc::DOMLSException&) {
        if (!errors.hasError()) throw std::runtime_error("Could not parse: " + bytes);
    }
    if (errors.hasError()) throw std::runtime_error(describe(errors, *configuration));
    return document;
}

DOMElement* DOCXChartWriter::appendParsedElement(std::u16string markup, DOMDocument* doc,
                                                 DOMElement* parent) const
{
    if (doc == nullptr || parent == nullptr) throw std::runtime_error(importFailure);
    const auto parsed = parseString(markup);
    try {
        auto* imported = doc->importNode(parsed->getDocumentElement(), true);
        return static_cast<DOMElement*>(parent->appendChild(imported));
    } catch (const xercesc::DOMException&) {
        throw std::runtime_error(importFailure);
    }
}

DOMElement* DOCXChartWriter::findElem(DOMElement* elem, const char16_t* tagName, unsigned long n) const
{
    const auto* found = elem != nullptr && tagName != nullptr ? elem->getElementsByTagName(tagName) : nullptr;
    if (found == nullptr || found->getLength() == 0) throw std::runtime_error("findElem: element not found.");
    if (n >= found->getLength()) throw std::runtime_error("findElem: nth element not found.");
    return static_cast<DOMElement*>(found->item(n));
}

void DOCXChartWriter::requireWritableChart() const
{
    if (chart_ == nullptr) throw std::runtime_error("The writer has no chart.");
    if (!chart_->getDataSet())
        throw std::runtime_error("The chart has no data set; set its DataSet before writing.");
    if (!chart_->getTitle()) return;
    const auto paragraph = chart_->getTitle()->getText();
    if (!paragraph) throw std::runtime_error("The chart's title holds an empty paragraph handle.");
    // The runs after the first are not written, so they may be anything.
    const auto runs = paragraph->getContent();
    if (!runs.empty() && !runs.front())
        throw std::runtime_error("The chart's title begins with an empty text run handle.");
}

const DataSet& DOCXChartWriter::getDataSet() const
{
    return *chart_->getDataSet();
}

void DOCXChartWriter::createChartDOMDocContent(DOMDocument* doc)
{
    c_chartSpace(doc);
}

void DOCXChartWriter::createChartColorsDOMDocContent(DOMDocument* /*doc*/) {}

void DOCXChartWriter::createChartStyleDOMDocContent(DOMDocument* /*doc*/) {}

void DOCXChartWriter::createChartDOMElemContent(DOMDocument* doc, DOMElement* parent,
                                                const std::u16string& id, const std::u16string& relId)
{
    if (doc == nullptr || parent == nullptr)
        throw std::runtime_error(
            "createChartDOMElemContent: expected a document and a parent element, got null.");
    if (parent->getOwnerDocument() != doc)
        throw std::runtime_error("createChartDOMElemContent: the parent element is not of the document.");
    auto* run = appendElement(doc, parent, u"w:r");
    // The inline stands in the run itself, without a w:drawing between them.
    auto* inlineDrawing = appendElement(doc, run, u"wp:inline");
    for (const auto* distance : {u"distT", u"distB", u"distL", u"distR"})
        inlineDrawing->setAttribute(distance, SC_0_);

    auto* extent = appendElement(doc, inlineDrawing, u"wp:extent");
    extent->setAttribute(u"cx", u"5486400");
    extent->setAttribute(u"cy", u"3200400");

    auto* effectiveExtent = appendElement(doc, inlineDrawing, u"wp:effectiveExtent");
    for (const auto* side : {u"l", u"t", u"r", u"b"}) effectiveExtent->setAttribute(side, SC_0_);

    auto* properties = appendElement(doc, inlineDrawing, u"wp:docPr");
    properties->setAttribute(SC_id_, id.c_str());
    properties->setAttribute(u"name", (u"Chart " + id).c_str());

    appendElement(doc, inlineDrawing, u"wp:cNvGraphicFramePr");
    a_graphic(doc, inlineDrawing, relId);
}

void DOCXChartWriter::a_graphic(DOMDocument* doc, DOMElement* inlineDrawing,
                                const std::u16string& relId) const
{
    auto* graphic = appendElementNS(doc, inlineDrawing, DrawingXML_mainNS_, u"a:graphic");
    auto* graphicData = appendElement(doc, graphic, u"a:graphicData");
    graphicData->setAttribute(u"uri", DrawingXML_chartNS_);

    auto* chart = appendElementNS(doc, graphicData, DrawingXML_chartNS_, u"c:chart");
    chart->setAttribute(Pfx_OOXML_relationships_, NS_OOXML_relationships_);
    chart->setAttribute(SC_r_id_, relId.c_str());
}

void DOCXChartWriter::c_chartSpace(DOMDocument* doc) const
{
    if (doc == nullptr) throw std::runtime_error("createChartDOMDocContent: expected a document, got null.");
    if (doc->getDocumentElement() != nullptr)
        throw std::runtime_error("createChartDOMDocContent: expected an empty document.");
    requireWritableChart();
    auto* chartSpace = appendElementNS(doc, doc, DrawingXML_chartNS_, u"c:chartSpace");
    chartSpace->setAttribute(Pfx_a_, DrawingXML_mainNS_);
    chartSpace->setAttribute(Pfx_OOXML_relationships_, NS_OOXML_relationships_);
    chartSpace->setAttribute(u"xmlns:c16r2", u"http://schemas.microsoft.com/office/drawing/2015/06/chart");

    appendElement(doc, chartSpace, u"c:date1904", SC_0_);
    appendElement(doc, chartSpace, u"c:lang", u"en-US");
    appendElement(doc, chartSpace, u"c:roundedCorners", SC_1_);
    appendElement(doc, chartSpace, u"c:style", SC_2_);
    c_chart(doc, chartSpace);
}

void DOCXChartWriter::c_chart(DOMDocument* doc, DOMElement* chartSpace) const
{
    auto* chart = appendElement(doc, chartSpace, u"c:chart");
    c_title(doc, chart);
    c_plotArea(doc, chart);
    c_legend(doc, chart);
}

void DOCXChartWriter::c_title(DOMDocument* doc, DOMElement* chart) const
{
    const auto title = chart_->getTitle();
    if (title) {
        static const MarkupTemplate block(*parseString(templates::title), {{u"a:t", 0}});
        const auto runs = title->getText()->getContent();
        // Without a run the block keeps its own text in the document that is left behind.
        block.appendTo(doc, chart, {runs.empty() ? nullptr : runs.front()->getContent().c_str()});
        static_cast<void>(runs.at(0));
    }
    appendElement(doc, chart, u"c:autoTitleDeleted", title ? SC_0_ : SC_1_);
}

void DOCXChartWriter::c_plotArea(DOMDocument* doc, DOMElement* chart) const
{
    auto* plotArea = appendElement(doc, chart, u"c:plotArea");
    appendElement(doc, plotArea, u"c:layout");
    c_chartTypeGroup(doc, plotArea);
    c_catAx(doc, plotArea);
    c_valAx(doc, plotArea);
}

void DOCXChartWriter::c_legend(DOMDocument* /*doc*/, DOMElement* /*chart*/) const
{
    [[maybe_unused]] static const std::u16string block = templates::legend;
}

void DOCXChartWriter::c_catAx(DOMDocument* doc, DOMElement* plotArea) const
{
    static const MarkupTemplate block(*parseString(templates::categoryAxis),
                                      {{EN_c_axId_, 0}, {EN_c_crossAx_, 0}});
    block.appendTo(doc, plotArea, {categoryAxisId, valueAxisId});
}

void DOCXChartWriter::c_valAx(DOMDocument* doc, DOMElement* plotArea) const
{
    static const MarkupTemplate block(*parseString(templates::valueAxis),
                                      {{EN_c_axId_, 0}, {EN_c_crossAx_, 0}});
    block.appendTo(doc, plotArea, {valueAxisId, categoryAxisId});
}

void DOCXChartWriter::appendAllSeries(DOMDocument* doc, DOMElement* group) const
{
    const auto count = getDataSet().getSeriesCount();
    for (unsigned long i = 0; i < count; ++i) c_ser(doc, group, i);
}

void DOCXChartWriter::appendGapWidthAndAxisIds(DOMDocument* doc, DOMElement* group) const
{
    appendElement(doc, group, u"c:gapWidth", u"219");
    appendElement(doc, group, EN_c_axId_, categoryAxisId);
    appendElement(doc, group, EN_c_axId_, valueAxisId);
}

void DOCXChartWriter::c_ser(DOMDocument* doc, DOMElement* group, unsigned long seriesIndex) const
{
    const auto series = getDataSet().getSeries(seriesIndex);
    const auto index = num2str(seriesIndex);
    auto* ser = appendElement(doc, group, u"c:ser");
    appendElement(doc, ser, u"c:idx", index.c_str());
    appendElement(doc, ser, u"c:order", index.c_str());

    auto* nameReference = appendElement(doc, appendElement(doc, ser, u"c:tx"), EN_c_strRef_);
    appendTextElement(doc, nameReference, EN_c_f_, u"Sheet1!$" + Number2Letter_[seriesIndex + 1] + u"$1");
    auto* cache = appendElement(doc, nameReference, EN_c_strCache_);
    appendElement(doc, cache, EN_c_ptCount_, SC_1_);
    appendCachedPoint(doc, cache, EN_c_pt_, SC_idx_, EN_c_v_, 0, series->getName());

    c_serShapeProps(doc, ser, series, seriesIndex);
    // Every chart type writes the marker, and the bare c:invertIfNegative below.
    appendElement(doc, appendElement(doc, ser, u"c:marker"), u"c:symbol", u"none");
    const auto pointCount = series->getSize();
    for (unsigned long j = 0; j < pointCount; ++j) c_dPt(doc, ser, series, j);
    appendElement(doc, ser, u"c:invertIfNegative");
    c_cat(doc, ser);
    c_val(doc, ser, seriesIndex);
}

void DOCXChartWriter::c_serShapeProps(DOMDocument* doc, DOMElement* ser, std::shared_ptr<DataSeries> series,
                                      unsigned long seriesIndex) const
{
    static const MarkupTemplate block(*parseString(templates::seriesFill), {{u"a:srgbClr", 0}});
    block.appendTo(doc, ser, {getSeriesColor(*series, seriesIndex).c_str()});
}

void DOCXChartWriter::c_dPt(DOMDocument* doc, DOMElement* ser, std::shared_ptr<DataSeries> series,
                            unsigned long pointIndex) const
{
    const auto format = series->getPoints().at(pointIndex)->getFormat();
    if (!format) return;
    const auto& standard = getPaletteColor(pointIndex);
    appendDataPoint(doc, ser, pointIndex, getColor(format->getFill().get(), standard),
                    getColor(format->getBorder().get(), standard));
}

void DOCXChartWriter::appendDataPoint(DOMDocument* doc, DOMElement* ser, unsigned long pointIndex,
                                      const std::u16string& fillColor, const std::u16string& lineColor) const
{
    static const MarkupTemplate block(*parseString(templates::dataPoint),
                                      {{u"c:idx", 0}, {u"a:srgbClr", 0}, {u"a:srgbClr", 1}});
    block.appendTo(doc, ser, {num2str(pointIndex).c_str(), fillColor.c_str(), lineColor.c_str()});
}

void DOCXChartWriter::c_cat(DOMDocument* doc, DOMElement* ser) const
{
    const auto& categories = getDataSet().getCategories();
    auto* reference = appendElement(doc, appendElement(doc, ser, u"c:cat"), EN_c_strRef_);
    appendTextElement(doc, reference, EN_c_f_, getCellRange(Number2Letter_[0], categories.size()));
    auto* cache = appendElement(doc, reference, EN_c_strCache_);
    appendElement(doc, cache, EN_c_ptCount_, num2str(categories.size()).c_str());
    for (unsigned long k = 0; k < categories.size(); ++k)
        appendCachedPoint(doc, cache, EN_c_pt_, SC_idx_, EN_c_v_, k, categories[k]);
}

void DOCXChartWriter::c_val(DOMDocument* doc, DOMElement* ser, unsigned long seriesIndex) const
{
    const auto series = getDataSet().getSeries(seriesIndex);
    const auto& points = series->getPoints();
    auto* reference = appendElement(doc, appendElement(doc, ser, u"c:val"), EN_c_numRef_);
    appendTextElement(doc, reference, EN_c_f_, getCellRange(Number2Letter_[seriesIndex + 1], points.size()));
    auto* cache = appendElement(doc, reference, EN_c_numCache_);
    appendTextElement(doc, cache, EN_c_formatCode_, u"General");
    appendElement(doc, cache, EN_c_ptCount_, num2str(points.size()).c_str());
    for (unsigned long k = 0; k < points.size(); ++k)
        appendCachedPoint(doc, cache, EN_c_pt_, SC_idx_, EN_c_v_, k, num2str(points[k]->getValue()));
}

void DOCXChartWriter::c_dLbls(DOMDocument* doc, DOMElement* group) const
{
    auto* labels = appendElement(doc, group, u"c:dLbls");
    for (const auto* item : {u"c:showLegendKey", u"c:showVal", u"c:showCatName", u"c:showSerName",
                             u"c:showPercent", u"c:showBubbleSize", u"c:showLeaderLines"})
        appendElement(doc, labels, item, SC_0_);
}

}  // namespace quillon::chart
