#pragma once

#include "report/finish/ChartContext.h"

namespace quillon::report {

/// Decides what the categories are drawn as, dates, numbers or texts, and makes them so.
/// Throws: ChartError that names the category that is not what the author says.
void prepareCategories(const ChartContext& context, ChartData& data);

}  // namespace quillon::report
