#pragma once

#include <memory>
#include <string>
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

/// The series that draw `series` in a chart that is a waterfall, with the labels of bars that cross 0, in a
/// new number format unless that is empty.
DrawnWaterfall drawWaterfall(const ChartMarkup& part, const chart::DataSeries& series,
                             const std::vector<std::u16string>& categories, const std::vector<bool>& totals,
                             const std::string& numberFormat);

/// A new number format with the sign that labels of increases and decreases have in both parts of theirs:
/// "-0;-0".
std::string keepSign(const std::string& before, const std::string& format);

}  // namespace quillon::report
