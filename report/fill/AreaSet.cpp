#include "report/fill/AreaSet.h"

#include <algorithm>

namespace quillon::report {

void AreaSet::add(const Area& area)
{
    if (!known_.insert(area).second) return;
    areas_.push_back(area);
    if (area.getHeight() >= area.getWidth()) {
        for (auto column = area.left; column <= area.right; ++column)
            add(columns_, column, area.top, area.bottom);
    } else {
        for (auto row = area.top; row <= area.bottom; ++row) add(rows_, row, area.left, area.right);
    }
}

/// Stretches that meet the new one become part of it.
void AreaSet::add(Stretches& stretches, std::uint32_t line, std::uint32_t first, std::uint32_t last)
{
    auto met = stretches.lower_bound({line, first});
    while (met != stretches.end() && met->first.first == line && met->second <= last) {
        first = std::min(first, met->second);
        last = std::max(last, met->first.second);
        met = stretches.erase(met);
    }
    stretches.emplace_hint(met, std::pair(line, last), first);
}

bool AreaSet::overlaps(const Stretches& stretches, std::uint32_t line, std::uint32_t first,
                       std::uint32_t last)
{
    const auto next = stretches.lower_bound({line, first});
    return next != stretches.end() && next->first.first == line && next->second <= last;
}

std::size_t AreaSet::countCells() const
{
    std::size_t count = 0;
    for (const auto& area : areas_) count += area.countCells();
    return count;
}

Area AreaSet::getAll() const
{
    auto all = areas_.at(0);
    for (const auto& area : areas_) all = all.join(area);
    return all;
}

bool AreaSet::overlaps(const Area& area) const
{
    if (!columns_.empty())
        for (auto column = area.left; column <= area.right; ++column)
            if (overlaps(columns_, column, area.top, area.bottom)) return true;
    if (!rows_.empty())
        for (auto row = area.top; row <= area.bottom; ++row)
            if (overlaps(rows_, row, area.left, area.right)) return true;
    return false;
}

}  // namespace quillon::report
