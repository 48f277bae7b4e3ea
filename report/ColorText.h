#pragma once

#include <string>

#include "support/Export.h"

namespace quillon::report {

/// Whether a document can show the colour that `text` stands for: a colour name, "#" and six hexadecimal
/// digits, or an rgb expression.
QUILLON_EXPORT bool isColorText(const std::u16string& text);

}  // namespace quillon::report
