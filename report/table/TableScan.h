#pragma once

#include <memory>
#include <string>
#include <vector>

#include "report/table/ColumnProfile.h"
#include "report/table/Layout.h"
#include "report/table/RowFilter.h"
#include "report/table/Rows.h"
#include "report/table/StoredRows.h"

namespace quillon::report {

/// A table after a first pass over its rows: where it stands, what its columns are called, and what their
/// cells say of how they are read. The values are read in a second pass, so that memory holds only those that
/// are used.
class TableScan {
 public:
    /// Makes the first pass. `options` must outlive the scan.
    /// Throws: std::runtime_error that names the line: a row with too many or too few cells, a column without
    /// a name; a table without rows.
    TableScan(std::shared_ptr<RowSource> source, const TableOptions& options, const Note& note);

    const SourcePlace& getPlace() const { return source_->getPlace(); }
    const std::vector<std::string>& getNames() const { return layout_.names; }
    const ColumnProfile& getProfile(std::size_t column) const { return profiles_[column]; }
    /// Rows that are kept.
    std::size_t getRowCount() const { return keptCount_; }
    /// Whether the first column numbers the rows, as programs write it beside their tables: it names no
    /// categories.
    bool hasRowNumbers() const
    {
        return source_->numbersRows() || (hasUnnamedFirst() && isCounting_ && rowCount_ > 1);
    }
    /// For a part of the rows, which is then read as the whole table is.
    std::shared_ptr<StoredRows> makeEmptyRows() const;

    /// The position of a column by its name, or by "#3". Option: that which names it, "--columns".
    /// Throws: std::runtime_error that lists the columns, and names the one that was probably meant.
    std::size_t findColumn(const std::string& name, const char* option) const;
    /// How a column of numbers is read: as its cells decide, then the other columns, then the kind of file.
    /// Throws: std::runtime_error for mixed units, and with both readings for what stays ambiguous.
    const ColumnProfile::Reading& chooseReading(std::size_t column) const;
    /// The order of day, month and year of a column of dates; nothing where it holds none, or stays
    /// ambiguous, of which `note` hears.
    std::optional<DateOrder> chooseDateOrder(std::size_t column, const Note& note) const;

    /// Whether its numbers are days, as in 20240331.
    bool holdsCompactDates(std::size_t column) const
    {
        return options_.dates != "none" && profiles_[column].getCompactDate().isSet();
    }

    /// Hands out the rows that are kept, each with a cell for every column.
    void readRows(const RowSource::Handler& handler) const;

 private:
    /// A row at the end may be a remark: it is held back until another row follows.
    struct HeldRow {
        std::size_t line;
        std::string text;
        bool isShort;
    };

    bool hasUnnamedFirst() const;
    RowFilter makeFilter() const;
    void profileRows(const Note& note);
    bool holdBack(const Row& row, bool afterBlank);
    void releaseHeld();
    void addRow(const Row& row);
    bool countsRow(const Cell& first) const;
    void requireWidth(const Row& row) const;
    void requireNames() const;
    bool decides(const ColumnProfile& profile, char decimal) const;
    std::optional<char> findDecimal() const;
    [[noreturn]] void refuseAmbiguous(std::size_t column) const;

    std::shared_ptr<RowSource> source_;
    const TableOptions& options_;
    Layout layout_;
    std::unique_ptr<RowFilter> filter_;
    std::vector<ColumnProfile> profiles_;
    /// What all columns together say of the decimal mark, once a column asks.
    mutable std::optional<std::optional<char>> decimal_;
    std::vector<HeldRow> held_;
    std::size_t rowCount_ = 0;
    /// Whether the cells of the first column are 0, 1, 2 ... or 1, 2, 3 ...
    bool isCounting_ = true;
    std::size_t keptCount_ = 0;
};

/// The names of columns in a sentence, cut after ten with a count.
std::string listNames(const std::vector<std::string>& names);

}  // namespace quillon::report
