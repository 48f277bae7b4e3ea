#pragma once

#include <cstddef>
#include <string>

#include "report/finish/Labels.h"

namespace quillon::report {

/// What word processors put between the contents of a label that says nothing else.
inline constexpr auto standardSeparator = u"; ";

/// The text of the label of a point, as far as it is known: a share is as wide as the widest. Requires: a
/// number format, where the label says the value.
std::u16string composeLabel(const ChartPart& part, const SeriesPart& series, const LabelSettings& settings,
                            std::size_t point, double value);

}  // namespace quillon::report
