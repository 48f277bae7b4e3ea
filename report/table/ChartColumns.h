#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "report/table/Rows.h"
#include "report/table/TableOptions.h"
#include "report/table/TableScan.h"

namespace quillon::report {

using Columns = std::vector<std::size_t>;

/// What the columns of the table are for, by position.
struct ChartColumns {
    Columns categories;
    Columns values;
    Columns sizes;
    Columns errorsPlus;
    Columns errorsMinus;
    std::optional<std::size_t> series;
    std::optional<std::size_t> x;
};

/// Takes the columns that the options name, and chooses those that they leave open.
/// Throws: std::runtime_error when no column has the name, or none holds numbers.
ChartColumns findChartColumns(const TableScan& scan, const TableOptions& options, const Note& note);

/// Refuses early what a chart cannot show: a wide table that is not aggregated shows every row.
/// Throws: std::runtime_error that says what a chart can show.
void requireRows(const TableScan& scan, const ChartColumns& roles, const TableOptions& options);

}  // namespace quillon::report
