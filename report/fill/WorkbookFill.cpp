#include "report/fill/WorkbookFill.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "report/fill/BlockWriter.h"
#include "report/fill/CellFinder.h"
#include "report/fill/OpenWorkbook.h"
#include "report/fill/SeriesPlacement.h"
#include "report/fill/SheetUpdater.h"

namespace quillon::report {
namespace {

void collectAreas(OpenWorkbook& book, const std::vector<CellPlaces>& places,
                  std::vector<Area> OpenSheet::*areas)
{
    for (const auto& series : places)
        for (const auto& place : series)
            for (const auto& area : place.range.areas) {
                auto& list = book.openSheet(place.range.getSheet()).*areas;
                if (std::ranges::find(list, area) == list.end()) list.push_back(area);
            }
}

/// A defined name that the chart has for cells stands for those that they are now.
void noteNames(OpenWorkbook& book, const std::vector<CellPlaces>& now)
{
    for (const auto& places : now)
        for (const auto& place : places)
            for (auto& name : book.getNames())
                if (!place.definedName.empty() && !place.isComputed && name.name == place.definedName)
                    name.newText = place.range.format();
}

/// Gives the chart the references that it is to have; those that still hold stay as they are written.
void reportReferences(std::vector<SeriesCells>& series, const SeriesPlacement& placement)
{
    const auto& before = placement.getBefore();
    const auto& now = placement.getNow();
    for (std::size_t i = 0; i < series.size(); ++i) {
        const auto blocks = getBlocks(series[i]);
        for (std::size_t b = 0; b < blocks.size(); ++b) {
            if (blocks[b] == nullptr || !now[i][b].definedName.empty()) continue;
            const bool isSame = now[i][b] == before[i][b] && parseRange(blocks[b]->reference);
            if (!isSame) blocks[b]->reference = now[i][b].range.format();
        }
    }
}

/// The steps of filling, in their order.
std::string fill(const std::string& bytes, std::vector<SeriesCells>& series, std::vector<SeriesCells> removed)
{
    OpenWorkbook book(bytes);
    CellFinder finder(book);
    auto before = finder.find(series);
    const auto gone = finder.find(removed);
    collectAreas(book, before, &OpenSheet::before);
    collectAreas(book, gone, &OpenSheet::before);
    SeriesPlacement placement(book, std::move(before), gone);
    placement.place(series);
    collectAreas(book, placement.getNow(), &OpenSheet::now);
    noteNames(book, placement.getNow());
    SheetUpdater sheets(book);
    sheets.makeRoom();
    BlockWriter(book).write(series, placement.getNow(), placement.getLooks());
    sheets.update();
    auto filled = book.save();
    reportReferences(series, placement);
    return filled;
}

}  // namespace

CellValue CellLine::get(std::size_t index) const
{
    if (isNumber(index)) return points_->numbers[index];
    if (index >= points_->texts.size() || points_->texts[index].empty()) return {};
    return points_->texts[index];
}

FilledWorkbook fillWorkbook(const std::string& workbook, std::vector<SeriesCells> series,
                            const std::vector<SeriesCells>& removed)
{
    FilledWorkbook filled{{}, std::move(series), {}};
    try {
        filled.bytes = fill(workbook, filled.series, removed);
    } catch (const std::runtime_error& error) {
        filled.reason = error.what();
    }
    return filled;
}

}  // namespace quillon::report
