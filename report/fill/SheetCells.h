#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "report/fill/CellRange.h"
#include "report/fill/WorkbookFill.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// The texts that cells of a workbook share, in UTF-8.
std::vector<std::string> readSharedStrings(const Package& workbook);

/// The cells of a worksheet: read where they stand, and rewritten in one pass.
class SheetCells {
 public:
    /// No style of its own.
    static constexpr int noStyle = -1;

    /// The caller keeps `bytes` and `strings`.
    /// Throws: std::runtime_error when the part is none, or its cells have no places.
    SheetCells(std::string_view bytes, std::string part, const std::vector<std::string>& strings);

    bool isEmpty(std::uint32_t row, std::uint32_t column) const;
    bool hasFormula(std::uint32_t row, std::uint32_t column) const;
    bool hasFormulas() const;
    int getStyle(std::uint32_t row, std::uint32_t column) const;
    /// What a cell holds; nothing for what is neither number nor text.
    CellValue read(std::uint32_t row, std::uint32_t column) const;
    /// The last row and column with a cell; nothing in an empty sheet.
    std::optional<Area> getUsedArea() const;

    /// Notes that a cell is to hold the value of a line at `index`; null: nothing. The caller keeps the line.
    void write(std::uint32_t row, std::uint32_t column, const CellLine* line, std::size_t index, int style);
    /// Orders what was written. Throws: std::runtime_error when one cell was to hold two different values.
    void arrangeWrites();
    /// What was written to a cell, if anything was. After arrangeWrites.
    std::optional<CellValue> findWritten(std::uint32_t row, std::uint32_t column) const;
    void rewrite(std::uint32_t row, std::uint32_t column, const std::string& text);
    /// Whether a cell holds something when all is written.
    bool willBeEmpty(std::uint32_t row, std::uint32_t column) const;
    bool willChange(std::uint32_t row, std::uint32_t column) const;
    /// Whether every cell holds already what was written to it.
    bool willStay() const;

    /// The shared texts that cells hold no longer, and those that they still do, by position. After
    /// arrangeWrites.
    std::vector<std::uint32_t> findLeftStrings() const;
    std::vector<std::uint32_t> findKeptStrings() const;

    /// The part with all that was written, a new dimension, and changes to what stands before and behind the
    /// rows.
    std::string apply(Edits& before, Edits& behind);
    void reserveWrites(std::size_t count) { writes_.reserve(writes_.size() + count); }
    const XmlSpans& getXml() const { return xml_; }

    /// The part with the rows behind `row` moved down.
    std::string moveRows(std::uint32_t row, std::uint32_t by) const;

 private:
    /// How a cell holds what it does.
    enum class Kind : std::uint8_t { Nothing, Number, Shared, Text, Inline, Other };
    struct Row {
        std::uint32_t number;
        Span startTag;
        Span inner;
        /// The value of the attribute that announces the columns; empty without.
        Span columns;
        Span place;
        bool isEmptyTag;
    };
    struct Cell {
        std::uint32_t row;
        std::uint16_t column;
        Kind kind;
        bool hasFormula;
        bool isEmpty;
        std::int32_t style;
        Span outer;
        /// The number or text, or the markup of one that stands in the cell itself.
        Span value;
    };
    struct Write {
        std::uint32_t row;
        std::uint32_t column;
        int style;
        std::uint32_t index;
        const CellLine* line;

        CellValue get() const { return line == nullptr ? CellValue() : line->get(index); }
    };
    class Rewriter;

    class Reader;

    void reserveCells();
    void applyDimension(Edits& edits) const;
    const Cell* find(std::uint32_t row, std::uint32_t column) const;
    const Write* findWrite(std::uint32_t row, std::uint32_t column) const;
    CellValue read(const Cell& cell) const;
    std::string readInline(Span markup) const;
    bool isSame(const Write& write, const Cell& cell) const;
    std::vector<std::uint32_t> findStrings(bool areLeft) const;

    XmlSpans xml_;
    XmlElement data_;
    const std::vector<std::string>& strings_;
    std::vector<Row> rows_;
    std::vector<Cell> cells_;
    std::vector<Write> writes_;
    /// Texts that were changed on their way.
    std::deque<CellLine> rewritten_;
};

}  // namespace quillon::report
