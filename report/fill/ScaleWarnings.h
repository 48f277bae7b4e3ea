#pragma once

#include <string>
#include <vector>

#include "report/fill/FillPlan.h"

namespace quillon::report {

/// A sentence for each end of an axis that is fixed, by the author or so that bars start at 0, and that new
/// values lie beyond: they do not show, or not all of them.
std::vector<std::string> listCutValues(const FillPlan& plan);

}  // namespace quillon::report
