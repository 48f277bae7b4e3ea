#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <variant>
#include <vector>

namespace quillon::report {

/// How a table is read, and what of it becomes the data of a chart. An empty text or list, 0 and false stand
/// for the default. Columns are named by their header, or by position: "#3" is the third.
struct TableOptions {
    /// comma, semicolon, tab or pipe. Default: what the rows show.
    std::string delimiter = {};
    /// The name of a workbook's sheet, or its position: "#2". Default: the first.
    std::string sheet = {};
    /// Cells of the sheet, "B3:F20". Default: all that hold something.
    std::string range = {};
    /// Whether hidden rows and columns of the sheet are read too.
    bool hiddenCells = false;
    /// A SELECT for a database. Default: all rows, where the database has one table.
    std::string query = {};
    /// Any name that iconv knows. Default: UTF-8, or UTF-16 where the file shows it.
    std::string encoding = {};
    /// comma or point. Default: what the columns show.
    std::string decimal = {};
    /// comma, point, blank, apostrophe or none. Default: whatever groups digits by three and is not the
    /// decimal mark.
    std::string thousands = {};
    /// Texts that stand for no value, beside N/A, NA, NaN, null, -, #N/A and "." in any case.
    std::vector<std::string> missing = {};
    /// dmy, mdy, ymd or none (dates stay text). Default: what the column shows.
    std::string dates = {};
    /// Lines, or rows, above the table. Default: found by the header.
    std::size_t skip = 0;
    /// The first row holds data: the columns are named "Column 1" and so on.
    bool noHeader = false;
    /// Rows with these categories are left out.
    std::vector<std::string> drop = {};
    /// One column, or several for levels, the outermost first. Default: the first.
    std::vector<std::string> category = {};
    /// The column that has one text in all rows that are shown: it is taken for nothing unless it is named.
    std::string groupedBy = {};
    /// Wide tables: the columns that become series. Default: all others that hold numbers.
    std::vector<std::string> columns = {};
    /// Long tables, one row for each value: the column of series names, and that of values.
    std::string series = {};
    std::string value = {};
    /// The column of X values: numbers or dates.
    std::string x = {};
    /// Columns of bubble sizes and of error bars: one for each series, or one for all.
    std::vector<std::string> sizes = {};
    std::vector<std::string> errorsPlus = {};
    std::vector<std::string> errorsMinus = {};
    /// value, category or descending. Default: the table's order.
    std::string sort = {};
    /// The number of categories kept; the others are added up as "Other". Default, 0: all.
    std::size_t top = 0;
    /// sum, mean, count, min or max. Default: values of one category stay apart.
    std::string aggregate = {};
    bool transpose = false;
    /// Conditions "column=text" that a row must meet, all of them.
    std::vector<std::string> where = {};
    bool cumulative = false;
    bool share = false;
    /// Whether cells without a number become gaps; otherwise they are refused.
    bool gaps = false;
};

/// One option of a table; command line, job file and documentation follow from these rows.
struct TableOption {
    using Member = std::variant<std::string TableOptions::*, std::vector<std::string> TableOptions::*,
                                std::size_t TableOptions::*, bool TableOptions::*>;

    const char* name;
    Member member;
    /// The values that are allowed, parted by "|"; empty: any.
    const char* values;
    /// One sentence for the author.
    const char* help;
    const char* group;
    /// The least number.
    unsigned least = 0;
};

extern const std::array<TableOption, 29> tableOptions;

/// "a|b" in parts; none for an empty text.
std::vector<std::string> splitValues(const std::string& values);

/// Whether both read the same rows of a file: sheet, range, encoding and the like.
bool haveSameSource(const TableOptions& a, const TableOptions& b);

/// Throws: std::runtime_error that lists what is allowed, for a value that is not, or options that exclude
/// each other.
void checkTableOptions(const TableOptions& options);

}  // namespace quillon::report
