#include "report/fill/SeriesPlacement.h"

#include <algorithm>
#include <utility>

#include "report/workbook/Workbook.h"

namespace quillon::report {
namespace {

/// How many places a new block may stand from those that there are.
constexpr std::int64_t farthest = 10'000;

std::size_t getLength(const CellBlock& block)
{
    return block.lines.empty() ? 0 : block.lines[0].getSize();
}

/// Whether two series have cells of the same shape, so that one may move into those of the other.
bool isAlike(const CellPlaces& left, const CellPlaces& right)
{
    return std::ranges::equal(left, right, [](const CellPlace& a, const CellPlace& b) {
        return a.isSet() == b.isSet() && a.range.isRow == b.range.isRow && a.range.prefix == b.range.prefix &&
               a.definedName.empty() && b.definedName.empty();
    });
}

}  // namespace

SeriesPlacement::SeriesPlacement(OpenWorkbook& book, std::vector<CellPlaces> before,
                                 const std::vector<CellPlaces>& removed)
    : book_(book), before_(std::move(before)), now_(before_), looks_(before_)
{
    closeGaps(removed);
    noteTaken();
}

void SeriesPlacement::place(std::vector<SeriesCells>& series)
{
    placeNewSeries(series);
    placeRest(series);
    resizePlaces(series);
}

/// Series behind a removed one move up into its cells, so that no empty column stays between them.
void SeriesPlacement::closeGaps(const std::vector<CellPlaces>& removed)
{
    if (removed.empty()) return;
    auto slots = before_;
    slots.insert(slots.end(), removed.begin(), removed.end());
    const bool isRegular = std::ranges::all_of(slots, [&](const CellPlaces& places) {
        return places[valuesBlock].isSet() && isAlike(places, slots[0]);
    });
    if (!isRegular) return;
    const auto getStart = [](const CellPlaces& places) {
        const auto& area = places[valuesBlock].range.areas[0];
        return places[valuesBlock].range.isRow ? area.top : area.left;
    };
    std::ranges::stable_sort(slots, {}, getStart);
    std::vector<std::size_t> order(before_.size());
    for (std::size_t i = 0; i < order.size(); ++i) order[i] = i;
    std::ranges::stable_sort(order, {}, [&](std::size_t i) { return getStart(before_[i]); });
    for (std::size_t i = 0; i < order.size(); ++i) now_[order[i]] = slots[i];
}

void SeriesPlacement::noteTaken()
{
    taken_.clear();
    for (const auto& places : now_)
        for (const auto& place : places) take(place);
}

void SeriesPlacement::take(const CellPlace& place)
{
    for (const auto& area : place.range.areas) taken_[place.range.prefix].add(area);
}

/// The cells that a new series has `steps` places beside the last one; what all series share stays, and what
/// the last one does without stands behind.
CellPlaces SeriesPlacement::placeBeside(const CellPlaces& last, std::int64_t steps,
                                        const std::vector<CellBlock*>& blocks) const
{
    const bool isRow = last[valuesBlock].range.isRow;
    const auto getEnd = [&](const CellPlace& place) {
        return isRow ? place.range.areas.back().bottom : place.range.areas.back().right;
    };
    auto end = getEnd(last[valuesBlock]);
    for (std::size_t i = 0; i < last.size(); ++i)
        if (last[i].isSet() && !areShared_[i]) end = std::max(end, getEnd(last[i]));
    CellPlaces places(last.size());
    for (std::size_t i = 0; i < last.size(); ++i) {
        if (blocks[i] == nullptr || blocks[i]->lines.empty()) continue;
        const bool isThere = last[i].isSet();
        auto by = steps;
        if (!isThere) by += ++end - getEnd(last[valuesBlock]);
        const auto& like = last[isThere ? i : valuesBlock].range;
        places[i].range = areShared_[i] ? like : like.shift(isRow ? by : 0, isRow ? 0 : by);
    }
    return places;
}

/// New categories are their own, whoever has others in the same cells.
void SeriesPlacement::noteShared(const CellPlaces& last)
{
    areShared_.assign(last.size(), false);
    for (std::size_t i = 0; i < last.size(); ++i)
        areShared_[i] =
            i != categoriesBlock && last[i].isSet() &&
            std::ranges::count_if(before_, [&](const CellPlaces& p) { return p[i] == last[i]; }) > 1;
}

/// Whether the blocks that a series has for itself may stand there.
bool SeriesPlacement::areFree(const CellPlaces& places, const std::vector<CellBlock*>& blocks)
{
    for (std::size_t i = 0; i < blocks.size(); ++i)
        if (places[i].isSet() && !areShared_[i] && !isFree(places[i], *blocks[i])) return false;
    return true;
}

/// Whether a block may stand there: cells that nobody has, or that a series has left.
bool SeriesPlacement::isFree(const CellPlace& place, const CellBlock& block)
{
    const auto& sheet = book_.openSheet(place.range.getSheet());
    for (const auto& area : place.range.resize(getLength(block)).areas) {
        if (area.right > maximumColumn || area.bottom > maximumRow) refuse("the sheet has no room left");
        if (taken_[place.range.prefix].overlaps(area) || sheet.findForeign(area)) return false;
    }
    return true;
}

/// The series whose values stand behind all others; nothing when none has cells.
std::optional<std::size_t> SeriesPlacement::findLast() const
{
    std::optional<std::size_t> last;
    const auto getStart = [&](std::size_t i) {
        const auto& range = now_[i][valuesBlock].range;
        return range.isRow ? range.areas[0].top : range.areas[0].left;
    };
    for (std::size_t i = 0; i < before_.size(); ++i)
        if (before_[i][valuesBlock].isSet() && (!last || getStart(i) >= getStart(*last))) last = i;
    return last;
}

/// A series without cells gets some beside those of the last one, as near as there is room.
void SeriesPlacement::placeNewSeries(std::vector<SeriesCells>& series)
{
    const auto last = findLast();
    if (last) noteShared(now_[*last]);
    std::int64_t steps = 0;
    for (std::size_t i = 0; i < series.size(); ++i) {
        if (before_[i][valuesBlock].isSet() || !series[i].values) continue;
        const auto blocks = getBlocks(series[i]);
        if (!last || blocks.size() != now_[*last].size())
            refuse("no series has cells beside which a new one could stand");
        if (areShared_[valuesBlock]) refuse("all series share their cells");
        CellPlaces places;
        do {
            if (++steps > farthest) refuse("there is no room for a new series");
            places = placeBeside(now_[*last], steps, blocks);
        } while (!areFree(places, blocks));
        for (const auto& place : places) take(place);
        now_[i] = std::move(places);
        looks_[i] = looks_[*last];
    }
}

/// What has fewer lines of cells than it needs leaves them.
void SeriesPlacement::leaveNarrow(std::vector<SeriesCells>& series)
{
    bool isLeft = false;
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            auto& place = now_[i][b];
            if (blocks[b] == nullptr || !place.isSet() ||
                blocks[b]->lines.size() <= place.range.getLineCount())
                continue;
            place = {};
            isLeft = true;
        }
    }
    if (isLeft) noteTaken();
}

