#pragma once

#include <optional>
#include <string>
#include <vector>

#include "report/fill/SheetCells.h"
#include "report/package/Package.h"

namespace quillon::report {

/// A name of a sheet, table, column or cells without regard to case, by which two are the same.
std::string foldName(const std::string& name);

/// A table in a worksheet: an area with names for its columns.
class SheetTable {
 public:
    SheetTable(const Package& workbook, std::string part);

    const std::string& getName() const { return name_; }
    /// The cells of a column, or its header's; nothing when there is no such column.
    std::optional<Area> findColumn(const std::string& name, bool isHeader) const;

    /// Grows or shrinks with the cells that a chart had and has now, so that the names of the columns are
    /// those in the header. `others` are the tables of the sheet.
    /// Throws: std::runtime_error when it cannot.
    void follow(SheetCells& sheet, const std::vector<Area>& before, const std::vector<Area>& now,
                const std::vector<SheetTable>& others);
    void save(Package& workbook) const;

 private:
    void followDown(const SheetCells& sheet, const std::vector<Area>& before, const std::vector<Area>& now);
    void followRight(const SheetCells& sheet, const std::vector<Area>& now);
    void nameColumns(SheetCells& sheet);
    std::string makeName(const SheetCells& sheet, std::uint32_t column, std::size_t index) const;
    bool isEmptyColumn(const SheetCells& sheet, std::uint32_t column) const;
    std::uint32_t getFirstRow() const { return area_.top + headerRows_; }

    std::string part_;
    std::string name_;
    Area area_;
    std::uint32_t headerRows_ = 1;
    std::uint32_t totalsRows_ = 0;
    std::vector<std::string> columns_;
    bool isChanged_ = false;
};

}  // namespace quillon::report
