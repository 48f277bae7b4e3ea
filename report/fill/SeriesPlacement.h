#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "report/fill/AreaSet.h"
#include "report/fill/CellBlock.h"
#include "report/fill/CellPlace.h"
#include "report/fill/OpenWorkbook.h"

namespace quillon::report {

/// Chooses the cells of the series of a chart: series stay where they stand, move up into the cells of those
/// that go, grow and shrink with their data; new ones stand beside the last. Writes nothing.
class SeriesPlacement {
 public:
    /// `before`: where each series stands, new ones nowhere. `removed`: where those stood that go. The areas
    /// of both are noted in their sheets already.
    SeriesPlacement(OpenWorkbook& book, std::vector<CellPlaces> before,
                    const std::vector<CellPlaces>& removed);

    /// Places the blocks of all series for as many values as they have; `series` as many as in `before`.
    /// Throws: std::runtime_error when there is no room.
    void place(std::vector<SeriesCells>& series);

    /// By series: where its cells stood, where they stand now, and whose look they take.
    const std::vector<CellPlaces>& getBefore() const { return before_; }
    const std::vector<CellPlaces>& getNow() const { return now_; }
    const std::vector<CellPlaces>& getLooks() const { return looks_; }

 private:
    void closeGaps(const std::vector<CellPlaces>& removed);
    void noteTaken();
    void take(const CellPlace& place);
    CellPlaces placeBeside(const CellPlaces& last, std::int64_t steps,
                           const std::vector<CellBlock*>& blocks) const;
    void noteShared(const CellPlaces& last);
    bool areFree(const CellPlaces& places, const std::vector<CellBlock*>& blocks);
    bool isFree(const CellPlace& place, const CellBlock& block);
    std::optional<std::size_t> findLast() const;
    void placeNewSeries(std::vector<SeriesCells>& series);
    void leaveNarrow(std::vector<SeriesCells>& series);
    void placeRest(std::vector<SeriesCells>& series);
    CellPlace placeBeside(const CellPlace& values, const CellBlock& block);
    void resizePlaces(std::vector<SeriesCells>& series);

    OpenWorkbook& book_;
    std::vector<CellPlaces> before_;
    std::vector<CellPlaces> now_;
    std::vector<CellPlaces> looks_;
    /// The cells of all places in `now_`, by sheet, as references write it.
    std::map<std::string, AreaSet> taken_;
    /// Which blocks of the last series other series have as well, in the same cells.
    std::vector<bool> areShared_;
};

}  // namespace quillon::report
