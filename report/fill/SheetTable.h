#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "report/fill/AreaSet.h"
#include "report/fill/CellWrites.h"
#include "report/fill/SheetMarkup.h"
#include "report/package/Package.h"
#include "report/package/XmlSpans.h"

namespace quillon::report {

/// A table in a worksheet: an area with names for its columns. Copies share what was read.
class SheetTable {
 public:
    /// The caller keeps the workbook. Throws: std::runtime_error when the part is no sound table.
    SheetTable(const Package& workbook, const std::string& part);

    const std::string& getName() const { return name_; }
    /// The cells of a column, or its header's; nothing when there is no such column.
    std::optional<Area> findColumn(const std::string& name, bool isHeader) const;

    /// Grows or shrinks with the cells that a chart had and has now, so that the names of the columns are
    /// those in the header. `others` are the tables of the sheet.
    /// Throws: std::runtime_error when it cannot.
    void follow(const SheetMarkup& sheet, CellWrites& writes, const AreaSet& before, const AreaSet& now,
                const std::vector<SheetTable>& others);
    void save(Package& workbook) const;

 private:
    void followDown(const CellWrites& writes, const AreaSet& before, const AreaSet& now);
    void followRight(const SheetMarkup& sheet, const CellWrites& writes, const AreaSet& now);
    void nameColumns(const SheetMarkup& sheet, CellWrites& writes);
    std::string makeName(const CellWrites& writes, std::uint32_t column, std::size_t index) const;
    bool losesColumn(const SheetMarkup& sheet, const CellWrites& writes, std::uint32_t column) const;
    std::uint32_t getFirstRow() const { return area_.top + headerRows_; }

    std::shared_ptr<const XmlSpans> xml_;
    std::string name_;
    Area area_;
    std::uint32_t headerRows_ = 1;
    std::uint32_t totalsRows_ = 0;
    std::vector<std::string> columns_;
    bool isChanged_ = false;
};

}  // namespace quillon::report
