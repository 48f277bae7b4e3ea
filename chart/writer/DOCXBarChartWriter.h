#pragma once

#include "chart/writer/DOCXBarGroupWriter.h"

namespace quillon::chart {

/// Writes a bar chart.
class QUILLON_EXPORT DOCXBarChartWriter : public DOCXBarGroupWriter {
 public:
    explicit DOCXBarChartWriter(const Chart* chart) : DOCXBarGroupWriter(chart, u"bar") {}
};

}  // namespace quillon::chart
