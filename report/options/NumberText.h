#pragma once

#include <string>
#include <string_view>

#include "support/Export.h"

namespace quillon::report {

/// A number as a cell of that number format shows it, in UTF-8: "#,##0.00", "0.0%", "[$€-407] 0;-0", "mmm
/// yy". Dates are serial numbers, days since 30 December 1899, with English names. Fractions are decimal
/// numbers. A number that is not finite gives an empty text.
QUILLON_EXPORT std::string formatNumber(double number, std::string_view format);

/// Whether the format shows a date or a time.
QUILLON_EXPORT bool isDateFormat(std::string_view format);
/// Whether it shows a unit of dates or times by one of these letters: "dD" for days, "hH" for hours.
QUILLON_EXPORT bool showsUnit(std::string_view format, std::string_view letters);

}  // namespace quillon::report
