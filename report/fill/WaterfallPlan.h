#pragma once

#include <memory>
#include <vector>

#include "report/fill/SeriesPlan.h"
#include "report/options/ChartData.h"

namespace quillon::report {

/// What draws a waterfall.
struct DrawnWaterfall {
    /// Those that the chart has, and behind them those for bars that cross 0 where it had none.
    std::vector<SeriesPlan> series = {};
    /// The same number of series.
    std::shared_ptr<chart::DataSet> dataSet = {};
};

/// The series that draw `series` in a chart that is a waterfall, with the labels of bars that cross 0.
DrawnWaterfall drawWaterfall(const ChartMarkup& part, const chart::DataSeries& series,
                             const std::vector<bool>& totals);

}  // namespace quillon::report
