#include "report/fill/Matching.h"

#include <algorithm>
#include <numeric>

namespace quillon::report {
namespace {

/// The positions by their names, equal ones in order.
std::vector<std::size_t> sortByName(const std::vector<std::string>& names)
{
    std::vector<std::size_t> places(names.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::ranges::stable_sort(places, {},
                             [&](std::size_t place) -> const std::string& { return names[place]; });
    return places;
}

}  // namespace

Matches matchNames(const std::vector<std::string>& before, const std::vector<std::string>& after)
{
    const auto places = sortByName(before);
    // For the first place of a name, how many of its places are taken.
    std::vector<std::size_t> takenCount(places.size(), 0);
    Matches matches(after.size(), noMatch);
    std::vector<bool> isTaken(before.size(), false);
    const auto getName = [&](std::size_t place) -> const std::string& { return before[place]; };
    for (std::size_t i = 0; i < after.size(); ++i) {
        const auto first = std::ranges::lower_bound(places, after[i], {}, getName);
        if (first == places.end()) continue;
        auto& taken = takenCount[static_cast<std::size_t>(first - places.begin())];
        const auto place = first + static_cast<std::ptrdiff_t>(taken);
        if (place == places.end() || before[*place] != after[i]) continue;
        ++taken;
        matches[i] = *place;
        isTaken[matches[i]] = true;
    }
    std::size_t next = 0;
    for (auto& match : matches) {
        if (match != noMatch) continue;
        while (next < before.size() && isTaken[next]) ++next;
        if (next < before.size()) match = next++;
    }
    return matches;
}

Matches matchPositions(std::size_t before, std::size_t after)
{
    Matches matches(after, noMatch);
    for (std::size_t i = 0; i < after && i < before; ++i) matches[i] = i;
    return matches;
}

std::vector<std::size_t> invert(const Matches& matches, std::size_t before)
{
    std::vector<std::size_t> after(before, noMatch);
    for (std::size_t i = 0; i < matches.size(); ++i)
        if (matches[i] < before) after[matches[i]] = i;
    return after;
}

}  // namespace quillon::report
