#pragma once

#include <string>
#include <vector>

#include "report/options/ChartData.h"
#include "report/table/Table.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// A series over the categories of a grid; NaN where it has no value.
struct GridSeries {
    std::string name = {};
    std::vector<double> values = {};
    /// Its own X values, one for each value; empty where the positions of the grid are.
    std::vector<double> x = {};
    SeriesDetails details = {};
};

/// The data of a chart while it is shaped: every series has a value for every category.
struct Grid {
    /// The file, for sentences.
    std::string name = {};
    std::vector<std::string> categories = {};
    /// Outer levels of the categories, the outermost first; a text for each category.
    std::vector<std::vector<std::string>> levels = {};
    /// Text, or Date or Number with positions.
    CategoryKind kind = CategoryKind::Text;
    /// One for each category where they are dates, quarters or numbers; otherwise empty. They give the order
    /// by category even where the kind is Text.
    std::vector<double> positions = {};
    std::string positionFormat = {};
    std::vector<GridSeries> series = {};
};

/// Transposes, keeps the largest categories, sorts, and makes shares and running totals, as the options say,
/// in that order. Throws: std::runtime_error for shares of a total of 0.
void shapeGrid(Grid& grid, const TableOptions& options);

/// Throws: std::runtime_error for more series, categories or points than a chart takes.
void requireLimits(const std::string& name, std::size_t series, std::size_t categories);

/// The grid as the data of a chart. Throws: std::runtime_error for a text that is longer than a worksheet
/// takes.
ChartData makeChartData(const Grid& grid);

}  // namespace quillon::report
