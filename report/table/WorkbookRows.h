#pragma once

#include <memory>
#include <string_view>

#include "report/table/InputFile.h"
#include "report/table/Layout.h"
#include "report/table/StoredRows.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// Whether the bytes are those of a workbook that can be read: .xlsx or .ods.
bool isWorkbook(std::string_view bytes);

/// Reads the cells of a sheet, or of a range of it, as the options sheet and range say; of formulas the
/// results that the workbook keeps. Throws: std::runtime_error for a damaged or oversized workbook, an
/// unknown sheet, and no range.
std::unique_ptr<RowSource> readWorkbookRows(InputFile& file, const TableOptions& options);

}  // namespace quillon::report
