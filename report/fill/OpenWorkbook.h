#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "report/fill/CellRange.h"
#include "report/fill/SheetCells.h"
#include "report/fill/SheetTable.h"
#include "report/package/Package.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// A sheet of an open workbook, and the cells in it that are a chart's.
struct OpenSheet {
    std::string name;
    std::string part;
    /// Made when a reference leads there.
    std::unique_ptr<SheetCells> cells = {};
    std::vector<SheetTable> tables = {};
    /// What the chart had, and what it has now.
    std::vector<Area> before = {};
    std::vector<Area> now = {};

    /// The first cell that holds what is none of the chart's; nothing when all are empty, or were the
    /// chart's.
    std::optional<Area> findForeign(const Area& area) const;
};

/// A name that stands for cells or a formula.
struct DefinedName {
    std::string name;
    /// The sheet by 0-based position that the name is for; -1 for all.
    int sheet;
    std::string text;
    XmlElement element;
    /// What it is to stand for; nothing keeps the text.
    std::optional<std::string> newText = {};
};

/// A workbook on its way to new numbers: its package, sheets and defined names. Sheets are read when a
/// reference leads there, and saved one by one before the workbook is.
class OpenWorkbook {
 public:
    /// Throws: std::runtime_error when the file is no workbook.
    explicit OpenWorkbook(const std::string& bytes);
    OpenWorkbook(const OpenWorkbook&) = delete;
    OpenWorkbook& operator=(const OpenWorkbook&) = delete;

    Package& getPackage() { return book_; }
    std::vector<OpenSheet>& getSheets() { return sheets_; }
    std::vector<DefinedName>& getNames() { return names_; }

    /// The sheet of that name, with its cells. Throws: std::runtime_error when there is none.
    OpenSheet& openSheet(const std::string& name);
    /// Reads cells and tables. Throws: std::runtime_error when the part is missing or unreadable.
    void load(OpenSheet& sheet);

    /// Moves the rows behind `row` down; cells have to be written after that.
    void moveRows(OpenSheet& sheet, std::uint32_t row, std::uint32_t by);
    /// Puts what was written to the cells into the package, with changes to what stands behind the rows, and
    /// closes the sheet.
    void saveSheet(OpenSheet& sheet, Edits& behind);
    /// The file: with the saved sheets and the new texts of names, without shared texts that no cell holds
    /// any more. Formulas are computed anew when it is opened.
    std::string save();

 private:
    void readSheets();
    void readNames();
    void emptyLeftStrings();
    void forgetKeptStrings();
    void emptyStrings(const std::string& part);
    void saveMain();

    Package book_;
    std::vector<std::string> strings_;
    std::vector<OpenSheet> sheets_;
    std::unique_ptr<XmlSpans> main_;
    std::vector<DefinedName> names_;
    bool needsCalculation_ = false;
    /// Shared texts that cells of the chart held.
    std::set<std::uint32_t> leftStrings_;
};

/// Says why a workbook cannot be updated. Throws: std::runtime_error, always.
[[noreturn]] void refuse(const std::string& reason);

}  // namespace quillon::report
