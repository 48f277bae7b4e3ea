#pragma once

#include <string>
#include <vector>

#include "report/options/ChartData.h"

namespace quillon::report {

/// The data of a chart as a table that can be read again.
enum class DataForm : unsigned char { Csv, Json, Markdown };

/// Whether the chart has points with X values in place of categories.
bool isOfPoints(const ChartData& data);

/// The names of the columns of the series: those of the series, with a number behind one that is there
/// already, and "Series" for none.
std::vector<std::string> nameColumns(const ChartData& data);

/// The categories first, one column for each level, then a column for each series. X values stand in place of
/// the categories, or before each series where they differ; sizes of bubbles stand behind their series.
/// Numbers have full precision, dates are written as ISO dates, and gaps are empty.
std::string writeData(const ChartData& data, DataForm form);

}  // namespace quillon::report
