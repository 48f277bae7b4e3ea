#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/Export.h"

namespace quillon::report {

/// The name that an author probably meant: the one that differs from `typed` by the fewest letters added,
/// left out, replaced or swapped, and at most by a third of them; otherwise the only one that begins with
/// `typed`. Capitals count as small letters. Empty when none is near.
QUILLON_EXPORT std::string findNearName(std::string_view typed, const std::vector<std::string>& names);

/// The end of a sentence: `; did you mean "type"?`, or "." when no name is near.
QUILLON_EXPORT std::string suggestName(std::string_view typed, const std::vector<std::string>& names);

}  // namespace quillon::report
