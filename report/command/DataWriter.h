#pragma once

#include <string>

#include "report/options/ChartData.h"

namespace quillon::report {

/// The data of a chart as a table that can be read again.
enum class DataForm : unsigned char { Csv, Json, Markdown };

/// The categories first, one column for each level, then a column for each series; where `hasX`, the points'
/// X values in place of the categories, once for all series that share them. Sizes of bubbles stand behind
/// their series. Numbers have full precision, dates are written as ISO dates, and gaps are empty.
std::string writeData(const ChartData& data, bool hasX, DataForm form);

}  // namespace quillon::report
