#include "report/table/Sheet.h"

#include <algorithm>
#include <set>

#include "report/table/Fail.h"
#include "report/table/Limits.h"

namespace quillon::report {
namespace {

/// Takes "B" or "b" off, as 1.
std::int32_t takeLetters(std::string_view& text)
{
    std::int32_t column = 0;
    while (!text.empty() && column < 100'000) {
        const char letter = static_cast<char>(text.front() & ~0x20);
        if (letter < 'A' || letter > 'Z') break;
        column = column * 26 + (letter - 'A' + 1);
        text.remove_prefix(1);
    }
    return column;
}

std::int32_t takeNumber(std::string_view& text)
{
    std::int32_t number = 0;
    while (!text.empty() && text.front() >= '0' && text.front() <= '9' && number < 10'000'000) {
        number = number * 10 + (text.front() - '0');
        text.remove_prefix(1);
    }
    return number;
}

void skipDollar(std::string_view& text)
{
    if (text.starts_with('$')) text.remove_prefix(1);
}

}  // namespace

std::uint32_t Sheet::addText(std::string text)
{
    texts_.push_back(std::move(text));
    return static_cast<std::uint32_t>(texts_.size() - 1);
}

std::uint32_t Sheet::addFormat(const std::string& format)
{
    const auto found = std::find(formats_.begin(), formats_.end(), format);
    if (found != formats_.end()) return static_cast<std::uint32_t>(found - formats_.begin());
    formats_.push_back(format);
    return static_cast<std::uint32_t>(formats_.size() - 1);
}

void Sheet::add(const SourceCell& cell)
{
    if (cells_.size() >= limits::storedCells) fail("it has more than {} cells", limits::storedCells);
    if (cell.column >= static_cast<std::int32_t>(limits::columns))
        fail("it has more than {} columns", limits::columns);
    if (cell.row >= limits::sheetRows) fail("it has more than {} rows", limits::sheetRows);
    cells_.push_back(cell);
}

std::size_t Sheet::countEmptyFormulas(const SheetRange& range) const
{
    return static_cast<std::size_t>(std::ranges::count_if(emptyFormulas_, [&range](const auto& address) {
        return range.contains({.row = address.row, .column = address.column});
    }));
}

std::pair<std::size_t, std::size_t> Sheet::removeHidden()
{
    using Hidden = std::vector<std::pair<std::int32_t, std::int32_t>>;
    std::size_t rows = 0;
    std::int32_t lastRow = -1;
    std::set<std::int32_t> columns;
    // Of the ranges, which stand in order, the last that begins before the place.
    const auto isHidden = [](const Hidden& ranges, std::int32_t place) {
        const auto next = std::upper_bound(ranges.begin(), ranges.end(), place,
                                           [](std::int32_t a, const auto& range) { return a < range.first; });
        return next != ranges.begin() && std::prev(next)->second >= place;
    };
    std::sort(hiddenRows_.begin(), hiddenRows_.end());
    std::sort(hiddenColumns_.begin(), hiddenColumns_.end());
    std::erase_if(cells_, [&](const SourceCell& cell) {
        const bool inRow = isHidden(hiddenRows_, cell.row);
        const bool inColumn = isHidden(hiddenColumns_, cell.column);
        if (inRow && std::exchange(lastRow, cell.row) != cell.row) ++rows;
        if (inColumn) columns.insert(cell.column);
        return inRow || inColumn;
    });
    return {rows, columns.size()};
}

CellAddress takeAddress(std::string_view& text)
{
    CellAddress address;
    skipDollar(text);
    address.column = takeLetters(text) - 1;
    skipDollar(text);
    address.row = takeNumber(text) - 1;
    return address;
}

std::optional<SheetRange> readSheetRange(std::string_view text)
{
    const auto first = takeAddress(text);
    if (!text.starts_with(':')) return std::nullopt;
    text.remove_prefix(1);
    const auto last = takeAddress(text);
    const bool isRange = text.empty() && first.row >= 0 && first.column >= 0 && last.row >= first.row &&
                         last.column >= first.column &&
                         last.column < static_cast<std::int32_t>(limits::columns);
    return isRange ? std::optional(SheetRange{first.row, first.column, last.row, last.column}) : std::nullopt;
}

}  // namespace quillon::report
