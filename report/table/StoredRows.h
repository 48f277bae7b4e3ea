#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "report/table/Rows.h"

namespace quillon::report {

/// Rows that are held in memory as a whole.
class StoredRows : public RowSource {
 public:
    /// Rows up to number `skip` are left out.
    StoredRows(SourcePlace place, bool namesColumns, std::optional<char> likelyDecimal, std::size_t skip)
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

    /// For views of texts, too.
    struct TextHash : std::hash<std::string_view> {
        using is_transparent = void;
    };

    std::string_view keepText(std::string_view text, std::size_t line, std::size_t column);
    void requireText(std::string_view text, std::size_t line, std::size_t column) const;

    std::size_t skip_;
    std::vector<StoredRow> rows_;
    std::vector<Cell> cells_;
    /// Each once: a workbook's cells share their texts, and a small file can name a long one often.
    std::unordered_set<std::string, TextHash, std::equal_to<>> texts_;
    std::set<std::string, std::less<>> formats_;
};

}  // namespace quillon::report
