#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "support/Export.h"

namespace quillon::report {

/// Splits a list at its commas. A comma in an item stands between double quotes, in which a quote is doubled,
/// or between parentheses: `"Umsatz, netto",B` gives two items, and so does `red,rgb(1,2,3)`. Blanks around
/// an item are dropped. Throws: std::runtime_error for a quote that is not closed.
QUILLON_EXPORT std::vector<std::string> splitList(std::string_view text);

/// An item without the quotes around it, in which a quote is doubled; any other text as it is.
QUILLON_EXPORT std::string unquoteItem(const std::string& item);

/// The texts of a list in a sentence: "low, next, high or none".
template <typename Texts>
std::string joinNames(const Texts& texts)
{
    std::string joined;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        if (i > 0) joined += i + 1 == texts.size() ? " or " : ", ";
        joined += texts[i];
    }
    return joined;
}

/// The text in quotes, each quote in it doubled, as splitList and unquoteItem read it back.
QUILLON_EXPORT std::string putInQuotes(const std::string& text);

}  // namespace quillon::report
