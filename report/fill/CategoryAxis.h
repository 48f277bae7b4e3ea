#pragma once

#include "report/fill/FillPlan.h"
#include "report/package/Edits.h"

namespace quillon::report {

/// Makes category axes into axes of dates, or back, where the new categories are dates and the old ones were
/// not, or the other way round. An axis that its author has declared one of texts stays one. Dates with times
/// of day stand on an axis of texts, since days are the smallest unit of the other.
void writeCategoryAxes(Edits& edits, const FillPlan& plan);

}  // namespace quillon::report
