#pragma once

#include <type_traits>

#include "chart/model/Chart.h"

namespace quillon::chart {

/// A chart of horizontal bars.
class QUILLON_EXPORT BarChart : public Chart {
 public:
    BarChart() = default;
    BarChart(const BarChart& other) = default;

    /// Makes a host-bindable chart.
    static std::shared_ptr<Chart> create();

    const char* getFullyQualifiedOrcaTypeName() const override;
    std::shared_ptr<DOCXChartWriter> getDOCXWriter() const override;
    std::shared_ptr<DataSeriesFormatOptions> getDataSeriesFormatOptions() const override;
};

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<BarChart> /*type*/)
{
    return "quillon.chart.BarChart";
}

}  // namespace quillon::chart
