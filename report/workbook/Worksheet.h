#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace quillon::report {

/// The number formats of a workbook's cells, each once.
class CellFormats {
 public:
    /// The style of cells with that format, "#,##0"; 0, for General, when it is empty. `place` names it where
    /// it is refused. Throws: std::runtime_error for a text that no document holds, or over 255 characters.
    std::size_t add(const std::string& format, const std::string& place);
    /// The part with the styles of the workbook.
    std::string makePart() const;

 private:
    /// As in the part. Style 1 is the first.
    std::vector<std::string> codes_;
};

/// The texts of a workbook, each once. They must outlive it.
class SharedStrings {
 public:
    /// The number of the text in the part.
    std::size_t add(std::u16string_view text);
    std::string makePart() const;

 private:
    std::unordered_map<std::u16string_view, std::size_t> positions_;
    std::size_t useCount_ = 0;
    std::string items_;
};

/// A worksheet that grows cell by cell, row by row. It is text from the start: a tree of the cells would take
/// twenty times the memory.
class Worksheet {
 public:
    /// Letters: of the columns, from the first on. The texts of the cells go into `strings`.
    Worksheet(std::vector<std::string> letters, SharedStrings& strings)
        : letters_(std::move(letters)), strings_(strings)
    {
    }

    void beginRow();
    void endRow() { cells_ += "</row>"; }
    /// Leaves out an empty text. Throws: std::runtime_error for a text that is too long for a cell.
    void writeText(std::size_t column, std::u16string_view text);
    /// Leaves out what is not a finite number.
    void writeNumber(std::size_t column, double number, std::size_t style);

    /// WideColumn: the 0-based number of a column that shows dates; `noColumn` for none.
    std::string makePart(std::size_t wideColumn) const;
    static constexpr std::size_t noColumn = static_cast<std::size_t>(-1);

 private:
    void beginCell(std::size_t column);

    std::vector<std::string> letters_;
    SharedStrings& strings_;
    std::string cells_;
    std::size_t rowCount_ = 0;
    /// Of the current row.
    std::string rowNumber_;
};

}  // namespace quillon::report
