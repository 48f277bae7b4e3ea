#pragma once

#include <memory>

#include "report/table/StoredRows.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// Reads the rows that the option query selects from a SQLite database, or those of its only table. The
/// database is opened for reading alone, and a query can do nothing but select. `name` is the path in
/// sentences. Throws: std::runtime_error with SQLite's reason.
std::unique_ptr<RowSource> readDatabaseRows(const std::string& path, const std::string& name,
                                            const TableOptions& options);

}  // namespace quillon::report
