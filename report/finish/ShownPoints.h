#pragma once

#include "report/finish/ShownChart.h"

namespace quillon::report {

/// Gives every point its X: its own, or its category. X values that all series share stand in the place of
/// the categories; others stand in columns of their own. Throws: ChartError when a series has neither.
void preparePoints(const ChartContext& context, ShownChart& shown);

}  // namespace quillon::report
