#include "report/fill/Matching.h"

#include <deque>
#include <unordered_map>

namespace quillon::report {

Matches matchNames(const std::vector<std::string>& before, const std::vector<std::string>& after)
{
    // The positions of a name that nobody has taken yet.
    std::unordered_map<std::string, std::deque<std::size_t>> places;
    for (std::size_t i = 0; i < before.size(); ++i) places[before[i]].push_back(i);
    Matches matches(after.size(), noMatch);
    std::vector<bool> isTaken(before.size(), false);
    for (std::size_t i = 0; i < after.size(); ++i) {
        const auto found = places.find(after[i]);
        if (found == places.end() || found->second.empty()) continue;
        matches[i] = found->second.front();
        found->second.pop_front();
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
