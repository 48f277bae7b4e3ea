#include "report/options/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <vector>

#include "support/Text.h"

namespace quillon::report {
namespace {

/// A piece of a number format.
struct Token {
    /// 0 for text that stands as it is; otherwise the character that the piece repeats.
    char kind;
    std::string text;
};

constexpr std::string_view dateLetters = "ymdhs";

/// The text that a piece in brackets shows: a currency, or nothing for a colour, a language or a condition.
std::string readBrackets(std::string_view inner)
{
    if (!inner.starts_with('$')) return {};
    return std::string(inner.substr(1, inner.find('-') - 1));
}

class Tokenizer {
 public:
    explicit Tokenizer(std::string_view format) : format_(format) {}

    /// The pieces of each section between semicolons.
    std::vector<std::vector<Token>> read()
    {
        sections_.emplace_back();
        while (at_ < format_.size()) readToken();
        return std::move(sections_);
    }

 private:
    void add(char kind, std::string text) { sections_.back().push_back({kind, std::move(text)}); }

    std::string_view takeTo(char end)
    {
        const auto begin = at_ + 1;
        const auto found = std::min(format_.find(end, begin), format_.size());
        at_ = std::min(found + 1, format_.size());
        return format_.substr(begin, found - begin);
    }

    void readToken()
    {
        const char c = format_[at_];
        const auto rest = format_.substr(at_);
        if (c == '"') return add(0, std::string(takeTo('"')));
        if (c == '[') return readBracketed(takeTo(']'));
        if (c == '\\' || c == '_' || c == '*') return readEscape(c);
        if (c == ';') {
            sections_.emplace_back();
            ++at_;
        } else if (startsWith(rest, "am/pm") || startsWith(rest, "a/p")) {
            add('a', "");
            at_ += toLower(rest[1]) == 'm' ? std::size_t{5} : std::size_t{3};
        } else if (startsWith(rest, "general")) {
            add('g', "");
            at_ += 7;
        } else if ((c == 'E' || c == 'e') &&
                   (rest.starts_with("E+") || rest.starts_with("e+") || rest.starts_with("E-"))) {
            add('e', "");
            at_ += 2;
        } else {
            readRun(toLower(c));
        }
    }

    /// A letter of a date stands as often as it is repeated, a digit or sign once.
    void readRun(char kind)
    {
        const bool isLetter = dateLetters.find(kind) != std::string_view::npos;
        const bool isNumber = std::string_view("0#?.,%@").find(kind) != std::string_view::npos;
        const auto begin = at_++;
        while (isLetter && at_ < format_.size() && toLower(format_[at_]) == kind) ++at_;
        add(isLetter || isNumber ? kind : '\0', std::string(format_.substr(begin, at_ - begin)));
    }

    void readBracketed(std::string_view inner)
    {
        const char first = inner.empty() ? '\0' : toLower(inner[0]);
        const bool isElapsed = !inner.empty() &&
                               std::ranges::all_of(inner, [&](char c) { return toLower(c) == first; }) &&
                               std::string_view("hms").find(first) != std::string_view::npos;
        if (isElapsed) return add(static_cast<char>(first - 'a' + 'A'), std::string(inner));
        add(0, readBrackets(inner));
    }

    /// A backslash lets a character stand for itself; blanks as wide as a character, and fillings, are one
    /// blank and none.
    void readEscape(char kind)
    {
        auto size = std::size_t{1};
        while (at_ + 1 + size < format_.size() && (format_[at_ + 1 + size] & 0xC0) == 0x80) ++size;
        const auto text = std::string(format_.substr(std::min(at_ + 1, format_.size()), size));
        at_ = std::min(at_ + 1 + size, format_.size());
        if (kind != '*') add(0, kind == '_' ? " " : text);
    }

    static bool startsWith(std::string_view text, std::string_view lower)
    {
        return text.size() >= lower.size() &&
               std::ranges::equal(text.substr(0, lower.size()), lower, {}, [](char c) { return toLower(c); });
    }

    std::string_view format_;
    std::size_t at_ = 0;
    std::vector<std::vector<Token>> sections_;
};

bool has(const std::vector<Token>& tokens, std::string_view kinds)
{
    return std::ranges::any_of(tokens, [&](const Token& token) {
        return token.kind != 0 && kinds.find(token.kind) != std::string_view::npos;
    });
}

std::string formatGeneral(double number)
{
    constexpr int digits = 11;
    std::array<char, 40> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, digits);
    std::string general(text.data(), end.ptr);
    std::ranges::replace(general, 'e', 'E');
    return general;
}

/// Decimal digits of a number that is not negative; what its 15th digit rounds up is rounded up here as well.
std::string formatFixed(double number, int decimals)
{
    constexpr double lastDigit = 1e-15;
    std::array<char, 400> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number * (1 + lastDigit),
                                   std::chars_format::fixed, decimals);
    return {text.data(), end.ptr};
}

