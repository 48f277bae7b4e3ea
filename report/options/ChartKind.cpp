#include "report/options/ChartKind.h"

#include <stdexcept>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "report/options/ChartOptions.h"

namespace quillon::report {

ChartKind getKind(const chart::Chart& chart)
{
    if (dynamic_cast<const chart::BarChart*>(&chart) != nullptr) return ChartKind::Bar;
    if (dynamic_cast<const chart::ColumnChart*>(&chart) != nullptr) return ChartKind::Column;
    if (dynamic_cast<const chart::LineChart*>(&chart) != nullptr) return ChartKind::Line;
    if (dynamic_cast<const chart::PieChart*>(&chart) != nullptr) return ChartKind::Pie;
    throw std::runtime_error("A chart is a bar, column, line or pie chart.");
}

ChartKind getKind(const chart::Chart& chart, const ChartOptions& options)
{
    return options.kind ? *options.kind : getKind(chart);
}

}  // namespace quillon::report
