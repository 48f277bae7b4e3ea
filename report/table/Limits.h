#pragma once

#include <cstddef>
#include <cstdint>

/// What is read at most. A table beyond a limit is refused before the work is done, with a sentence that says
/// so.
namespace quillon::report::limits {

/// Rows and columns of a worksheet, which holds the numbers of the chart below a row and beside a column of
/// names.
constexpr std::size_t categories = 1'048'575;
constexpr std::size_t series = 16'383;
/// Series times categories of one chart, gaps included.
constexpr std::size_t points = 2'000'000;
/// Cells in a row of a table.
constexpr std::size_t columns = 16'384;
/// Rows of a worksheet in programs that take the most.
constexpr std::int32_t sheetRows = 16'777'216;
/// Characters of a cell of a worksheet.
constexpr std::size_t textLength = 32'767;
/// Cells of a source that is held in memory as a whole: a workbook, JSON, or the rows of a query.
constexpr std::size_t storedCells = 5'000'000;
/// Bytes of a file that is held in memory as a whole, and of an unpacked workbook.
constexpr std::uint64_t wholeFile = 256ULL << 20U;

}  // namespace quillon::report::limits
