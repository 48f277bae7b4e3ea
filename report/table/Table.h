#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace quillon::report {

/// A table as read from a CSV file: a header row, and rows of as many cells. Text is well-formed UTF-8.
struct Table {
    struct Row {
        /// Where the row starts in the file, from 1.
        std::size_t line;
        std::vector<std::string> cells;
    };

    std::string path;
    std::vector<std::string> columns;
    std::vector<Row> rows;

    /// The position of a column.
    /// Throws: std::runtime_error that lists the columns when there is none of that name.
    std::size_t findColumn(const std::string& name) const;
    /// The number in a cell, or nothing when the cell holds none.
    static std::optional<double> readNumber(const std::string& cell);
    /// Throws: std::runtime_error that names file, line and column, and says what was expected.
    [[noreturn]] void refuseCell(const Row& row, std::size_t column, const std::string& expected) const;
};

/// Reads a CSV file: UTF-8 with or without a byte-order mark, lines ended by LF or CRLF, quoted fields. An
/// empty `delimiter` is found in the header row; otherwise it is "comma", "semicolon" or "tab". Throws:
/// std::runtime_error that names the file, and line and column where they matter: an unreadable file, another
/// encoding, an open quote, ragged rows, an empty table, missing or repeated column names.
Table readTable(const std::string& path, const std::string& delimiter);

}  // namespace quillon::report
