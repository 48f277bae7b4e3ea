#pragma once

#include <memory>
#include <string>

#include "report/table/InputFile.h"
#include "report/table/Rows.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// Opens a table's file; which kind it is of shows in its first bytes, and for JSON in its name too.
/// Throws: std::runtime_error for a compressed file, a kind that is not read, and an option of another kind.
std::unique_ptr<RowSource> openSource(const std::string& path, const TableOptions& options, const Note& note,
                                      InputFile::Progress progress);

}  // namespace quillon::report
