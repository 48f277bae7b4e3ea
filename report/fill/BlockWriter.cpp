#include "report/fill/BlockWriter.h"

#include <algorithm>
#include <map>
#include <string>

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

/// By line, the styles of the cells at a place.
std::vector<std::vector<int>> readStyles(const SheetMarkup& sheet, const CellRange& range, std::size_t lines)
{
    std::vector<std::vector<int>> styles(lines);
    visitCells(range, [&](std::size_t, std::uint32_t line, std::uint32_t row, std::uint32_t column) {
        if (line < lines) styles[line].push_back(sheet.getStyle(row, column));
    });
    return styles;
}

}  // namespace

void BlockWriter::write(std::vector<SeriesCells>& series, const std::vector<CellPlaces>& now,
                        const std::vector<CellPlaces>& looks)
{
    for (auto& sheet : book_.getSheets())
        if (sheet.writes) sheet.writes->reserve(sheet.now.countCells());
    std::map<std::string, const CellBlock*> categories;
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            if (blocks[b] == nullptr || !now[i][b].isSet()) continue;
            if (b == categoriesBlock) {
                // Those that all series share are written once.
                const auto [at, isNew] = categories.emplace(now[i][b].range.format(), blocks[b]);
                if (!isNew && at->second->lines == blocks[b]->lines) continue;
            }
            writeBlock(*blocks[b], now[i][b], looks[i][b]);
        }
    }
}

void BlockWriter::writeBlock(const CellBlock& block, const CellPlace& place, const CellPlace& look)
{
    auto& sheet = book_.openSheet(place.range.getSheet());
    const auto lineCount = place.range.getLineCount();
    const auto looks = readStyles(*sheet.markup, look.range, lineCount);
    std::map<int, int> formatted;
    const auto format = [&](int style) {
        const auto [at, isNew] = formatted.try_emplace(style, style);
        if (isNew) at->second = book_.getStyles().withFormat(style, block.numberFormat);
        return at->second;
    };
    visitCells(
        place.range, [&](std::size_t index, std::uint32_t line, std::uint32_t row, std::uint32_t column) {
            const auto& known = looks[line];
            const int style = known.empty() ? SheetMarkup::noStyle : known[std::min(index, known.size() - 1)];
            const auto* values = line < block.lines.size() ? &block.lines[line] : nullptr;
            const bool isNumber = values != nullptr && values->isNumber(index);
            sheet.writes->write(row, column, values, index, isNumber ? format(style) : style);
        });
}

}  // namespace quillon::report
