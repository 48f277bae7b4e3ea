#pragma once

#include <vector>

#include "report/fill/CellBlock.h"
#include "report/fill/CellPlace.h"
#include "report/fill/OpenWorkbook.h"

namespace quillon::report {

/// Writes the blocks of series to the cells of their sheets, in the style of cells that there are.
class BlockWriter {
 public:
    explicit BlockWriter(OpenWorkbook& book) : book_(book) {}

    /// Writes each block of `series` at its place in `now`, like the cells at `looks`. The caller keeps the
    /// series until their sheets are saved.
    void write(std::vector<SeriesCells>& series, const std::vector<CellPlaces>& now,
               const std::vector<CellPlaces>& looks);

 private:
    void writeBlock(const CellBlock& block, const CellPlace& place, const CellPlace& look);

    OpenWorkbook& book_;
};

}  // namespace quillon::report
