#include "report/table/MergedCells.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>

#include "report/table/CellText.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"

namespace quillon::report {
namespace {

/// The header stands among the first rows.
constexpr std::size_t headRows = 32;

using RowCells = std::map<std::int32_t, SourceCell>;
/// By the first cell.
using Merges = std::map<std::pair<std::int32_t, std::int32_t>, SheetRange>;

/// Repeats labels in the rows that they stand for; numbers stay in one row, as sums would count them twice.
void fillDown(Sheet& sheet, const Merges& merges)
{
    std::vector<std::int32_t> rows;
    for (const auto& cell : sheet.getCells())
        if (rows.empty() || rows.back() != cell.row) rows.push_back(cell.row);
    std::vector<SourceCell> cells;
    for (const auto& cell : sheet.getCells()) {
        const auto merge = merges.find({cell.row, cell.column});
        if (merge == merges.end() || cell.kind == CellKind::Number) continue;
        for (auto row = std::ranges::upper_bound(rows, cell.row);
             row != rows.end() && *row <= merge->second.lastRow; ++row) {
            cells.push_back(cell);
            cells.back().row = *row;
        }
        if (cells.size() > limits::storedCells) fail("it has more than {} cells", limits::storedCells);
    }
    if (cells.empty()) return;
    const auto& own = sheet.getCells();
    cells.insert(cells.end(), own.begin(), own.end());
    const auto place = [](const SourceCell& cell) { return std::pair(cell.row, cell.column); };
    std::ranges::stable_sort(cells, {}, place);
    const auto arePlacedAlike = [&place](const auto& a, const auto& b) { return place(a) == place(b); };
    cells.erase(std::unique(cells.begin(), cells.end(), arePlacedAlike), cells.end());
    sheet.setCells(std::move(cells));
}

/// Years name columns, though they are numbers.
bool isName(const SourceCell& cell)
{
    const bool isYear = cell.number >= 1800 && cell.number <= 2200 && cell.number == std::floor(cell.number);
    return cell.kind == CellKind::Text || (cell.kind == CellKind::Number && isYear);
}

std::string writeName(const Sheet& sheet, const SourceCell& cell)
{
    return cell.kind == CellKind::Text ? sheet.getText(cell) : writeNumber(cell.number);
}

/// Puts the groups of a header in front of the names in the row below.
class HeaderJoiner {
 public:
    HeaderJoiner(Sheet& sheet, const Merges& merges, const SheetRange& range)
        : sheet_(sheet), merges_(merges), range_(range)
    {
    }

    void join()
    {
        auto rows = readHead();
        bool isJoined = false;
        for (std::size_t i = 1; i < rows.size(); ++i) {
            if (!namesGroups(rows[i - 1], rows[i])) continue;
            joinRows(rows[i - 1], rows[i]);
            isJoined = true;
        }
        if (isJoined) storeHead(rows);
    }

 private:
    /// The first rows, up to one that holds numbers.
    std::vector<RowCells> readHead()
    {
        std::vector<RowCells> rows;
        const auto& cells = sheet_.getCells();
        while (headSize_ < cells.size() && rows.size() < headRows) {
            RowCells row;
            auto next = headSize_;
            for (; next < cells.size() && cells[next].row == cells[headSize_].row; ++next)
                if (range_.contains(cells[next])) row[cells[next].column] = cells[next];
            if (!std::ranges::all_of(row, [](const auto& one) { return isName(one.second); })) break;
            headSize_ = next;
            if (!row.empty()) rows.push_back(std::move(row));
        }
        return rows;
    }

    /// The columns over which a cell stands.
    std::pair<std::int32_t, std::int32_t> findColumns(const SourceCell& cell) const
    {
        const auto merge = merges_.find({cell.row, cell.column});
        const auto last = merge == merges_.end() ? cell.column : merge->second.lastColumn;
        return {cell.column, std::min(last, range_.lastColumn)};
    }

    bool namesGroups(const RowCells& upper, const RowCells& lower) const
    {
        bool hasGroup = false;
        for (const auto& [column, cell] : upper) {
            const auto [first, last] = findColumns(cell);
            const auto below = lower.lower_bound(first);
            const bool hasBelow = below != lower.end() && below->first <= last;
            const bool isGroup = last > first;
            if (isGroup && (first == range_.firstColumn || !hasBelow)) return false;
            if (!isGroup && hasBelow && writeName(sheet_, below->second) != writeName(sheet_, cell))
                return false;
            hasGroup = hasGroup || isGroup;
        }
        return hasGroup;
    }

    void joinRows(RowCells& upper, RowCells& lower)
    {
        const auto row = lower.begin()->second.row;
        for (const auto& [start, cell] : upper) {
            const auto [first, last] = findColumns(cell);
            for (auto below = lower.lower_bound(first);
                 last > first && below != lower.end() && below->first <= last; ++below)
                below->second = {
                    row, below->first, CellKind::Text, 0,
                    sheet_.addText(writeName(sheet_, cell) + " " + writeName(sheet_, below->second))};
            auto& own = lower.try_emplace(first, cell).first->second;
            own.row = row;
        }
        upper.clear();
    }

    void storeHead(const std::vector<RowCells>& rows)
    {
        std::vector<SourceCell> cells;
        for (const auto& row : rows)
            for (const auto& [column, cell] : row) cells.push_back(cell);
        const auto& own = sheet_.getCells();
        cells.insert(cells.end(), own.begin() + static_cast<std::ptrdiff_t>(headSize_), own.end());
        sheet_.setCells(std::move(cells));
    }

    Sheet& sheet_;
    const Merges& merges_;
    const SheetRange& range_;
    /// How many cells stand in the first rows.
    std::size_t headSize_ = 0;
};

}  // namespace

void resolveMerges(Sheet& sheet, const SheetRange& range)
{
    if (sheet.getMerges().empty()) return;
    Merges merges;
    for (const auto& merge : sheet.getMerges()) merges[{merge.firstRow, merge.firstColumn}] = merge;
    fillDown(sheet, merges);
    HeaderJoiner(sheet, merges, range).join();
}

}  // namespace quillon::report
