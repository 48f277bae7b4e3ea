#pragma once

#include "chart/writer/DOCXChartWriter.h"

namespace quillon::chart {

/// Writes a line chart.
class QUILLON_EXPORT DOCXLineChartWriter : public DOCXChartWriter {
 public:
    explicit DOCXLineChartWriter(const Chart* chart) : DOCXChartWriter(chart) {}

 protected:
    void c_chartTypeGroup(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const override;
    /// The fill colour of the series, not its border colour, colours the line.
    void c_serShapeProps(xercesc::DOMDocument* doc, xercesc::DOMElement* ser,
                         std::shared_ptr<DataSeries> series, unsigned long seriesIndex) const override;
};

}  // namespace quillon::chart
