#include "report/options/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

namespace quillon::report {
namespace {

constexpr std::array months = {"January", "February", "March",     "April",   "May",      "June",
                               "July",    "August",   "September", "October", "November", "December"};
constexpr std::array days = {"Sunday", "Monday", "Tuesday", "Wednesday", "Thursday", "Friday", "Saturday"};
constexpr std::string_view noonMark = "am/pm";
constexpr double secondsPerDay = 86'400;

/// A piece of a format code: text that stands for itself, or a letter or sign that stands for a part of the
/// number, as often as it is repeated.
struct Token {
    bool isText;
    std::string text;
};

char toLower(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isDateLetter(char c)
{
    return std::string_view("ymdhs").find(toLower(c)) != std::string_view::npos;
}

/// What "[...]" shows: the currency of "[$EUR-407]", nothing for a colour or a condition.
std::string readBracket(std::string_view inside)
{
    return inside.starts_with('$') ? std::string(inside.substr(1, inside.find('-') - 1)) : std::string();
}

std::vector<Token> split(std::string_view code)
{
    std::vector<Token> tokens;
    const auto addText = [&tokens](std::string_view text) {
        if (!text.empty()) tokens.push_back({true, std::string(text)});
    };
    for (std::size_t at = 0; at < code.size(); ++at) {
        const char c = code[at];
        if (c == '"' || c == '[') {
            const auto end = std::min(code.find(c == '"' ? '"' : ']', at + 1), code.size());
            const auto inside = code.substr(at + 1, end - at - 1);
            addText(c == '"' ? std::string(inside) : readBracket(inside));
            at = end;
        } else if (c == '\\' || c == '_' || c == '*') {
            if (c != '*' && at + 1 < code.size()) addText(c == '_' ? " " : code.substr(at + 1, 1));
            ++at;
        } else if (std::ranges::equal(code.substr(at, 5), noonMark, {}, toLower)) {
            tokens.push_back({false, "a"});
            at += 4;
        } else if (isDateLetter(c)) {
            const auto start = at;
            while (at + 1 < code.size() && toLower(code[at + 1]) == toLower(c)) ++at;
            tokens.push_back({false, std::string(at - start + 1, toLower(c))});
        } else if (std::string_view("0#?.,%").find(c) != std::string_view::npos) {
            tokens.push_back({false, std::string(1, c)});
        } else {
            addText(code.substr(at, 1));
        }
    }
    return tokens;
}

std::vector<std::string_view> splitSections(std::string_view code)
{
    std::vector<std::string_view> sections;
    bool quoted = false;
    std::size_t start = 0;
    for (std::size_t at = 0; at < code.size(); ++at) {
        if (code[at] == '"') quoted = !quoted;
        if (code[at] == '\\') ++at;
        if (at < code.size() && code[at] == ';' && !quoted) {
            sections.push_back(code.substr(start, at - start));
            start = at + 1;
        }
    }
    sections.push_back(code.substr(start));
    return sections;
}

std::string formatGeneral(double number)
{
    std::array<char, 32> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::general, 11);
    return {text.data(), end.ptr};
}

/// Adds one at the last digit.
void countUp(std::string& digits)
{
    for (auto at = digits.size(); at-- > 0;) {
        if (digits[at] == '.') continue;
        if (digits[at] != '9') {
            ++digits[at];
            return;
        }
        digits[at] = '0';
    }
    digits.insert(0, 1, '1');
}

/// Rounds as people do, 0.125 to 0.13: by the shortest decimal text, half up. Requires: a number from 0.
std::string formatFixed(double number, std::size_t decimals)
{
    std::array<char, 512> text{};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed);
    if (end.ec != std::errc()) return formatGeneral(number);
    std::string digits(text.data(), end.ptr);
    const auto point = digits.find('.');
    if (point == std::string::npos) return decimals == 0 ? digits : digits + "." + std::string(decimals, '0');
    const auto wanted = point + 1 + decimals;
    if (digits.size() <= wanted) return digits + std::string(wanted - digits.size(), '0');
    const bool isUp = digits[wanted] >= '5';
    digits.resize(decimals == 0 ? point : wanted);
    if (isUp) countUp(digits);
    return digits;
}

void groupThousands(std::string& digits)
{
    const auto point = std::min(digits.find('.'), digits.size());
    for (auto at = static_cast<std::ptrdiff_t>(point) - 3; at > 0; at -= 3)
        digits.insert(static_cast<std::size_t>(at), 1, ',');
}

/// What the signs of a number section ask for.
struct NumberShape {
    int wholeDigits = 0;
    std::size_t decimals = 0;
    std::size_t optionalDecimals = 0;
    bool grouped = false;
    double scale = 1;
};

NumberShape readShape(const std::vector<Token>& tokens)
{
    NumberShape shape;
    bool behindPoint = false;
    int commas = 0;
    for (const auto& token : tokens) {
        if (token.isText) continue;
        const char c = token.text.front();
        if (c == ',') ++commas;
        if (c == '.') behindPoint = true;
        if (c == '%') shape.scale *= 100;
        if (c != '0' && c != '#' && c != '?') continue;
        if (commas > 0 && !behindPoint) shape.grouped = true;
        commas = 0;
        if (!behindPoint)
            shape.wholeDigits += c == '0' ? 1 : 0;
        else
            shape.decimals += 1;
        if (behindPoint) shape.optionalDecimals = c == '0' ? 0 : shape.optionalDecimals + 1;
    }
    // Commas behind the last digit count in thousands.
    for (; commas > 0; --commas) shape.scale /= 1000;
    return shape;
}

std::string formatDigits(double number, const NumberShape& shape)
{
    auto digits = formatFixed(std::abs(number) * shape.scale, std::min<std::size_t>(shape.decimals, 30));
    for (std::size_t i = 0; i < shape.optionalDecimals && digits.ends_with('0'); ++i) digits.pop_back();
    const auto whole = std::min(digits.find('.'), digits.size());
    if (static_cast<int>(whole) < shape.wholeDigits)
        digits.insert(0, static_cast<std::size_t>(shape.wholeDigits) - whole, '0');
    if (shape.wholeDigits == 0 && digits.starts_with("0.")) digits.erase(0, 1);
    if (shape.grouped) groupThousands(digits);
    if (shape.optionalDecimals > 0 && digits.ends_with('.')) digits.pop_back();
    return digits;
}

std::string formatSection(double number, const std::vector<Token>& tokens)
{
    const auto digits = formatDigits(number, readShape(tokens));
    std::string text;
    bool isWritten = false;
    for (const auto& token : tokens) {
        const char c = token.text.front();
        if (token.isText)
            text += token.text;
        else if (c == '%')
            text += '%';
        else if (!isWritten) {
            text += digits;
            isWritten = true;
        }
    }
    return text;
}

struct Moment {
    int year;
    unsigned month;
    unsigned day;
    unsigned weekday;
    unsigned hour;
    unsigned minute;
    unsigned second;
    bool isAfternoon;
};

/// The civil date of a serial number, by counting eras of 400 years from 1 March.
Moment readSerial(double serial)
{
    auto whole = std::floor(serial);
    auto seconds = std::llround((serial - whole) * secondsPerDay);
    if (seconds == static_cast<long long>(secondsPerDay)) {
        whole += 1;
        seconds = 0;
    }
    const auto days1970 = static_cast<long long>(whole) - 25'569;
    const long long shifted = days1970 + 719'468;
    const long long era = (shifted >= 0 ? shifted : shifted - 146'096) / 146'097;
    const auto dayOfEra = static_cast<unsigned>(shifted - era * 146'097);
    const unsigned yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const unsigned dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const unsigned shiftedMonth = (5 * dayOfYear + 2) / 153;
    const unsigned month = shiftedMonth < 10 ? shiftedMonth + 3 : shiftedMonth - 9;
    const auto second = static_cast<unsigned>(seconds);
    return {static_cast<int>(yearOfEra + era * 400) + (month <= 2 ? 1 : 0),
            month,
            dayOfYear - (153 * shiftedMonth + 2) / 5 + 1,
            static_cast<unsigned>(((days1970 + 4) % 7 + 7) % 7),
            second / 3600,
            second / 60 % 60,
            second % 60,
            second >= secondsPerDay / 2};
}

std::string pad(unsigned number, std::size_t digits)
{
    auto text = std::to_string(number);
    return text.size() < digits ? std::string(digits - text.size(), '0') + text : text;
}

std::string nameOf(const char* name, std::size_t letters)
{
    const std::string text = name;
    if (letters == 3) return text.substr(0, 3);
    return letters == 5 ? text.substr(0, 1) : text;
}

/// Whether the letters "m" at `at` are minutes: behind hours, or before seconds.
bool areMinutes(const std::vector<Token>& tokens, std::size_t at)
{
    for (auto i = at; i-- > 0;)
        if (!tokens[i].isText && isDateLetter(tokens[i].text[0])) {
            if (tokens[i].text[0] == 'h') return true;
            break;
        }
    for (auto i = at + 1; i < tokens.size(); ++i)
        if (!tokens[i].isText && isDateLetter(tokens[i].text[0])) return tokens[i].text[0] == 's';
    return false;
}

std::string formatDateToken(const Moment& moment, const Token& token, bool isMinutes)
{
    const auto letters = token.text.size();
    switch (token.text[0]) {
        case 'y':
            return letters <= 2 ? pad(static_cast<unsigned>(moment.year) % 100, 2)
                                : std::to_string(moment.year);
        case 'm':
            if (isMinutes) return pad(moment.minute, letters);
            return letters <= 2 ? pad(moment.month, letters) : nameOf(months[moment.month - 1], letters);
        case 'd':
            return letters <= 2 ? pad(moment.day, letters) : nameOf(days[moment.weekday], letters);
        case 'h':
            return pad(moment.hour, letters);
        case 'a':
            return moment.isAfternoon ? "PM" : "AM";
        case 's':
            return pad(moment.second, letters);
        default:
            return token.text;
    }
}

std::string formatDate(double serial, const std::vector<Token>& tokens)
{
    auto moment = readSerial(serial);
    const bool isHalfDay =
        std::ranges::any_of(tokens, [](const auto& t) { return !t.isText && t.text == "a"; });
    if (isHalfDay) moment.hour = (moment.hour + 11) % 12 + 1;
    std::string text;
    for (std::size_t i = 0; i < tokens.size(); ++i)
        text += tokens[i].isText ? tokens[i].text : formatDateToken(moment, tokens[i], areMinutes(tokens, i));
    return text;
}

bool hasDate(const std::vector<Token>& tokens)
{
    return std::ranges::any_of(tokens, [](const auto& t) { return !t.isText && isDateLetter(t.text[0]); });
}

/// The section for a number, and whether it says itself that the number is negative.
std::pair<std::string_view, bool> chooseSection(double number, const std::vector<std::string_view>& sections)
{
    if (number < 0 && sections.size() > 1) return {sections[1], true};
    if (number == 0 && sections.size() > 2) return {sections[2], true};
    return {sections[0], false};
}

bool isGeneral(std::string_view code)
{
    constexpr std::string_view general = "general";
    return code.empty() || std::ranges::equal(code, general, {}, toLower) ||
           code.find("E+") != std::string_view::npos || code.find("E-") != std::string_view::npos ||
           code.find("?/") != std::string_view::npos || code == "@";
}

}  // namespace

std::string formatNumber(double number, std::string_view code)
{
    if (!std::isfinite(number)) return {};
    // The largest serial number of a date, 31 December 9999.
    constexpr double lastDay = 2'958'465;
    if (isDateFormat(code))
        return number >= 0 && number < lastDay + 1 ? formatDate(number, split(splitSections(code)[0]))
                                                   : formatGeneral(number);
    const auto [section, saysSign] = chooseSection(number, splitSections(code));
    if (isGeneral(section)) return formatGeneral(number);
    const auto tokens = split(section);
    const auto text = formatSection(number, tokens);
    const bool showsZero = text.find_first_of("123456789") == std::string::npos;
    return number < 0 && !saysSign && !showsZero ? "-" + text : text;
}

bool isDateFormat(std::string_view code)
{
    constexpr std::string_view general = "general";
    if (std::ranges::equal(code, general, {}, toLower)) return false;
    return hasDate(split(splitSections(code)[0]));
}

}  // namespace quillon::report
