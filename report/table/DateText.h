#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace quillon::report {

/// The order of day, month and year where numbers stand for all three.
enum class DateOrder : unsigned char { DayMonthYear, MonthDayYear, YearMonthDay };

/// How fine a date is.
enum class DateStep : unsigned char { Year, Quarter, Month, Day, Time };

/// A date as a cell of a worksheet holds it.
struct DateText {
    /// Days since 30 December 1899, with the time of day as fraction. Before March 1900 worksheets have no
    /// dates.
    double serial = 0;
    DateStep unit = DateStep::Day;
    /// Minutes that the clock is ahead of UTC; nothing where the text does not say.
    std::optional<int> offset = {};
    /// Whether it may as well be something else, which the column decides: 20240331 a number, 2010-11 a
    /// season over two years.
    bool isDoubtful = false;
};

/// Reads a date: 2024-03-31, 31.3.2024, 31/3/24, 3/31/2024 5:30 PM, 2024-03-31T17:30:00Z, 2024, 2024-03, Q1
/// 2024, March 2024, "31. März 2024", Jan-24, 20240331. Months go by their names in the system's language and
/// common European ones. The serial number is that of the clock, whatever its zone. Where numbers alone stand
/// for day, month and year, `order` says which is which; four digits in front are always a year, and points
/// part day, month and year. Nothing where the text is no date in this order, or no such day exists.
std::optional<DateText> readDate(std::string_view text, DateOrder order);

/// As in a cell of a worksheet: "yyyy", "mmm yy", "yyyy-mm-dd".
const char* getDateFormat(DateStep unit);

/// The month of a name, 1 to 12, in any case and with a point behind it or without. 0: none.
unsigned findMonth(std::string_view name);

}  // namespace quillon::report
