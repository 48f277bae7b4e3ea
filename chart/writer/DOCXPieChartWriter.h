#pragma once

#include "chart/writer/DOCXChartWriter.h"

namespace quillon::chart {

/// Writes a pie chart: one coloured point element for every slice, and no axes.
class QUILLON_EXPORT DOCXPieChartWriter : public DOCXChartWriter {
 public:
    explicit DOCXPieChartWriter(const Chart* chart) : DOCXChartWriter(chart) {}

 protected:
    /// A pie repeats its first series once for every series of the data set.
    void c_chartTypeGroup(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const override;
    void c_dPt(xercesc::DOMDocument* doc, xercesc::DOMElement* ser, std::shared_ptr<DataSeries> series,
               unsigned long pointIndex) const override;
    void c_catAx(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const override;
    void c_valAx(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const override;
};

}  // namespace quillon::chart
