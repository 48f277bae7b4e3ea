#pragma once

#include "chart/writer/DOCXChartWriter.h"

namespace quillon::chart {

/// Writes the c:barChart group, which bar and column charts share but for the direction of the bars.
class QUILLON_EXPORT DOCXBarGroupWriter : public DOCXChartWriter {
 protected:
    /// `direction` is the value of c:barDir, a literal.
    DOCXBarGroupWriter(const Chart* chart, const char16_t* direction)
        : DOCXChartWriter(chart), direction_(direction)
    {
    }

    void c_chartTypeGroup(xercesc::DOMDocument* doc, xercesc::DOMElement* plotArea) const override;

 private:
    const char16_t* direction_;
};

}  // namespace quillon::chart
