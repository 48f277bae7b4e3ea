#pragma once

#include <vector>

#include "report/table/Table.h"
#include "report/table/TableScan.h"

namespace quillon::report {

/// What a column is read for.
enum class ColumnRole : unsigned char {
    /// Its texts, and its dates where it holds such.
    Label,
    /// Its numbers; an empty cell needs the option `gaps`.
    Value
};

struct ColumnRequest {
    std::size_t column;
    ColumnRole role;
};

/// Reads the columns asked for, in that order, and the rows that the scan keeps.
/// Throws: std::runtime_error that names line and column of a cell that holds no number.
Table readColumns(const TableScan& scan, const std::vector<ColumnRequest>& requests,
                  const TableOptions& options, const Note& note);

}  // namespace quillon::report
