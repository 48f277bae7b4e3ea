#pragma once

#include <string>

#include "report/finish/ChartPart.h"

namespace quillon::report {

/// How far the value axis reaches from end to end, as far as options and values tell; shares reach 1.
double findValueSpan(const ChartPart& part);

/// How the numbers of the value axis look: as the option or the first series that says so has it, or with
/// thousands separators and the decimals that values and gridlines need. Shares are percentages.
std::string chooseAxisFormat(const ChartPart& part);

/// The same for the labels of a series; no label shows more decimals than the values need. Shares: of slices.
std::string chooseLabelFormat(const ChartPart& part, const SeriesPart& series, bool isShare);

}  // namespace quillon::report
