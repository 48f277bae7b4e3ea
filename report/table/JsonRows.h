#pragma once

#include <memory>

#include "report/table/InputFile.h"
#include "report/table/StoredRows.h"

namespace quillon::report {

/// Reads rows that are JSON objects: a list of them, an object with one such list, or one object on each
/// line. Columns are the members, in the order in which they first come. Throws: std::runtime_error that
/// names line or row.
std::unique_ptr<RowSource> readJsonRows(InputFile& file);

}  // namespace quillon::report
