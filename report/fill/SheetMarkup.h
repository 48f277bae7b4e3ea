#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/fill/CellBlock.h"
#include "report/fill/CellRange.h"
#include "report/fill/WorkbookStrings.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// A row element. There may be very many, and of cells as well: they hold no more than they must.
struct SheetRow {
    /// From 0.
    std::uint32_t number;
    Span startTag;
    /// Where the end tag begins.
    std::uint32_t end;
    bool isEmptyTag;
};

/// A cell element.
struct SheetCell {
    /// How a cell holds what it does.
    enum class Kind : std::uint8_t { Nothing, Number, Shared, Text, Inline, Other };

    std::uint32_t row;
    std::uint16_t column;
    Kind kind;
    bool hasFormula : 1;
    bool isEmpty : 1;
    std::int32_t style;
    Span outer;
    /// The number or text, or the markup of one that stands in the cell itself.
    Span value;
};

/// A worksheet as it was read: its rows and cells where they stand. Threads may share it.
class SheetMarkup {
 public:
    /// No style of its own.
    static constexpr int noStyle = -1;

    /// The caller keeps `bytes` and `strings`.
    /// Throws: std::runtime_error when the part is no worksheet, or its cells have no places.
    SheetMarkup(std::string_view bytes, std::string part, const WorkbookStrings& strings);

    const XmlSpans& getXml() const { return xml_; }
    /// The element with the rows.
    const XmlElement& getData() const { return data_; }
    const std::vector<SheetRow>& getRows() const { return rows_; }
    /// The value of an attribute of a start tag; an empty span at 0 when there is none.
    Span findAttribute(Span startTag, std::string_view name) const;
    /// Row by row.
    const std::vector<SheetCell>& getCells() const { return cells_; }
    /// Null where no cell is written.
    const SheetCell* find(std::uint32_t row, std::uint32_t column) const;
    /// The area of all cells that are written; nothing in an empty sheet.
    const std::optional<Area>& getUsedArea() const { return usedArea_; }
    bool hasFormulas() const { return hasFormulas_; }

    bool isEmpty(std::uint32_t row, std::uint32_t column) const;
    bool hasFormula(std::uint32_t row, std::uint32_t column) const;
    int getStyle(std::uint32_t row, std::uint32_t column) const;
    /// What a cell holds; nothing for what is neither number nor text.
    CellValue read(const SheetCell& cell) const;
    /// The position of the shared text that a cell holds; nothing for other cells.
    std::optional<std::uint32_t> readShared(const SheetCell& cell) const;

    /// The part with the rows behind `row` moved down.
    std::string moveRows(std::uint32_t row, std::uint32_t by) const;

 private:
    class Reader;

    void reserveCells();

    XmlSpans xml_;
    XmlElement data_;
    const WorkbookStrings& strings_;
    std::vector<SheetRow> rows_;
    std::vector<SheetCell> cells_;
    std::optional<Area> usedArea_;
    bool hasFormulas_ = false;
};

}  // namespace quillon::report
