#pragma once

#include <string>

#include "report/fill/FillPlan.h"

namespace quillon::report {

/// The alternative text of a chart after a fill. One that was generated from what the chart showed is
/// generated from what it shows now; one of the author's stays.
std::string renewAltText(const std::string& text, const FillPlan& plan, const ChartData& data);

}  // namespace quillon::report
