#pragma once

#include "report/finish/ShownChart.h"

/// Amounts beside the values: the sizes of bubbles and the lengths of error bars.
namespace quillon::report {

/// Makes series that hold amounts, as the options say, amounts of the others.
/// Throws: ChartError when there are neither one nor as many as others.
void takeAmounts(const ChartOptions& options, ChartData& data);

/// Throws: ChartError that names the series without sizes.
void requireSizes(ShownChart& shown);

/// Gives the error bars columns in the workbook.
void addErrorColumns(ShownChart& shown);

}  // namespace quillon::report
