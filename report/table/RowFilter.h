#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "report/table/Layout.h"
#include "report/table/Rows.h"

namespace quillon::report {

/// Which rows of a table are kept.
class RowFilter {
 public:
    /// A cell that must hold a text.
    struct Condition {
        std::size_t column;
        std::string text;
    };

    /// Keeps the rows that meet all conditions and have none of the `dropped` names in a column of
    /// `dropColumns`.
    RowFilter(std::vector<Condition> conditions, std::vector<std::string> dropped,
              std::vector<std::size_t> dropColumns);

    bool keeps(const Row& row);
    /// Notes the names that no row has had; they are probably misspelt.
    void noteUnknown(const SourcePlace& place, const Note& note) const;

 private:
    bool isDropped(const Row& row);
    std::string_view readText(const Cell& cell);

    std::vector<Condition> conditions_;
    std::vector<std::string> dropped_;
    std::vector<bool> isFound_;
    std::vector<std::size_t> dropColumns_;
    std::string written_;
};

/// Parts "region=North" into a column's name and a text; either may stand in double quotes.
/// Throws: std::runtime_error where there is no "=".
std::pair<std::string, std::string> splitCondition(const std::string& condition);

/// The condition that splitCondition parts again, whatever stands in its texts.
std::string makeCondition(const std::string& column, const std::string& text);

}  // namespace quillon::report
