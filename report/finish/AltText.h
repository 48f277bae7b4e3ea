#pragma once

#include <string>

#include "report/finish/ChartContext.h"

namespace quillon::report {

/// What a screen reader says of a chart for which the author gave no text: kind, title, series, and the range
/// of the values.
std::u16string makeAltText(const ChartContext& context);

}  // namespace quillon::report
