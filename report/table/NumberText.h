#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/table/TableOptions.h"

namespace quillon::report {

/// What a number counts: nothing, hundredths, or a currency. A format for cells of a worksheet follows from
/// it.
struct Unit {
    /// "%", or the currency as it stands in the cell: "€", "CHF". Empty: none.
    std::string_view symbol = {};
    bool isBefore = false;
    /// Whether a blank stands between number and symbol.
    bool isSpaced = false;

    bool operator==(const Unit& other) const { return symbol == other.symbol; }
};

/// A number as it stands in a cell: sign and unit taken off, digits and the marks between them left.
struct NumberText {
    bool isNegative = false;
    Unit unit = {};
    /// Begins with a digit, a comma or a point. It is part of the cell's text.
    std::string_view digits = {};
};

/// Takes sign and unit off: "-1,5", "(1,200)", "1200-", "45 %", "€ 1.234,50", "1'234.50 CHF".
/// Nothing where what is left cannot begin a number.
std::optional<NumberText> readNumberText(std::string_view cell);

/// The word for thousands, millions or more that follows the number in a cell, as in "10 Mio. €" and "1.5M".
/// Empty: none.
std::string_view findMagnitude(std::string_view cell);

/// The end of a sentence on a cell that is no number: it tells of a magnitude in it. Empty: there is none.
std::string describeMagnitude(std::string_view cell);

/// How digits are read.
struct NumberStyle {
    /// '.' or ','.
    char decimal = '.';
    /// The marks that may group thousands, from ',', '.', ' ' (any blank) and '\''; the decimal mark never
    /// does.
    std::string_view groups = ",. '";
};

/// What the digits of a number say in one style.
struct Digits {
    double value = 0;
    std::size_t decimals = 0;
    bool isGrouped = false;
};
/// Nothing where the digits do not fit the style, or the number is beyond all bounds. Groups have three
/// digits; behind commas also two, before the last: 12,34,567.
std::optional<Digits> readDigits(std::string_view digits, const NumberStyle& style);

/// The value of a cell: sign applied, percent divided. Nothing where it holds no number in this style.
std::optional<double> readNumber(std::string_view cell, const NumberStyle& style);

/// Whether a cell stands for no value: N/A, NA, NaN, null, -, #N/A, "." in any case, blanks alone, or one of
/// `further`.
bool isMissing(std::string_view cell, const std::vector<std::string>& further);

/// The styles that the options leave open: with '.' first, then with ','.
std::vector<NumberStyle> listStyles(const TableOptions& options);

/// As in a cell of a worksheet: `"€" #,##0.00`. Empty (General) for a number without unit and groups.
std::string makeNumberFormat(const Unit& unit, std::size_t decimals, bool isGrouped);

/// "%", or the currency that such a format shows. Empty: none.
std::string findUnit(std::string_view format);

}  // namespace quillon::report
