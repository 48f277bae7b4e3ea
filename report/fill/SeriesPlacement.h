#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

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
    CellPlaces placeBeside(const CellPlaces& last, std::int64_t steps,
                           const std::vector<CellBlock*>& blocks) const;
    bool isShared(const CellPlaces& last, std::size_t block) const;
    bool isFree(const CellPlace& place, const CellBlock& block);
    std::optional<std::size_t> findLast() const;
    void placeNewSeries(std::vector<SeriesCells>& series);
    void placeRest(std::vector<SeriesCells>& series);
    CellPlace placeBeside(const CellPlace& values, const CellBlock& block);
    void resizePlaces(std::vector<SeriesCells>& series);

    OpenWorkbook& book_;
    std::vector<CellPlaces> before_;
    std::vector<CellPlaces> now_;
    std::vector<CellPlaces> looks_;
};

}  // namespace quillon::report
