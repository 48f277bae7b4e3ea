#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace quillon::report {

/// For each new name, the position of the old one whose place it takes, or `noMatch`.
using Matches = std::vector<std::size_t>;
inline constexpr std::size_t noMatch = static_cast<std::size_t>(-1);

/// Matches by name, equal names by position; then what is left of the new takes what is left of the old, in
/// order.
Matches matchNames(const std::vector<std::string>& before, const std::vector<std::string>& after);
/// The first takes the place of the first, and so on.
Matches matchPositions(std::size_t before, std::size_t after);

/// For each old position the new one, or `noMatch` for what has gone.
std::vector<std::size_t> invert(const Matches& matches, std::size_t before);

}  // namespace quillon::report
