#pragma once

#include <memory>
#include <string>
#include <xercesc/dom/DOM.hpp>

#include "chart/writer/ChartWriter.h"
#include "chart/writer/ColumnLetters.h"
#include "support/Export.h"

namespace quillon::chart {

class Chart;
class DataSeries;
class DataSet;

/// Writes one chart as DrawingML: the chart part, a c:chartSpace document, and the inline drawing that places
/// the chart in a word-processing document. The caller owns the DOM documents, and the package around them.
///
/// An operation is named after the element that it makes and appends to the parent it is given. A writer
/// holds no state of a document. Use each writer, and each document, on one thread at a time; different
/// charts may be written on different threads at once.
class QUILLON_EXPORT DOCXChartWriter : public ChartWriter {
 public:
    /// Requires: `chart` outlives the writer.
    explicit DOCXChartWriter(const Chart* chart);

    /// Appends the inline drawing to `parent`, a paragraph of the main document `doc`: `id` is the drawing's
    /// number, `relId` the relationship id of the chart part. The extent is 6 by 3.5 inches.
    /// Throws: std::runtime_error, with the document untouched, when `doc` or `parent` is null, or `parent`
    /// belongs to another document.
    virtual void createChartDOMElemContent(xercesc::DOMDocument* doc, xercesc::DOMElement* parent,
                                           const std::u16string& id, const std::u16string& relId);
    /// Fills an empty document with the chart part.
    /// Throws: std::runtime_error, with the document untouched, when `doc` is null or has a root already, or
    /// the chart is null or has no data set, or its title's paragraph or first run is an empty handle.
    /// std::out_of_range when the title's paragraph has no runs.
    virtual void createChartDOMDocContent(xercesc::DOMDocument* doc);
    /// The colours and style parts have no content: both leave the document as it is.
    virtual void createChartColorsDOMDocContent(xercesc::DOMDocument* doc);
    virtual void createChartStyleDOMDocContent(xercesc::DOMDocument* doc);

    /// Parses `markup`. Prefixes need not be declared; a document type declaration is refused.
    /// Throws: std::runtime_error with the parser's message, "Doctype not allowed.", or "Could not parse: "
    /// and the markup.
    std::shared_ptr<xercesc::DOMDocument> parseString(const std::u16string& markup) const;
    /// Parses `markup` and appends a copy of its root to `parent`, an element of `doc`; returns the copy.
    /// Throws: as parseString, and std::runtime_error "DOCXChartWriter could not import parsed markup."
    xercesc::DOMElement* appendParsedElement(std::u16string markup, xercesc::DOMDocument* doc,
                                             xercesc::DOMElement* parent) const;
    /// The n-th element named `tagName` below `elem`, counting from 0.
    /// Throws: std::runtime_error "findElem: element not found." or "findElem: nth element not found."
    xercesc::DOMElement* findElem(xercesc::DOMElement* elem, const char16_t* tagName, unsigned long n) const;

