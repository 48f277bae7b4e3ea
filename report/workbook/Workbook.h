#pragma once

#include <string>

namespace quillon::chart {
class Chart;
}

namespace quillon::report {

/// The last column of a worksheet, XFD, by 0-based number; column A holds the categories.
inline constexpr unsigned long maximumColumn = 16'383;
/// The last row of a worksheet by 0-based number; row 0 holds the series names.
inline constexpr unsigned long maximumRow = 1'048'575;
/// The largest number that a cell holds.
inline constexpr double maximumNumber = 9.99999999999999e307;

/// The letters of a column by 0-based number: 0 is "A", 26 "AA", 16383 "XFD".
std::u16string getColumnLetters(unsigned long number);

/// An .xlsx workbook with the data of the chart: sheet "Sheet1", categories from A2, series names from B1,
/// values from B2 down. What is not a finite number is an empty cell.
/// Throws: std::runtime_error that names the cell whose text is too long, or says why there is no workbook.
std::string makeWorkbook(const chart::Chart& chart);

}  // namespace quillon::report
