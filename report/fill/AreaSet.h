#pragma once

#include <cstdint>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "report/fill/CellRange.h"
#include "support/Export.h"

namespace quillon::report {

/// Areas of a sheet, each once, and the cells that they cover, which are quickly found: a chart may have
/// areas by the ten thousand.
class QUILLON_EXPORT AreaSet {
 public:
    void add(const Area& area);

    bool isEmpty() const { return areas_.empty(); }
    /// In the order they came.
    const std::vector<Area>& getAreas() const { return areas_; }
    /// Those that several areas have count as often.
    std::size_t countCells() const;
    /// The smallest area that holds all; at least one has to be there.
    Area getAll() const;
    bool contains(std::uint32_t row, std::uint32_t column) const
    {
        return overlaps({row, column, row, column});
    }
    bool overlaps(const Area& area) const;

 private:
    /// Stretches of numbered lines that never meet: the last cell of each, to its first.
    using Stretches = std::map<std::pair<std::uint32_t, std::uint32_t>, std::uint32_t>;

    static void add(Stretches& stretches, std::uint32_t line, std::uint32_t first, std::uint32_t last);
    static bool overlaps(const Stretches& stretches, std::uint32_t line, std::uint32_t first,
                         std::uint32_t last);

    std::vector<Area> areas_;
    std::set<Area> known_;
    /// The cells of areas that are rather high, column by column, and of those that are rather wide, row by
    /// row.
    Stretches columns_;
    Stretches rows_;
};

}  // namespace quillon::report
