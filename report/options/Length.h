#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace quillon::report {

/// English Metric Units, those of drawings.
inline constexpr std::int64_t emuPerInch = 914'400;
inline constexpr std::int64_t emuPerPoint = emuPerInch / 72;
/// Twentieths of a point, the units of pages and tables.
inline constexpr std::int64_t emuPerTwip = emuPerPoint / 20;

/// Reads a length with a unit, "15cm", as English Metric Units. It may be of any size, "nan" and "inf" as
/// well. Throws: std::runtime_error when the text is not such a length.
double readLength(std::string_view text);

/// The same for a length that a document can have: "15cm", "80mm", "5.5in" or "300pt".
/// Throws: std::runtime_error when the text is not such a length, or lies outside 0.1 to 22 inches, the
/// widest page that word processors take.
std::int64_t parseLength(std::string_view text);
/// The same; sentences begin with the name of what has the length.
std::int64_t parseLength(const std::string& name, std::string_view text);

/// The same in points. Throws: as parseLength.
double parsePoints(std::string_view text);

struct ChartOptions;

/// The options with a width and height: those of a chart that is given none are 6in and 3.5in.
ChartOptions withSize(ChartOptions options);

}  // namespace quillon::report
