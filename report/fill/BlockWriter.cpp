#include "report/fill/BlockWriter.h"

#include <algorithm>
#include <utility>

namespace quillon::report {
namespace {

/// Calls with index, line, row and column of each cell.
template <typename Call>
void visitCells(const CellRange& range, const Call& call)
{
    std::size_t index = 0;
    for (const auto& area : range.areas)
        for (std::uint32_t i = 0; i < (range.isRow ? area.getWidth() : area.getHeight()); ++i, ++index)
            for (std::uint32_t line = 0; line < range.getLineCount(); ++line)
                call(index, line, range.isRow ? area.top + line : area.top + i,
                     range.isRow ? area.left + i : area.left + line);
}

}  // namespace

void BlockWriter::write(std::vector<SeriesCells>& series, const std::vector<CellPlaces>& now,
                        const std::vector<CellPlaces>& looks)
{
    std::vector<std::pair<const CellBlock*, const CellPlace*>> done;
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            if (blocks[b] == nullptr || !now[i][b].isSet()) continue;
            // Categories that all series share are written once.
            const bool isDone = std::ranges::any_of(done, [&](const auto& other) {
                return *other.second == now[i][b] && other.first->lines == blocks[b]->lines;
            });
            if (!isDone) writeBlock(*blocks[b], now[i][b], looks[i][b]);
            if (b == categoriesBlock) done.emplace_back(blocks[b], &now[i][b]);
        }
    }
}

void BlockWriter::writeBlock(const CellBlock& block, const CellPlace& place, const CellPlace& look)
{
    auto& cells = *book_.openSheet(place.range.getSheet()).cells;
    cells.reserveWrites(place.range.getLength() * place.range.getLineCount());
    std::vector<std::vector<int>> looks(place.range.getLineCount());
    visitCells(look.range, [&](std::size_t, std::uint32_t line, std::uint32_t row, std::uint32_t column) {
        if (line < looks.size()) looks[line].push_back(cells.getStyle(row, column));
    });
    visitCells(
        place.range, [&](std::size_t index, std::uint32_t line, std::uint32_t row, std::uint32_t column) {
            const auto& known = looks[line];
            const int style = known.empty() ? SheetCells::noStyle : known[std::min(index, known.size() - 1)];
            const auto* values = line < block.lines.size() ? &block.lines[line] : nullptr;
            const bool isNumber = values != nullptr && values->isNumber(index);
            cells.write(row, column, values, index,
                        isNumber ? styles_.withFormat(style, block.numberFormat) : style);
        });
}

}  // namespace quillon::report