/// What the digits of a section say about the number.
struct Digits {
    int whole = 0;
    int leastDecimals = 0;
    int decimals = 0;
    bool isGrouped = false;
    double scale = 1;
};

Digits readDigits(const std::vector<Token>& tokens)
{
    Digits digits;
    bool isBehindPoint = false;
    int commas = 0;
    for (const auto& token : tokens) {
        const bool isDigit = token.kind == '0' || token.kind == '#' || token.kind == '?';
        if (token.kind == 'e') break;
        if (token.kind == '.') isBehindPoint = true;
        if (token.kind == '%') digits.scale *= 100;
        if (token.kind == ',') ++commas;
        if (!isDigit) continue;
        // A comma between digits groups them, one behind the last divides by a thousand.
        if (commas > 0) digits.isGrouped = true;
        commas = 0;
        if (isBehindPoint) ++digits.decimals;
        if (isBehindPoint && token.kind == '0') digits.leastDecimals = digits.decimals;
        if (!isBehindPoint && token.kind == '0') ++digits.whole;
    }
    for (; commas > 0; --commas) digits.scale /= 1000;
    return digits;
}

std::string group(const std::string& whole)
{
    std::string grouped;
    for (std::size_t i = 0; i < whole.size(); ++i) {
        if (i > 0 && (whole.size() - i) % 3 == 0) grouped += ',';
        grouped += whole[i];
    }
    return grouped;
}

std::string formatDigits(double number, const Digits& digits)
{
    auto text = formatFixed(number * digits.scale, digits.decimals);
    const auto point = std::min(text.find('.'), text.size());
    auto whole = text.substr(0, point);
    auto decimals = text.substr(std::min(point + 1, text.size()));
    while (decimals.size() > static_cast<std::size_t>(digits.leastDecimals) && decimals.ends_with('0'))
        decimals.pop_back();
    if (whole == "0" && digits.whole == 0 && !decimals.empty()) whole.clear();
    while (whole.size() < static_cast<std::size_t>(digits.whole)) whole.insert(0, 1, '0');
    if (digits.isGrouped) whole = group(whole);
    return decimals.empty() ? whole : whole + "." + decimals;
}

std::string formatScientific(double number, const Digits& digits)
{
    std::array<char, 60> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number,
                                   std::chars_format::scientific, digits.decimals);
    std::string scientific(text.data(), end.ptr);
    std::ranges::replace(scientific, 'e', 'E');
    return scientific;
}

/// The digits stand where the first placeholder of one does.
std::string formatQuantity(double number, const std::vector<Token>& tokens)
{
    const auto digits = readDigits(tokens);
    std::string text;
    bool isDone = false;
    bool isExponent = false;
    for (const auto& token : tokens) {
        if (token.kind == 'e') isExponent = true;
        if (token.kind == 0 || token.kind == '%') text += token.text;
        if (token.kind == 'g') text += formatGeneral(number);
        if (isDone || std::string_view("0#?.").find(token.kind) == std::string_view::npos || token.kind == 0)
            continue;
        text +=
            has(tokens, "e") && !isExponent ? formatScientific(number, digits) : formatDigits(number, digits);
        isDone = true;
    }
    return text;
}

struct Moment {
    std::chrono::year_month_day day;
    unsigned weekday;
    int hour;
    int minute;
    int second;
    double seconds;
};

Moment readSerial(double serial)
{
    using namespace std::chrono;
    constexpr double secondsOfDay = 86400;
    const auto total = std::llround(serial * secondsOfDay);
    const auto dayNumber = static_cast<int>(total / 86400 - (total % 86400 < 0 ? 1 : 0));
    const auto rest = static_cast<int>(total - std::int64_t{dayNumber} * 86400);
    const sys_days date = sys_days(year{1899} / December / 30) + days(dayNumber);
    return {date, weekday(date).c_encoding(), rest / 3600, rest / 60 % 60, rest % 60, serial * secondsOfDay};
}

std::string pad(long long number, std::size_t width)
{
    auto text = std::to_string(number);
    return text.size() < width ? std::string(width - text.size(), '0') + text : text;
}

std::string formatName(std::string_view name, std::size_t letters)
{
    if (letters == 5) return std::string(name.substr(0, 1));
    return std::string(letters == 3 ? name.substr(0, 3) : name);
}

constexpr std::array<std::string_view, 12> months = {"January",   "February", "March",    "April",
                                                     "May",       "June",     "July",     "August",
                                                     "September", "October",  "November", "December"};
