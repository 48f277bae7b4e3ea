#pragma once

#include <memory>

#include "report/finish/ChartContext.h"
#include "support/Export.h"

namespace quillon::report {

/// What a chart is drawn from: its data with what the options say of it.
struct ShownChart {
    /// Of the class whose writer makes the axes that the kind needs, with the series that are drawn.
    std::shared_ptr<const chart::Chart> chart;
    /// What the workbook holds. Its series are those of the chart but for a waterfall.
    ChartData data;
    WorkbookOptions workbook;
};

/// Requires: options that suit the kind of the chart.
/// Throws: ChartError that says what in the data does not suit the kind.
QUILLON_EXPORT ShownChart prepareChart(const ChartContext& context);

/// Whether the categories of the chart make a date axis.
bool hasDateAxis(const ChartContext& context);

}  // namespace quillon::report
