#include "report/fill/WorkbookFill.h"

#include <map>
#include <stdexcept>
#include <utility>

#include "report/fill/AreaSet.h"
#include "report/fill/BlockWriter.h"
#include "report/fill/CellFinder.h"
#include "report/fill/OpenWorkbook.h"
#include "report/fill/SeriesPlacement.h"
#include "report/fill/SheetUpdater.h"
#include "report/fill/WorkbookMarkup.h"

namespace quillon::report {
namespace {

void collectAreas(OpenWorkbook& book, const std::vector<CellPlaces>& places, AreaSet OpenSheet::*areas)
{
    for (const auto& series : places)
        for (const auto& place : series)
            for (const auto& area : place.range.areas)
                (book.openSheet(place.range.getSheet()).*areas).add(area);
}

/// A defined name that the chart has for cells stands for those that they are now.
void noteNames(OpenWorkbook& book, const std::vector<CellPlaces>& now)
{
    std::map<std::string, std::string> texts;
    for (const auto& places : now)
        for (const auto& place : places)
            if (!place.definedName.empty() && !place.isComputed)
                texts[place.definedName] = place.range.format();
    const auto& names = book.getRead().getNames();
    for (std::size_t i = 0; i < names.size(); ++i)
        if (const auto text = texts.find(names[i].name); text != texts.end()) book.setName(i, text->second);
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
std::string fill(std::shared_ptr<const WorkbookMarkup> read, std::vector<SeriesCells>& series,
                 std::vector<SeriesCells> removed)
{
    OpenWorkbook book(std::move(read));
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

FilledWorkbook fillWorkbook(const ReadWorkbook& read, std::vector<SeriesCells> series,
                            const std::vector<SeriesCells>& removed)
{
    FilledWorkbook filled{{}, std::move(series), {}};
    try {
        filled.bytes = fill(read(), filled.series, removed);
    } catch (const std::runtime_error& error) {
        filled.reason = error.what();
    }
    return filled;
}

}  // namespace quillon::report
