#pragma once

#include <cstdint>
#include <deque>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "report/table/DateText.h"
#include "report/table/Rows.h"

namespace quillon::report {

/// Texts of a column; each that comes again is kept once.
class TextColumn {
 public:
    void add(std::string_view text);

    /// The text of a row.
    const std::string& operator[](std::size_t row) const { return texts_[rows_[row]]; }
    /// The position of a row's text among the different ones.
    std::uint32_t getIndex(std::size_t row) const { return rows_[row]; }
    /// The different texts, in the order in which they first come.
    const std::deque<std::string>& getTexts() const { return texts_; }
    std::size_t getSize() const { return rows_.size(); }

 private:
    std::vector<std::uint32_t> rows_;
    std::deque<std::string> texts_;
    std::unordered_map<std::string_view, std::uint32_t> positions_;
};

enum class ColumnKind : unsigned char { Text, Number, Date };

/// A column of a table, its cells understood.
struct TableColumn {
    std::string name = {};
    ColumnKind kind = ColumnKind::Text;
    /// As in a cell of a worksheet: "0.0%", "yyyy-mm-dd". Empty: General.
    std::string numberFormat = {};
    /// Of a column of dates.
    DateStep dateUnit = DateStep::Day;
    /// One for each row where the kind is Number or Date, a date as its serial number in a worksheet; NaN
    /// where a cell holds none.
    std::vector<double> numbers = {};
    /// One for each row where the kind is Text or Date, as it stands in the table.
    TextColumn texts = {};
};

/// A table as read: columns of numbers, dates and text. Text is well-formed UTF-8.
struct Table {
    SourcePlace place;
    std::size_t rowCount = 0;
    std::vector<TableColumn> columns = {};
    /// Where each row stands in its source.
    std::vector<std::uint32_t> lines = {};
};

}  // namespace quillon::report
