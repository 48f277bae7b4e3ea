#pragma once

#include <memory>
#include <string>

#include "report/options/ChartData.h"
#include "report/options/Listener.h"
#include "report/table/ChartColumns.h"
#include "report/table/Rows.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// Reads a table into the data of a chart: a CSV or TSV file, a workbook (.xlsx, .ods), rows as JSON objects
/// in a list or line by line, a Markdown file, or a SQLite database; "-" is standard input. Which it is shows
/// in the file itself. A column of categories that holds dates gives their serial numbers beside the texts,
/// and a format unless they are days; quarters keep their texts, as worksheets have no format for them. A
/// column's percent, currency or grouped thousands become the number format of its series. Leading columns
/// "Level 1" ... "Category" are levels of categories. In place of gaps one point stands in all series.
///
/// The listener's progress hears of bytes read, its warning of what was understood, replaced or left out.
/// Throws: std::runtime_error with a sentence that names file, line, column and the option that helps.
ChartData readChartData(const std::string& path, const TableOptions& options, const Listener& listener = {},
                        const TableTarget& target = {});
/// The same of rows that have been read; the options of files are not looked at.
ChartData readChartData(const std::shared_ptr<RowSource>& rows, const TableOptions& options,
                        const Listener& listener = {}, const TableTarget& target = {});

}  // namespace quillon::report
