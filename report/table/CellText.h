#pragma once

#include <string>

#include "report/table/Rows.h"

namespace quillon::report {

/// The shortest text that reads back to the same number: "0.1", "1e+21".
std::string writeNumber(double number);

/// A date of a worksheet as ISO text: "2024-03-31", with the time where it has one.
std::string writeIsoDate(double serial);

/// A cell as people read it.
std::string writeCell(const Cell& cell);

/// Whether a row of that name adds up others: "Total", "Summe:", in any case.
bool namesTotal(std::string text);

}  // namespace quillon::report
