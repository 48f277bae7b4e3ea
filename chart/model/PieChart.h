#pragma once

#include <type_traits>

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

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<PieChart> /*type*/)
{
    return "quillon.chart.PieChart";
}

}  // namespace quillon::chart
