#pragma once

#include <optional>
#include <string>
#include <vector>

namespace quillon::report {

/// The number that a text says: "-1.5".
std::optional<double> readNumberText(const std::u16string& text);
/// The serial number of the date that a text says, days since 30 December 1899: "2026-07-31", "2026-07".
std::optional<double> readDateText(const std::u16string& text);

using CategoryReader = std::optional<double> (*)(const std::u16string& text);
/// The number of each category; empty where one says none.
std::vector<double> readCategories(const std::vector<std::u16string>& categories, CategoryReader read);

/// What tells all dates of an axis apart, from the smallest unit on.
enum class DateUnit { Days, Months, Years };

/// Serial numbers of dates that ascend, and how an axis shows them.
struct DateScale {
    /// The largest unit that keeps all dates apart.
    DateUnit base;
    /// The labels: every `step` of `unit`.
    DateUnit unit;
    unsigned step;
    /// As in a cell: "mmm yy".
    const char* format;
};
DateScale chooseDateScale(const std::vector<double>& dates);

/// How dates look as texts, when nobody says so.
const char* chooseDateFormat(const std::vector<double>& dates);

}  // namespace quillon::report
