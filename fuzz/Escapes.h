#pragma once

#include <charconv>
#include <string>

#include "support/Text.h"

namespace quillon::fuzz {

/// What readers of worksheets see in place of _xHHHH_, in a text that was escaped.
inline std::u16string readEscapes(const std::u16string& text)
{
    constexpr std::u16string_view digits = u"0123456789ABCDEFabcdef";
    std::u16string read;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isEscape = text.compare(i, 2, u"_x") == 0 && text.size() > i + 6 && text[i + 6] == u'_' &&
                              text.substr(i + 2, 4).find_first_not_of(digits) == std::u16string::npos;
        unsigned code = text[i];
        if (isEscape) {
            const auto number = toUtf8(text.substr(i + 2, 4));
            std::from_chars(number.data(), number.data() + number.size(), code, 16);
            i += 6;
        }
        read += static_cast<char16_t>(code);
    }
    return read;
}

}  // namespace quillon::fuzz
