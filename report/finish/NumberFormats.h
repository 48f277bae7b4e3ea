#pragma once

#include <cmath>
#include <limits>
#include <string>

#include "report/finish/Scales.h"

namespace quillon::report {

/// What numbers are divided by on an axis and in its labels: 1000 for thousands.
double getUnit(const std::optional<Units>& units);

/// From the lowest to the highest number on an axis; low is above high where there is none.
struct NumberRange {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double value)
    {
        low = std::fmin(low, value);
        high = std::fmax(high, value);
    }
};
/// Of the values, the ends of their stacks, or their shares of 1.
NumberRange findRange(const ChartPart& part, const Scale& scale);

/// Whether word processors start an axis elsewhere than at 0, because all values lie close together and far
/// from it.
bool isFarFromZero(const NumberRange& range);

/// How far an axis reaches from end to end, as far as options and values tell; shares reach 1.
double findSpan(const ChartPart& part, const Scale& scale);

/// How the numbers of a value axis look: as the option or its first series that says so has it, or with
/// thousands separators and the decimals that values and gridlines need. Shares are percentages. Gridlines
/// that are thousands apart have no decimals, unless the option has them.
std::string chooseAxisFormat(const ChartPart& part, const Scale& scale);
/// The same for the horizontal axis of points, whose numbers may be years, and may be dates.
std::string chooseXFormat(const ChartPart& part);

/// The same for the labels of a series; no label shows more decimals than the values need. Shares: of slices.
std::string chooseLabelFormat(const ChartPart& part, const SeriesPart& series, bool isShare);

}  // namespace quillon::report