constexpr std::array<std::string_view, 7> weekdays = {"Sunday",   "Monday", "Tuesday", "Wednesday",
                                                      "Thursday", "Friday", "Saturday"};

class DateFormat {
 public:
    DateFormat(double serial, const std::vector<Token>& tokens)
        : moment_(readSerial(serial)), tokens_(tokens), hasNoon_(has(tokens, "a"))
    {
    }

    std::string format() const
    {
        std::string text;
        for (std::size_t i = 0; i < tokens_.size(); ++i) text += formatToken(i);
        return text;
    }

 private:
    /// "m" is a minute behind an hour or before a second.
    bool isMinute(std::size_t index) const
    {
        for (auto i = index; i-- > 0;)
            if (tokens_[i].kind != 0 && tokens_[i].kind != 'a') {
                if (tokens_[i].kind == 'h' || tokens_[i].kind == 'H') return true;
                break;
            }
        for (auto i = index + 1; i < tokens_.size(); ++i)
            if (tokens_[i].kind != 0) return tokens_[i].kind == 's';
        return false;
    }

    std::string formatToken(std::size_t index) const
    {
        const auto& [kind, text] = tokens_[index];
        const auto width = text.size();
        const auto wide = std::min<std::size_t>(width, 2);
        const auto month = static_cast<unsigned>(moment_.day.month());
        switch (kind) {
            case 'y':
                return width <= 2 ? pad(static_cast<int>(moment_.day.year()) % 100, 2)
                                  : pad(static_cast<int>(moment_.day.year()), 4);
            case 'm':
                if (isMinute(index)) return pad(moment_.minute, wide);
                return width >= 3 ? formatName(months.at(month - 1), width) : pad(month, wide);
            case 'd':
                if (width >= 3) return formatName(weekdays.at(moment_.weekday), width);
                return pad(static_cast<unsigned>(moment_.day.day()), wide);
            case 'h':
                return pad(hasNoon_ ? (moment_.hour + 11) % 12 + 1 : moment_.hour, wide);
            case 's':
                return pad(moment_.second, wide);
            case 'a':
                return moment_.hour < 12 ? "AM" : "PM";
            case 'H':
                return pad(std::llround(std::floor(moment_.seconds / 3600)), width);
            case 'M':
                return pad(std::llround(std::floor(moment_.seconds / 60)), width);
            case 'S':
                return pad(std::llround(moment_.seconds), width);
            default:
                return text;
        }
    }

    Moment moment_;
    const std::vector<Token>& tokens_;
    bool hasNoon_;
};

/// Positive numbers, negative ones and zero may have sections of their own.
const std::vector<Token>& chooseSection(double number, const std::vector<std::vector<Token>>& sections)
{
    if (number < 0 && sections.size() > 1) return sections[1];
    if (number == 0 && sections.size() > 2) return sections[2];
    return sections[0];
}

}  // namespace

std::string formatNumber(double number, std::string_view format)
{
    if (!std::isfinite(number)) return {};
    const auto sections = Tokenizer(format.empty() ? "General" : format).read();
    const auto& section = chooseSection(number, sections);
    constexpr double lastDate = 2'958'466;
    if (has(section, "ymdhsHMS") && number >= 0 && number < lastDate)
        return DateFormat(number, section).format();
    if (has(section, "@")) return formatGeneral(number);
    const bool isNegative = number < 0 && sections.size() == 1;
    const auto text = formatQuantity(std::abs(number), section);
    const bool showsNothing = text.find_first_of("123456789") == std::string::npos;
    return isNegative && !showsNothing ? "-" + text : text;
}

bool isDateFormat(std::string_view format)
{
    return showsUnit(format, "yYmMdDhHsS");
}

bool showsUnit(std::string_view format, std::string_view letters)
{
    for (std::size_t at = 0; at < format.size(); ++at) {
        const char c = format[at];
        if (c == ';') return false;
        if (c == '\\' || c == '_' || c == '*') {
            ++at;
        } else if (c == '"') {
            at = std::min(format.find('"', at + 1), format.size());
        } else if (c == '[') {
            // Elapsed time stands in brackets, as do colours and languages.
            const auto inside = format.substr(std::min(at + 1, format.size()), 1);
            if ((inside == "h" || inside == "m") && letters.find(inside) != std::string_view::npos)
                return true;
            at = std::min(format.find(']', at), format.size());
        } else if (letters.find(c) != std::string_view::npos) {
            return true;
        } else if (c == 'G' || c == 'g') {
            return false;
        }
    }
    return false;
}

}  // namespace quillon::report
