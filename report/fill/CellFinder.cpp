#include "report/fill/CellFinder.h"

#include <string>
#include <utility>

#include "report/options/QuotedText.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// Values follow each other to the right where they stand in one row, or behind their name.
void chooseDirection(CellPlaces& places)
{
    const auto& values = places[valuesBlock];
    if (!values.isSet()) return;
    const auto& first = values.range.areas[0];
    const auto& name = places[nameBlock];
    bool isRow = first.getWidth() > 1;
    if (first.getWidth() == 1 && first.getHeight() == 1) {
        isRow = values.range.areas.size() > 1 && values.range.areas[1].top == first.top;
        if (name.isSet())
            isRow = name.range.areas[0].top == first.top && name.range.areas[0].left < first.left;
    }
    for (auto& place : places) place.range.isRow = isRow;
}

}  // namespace

std::vector<CellPlaces> CellFinder::find(std::vector<SeriesCells>& series)
{
    std::vector<CellPlaces> found;
    found.reserve(series.size());
    for (auto& one : series) found.push_back(resolve(one));
    return found;
}

CellPlaces CellFinder::resolve(SeriesCells& series)
{
    CellPlaces places;
    for (const auto* block : getBlocks(series))
        places.push_back(block == nullptr ? CellPlace() : resolve(*block));
    for (const auto& place : places)
        for (const auto& area : place.range.areas) cellCount_ += area.countCells();
    if (cellCount_ > maximumCells) refuse("the chart names more cells than a chart can show");
    chooseDirection(places);
    // A whole column holds the name as well.
    if (places[nameBlock].isSet())
        for (std::size_t i = 1; i < places.size(); ++i)
            for (auto& area : places[i].range.areas)
                if (const auto& name = places[nameBlock].range.areas[0];
                    area.contains(name) && name.bottom < area.bottom)
                    area.top = name.bottom + 1;
    return places;
}

CellPlace CellFinder::resolve(const CellBlock& block)
{
    if (block.reference.empty()) return {};
    if (auto range = parseRange(block.reference)) {
        cutWholeLines(*range);
        return {std::move(*range), {}};
    }
    if (auto column = resolveColumn(block.reference)) return *column;
    return resolveName(block.reference);
}

/// A name stands for cells: "Sales", "Sheet1!Sales", "[0]!Sales".
CellPlace CellFinder::resolveName(std::string_view text, int depth)
{
    const auto mark = text.rfind('!');
    const auto name = std::string(mark == std::string_view::npos ? text : text.substr(mark + 1));
    const auto* found = book_.getRead().findName(name);
    if (found == nullptr) refuse(quoteText(text) + " names no cells");
    if (auto range = parseRange(found->text)) {
        cutWholeLines(*range);
        return {std::move(*range), found->name};
    }
    if (auto range = computeOffset(found->text, depth)) return {std::move(*range), found->name, true};
    refuse("the name " + quoteText(name) + " is computed");
}

/// The cells of "OFFSET(Sheet1!$B$1,1,0,COUNTA(Sheet1!$B:$B)-1,1)", as names that grow by themselves are
/// written, or of "OFFSET(Dates,0,1)"; down to the first that is empty where the height is computed.
std::optional<CellRange> CellFinder::computeOffset(std::string_view formula, int depth)
{
    constexpr int deepest = 8;
    const auto offset = parseOffset(formula);
    if (!offset || depth > deepest) return {};
    auto range = parseRange(offset->base);
    if (!range) range = resolveName(offset->base, depth + 1).range;
    auto& area = range->areas[0];
    const auto bottom = area.bottom + offset->rows;
    const auto right = area.right + offset->columns;
    if (range->areas.size() != 1 || area.top + offset->rows < 0 || area.left + offset->columns < 0 ||
        std::cmp_greater(bottom, maximumRow) || std::cmp_greater(right, maximumColumn))
        return {};
    *range = range->shift(offset->rows, offset->columns);
    if (!offset->hasHeight) return range;
    auto& moved = range->areas[0];
    const auto& sheet = *book_.openSheet(range->getSheet()).markup;
    moved.right = moved.left;
    moved.bottom = moved.top;
    while (moved.bottom < maximumRow && !sheet.isEmpty(moved.bottom + 1, moved.left)) ++moved.bottom;
    return range;
}

/// A column of a table: "Table1[North]", "Table1[[#Headers],[North]]".
std::optional<CellPlace> CellFinder::resolveColumn(std::string_view text)
{
    const auto bracket = text.find('[');
    if (bracket == std::string_view::npos || bracket == 0 || !text.ends_with(']')) return {};
    auto column = text.substr(bracket + 1, text.size() - bracket - 2);
    constexpr std::string_view header = "[#Headers],[";
    const bool isHeader = column.starts_with(header);
    if (isHeader) column = column.substr(header.size(), column.size() - header.size() - 1);
    const auto& read = book_.getRead();
    for (std::size_t i = 0; i < read.getSheetNames().size(); ++i) {
        if (!read.getPackage().hasPart(read.getSheetPart(i))) continue;
        for (const auto& table : book_.openSheet(i).tables) {
            if (toLower(table.getName()) != toLower(text.substr(0, bracket))) continue;
            auto quoted = read.getSheetNames()[i];
            for (std::size_t at = 0; (at = quoted.find('\'', at)) != std::string::npos; at += 2)
                quoted.insert(at, 1, '\'');
            if (const auto area = table.findColumn(std::string(column), isHeader))
                return CellPlace{{"'" + quoted + "'!", {*area}}, {}};
        }
    }
    return {};
}

/// Whole columns and rows end where the sheet's cells do.
void CellFinder::cutWholeLines(CellRange& range)
{
    const auto used = book_.openSheet(range.getSheet()).markup->getUsedArea().value_or(Area());
    for (auto& area : range.areas) {
        if (area.bottom == maximumRow && area.top == 0) area.bottom = used.bottom;
        if (area.right == maximumColumn && area.left == 0) area.right = used.right;
    }
}

}  // namespace quillon::report
