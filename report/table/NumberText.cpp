#include "report/table/NumberText.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "report/options/PlainNumber.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// The kinds of blank that stand in numbers: plain, no-break, narrow no-break, thin, figure space, and those
/// without width, which web pages leave behind.
constexpr std::array<std::string_view, 7> blanks = {" ",      "\u00A0", "\u202F", "\u2009",
                                                    "\u2007", "\u200B", "\uFEFF"};
constexpr std::array<std::string_view, 2> apostrophes = {"'", "\u2019"};
/// Typed, typographic, and the dash that programs make of a typed one.
constexpr std::array<std::string_view, 3> minuses = {"-", "\u2212", "\u2013"};
/// What stands in prices in place of the cents: 5,- and 5.—
constexpr std::array<std::string_view, 3> dashes = {"-", "\u2013", "\u2014"};

/// Longer symbols first, where one begins another.
constexpr std::string_view currencies[] = {
    "US$", "CA$", "AU$", "NZ$", "HK$", "A$",  "C$",  "R$",  "$",   "€",   "£",   "¥",   "￥",  "₹",   "₽",
    "₩",   "₺",   "₴",   "₪",   "₫",   "฿",   "zł",  "Kč",  "Ft",  "kr.", "kr",  "Fr.", "Fr",  "лв.", "lei",
    "AED", "ARS", "AUD", "BGN", "BRL", "CAD", "CHF", "CLP", "CNY", "COP", "CZK", "DKK", "EGP", "EUR", "GBP",
    "HKD", "HUF", "IDR", "ILS", "INR", "ISK", "JPY", "KES", "KRW", "MXN", "MYR", "NGN", "NOK", "NZD", "PHP",
    "PLN", "RON", "RSD", "RUB", "SAR", "SEK", "SGD", "THB", "TRY", "TWD", "UAH", "USD", "VND", "ZAR"};

/// In these, "m" would be metres.
constexpr std::string_view magnitudeSigns[] = {"k", "K", "M", "B"};
constexpr std::string_view magnitudeWords[] = {"tsd",      "mio",      "mrd",      "mln",       "mld",
                                               "mn",       "bn",       "thousand", "million",   "millions",
                                               "billion",  "billions", "tausend",  "millionen", "milliarden",
                                               "millones", "milioni",  "miliardi", "miljoen",   "milliards"};

constexpr std::array<std::string_view, 9> missingMarks = {"n/a",  "na", "nan",    "null",  "-",
                                                          "#n/a", ".",  "\u2013", "\u2014"};

/// The length of the first of `texts` with which `text` starts; 0: none does.
template <typename Texts>
std::size_t matchStart(std::string_view text, const Texts& texts)
{
    for (const std::string_view one : texts)
        if (text.starts_with(one)) return one.size();
    return 0;
}

template <typename Texts>
std::size_t matchEnd(std::string_view text, const Texts& texts)
{
    for (const std::string_view one : texts)
        if (text.ends_with(one)) return one.size();
    return 0;
}

/// Whether the text is short enough for a number, and has few enough letters for its unit; most texts fail
/// here.
bool mayBeNumber(std::string_view text)
{
    constexpr std::size_t longest = 330;
    constexpr std::ptrdiff_t mostLetters = 4;  // a code of three for the currency, and the e of the exponent
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return text.size() <= longest && std::count_if(text.begin(), text.end(), isLetter) <= mostLetters &&
           std::any_of(text.begin(), text.end(), isDigit);
}

/// Takes parts off both ends of a cell until only the digits are left.
class Peeler {
 public:
    explicit Peeler(std::string_view cell) { number.digits = cell; }

    void peel()
    {
        while (trim() || takeNoCents() || takeSign() || takeBrackets() || takeUnit()) continue;
    }

    NumberText number;

 private:
    bool trim()
    {
        const auto front = matchStart(number.digits, blanks);
        number.digits.remove_prefix(front);
        const auto back = matchEnd(number.digits, blanks);
        number.digits.remove_suffix(back);
        return front + back > 0;
    }

    bool takeNoCents()
    {
        auto text = number.digits;
        while (const auto size = matchEnd(text, dashes)) text.remove_suffix(size);
        if (text.size() == number.digits.size() || !(text.ends_with(',') || text.ends_with('.')))
            return false;
        number.digits = text;
        return true;
    }

    bool takeSign()
    {
        if (isSigned_) return false;
        auto& text = number.digits;
        const auto front = matchStart(text, minuses);
        const auto back = front > 0 ? 0 : matchEnd(text, minuses);
        isSigned_ = front + back > 0 || text.starts_with('+');
        if (!isSigned_) return false;
        number.isNegative = front + back > 0;
        text.remove_prefix(number.isNegative ? front : 1);
        text.remove_suffix(back);
        return true;
    }

    bool takeBrackets()
    {
        auto& text = number.digits;
        if (isSigned_ || text.size() < 3 || text.front() != '(' || text.back() != ')') return false;
        text = text.substr(1, text.size() - 2);
        isSigned_ = number.isNegative = true;
        return true;
    }

