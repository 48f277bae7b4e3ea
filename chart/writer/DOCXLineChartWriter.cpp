#include "chart/writer/DOCXLineChartWriter.h"

#include "chart/writer/DomElements.h"
#include "chart/writer/MarkupTemplate.h"
#include "chart/writer/Templates.h"
#include "chart/writer/WriterColors.h"

namespace quillon::chart {

void DOCXLineChartWriter::c_chartTypeGroup(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const
{
    auto* lineChart = appendElement(doc, plotArea, u"c:lineChart");
    appendElement(doc, lineChart, u"c:grouping", u"standard");
    appendElement(doc, lineChart, u"c:varyColors", SC_1_);
    appendAllSeries(doc, lineChart);
    c_dLbls(doc, lineChart);
    // Lines carry the gap width of bars.
    appendGapWidthAndAxisIds(doc, lineChart);
}

void DOCXLineChartWriter::c_serShapeProps(xercesc::DOMDocument* doc, xercesc::DOMElement* ser,
                                          std::shared_ptr<DataSeries> series, unsigned long seriesIndex) const
{
    static const MarkupTemplate block(*parseString(templates::seriesLine), {{u"a:srgbClr", 0}});
    block.appendTo(doc, ser, {getSeriesColor(*series, seriesIndex).c_str()});
}

}  // namespace quillon::chart
