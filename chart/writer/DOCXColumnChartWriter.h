#pragma once

#include "chart/writer/DOCXBarGroupWriter.h"

namespace quillon::chart {

/// Writes a column chart.
class QUILLON_EXPORT DOCXColumnChartWriter : public DOCXBarGroupWriter {
 public:
    explicit DOCXColumnChartWriter(const Chart* chart) : DOCXBarGroupWriter(chart, u"col") {}
};

}  // namespace quillon::chart
