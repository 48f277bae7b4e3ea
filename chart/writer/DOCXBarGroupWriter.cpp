#include "chart/writer/DOCXBarGroupWriter.h"

#include "chart/writer/DomElements.h"

namespace quillon::chart {

void DOCXBarGroupWriter::c_chartTypeGroup(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const
{
    auto* barChart = appendElement(doc, plotArea, u"c:barChart");
    appendElement(doc, barChart, u"c:barDir", direction_);
    appendAllSeries(doc, barChart);
    c_dLbls(doc, barChart);
    appendGapWidthAndAxisIds(doc, barChart);
}

}  // namespace quillon::chart
