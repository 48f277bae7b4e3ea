#pragma once

#include <memory>

#include "report/table/InputFile.h"
#include "report/table/StoredRows.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// Reads the cells of a sheet of an .xlsx or .ods workbook, or of a range of it, as the options sheet and
/// range say; of formulas the results that the workbook keeps. Hidden rows and columns are left out with a
/// note unless the option hiddenCells asks for them. Throws: std::runtime_error for a file that is no
/// workbook, or a damaged or oversized one, an unknown sheet, and no range.
std::unique_ptr<RowSource> readWorkbookRows(InputFile& file, const TableOptions& options, const Note& note);

}  // namespace quillon::report
