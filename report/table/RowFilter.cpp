#include "report/table/RowFilter.h"

#include <algorithm>

#include "report/options/ListText.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/CellText.h"
#include "report/table/Fail.h"
#include "report/table/TableScan.h"

namespace quillon::report {
namespace {

/// How many texts of a column are remembered, for one that is misspelt, and how many a sentence lists.
constexpr std::size_t rememberedTexts = 1000;
constexpr std::size_t listedTexts = 10;

/// The position of the first "=" behind the column, which may stand in quotes.
std::size_t findEquals(const std::string& condition)
{
    bool isQuoted = false;
    for (std::size_t i = 0; i < condition.size(); ++i) {
        if (condition[i] == '"' && condition.starts_with('"')) isQuoted = !isQuoted;
        if (condition[i] == '=' && !isQuoted) return i;
    }
    fail(
        "--where: expected a column and a text, as in region=North, got {}; "
        "a text with a comma stands in double quotes, as in 'region=\"North, East\"'.",
        quoteText(condition));
}

}  // namespace

bool RowFilter::Wanted::matches(std::string_view cell)
{
    if (cell == text) {
        isFound = true;
        others.clear();
    } else if (!isFound && !cell.empty() && others.size() < rememberedTexts && !others.contains(cell)) {
        others.emplace(cell);
    }
    return cell == text;
}

std::string RowFilter::Wanted::describeOthers() const
{
    const std::vector<std::string> names(others.begin(), others.end());
    const bool isShort = !names.empty() && names.size() <= listedTexts;
    return (isShort ? "; there are " + listNames(names) : std::string()) + suggestName(text, names);
}

RowFilter::RowFilter(std::vector<Condition> conditions, const std::vector<std::string>& dropped,
                     std::vector<std::size_t> dropColumns)
    : conditions_(std::move(conditions)), dropColumns_(std::move(dropColumns))
{
    dropped_.reserve(dropped.size());
    for (const auto& name : dropped) dropped_.push_back({name});
}

bool RowFilter::keeps(const Row& row)
{
    bool meetsAll = true;
    for (auto& [column, wanted] : conditions_)
        meetsAll = wanted.matches(readText(row.cells[column])) && meetsAll;
    return meetsAll && !isDropped(row);
}

bool RowFilter::isDropped(const Row& row)
{
    bool isAny = false;
    for (auto& name : dropped_)
        for (const auto column : dropColumns_) isAny = name.matches(readText(row.cells[column])) || isAny;
    return isAny;
}

std::string_view RowFilter::readText(const Cell& cell)
{
    if (cell.kind == CellKind::Text) return cell.text;
    written_ = writeCell(cell);
    return written_;
}

void RowFilter::noteUnknown(const SourcePlace& place, const Note& note) const
{
    for (const auto& name : dropped_)
        if (!name.isFound)
            note(fmt::format("{}: there is no row {} to --drop{}", place.name, quoteText(name.text),
                             name.describeOthers()));
}

void RowFilter::refuseAll(const SourcePlace& place, const std::vector<std::string>& names) const
{
    for (const auto& [column, wanted] : conditions_)
        if (!wanted.isFound)
            fail("{}: --where: no row has {} in column {}{}", place.name, quoteText(wanted.text),
                 quoteText(names[column]), wanted.describeOthers());
    fail("{}: no row is left by --where and --drop.", place.name);
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
