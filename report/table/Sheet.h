#pragma once

#include <cstdint>
#include <deque>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/table/PartReader.h"
#include "report/table/Rows.h"

namespace quillon::report {

/// A cell of a sheet that holds something, at a 0-based place.
struct SourceCell {
    std::int32_t row = 0;
    std::int32_t column = 0;
    CellKind kind = CellKind::Text;
    double number = 0;
    /// Positions among the texts and formats of the sheet.
    std::uint32_t text = 0;
    std::uint32_t format = 0;
};

/// A range of cells, 0-based, both ends in it.
struct SheetRange {
    std::int32_t firstRow = 0;
    std::int32_t firstColumn = 0;
    std::int32_t lastRow = -1;
    std::int32_t lastColumn = -1;

    bool contains(const SourceCell& cell) const
    {
        return cell.row >= firstRow && cell.row <= lastRow && cell.column >= firstColumn &&
               cell.column <= lastColumn;
    }
};

/// A cell's place, 0-based; -1 where it has no row or no column.
struct CellAddress {
    std::int32_t row = -1;
    std::int32_t column = -1;
};

/// The cells of a sheet by row and column, with texts and number formats that they share.
class Sheet {
 public:
    Sheet() { addFormat(""); }

    std::uint32_t addText(std::string text);
    /// The position of a format, which is kept once; 0 is the empty one.
    std::uint32_t addFormat(const std::string& format);
    const std::string& getText(const SourceCell& cell) const { return texts_[cell.text]; }
    const std::string& getFormat(const SourceCell& cell) const { return formats_[cell.format]; }
    std::size_t getTextCount() const { return texts_.size(); }

    /// Throws: std::runtime_error beyond the limits of stored cells.
    void add(const SourceCell& cell);
    const std::vector<SourceCell>& getCells() const { return cells_; }
    /// `cells` by row and column.
    void setCells(std::vector<SourceCell> cells) { cells_ = std::move(cells); }

    /// Cells that are shown as one, with the content of the first.
    void addMerge(const SheetRange& range) { merges_.push_back(range); }
    const std::vector<SheetRange>& getMerges() const { return merges_; }
    /// Both ends are hidden.
    void hideRows(std::int32_t first, std::int32_t last) { hiddenRows_.emplace_back(first, last); }
    void hideColumns(std::int32_t first, std::int32_t last) { hiddenColumns_.emplace_back(first, last); }
    /// Takes cells in hidden rows and columns out, and returns how many rows and columns these are.
    std::pair<std::size_t, std::size_t> removeHidden();

    /// A cell with a formula whose result the file does not keep, as programs write them that cannot
    /// calculate.
    void addEmptyFormula(const SourceCell& cell)
    {
        constexpr std::size_t most = 1'000'000;
        if (emptyFormulas_.size() < most) emptyFormulas_.push_back({cell.row, cell.column});
    }
    std::size_t countEmptyFormulas(const SheetRange& range) const;

 private:
    std::vector<CellAddress> emptyFormulas_;
    std::deque<std::string> texts_;
    std::deque<std::string> formats_;
    std::vector<SourceCell> cells_;
    std::vector<SheetRange> merges_;
    std::vector<std::pair<std::int32_t, std::int32_t>> hiddenRows_;
    std::vector<std::pair<std::int32_t, std::int32_t>> hiddenColumns_;
};

/// Takes "B3" or "$B$3" off the front of a text.
CellAddress takeAddress(std::string_view& text);
/// Reads "B3:F20". Nothing where the text is no range, or one beyond the limits of columns.
std::optional<SheetRange> readSheetRange(std::string_view text);

/// The sheets of a workbook; each is read on demand.
class WorkbookReader {
 public:
    virtual ~WorkbookReader() = default;
    virtual const std::vector<std::string>& getSheetNames() const = 0;
    /// The first sheet that is not hidden.
    virtual std::size_t getFirstSheet() const = 0;
    virtual Sheet readSheet(std::size_t index) const = 0;
};

/// For an .xlsx, or an .ods package. `parts` must outlive the reader.
/// Throws: std::runtime_error for a damaged package, as readSheet does.
std::unique_ptr<WorkbookReader> openXlsx(const PartReader& parts);
std::unique_ptr<WorkbookReader> openOds(const PartReader& parts);

}  // namespace quillon::report
