#pragma once

#include <string>
#include <string_view>

#include "support/Export.h"

namespace quillon::report {

/// A number as a cell of a worksheet shows it in the format `code`: "#,##0.00", "0.0%", "[Red]-0", "mmm yy",
/// up to four sections with ";" between. Empty or "General": the shortest text, with at most 11 digits. Dates
/// are serial numbers: days since 30 December 1899. Names of months and days are English. A code with
/// fractions or scientific notation shows as General.
QUILLON_EXPORT std::string formatNumber(double number, std::string_view code);

/// Whether the code shows a date or a time.
QUILLON_EXPORT bool isDateFormat(std::string_view code);

}  // namespace quillon::report
