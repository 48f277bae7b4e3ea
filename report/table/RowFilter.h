#pragma once

#include <functional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "report/table/Layout.h"
#include "report/table/Rows.h"

namespace quillon::report {

/// Which rows of a table are kept.
class RowFilter {
 public:
    /// A text that cells may have, and, until one has it, those that they have.
    struct Wanted {
        std::string text = {};
        bool isFound = false;
        std::set<std::string, std::less<>> others = {};

        bool matches(std::string_view cell);
        /// The end of a sentence: what there is, and what was probably meant.
        std::string describeOthers() const;
    };
    /// A column whose cells must hold a text.
    struct Condition {
        std::size_t column;
        Wanted wanted;
    };

    /// Keeps the rows that meet all conditions and have none of the `dropped` names in a column of
    /// `dropColumns`.
    RowFilter(std::vector<Condition> conditions, const std::vector<std::string>& dropped,
              std::vector<std::size_t> dropColumns);

    bool keeps(const Row& row);
    /// Notes the names to drop that no row has had; they are probably misspelt.
    void noteUnknown(const SourcePlace& place, const Note& note) const;
    /// Refuses a table of which no row was kept. `names`: those of the columns.
    /// Throws: std::runtime_error that names the text that no row has, if there is one.
    [[noreturn]] void refuseAll(const SourcePlace& place, const std::vector<std::string>& names) const;

 private:
    bool isDropped(const Row& row);
    std::string_view readText(const Cell& cell);

    std::vector<Condition> conditions_;
    std::vector<Wanted> dropped_;
    std::vector<std::size_t> dropColumns_;
    std::string written_;
};

/// Parts "region=North" into a column's name and a text; either may stand in double quotes.
/// Throws: std::runtime_error where there is no "=".
std::pair<std::string, std::string> splitCondition(const std::string& condition);

/// The condition that splitCondition parts again, whatever stands in its texts.
std::string makeCondition(const std::string& column, const std::string& text);

}  // namespace quillon::report
