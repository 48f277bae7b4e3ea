#pragma once

#include <cstddef>
#include <optional>
#include <vector>

#include "report/table/Rows.h"
#include "report/table/TableOptions.h"
#include "report/table/TableScan.h"

namespace quillon::report {

using Columns = std::vector<std::size_t>;

/// What the chart has that a table is for.
struct TableTarget {
    /// X values and sizes of its own for each series: columns called as in ColumnNames.h are taken for them
    /// when no option says which are.
    bool hasX = false;
    bool hasSizes = false;
    /// Gaps already, so that it may have them again.
    bool hasGaps = false;
    /// Totals of its own, as a waterfall has, and a table in a document may have.
    bool hasTotals = false;
    /// Categories of one name, as a table in a document may have too.
    bool hasRepeated = false;
};

/// What the columns of the table are for, by position.
struct ChartColumns {
    Columns categories;
    Columns values;
    Columns sizes;
    Columns errorsPlus;
    Columns errorsMinus;
    /// X values of some series, or of all.
    Columns ownX;
    std::optional<std::size_t> series;
    std::optional<std::size_t> x;
};

/// Takes the columns that the options name, and chooses those that they leave open.
/// Throws: std::runtime_error when no column has the name, or none holds numbers.
ChartColumns findChartColumns(const TableScan& scan, const TableOptions& options, const TableTarget& target,
                              const Note& note);

/// Refuses early what a chart cannot show: a wide table that is not aggregated shows every row.
/// Throws: std::runtime_error that says what a chart can show.
void requireRows(const TableScan& scan, const ChartColumns& roles, const TableOptions& options);

}  // namespace quillon::report
