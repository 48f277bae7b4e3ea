#include "report/options/NearName.h"

#include <algorithm>

#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// No option or sensible column name is longer; the work grows with the square.
constexpr std::size_t longestCompared = 64;

/// The number of letters added, left out, replaced, or swapped with their neighbour, from `a` to `b`.
std::size_t measureDistance(const std::string& a, const std::string& b)
{
    std::vector<std::vector<std::size_t>> steps(a.size() + 1, std::vector<std::size_t>(b.size() + 1));
    for (std::size_t i = 0; i <= a.size(); ++i) steps[i][0] = i;
    for (std::size_t k = 0; k <= b.size(); ++k) steps[0][k] = k;
    for (std::size_t i = 1; i <= a.size(); ++i)
        for (std::size_t k = 1; k <= b.size(); ++k) {
            const std::size_t replaced = a[i - 1] == b[k - 1] ? 0 : 1;
            auto best = std::min({steps[i - 1][k] + 1, steps[i][k - 1] + 1, steps[i - 1][k - 1] + replaced});
            if (i > 1 && k > 1 && a[i - 1] == b[k - 2] && a[i - 2] == b[k - 1])
                best = std::min(best, steps[i - 2][k - 2] + 1);
            steps[i][k] = best;
        }
    return steps[a.size()][b.size()];
}

/// The one name that goes on from what was typed.
std::string findLongerName(std::string_view typed, const std::vector<std::string>& names)
{
    constexpr std::size_t tellsEnough = 3;
    const auto goesOn = [&typed](const std::string& name) { return toLower(name).starts_with(typed); };
    const auto only = std::ranges::find_if(names, goesOn);
    if (typed.size() < tellsEnough || only == names.end()) return {};
    return std::any_of(only + 1, names.end(), goesOn) ? std::string() : *only;
}

}  // namespace

std::string findNearName(std::string_view typed, const std::vector<std::string>& names)
{
    if (typed.size() > longestCompared) return {};
    const auto wanted = toLower(typed);
    std::string nearest;
    const auto goesOn = [&wanted](const std::string& name) { return toLower(name).starts_with(wanted); };
    auto fewest = std::max<std::size_t>(wanted.size() / 3, 1) + 1;
    for (const auto& name : names) {
        if (name.size() > longestCompared) continue;
        const auto distance = measureDistance(wanted, toLower(name));
        if (distance >= std::max(wanted.size(), name.size())) continue;
        // Of names as near as each other, the one that goes on as it was typed.
        const bool isBetter = distance == fewest && !nearest.empty() && goesOn(name) && !goesOn(nearest);
        if (distance >= fewest && !isBetter) continue;
        fewest = distance;
        nearest = name;
    }
    return nearest.empty() ? findLongerName(wanted, names) : nearest;
}

std::string suggestName(std::string_view typed, const std::vector<std::string>& names)
{
    const auto near = findNearName(typed, names);
    return near.empty() ? "." : "; did you mean " + quoteText(near) + "?";
}

}  // namespace quillon::report
