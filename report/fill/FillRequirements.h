#pragma once

#include <cstddef>

#include "report/fill/ChartMarkup.h"
#include "report/fill/FillReport.h"
#include "report/options/ChartData.h"

namespace quillon::report {

// What has to hold before a chart can take new data. Each function throws std::runtime_error that says what
// is wrong and what is allowed.

/// The chart is one that can be filled. The data has points, at most as many as a worksheet has rows, and as
/// many series as a chart of this type takes.
void requireFillable(const ChartMarkup& part, const ChartData& data);
/// Every number is one that a chart can show.
void requireNumbers(const chart::DataSet& dataSet);
/// Texts that stand in the part as they are hold no character that XML lacks. Names and categories have a
/// notation for every character.
void requireTexts(const ChartData& data, const FillOptions& options);

/// The number of points of the longest series.
std::size_t countLongest(const chart::DataSet& dataSet);

}  // namespace quillon::report
