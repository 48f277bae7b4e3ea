#pragma once

#include <string>
#include <vector>

#include "report/fill/CellRange.h"

namespace quillon::report {

/// Where a block stands; without areas, nowhere.
struct CellPlace {
    CellRange range = {};
    /// The defined name that the chart has for it; empty for cells.
    std::string definedName = {};
    /// Whether the name computes its cells, and so follows them by itself.
    bool isComputed = false;

    bool isSet() const { return !range.areas.empty(); }
    bool operator==(const CellPlace& other) const { return range == other.range && isSet() == other.isSet(); }
};

/// Those of the blocks of a series, in the order of getBlocks.
using CellPlaces = std::vector<CellPlace>;

}  // namespace quillon::report
