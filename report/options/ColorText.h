#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "support/Export.h"

namespace quillon::report {

/// The six upper-case hexadecimal digits of the colour that `text` stands for: a colour name, an rgb
/// expression, or six digits with "#" or without, as a colour set by numbers has them. Nothing when it is
/// not a colour.
QUILLON_EXPORT std::optional<std::u16string> findColorDigits(const std::u16string& text);

/// The sentence on a text that is not a colour: what it is, and what is expected.
QUILLON_EXPORT std::string describeNoColor(std::u16string_view text);

}  // namespace quillon::report
