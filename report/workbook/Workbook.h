#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "report/options/ChartData.h"
#include "support/Export.h"

namespace quillon::report {

/// The last column of a worksheet, XFD, by 0-based number.
inline constexpr unsigned long maximumColumn = 16'383;
/// The last row of a worksheet by 0-based number; row 0 holds the series names.
inline constexpr unsigned long maximumRow = 1'048'575;
/// The largest number that a cell holds.
inline constexpr double maximumNumber = 9.99999999999999e307;
/// The longest text that a cell holds, in UTF-16 units.
inline constexpr std::size_t maximumTextLength = 32'767;

/// The letters of a column by 0-based number: 0 is "A", 26 "AA", 16383 "XFD".
std::u16string getColumnLetters(unsigned long number);

/// A column of numbers that no series holds, as the lengths of error bars.
struct FurtherColumn {
    std::u16string name;
    std::vector<double> values;
    /// As in a cell of a worksheet. Default, empty: General.
    std::string numberFormat = {};
};

/// What a workbook holds beside categories and values.
struct WorkbookOptions {
    /// Whether the sizes of bubbles stand in a column of their own behind the values of each series.
    bool sizes = false;
    /// They stand behind the last series.
    std::vector<FurtherColumn> furtherColumns = {};
};

/// The 0-based columns of a workbook. Those of the levels of the categories come first, from column 0 on.
QUILLON_EXPORT unsigned long getCategoryColumn(const ChartData& data);
QUILLON_EXPORT unsigned long getValueColumn(const ChartData& data, std::size_t series,
                                            const WorkbookOptions& options = {});
QUILLON_EXPORT unsigned long getFurtherColumn(const ChartData& data, std::size_t index,
                                              const WorkbookOptions& options);

/// Whether the cells of the categories hold numbers, of dates or plain ones.
QUILLON_EXPORT bool hasCategoryNumbers(const ChartData& data);
/// The number format of the categories' cells: the one of `data`, else the one that suits their kind.
QUILLON_EXPORT std::string getCategoryFormat(const ChartData& data);

/// An .xlsx workbook with the data of a chart: sheet "Sheet1", names in the first row, below them the levels
/// of the categories, the categories, the values of each series. What is not a finite number is an empty
/// cell. Equal data gives equal bytes.
/// Throws: std::runtime_error that names the cell whose text is too long, or says what does not fit a sheet.
QUILLON_EXPORT std::string makeWorkbook(const ChartData& data, const WorkbookOptions& options = {});

}  // namespace quillon::report
