#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "report/table/Rows.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// Rows of a table that have one text in the column that parts it.
struct RowGroup {
    std::string name;
    /// Columns that have one text in all of these rows.
    std::vector<std::pair<std::string, std::string>> texts = {};
    /// These rows below the names of the columns; null where the table has more cells than are held in
    /// memory.
    std::shared_ptr<RowSource> rows = nullptr;
};

/// Reads a table once and parts its rows by the texts of a column, in the order in which they first come.
/// Throws: std::runtime_error for a column that is not there, and a row without a text.
std::vector<RowGroup> readRowGroups(const std::string& path, const TableOptions& options,
                                    const std::string& by, const Note& note);

}  // namespace quillon::report