    bool takeUnit()
    {
        if (!number.unit.symbol.empty()) return false;
        auto& text = number.digits;
        if (const auto size = matchStart(text, currencies)) return setUnit(text.substr(0, size), true);
        if (const auto size = text.ends_with('%') ? 1 : matchEnd(text, currencies))
            return setUnit(text.substr(text.size() - size), false);
        return false;
    }

    bool setUnit(std::string_view symbol, bool isBefore)
    {
        auto& text = number.digits;
        number.unit = {symbol, isBefore, false};
        isBefore ? text.remove_prefix(symbol.size()) : text.remove_suffix(symbol.size());
        number.unit.isSpaced = (isBefore ? matchStart(text, blanks) : matchEnd(text, blanks)) > 0;
        return true;
    }

    bool isSigned_ = false;
};

/// Plain digits with a decimal point, as the C++ library reads them, out of those of a style.
class DigitReader {
 public:
    DigitReader(std::string_view digits, const NumberStyle& style) : rest_(digits), style_(style) {}

    std::optional<Digits> read()
    {
        if (!readWhole() || !readDecimals() || !readExponent() || !rest_.empty()) return std::nullopt;
        const auto value = readPlainNumber<double>(plain_);
        if (!value || !std::isfinite(*value)) return std::nullopt;
        result_.value = *value;
        return result_;
    }

 private:
    std::size_t takeDigits()
    {
        std::size_t count = 0;
        while (count < rest_.size() && isDigit(rest_[count])) ++count;
        plain_ += rest_.substr(0, count);
        rest_.remove_prefix(count);
        return count;
    }

    /// A mark that groups thousands: '.', ',', ' ' for any blank, '\'' for any apostrophe; 0: none stands
    /// here.
    struct GroupMark {
        char kind = '\0';
        std::size_t size = 0;
    };

    GroupMark findGroup() const
    {
        GroupMark mark;
        if (rest_.starts_with('.') || rest_.starts_with(','))
            mark = {rest_.front(), 1};
        else if (const auto blank = matchStart(rest_, blanks))
            mark = {' ', blank};
        else if (const auto apostrophe = matchStart(rest_, apostrophes))
            mark = {'\'', apostrophe};
        const bool isAllowed =
            mark.kind != style_.decimal && style_.groups.find(mark.kind) != std::string_view::npos;
        return isAllowed ? mark : GroupMark{};
    }

    /// Groups have three digits; 12,34,567 counts lakhs: behind commas pairs may stand before the last three.
    bool readWhole()
    {
        const auto first = takeDigits();
        const auto mark = findGroup();
        if (mark.size == 0) return true;
        if (first == 0 || first > 3 || plain_.front() == '0') return false;
        bool hasPairs = false;
        bool hasTriplets = false;
        std::size_t last = 0;
        for (auto next = mark; next.size > 0 && next.kind == mark.kind; next = findGroup()) {
            hasPairs = hasPairs || last == 2;
            hasTriplets = hasTriplets || last == 3;
            rest_.remove_prefix(next.size);
            last = takeDigits();
            if (last != 3 && last != 2) return false;
        }
        result_.isGrouped = true;
        return last == 3 && (!hasPairs || (!hasTriplets && mark.kind == ',' && first <= 2));
    }

    bool readDecimals()
    {
        if (!rest_.starts_with(style_.decimal)) return true;
        rest_.remove_prefix(1);
        plain_ += '.';
        result_.decimals = takeDigits();
        return plain_.size() > 1;
    }

    bool readExponent()
    {
        if (rest_.empty() || (rest_.front() != 'e' && rest_.front() != 'E') || plain_.empty()) return true;
        plain_ += 'e';
        rest_.remove_prefix(1);
        if (rest_.starts_with('-') || rest_.starts_with('+')) {
            plain_ += rest_.front();
            rest_.remove_prefix(1);
        }
        return takeDigits() > 0;
    }

    std::string_view rest_;
    const NumberStyle& style_;
    std::string plain_;
    Digits result_;
};

struct GroupName {
    const char* name;
    std::string_view mark;
};
constexpr std::array groupNames = {GroupName{"comma", ","}, GroupName{"point", "."}, GroupName{"blank", " "},
                                   GroupName{"apostrophe", "'"}, GroupName{"none", ""}};

/// Plain numbers are by far the most: digits, and at most a minus and a point.
std::optional<double> readPlain(std::string_view cell)
{
    const bool isPlain = !cell.empty() && (isDigit(cell.back()) || cell.back() == '.');
    const auto value = isPlain ? readPlainNumber<double>(cell) : std::nullopt;
    return value && std::isfinite(*value) ? value : std::nullopt;
}