 protected:
    /// An operation refuses a null document or parent, and a parent of another document.
    /// Throws: std::runtime_error "DOCXChartWriter could not import parsed markup."
    virtual void c_chartSpace(xercesc::DOMDocument* doc) const;
    virtual void c_chart(xercesc::DOMDocument* doc, xercesc::DOMElement* chartSpace) const;
    virtual void c_title(xercesc::DOMDocument* doc, xercesc::DOMElement* chart) const;
    virtual void c_plotArea(xercesc::DOMDocument* doc, xercesc::DOMElement* chart) const;
    /// Appends nothing: charts do not write a legend.
    virtual void c_legend(xercesc::DOMDocument* doc, xercesc::DOMElement* chart) const;
    /// The element of the chart type, with its series.
    virtual void c_chartTypeGroup(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const = 0;
    virtual void c_ser(xercesc::DOMDocument* doc, xercesc::DOMElement* group,
                       unsigned long seriesIndex) const;
    virtual void c_serShapeProps(xercesc::DOMDocument* doc, xercesc::DOMElement* ser,
                                 std::shared_ptr<DataSeries> series, unsigned long seriesIndex) const;
    /// Throws: std::out_of_range when the series has no such point.
    virtual void c_dPt(xercesc::DOMDocument* doc, xercesc::DOMElement* ser,
                       std::shared_ptr<DataSeries> series, unsigned long pointIndex) const;
    virtual void c_cat(xercesc::DOMDocument* doc, xercesc::DOMElement* ser) const;
    virtual void c_val(xercesc::DOMDocument* doc, xercesc::DOMElement* ser, unsigned long seriesIndex) const;
    virtual void c_dLbls(xercesc::DOMDocument* doc, xercesc::DOMElement* group) const;
    virtual void c_catAx(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const;
    virtual void c_valAx(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const;

    const DataSet& getDataSet() const;

    /// The point template of a c:dPt, with the index and the two colours in place.
    void appendDataPoint(xercesc::DOMDocument* doc, xercesc::DOMElement* ser, unsigned long pointIndex,
                         const std::u16string& fillColor, const std::u16string& lineColor) const;
    /// What closes a group with axes: gap width and the two axis ids.
    void appendGapWidthAndAxisIds(xercesc::DOMDocument* doc, xercesc::DOMElement* group) const;
    /// One c:ser for every series, in order.
    void appendAllSeries(xercesc::DOMDocument* doc, xercesc::DOMElement* group) const;

    static constexpr char16_t DrawingXML_chartNS_[] =
        u"http://schemas.openxmlformats.org/drawingml/2006/chart";
    static constexpr char16_t DrawingXML_mainNS_[] = u"http://schemas.openxmlformats.org/drawingml/2006/main";
    static constexpr char16_t NS_OOXML_relationships_[] =
        u"http://schemas.openxmlformats.org/officeDocument/2006/relationships";
    static constexpr char16_t Pfx_OOXML_relationships_[] = u"xmlns:r";
    static constexpr char16_t Pfx_a_[] = u"xmlns:a";

    static constexpr char16_t SC_0_[] = u"0";
    static constexpr char16_t SC_1_[] = u"1";
    static constexpr char16_t SC_2_[] = u"2";
    static constexpr char16_t SC_id_[] = u"id";
    static constexpr char16_t SC_r_id_[] = u"r:id";
    static constexpr char16_t SC_val_[] = u"val";
    static constexpr char16_t SC_idx_[] = u"idx";

    static constexpr char16_t EN_c_spPr_[] = u"c:spPr";
    static constexpr char16_t EN_a_solidFill_[] = u"a:solidFill";
    static constexpr char16_t EN_a_schemeClr_[] = u"a:schemeClr";
    static constexpr char16_t EN_a_ln_[] = u"a:ln";
    static constexpr char16_t EN_a_noFill_[] = u"a:noFill";
    static constexpr char16_t EN_a_effectLst_[] = u"a:effectLst";
    static constexpr char16_t EN_c_strRef_[] = u"c:strRef";
    static constexpr char16_t EN_c_f_[] = u"c:f";
    static constexpr char16_t EN_c_strCache_[] = u"c:strCache";
    static constexpr char16_t EN_c_ptCount_[] = u"c:ptCount";
    static constexpr char16_t EN_c_pt_[] = u"c:pt";
    static constexpr char16_t EN_c_v_[] = u"c:v";
    static constexpr char16_t EN_c_numRef_[] = u"c:numRef";
    static constexpr char16_t EN_c_numCache_[] = u"c:numCache";
    static constexpr char16_t EN_c_formatCode_[] = u"c:formatCode";
    static constexpr char16_t EN_c_axId_[] = u"c:axId";
    static constexpr char16_t EN_c_scaling_[] = u"c:scaling";
    static constexpr char16_t EN_c_orientation_[] = u"c:orientation";
    static constexpr char16_t EN_c_delete_[] = u"c:delete";
    static constexpr char16_t EN_c_axPos_[] = u"c:axPos";
    static constexpr char16_t EN_c_numFmt_[] = u"c:numFmt";
    static constexpr char16_t EN_a_round_[] = u"a:round";
    static constexpr char16_t EN_c_crossAx_[] = u"c:crossAx";

    static ColumnLetters Number2Letter_;

 private:
    /// Initialises the Xerces platform once, before any writer exists.
    struct XercesPlatform {
        XercesPlatform();
    };
    static const XercesPlatform _xerces_init;

    /// Throws: std::runtime_error when the chart cannot be written.
    void requireWritableChart() const;
    /// The end of the inline drawing: what it shows, the chart part.
    void a_graphic(xercesc::DOMDocument* doc, xercesc::DOMElement* inlineDrawing,
                   const std::u16string& relId) const;

    const Chart* chart_;
    std::shared_ptr<xercesc::DOMLSParser> parser_;
};

}  // namespace quillon::chart
