#pragma once

#include <string>
#include <vector>

#include "report/table/Rows.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// Where in the rows of a source the table stands, as its first rows show it.
struct Layout {
    /// One for each column. Empty: the header has none, and the column should be empty or the first.
    std::vector<std::string> names;
    /// The line of the header; 0: there is none.
    std::size_t headerLine = 0;
    /// The position of the first row of data among the rows of the source that are not empty.
    std::size_t firstRow = 0;
};

/// Finds the header below lines of a title, numbers names that come twice, and leaves out columns at the
/// right end that are empty. Throws: std::runtime_error for a source without rows.
Layout findLayout(RowSource& source, const TableOptions& options, const Note& note);

/// Notes that rows from `first` to `last` stand "above" or "below" the table.
void noteLeftOut(const SourcePlace& place, std::size_t first, std::size_t last, const char* side,
                 const Note& note);

/// The part of a sentence that names --skip where it was given, as it may have left out all rows.
std::string describeSkip(const TableOptions& options);

/// Whether every cell is empty.
bool isEmptyRow(const Row& row);

}  // namespace quillon::report
