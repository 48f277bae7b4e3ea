#pragma once

#include <string>

#include "support/Export.h"

/// Number formats as cells of a worksheet have them: "#,##0.00", "0%", "mmm yy".
namespace quillon::report {

/// The most decimals of a format that nobody chose.
inline constexpr int maximumDecimals = 2;

/// The decimals that `value` needs to be told exactly; maximumDecimals + 1 where that many do not do.
/// What is not finite needs none.
int countDecimals(double value);

/// Thousands separators and that many decimals: 1 gives "#,##0.0".
std::string makeNumberFormat(int decimals);

/// The same format for whole numbers: #,##0.00 "EUR" gives #,##0 "EUR". A format that divides its numbers
/// ("0.0,,") or shows powers of ten ("0.0E+00") keeps its decimals, as they still tell something.
std::string dropDecimals(const std::string& format);

/// Refuses what a word processor or a spreadsheet takes for a damaged file: quotes or brackets that stay
/// open, letters that stand for nothing, more than four parts or 255 characters.
/// Throws: std::runtime_error that says what is wrong.
QUILLON_EXPORT void checkNumberFormat(const std::string& format);

}  // namespace quillon::report
