#pragma once

#include "chart/model/Chart.h"
#include "chart/model/PieChartSlice.h"

namespace quillon::chart {

/// A pie. It is meant for one series: with several, it repeats its first.
class QUILLON_EXPORT PieChart : public Chart {
 public:
    PieChart() = default;
    PieChart(const PieChart& other) = default;

    /// Makes a host-bindable chart.
    static std::shared_ptr<Chart> create();

    /// Returns `slice` and stores nothing: a pie chart holds no list of slices.
    std::shared_ptr<PieChartSlice> append(std::shared_ptr<PieChartSlice> slice);

    const char* getFullyQualifiedOrcaTypeName() const override;
    std::shared_ptr<DOCXChartWriter> getDOCXWriter() const override;
    std::shared_ptr<DataSeriesFormatOptions> getDataSeriesFormatOptions() const override;
};

}  // namespace quillon::chart