/// What stands between two marks, without the blanks around it. Empty: there are none.
std::string_view findBetween(std::string_view text, std::string_view open, std::string_view closings)
{
    const auto start = text.find(open);
    if (start == std::string_view::npos) return {};
    text.remove_prefix(start + open.size());
    text = text.substr(0, text.find_first_of(closings));
    while (text.starts_with(' ')) text.remove_prefix(1);
    while (text.ends_with(' ')) text.remove_suffix(1);
    return text;
}

}  // namespace

std::optional<NumberText> readNumberText(std::string_view cell)
{
    if (!mayBeNumber(cell)) return std::nullopt;
    Peeler peeler(cell);
    peeler.peel();
    const auto digits = peeler.number.digits;
    const bool begins =
        !digits.empty() && (isDigit(digits.front()) || digits.front() == '.' || digits.front() == ',');
    return begins ? std::optional(peeler.number) : std::nullopt;
}

std::string_view findMagnitude(std::string_view cell)
{
    const auto last = cell.find_last_of("0123456789");
    if (last == std::string_view::npos || !readNumberText(cell.substr(0, last + 1))) return {};
    cell.remove_prefix(last + 1);
    while (const auto blank = matchStart(cell, blanks)) cell.remove_prefix(blank);
    const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    const auto end = std::find_if_not(cell.begin(), cell.end(), isLetter);
    const auto word = cell.substr(0, static_cast<std::size_t>(end - cell.begin()));
    const auto isNamed = [&](const auto& names, const auto& name) {
        return std::find(std::begin(names), std::end(names), name) != std::end(names);
    };
    return isNamed(magnitudeSigns, word) || isNamed(magnitudeWords, toLower(word)) ? word
                                                                                   : std::string_view();
}

std::string describeMagnitude(std::string_view cell)
{
    const auto word = findMagnitude(cell);
    if (word.empty()) return {};
    return "; write the number with all its digits, without \"" + std::string(word) + "\"";
}

std::optional<Digits> readDigits(std::string_view digits, const NumberStyle& style)
{
    return DigitReader(digits, style).read();
}

std::optional<double> readNumber(std::string_view cell, const NumberStyle& style)
{
    if (style.decimal == '.')
        if (const auto plain = readPlain(cell)) return plain;
    const auto number = readNumberText(cell);
    const auto digits = number ? readDigits(number->digits, style) : std::nullopt;
    if (!digits) return std::nullopt;
    const auto size = number->unit.symbol == "%" ? digits->value / 100 : digits->value;
    return number->isNegative ? -size : size;
}

bool isMissing(std::string_view cell, const std::vector<std::string>& further)
{
    if (std::find(further.begin(), further.end(), cell) != further.end()) return true;
    constexpr std::size_t longestMark = 4;
    if (cell.starts_with(' ') || cell.ends_with(' '))
        cell = quillon::trim(cell, " ");
    else if (cell.empty() || cell.size() > longestMark || isDigit(cell.front()))
        return false;
    return cell.empty() ||
           std::find(missingMarks.begin(), missingMarks.end(), toLower(cell)) != missingMarks.end();
}

std::vector<NumberStyle> listStyles(const TableOptions& options)
{
    std::vector<NumberStyle> styles;
    NumberStyle style;
    for (const auto& group : groupNames)
        if (options.thousands == group.name) style.groups = group.mark;
    for (const char decimal : {'.', ','}) {
        const bool isOther = !options.decimal.empty() && (options.decimal == "point") != (decimal == '.');
        const bool isGroup =
            !options.thousands.empty() && style.groups.find(decimal) != std::string_view::npos;
        if (!isOther && !isGroup) styles.push_back({decimal, style.groups});
    }
    return styles;
}

std::string makeNumberFormat(const Unit& unit, std::size_t decimals, bool isGrouped)
{
    constexpr std::size_t mostDecimals = 10;
    if (unit.symbol.empty() && !isGrouped) return {};
    const bool isPercent = unit.symbol == "%";
    std::string format = isGrouped || !isPercent ? "#,##0" : "0";
    if (decimals > 0) format += "." + std::string(std::min(decimals, mostDecimals), '0');
    if (isPercent) return format + "%";
    if (unit.symbol.empty()) return format;
    const auto symbol = "\"" + std::string(unit.symbol) + "\"";
    const std::string blank = unit.isSpaced ? " " : "";
    return unit.isBefore ? symbol + blank + format : format + blank + symbol;
}

std::string findUnit(std::string_view format)
{
    format = format.substr(0, format.find(';'));
    if (format.find('%') != std::string_view::npos) return "%";
    // [$€-407] is the euro as it stands in Germany.
    for (const auto symbol : {findBetween(format, "[$", "-]"), findBetween(format, "\"", "\"")})
        if (std::find(std::begin(currencies), std::end(currencies), symbol) != std::end(currencies))
            return std::string(symbol);
    if (format.find("[$") != std::string_view::npos) return {};
    for (const auto* symbol : {"$", "€", "£", "¥"})
        if (format.find(symbol) != std::string_view::npos) return symbol;
    return {};
}

}  // namespace quillon::report
