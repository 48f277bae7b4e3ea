#pragma once

#include <string>

#include "report/finish/Scales.h"

namespace quillon::report {

/// How far an axis reaches from end to end, as far as options and values tell; shares reach 1.
double findSpan(const ChartPart& part, const Scale& scale);

/// How the numbers of a value axis look: as the option or its first series that says so has it, or with
/// thousands separators and the decimals that values and gridlines need. Shares are percentages.
std::string chooseAxisFormat(const ChartPart& part, const Scale& scale);
/// The same for the horizontal axis of points, whose numbers may be years, and may be dates.
std::string chooseXFormat(const ChartPart& part);

/// The same for the labels of a series; no label shows more decimals than the values need. Shares: of slices.
std::string chooseLabelFormat(const ChartPart& part, const SeriesPart& series, bool isShare);

}  // namespace quillon::report
