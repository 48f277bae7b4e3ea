#pragma once

#include <string>

namespace quillon::report {

/// A date as a worksheet counts it, in days since 30 December 1899, as "2026-07-31"; with the time where
/// there is one, "2026-07-31T12:30:00". What is no date of a calendar is written as the number.
std::string writeDate(double serial);

/// Reads "2026-07-31", "2026-07-31T12:30" or "2026-07-31T12:30:00"; NaN for anything else.
double readDate(const std::string& text);

}  // namespace quillon::report
