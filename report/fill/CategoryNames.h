#pragma once

#include <string>
#include <vector>

#include "report/fill/ChartMarkup.h"
#include "report/fill/WorkbookMarkup.h"

namespace quillon::report {

/// What the cells above the categories of a chart say, one for each of their columns. Empty where the
/// categories do not stand in columns of the workbook below another row, and where nothing stands there.
/// Throws: std::runtime_error when the sheet is missing or unreadable.
std::vector<std::u16string> readCategoryNames(const ChartMarkup& chart, const WorkbookMarkup& workbook);

}  // namespace quillon::report
