#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

#include "report/fill/CellPlace.h"
#include "report/fill/OpenWorkbook.h"

namespace quillon::report {

/// Finds the cells that the references of a chart name: cells, names that stand for them or compute them, and
/// columns of tables. Opens the sheets that they are in.
class CellFinder {
 public:
    explicit CellFinder(OpenWorkbook& book) : book_(book) {}

    /// Where the blocks of each series stand; a block without a reference stands nowhere.
    /// Throws: std::runtime_error when a reference names no cells that can be found, or when all that were
    /// looked for are more than `maximumCells`.
    std::vector<CellPlaces> find(std::vector<SeriesCells>& series);

 private:
    CellPlaces resolve(SeriesCells& series);
    CellPlace resolve(const CellBlock& block);
    CellPlace resolveName(std::string_view text, int depth = 0);
    std::optional<CellRange> computeOffset(std::string_view formula, int depth);
    std::optional<CellPlace> resolveColumn(std::string_view text);
    void cutWholeLines(CellRange& range);

    OpenWorkbook& book_;
    /// Of all references.
    std::uint64_t cellCount_ = 0;
};

}  // namespace quillon::report