/// What a series has no cells for, such as categories that differ from those of the others, stands before its
/// values, or as near behind them as there is room.
void SeriesPlacement::placeRest(std::vector<SeriesCells>& series)
{
    leaveNarrow(series);
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            if (blocks[b] == nullptr || blocks[b]->lines.empty() || now_[i][b].isSet()) continue;
            if (b == nameBlock || b == valuesBlock || !now_[i][valuesBlock].isSet())
                refuse("a series has no cells for all of its data");
            now_[i][b] = placeBeside(now_[i][valuesBlock], *blocks[b]);
            take(now_[i][b]);
        }
    }
}

CellPlace SeriesPlacement::placeBeside(const CellPlace& values, const CellBlock& block)
{
    const bool isRow = values.range.isRow;
    const auto lines = static_cast<std::uint32_t>(block.lines.size());
    auto area = values.range.areas[0];
    const auto start = isRow ? area.top : area.left;
    (isRow ? area.bottom : area.right) = start + lines - 1;
    const CellRange like{values.range.prefix, {area}, false, isRow};
    const auto isFreeAt = [&](std::int64_t steps) {
        return isFree({like.shift(isRow ? steps : 0, isRow ? 0 : steps), {}}, block);
    };
    std::int64_t steps = -std::int64_t{lines};
    if (start < lines || !isFreeAt(steps)) {
        steps = 1;
        while (steps <= farthest && !isFreeAt(steps)) ++steps;
        if (steps > farthest) refuse("there is no room for all data of a series");
    }
    return {like.shift(isRow ? steps : 0, isRow ? 0 : steps), {}};
}

void SeriesPlacement::resizePlaces(std::vector<SeriesCells>& series)
{
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            if (blocks[b] == nullptr) continue;
            auto& place = now_[i][b];
            const auto& lines = blocks[b]->lines;
            // Others may have sizes and error bars that this series does without.
            if (!place.isSet()) continue;
            if (lines.size() < place.range.getLineCount() && place.range.areas.size() == 1 && !lines.empty())
                place.range = place.range.keepLines(lines.size());
            place.range = place.range.resize(getLength(*blocks[b]));
            for (const auto& area : place.range.areas)
                if (area.right > maximumColumn || area.bottom > maximumRow)
                    refuse("the sheet has no room left");
        }
    }
}

}  // namespace quillon::report
