#pragma once

#include <vector>

#include "report/finish/Labels.h"

namespace quillon::report {

/// Whether each slice has room for its label.
bool haveSlicesRoom(const ChartPart& part, const SeriesPart& series, const LabelSettings& settings);

/// The colour of each label of a series, by the position of its point. Labels on bars and slices that have
/// room for them are black or white, what is read better on the fill. Empty where labels stand on none.
std::vector<TextColor> chooseLabelColors(const ChartPart& part, const SeriesPart& series,
                                         const LabelSettings& settings);

}  // namespace quillon::report
