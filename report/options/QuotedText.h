#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "support/Export.h"

namespace quillon::report {

/// A text of the author's as it stands in a sentence: between double quotes, on one line, fit for any
/// terminal. Control characters, marks that turn the direction of writing, and bytes that are not UTF-8 are
/// written as "\x1B" or "\u202E". A text of more than `longest` characters is cut, and the number of all its
/// characters follows in parentheses.
QUILLON_EXPORT std::string quoteText(std::string_view utf8, std::size_t longest = 40);
/// The same, of UTF-16; halves of pairs are written as "\uD800".
QUILLON_EXPORT std::string quoteText(std::u16string_view text, std::size_t longest = 40);
/// The same without the quotes, for names of files and parts.
QUILLON_EXPORT std::string showText(std::string_view utf8, std::size_t longest = 200);

}  // namespace quillon::report
