#include "chart/writer/DOCXPieChartWriter.h"

#include "chart/model/DataSet.h"
#include "chart/writer/DomElements.h"
#include "chart/writer/WriterColors.h"

namespace quillon::chart {

void DOCXPieChartWriter::c_chartTypeGroup(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const
{
    auto* pieChart = appendElement(doc, plotArea, u"c:pieChart");
    appendElement(doc, pieChart, u"c:varyColors", SC_0_);
    const auto count = getDataSet().getSeriesCount();
    for (unsigned long i = 0; i < count; ++i) c_ser(doc, pieChart, 0);
    c_dLbls(doc, pieChart);
}

void DOCXPieChartWriter::c_dPt(xercesc::DOMDocument* doc, xercesc::DOMElement* ser,
                               std::shared_ptr<DataSeries> series, unsigned long pointIndex) const
{
    const ShapeFormat* format = series->getPoints().at(pointIndex)->getFormat().get();
    if (format == nullptr) format = series->getFormat().get();
    const auto& standard = getPaletteColor(pointIndex);
    appendDataPoint(doc, ser, pointIndex, getColor(format ? format->getFill().get() : nullptr, standard),
                    getColor(format ? format->getBorder().get() : nullptr, standard));
}

void DOCXPieChartWriter::c_catAx(xercesc::DOMDocument* /*doc*/, xercesc::DOMElement* /*plotArea*/) const {}

void DOCXPieChartWriter::c_valAx(xercesc::DOMDocument* /*doc*/, xercesc::DOMElement* /*plotArea*/) const {}

}  // namespace quillon::chart
