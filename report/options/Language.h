#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "support/Export.h"

namespace quillon::report {

/// How a language writes numbers and dates, and what it calls things. Names stand in a row, with a blank
/// between.
struct Language {
    std::string_view decimalMark;
    std::string_view groupMark;
    /// The number format of a day.
    std::string_view dayFormat;
    std::string_view months;
    std::string_view shortMonths;
    /// From Sunday.
    std::string_view weekdays;
    std::string_view shortWeekdays;
    /// What captions count: figures, and then tables.
    std::string_view captions;
};

/// The language of a tag, "de-DE" or "de_AT" in any case; English for one that is not in the list.
QUILLON_EXPORT Language findLanguage(std::string_view tag);

/// The names of the months in all languages, and the short ones.
QUILLON_EXPORT std::vector<std::string_view> listMonthNames();

/// The name at a position, from 0, of those of a language.
QUILLON_EXPORT std::string_view pickName(std::string_view names, std::size_t position);

}  // namespace quillon::report
