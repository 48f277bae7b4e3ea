#include "report/table/RowFilter.h"

#include <algorithm>

#include "report/options/ListText.h"
#include "report/options/QuotedText.h"
#include "report/table/CellText.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

/// The position of the first "=" behind the column, which may stand in quotes.
std::size_t findEquals(const std::string& condition)
{
    bool isQuoted = false;
    for (std::size_t i = 0; i < condition.size(); ++i) {
        if (condition[i] == '"' && condition.starts_with('"')) isQuoted = !isQuoted;
        if (condition[i] == '=' && !isQuoted) return i;
    }
    fail("--where: expected a column and a text, as in region=North, got {}.", quoteText(condition));
}

}  // namespace

RowFilter::RowFilter(std::vector<Condition> conditions, std::vector<std::string> dropped,
                     std::vector<std::size_t> dropColumns)
    : conditions_(std::move(conditions)),
      dropped_(std::move(dropped)),
      isFound_(dropped_.size(), false),
      dropColumns_(std::move(dropColumns))
{
}

bool RowFilter::keeps(const Row& row)
{
    for (const auto& condition : conditions_)
        if (readText(row.cells[condition.column]) != condition.text) return false;
    return dropped_.empty() || !isDropped(row);
}

bool RowFilter::isDropped(const Row& row)
{
    for (const auto column : dropColumns_) {
        const auto found = std::find(dropped_.begin(), dropped_.end(), readText(row.cells[column]));
        if (found == dropped_.end()) continue;
        isFound_[static_cast<std::size_t>(found - dropped_.begin())] = true;
        return true;
    }
    return false;
}

std::string_view RowFilter::readText(const Cell& cell)
{
    if (cell.kind == CellKind::Text) return cell.text;
    written_ = writeCell(cell);
    return written_;
}

void RowFilter::noteUnknown(const SourcePlace& place, const Note& note) const
{
    for (std::size_t i = 0; i < dropped_.size(); ++i)
        if (!isFound_[i])
            note(fmt::format("{}: there is no row {} to --drop.", place.name, quoteText(dropped_[i])));
}

std::pair<std::string, std::string> splitCondition(const std::string& condition)
{
    const auto equals = findEquals(condition);
    return {unquoteItem(condition.substr(0, equals)), unquoteItem(condition.substr(equals + 1))};
}

std::string makeCondition(const std::string& column, const std::string& text)
{
    return putInQuotes(column) + "=" + putInQuotes(text);
}

}  // namespace quillon::report
