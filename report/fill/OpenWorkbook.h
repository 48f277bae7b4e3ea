#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "report/fill/AreaSet.h"
#include "report/fill/CellStyles.h"
#include "report/fill/CellWrites.h"
#include "report/fill/SheetTable.h"
#include "report/fill/WorkbookMarkup.h"
#include "report/package/Edits.h"
#include "report/package/Package.h"

namespace quillon::report {

/// A sheet of an open workbook, and the cells in it that are a chart's.
struct OpenSheet {
    /// By its position in the workbook.
    std::size_t position;
    /// As it was read, and what is written to it; null until a reference leads there, and once it is saved.
    std::shared_ptr<const SheetMarkup> markup = {};
    std::unique_ptr<CellWrites> writes = {};
    std::vector<SheetTable> tables = {};
    /// What the chart had, and what it has now.
    AreaSet before = {};
    AreaSet now = {};
    bool isSaved = false;

    /// The first cell that holds what is none of the chart's; nothing when all are empty, or were the
    /// chart's.
    std::optional<Area> findForeign(const Area& area) const;
};

/// A workbook on its way to new numbers: what was read, and what changes. Sheets are opened when a reference
/// leads there, and saved one by one before the workbook is.
class OpenWorkbook {
 public:
    explicit OpenWorkbook(std::shared_ptr<const WorkbookMarkup> read);

    const WorkbookMarkup& getRead() const { return *read_; }
    std::vector<OpenSheet>& getSheets() { return sheets_; }
    CellStyles& getStyles() { return styles_; }

    /// The sheet of that name, with its cells and tables.
    /// Throws: std::runtime_error when there is none, or it cannot be read.
    OpenSheet& openSheet(const std::string& name);
    OpenSheet& openSheet(std::size_t position);
    /// Lets a defined name, by position, stand for other cells.
    void setName(std::size_t name, const std::string& text) { newNames_[name] = text; }
    bool isNameSet(std::size_t name) const { return newNames_[name].has_value(); }

    /// Moves the rows behind `row` down; cells have to be written after that.
    void moveRows(OpenSheet& sheet, std::uint32_t row, std::uint32_t by);
    /// Puts what was written to the cells into the package, with the tables and changes to what stands behind
    /// the rows, and closes the sheet.
    void saveSheet(OpenSheet& sheet, Edits& behind);
    /// The file: with the saved sheets and the new texts of names, without shared texts that no cell holds
    /// any more. Formulas are computed anew when it is opened.
    std::string save();

 private:
    void saveStrings();
    void saveMain();

    std::shared_ptr<const WorkbookMarkup> read_;
    Package package_;
    CellStyles styles_;
    std::vector<OpenSheet> sheets_;
    /// By the position of the name; nothing for one that stays.
    std::vector<std::optional<std::string>> newNames_;
    bool needsCalculation_ = false;
    /// Of the shared texts, by position, those that cells of saved sheets hold, and those that they held.
    std::vector<bool> heldStrings_;
    std::vector<bool> leftStrings_;
};

}  // namespace quillon::report
