#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "support/Export.h"

namespace quillon::report {

/// What the automatic colours of charts come out as in a document.
struct ThemeColors {
    /// Red, green and blue, 0xRRGGBB. Default: those of new documents.
    std::array<std::uint32_t, 6> accents = {0x4472C4, 0xED7D31, 0xA5A5A5, 0xFFC000, 0x5B9BD5, 0x70AD47};
};

/// The colours in a theme part; those of new documents where it says none, or cannot be read.
QUILLON_EXPORT ThemeColors readThemeColors(const std::string& part);

}  // namespace quillon::report
