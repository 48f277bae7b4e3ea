#pragma once

#include <deque>
#include <set>
#include <string>
#include <vector>

#include "report/table/Rows.h"

namespace quillon::report {

/// Rows that are held in memory as a whole.
class StoredRows : public RowSource {
 public:
    /// Rows up to number `skip` are left out.
    StoredRows(Place place, bool namesColumns, std::optional<char> likelyDecimal, std::size_t skip)
        : RowSource(std::move(place), namesColumns, likelyDecimal), skip_(skip)
    {
    }

    /// Appends a row; its texts are copied. Throws: std::runtime_error beyond the limits of stored cells and
    /// columns.
    void add(std::size_t line, const std::vector<Cell>& cells);
    /// Appends a row of names.
    void addNames(const std::vector<std::string>& names);
    void read(const Handler& handler) override;

 private:
    struct StoredRow {
        std::size_t line;
        std::size_t first;
        std::size_t count;
    };

    std::string_view keepText(std::string_view text, std::size_t line, std::size_t column);
    void requireText(std::string_view text, std::size_t line, std::size_t column) const;

    std::size_t skip_;
    std::vector<StoredRow> rows_;
    std::vector<Cell> cells_;
    std::deque<std::string> texts_;
    std::set<std::string, std::less<>> formats_;
};

}  // namespace quillon::report
