#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "report/fill/CellBlock.h"
#include "report/fill/SheetMarkup.h"

namespace quillon::report {

/// What the cells of a worksheet are to hold.
class CellWrites {
 public:
    struct Write {
        std::uint32_t row;
        std::uint32_t column;
        int style;
        /// In the line; null for nothing.
        std::uint32_t index;
        const CellLine* line;

        CellValue get() const { return line == nullptr ? CellValue() : line->get(index); }
    };

    /// The caller keeps the sheet.
    explicit CellWrites(const SheetMarkup& sheet) : sheet_(sheet) {}

    /// Makes room for as many writes.
    void reserve(std::size_t count) { writes_.reserve(count); }
    /// Notes that a cell is to hold the value of a line at `index`; null: nothing. The caller keeps the line.
    void write(std::uint32_t row, std::uint32_t column, const CellLine* line, std::size_t index, int style)
    {
        writes_.push_back({row, column, style, static_cast<std::uint32_t>(index), line});
    }
    /// Orders what was written. Throws: std::runtime_error when one cell was to hold two different values.
    void arrange();

    // What follows comes after arrange.

    /// Row by row.
    const std::vector<Write>& getWrites() const { return writes_; }
    /// What was written to a cell, if anything was.
    std::optional<CellValue> find(std::uint32_t row, std::uint32_t column) const;
    void rewrite(std::uint32_t row, std::uint32_t column, const std::string& text);
    /// Whether a cell holds nothing when all is written.
    bool leavesEmpty(std::uint32_t row, std::uint32_t column) const;
    bool changes(std::uint32_t row, std::uint32_t column) const;
    /// Whether a cell may stay as it is written.
    bool isSame(const Write& write, const SheetCell& cell) const;
    /// Whether every cell holds already what was written to it.
    bool areDone() const;
    /// The area of all cells that hold something when all is written; nothing in an empty sheet.
    std::optional<Area> getUsedArea() const;
    /// Notes which of the shared texts, by position, cells hold still, and which they do no longer.
    void noteShared(std::vector<bool>& areHeld, std::vector<bool>& areLeft) const;

 private:
    const Write* findWrite(std::uint32_t row, std::uint32_t column) const;

    const SheetMarkup& sheet_;
    std::vector<Write> writes_;
    /// Texts that were changed on their way.
    std::deque<CellLine> rewritten_;
};

}  // namespace quillon::report
