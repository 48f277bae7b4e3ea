#pragma once

#include "report/fill/OpenWorkbook.h"

namespace quillon::report {

/// Brings the sheets of a workbook from the cells that a chart had to those that it has now, without harm to
/// what else they hold: what stands below moves down, cells that the chart left are emptied, and tables,
/// filters, conditional formats and defined names grow or shrink with the data.
class SheetUpdater {
 public:
    explicit SheetUpdater(OpenWorkbook& book) : book_(book) {}

    /// What stands below data that grow, such as a remark, moves down with its rows. Comes before cells are
    /// written.
    void makeRoom();
    /// Saves the sheets with what was written to their cells.
    /// Throws: std::runtime_error when the data would cover what is not the chart's, or a formula.
    void update();

 private:
    bool canMoveRows(const OpenSheet& sheet) const;
    void update(OpenSheet& sheet);
    void followNames(const OpenSheet& sheet, const Area& before, const Area& now);
    void saveSheet(OpenSheet& sheet);

    OpenWorkbook& book_;
};

}  // namespace quillon::report
