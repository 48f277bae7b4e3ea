#pragma once

#include "chart/model/PieChart.h"

namespace quillon::report {

/// A pie that shows each of its series, where others repeat their first: the rings of a doughnut, from the
/// inside out.
class RingChart final : public chart::PieChart {
 public:
    std::shared_ptr<chart::DOCXChartWriter> getDOCXWriter() const override;
};

}  // namespace quillon::report
