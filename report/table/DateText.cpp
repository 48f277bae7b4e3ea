#include "report/table/DateText.h"

#include <array>
#include <chrono>
#include <string>

#include "report/options/PlainNumber.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// Longer texts are no dates.
constexpr std::size_t longestDate = 48;

/// A number or a word of a date, and the mark before it: '-', '/', '.', ' ', or 0 where there is none.
struct Token {
    std::string_view text;
    char mark;
    bool isNumber;

    std::size_t size() const { return text.size(); }
    unsigned getNumber() const { return readPlainNumber<unsigned>(text).value_or(0); }
};

struct Tokens {
    std::array<Token, 4> items{};
    std::size_t count = 0;

    const Token& operator[](std::size_t i) const { return items.at(i); }
};

bool isLetter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || static_cast<unsigned char>(c) >= 0x80;
}

template <typename Accept>
std::string_view takeWhile(std::string_view& text, Accept accept)
{
    std::size_t size = 0;
    while (size < text.size() && accept(text[size])) ++size;
    const auto taken = text.substr(0, size);
    text.remove_prefix(size);
    return taken;
}

/// The one mark that parts two tokens: blanks may stand around a point or a comma. 0: something else stands
/// there.
char readMark(std::string_view between)
{
    if (between == "-" || between == "/" || between == "." || between == ". ") return between.front();
    if (between == " " || between == ", " || between == "," || between == " '" || between == "'") return ' ';
    return '\0';
}

/// Nothing where anything but numbers, words and single marks stands in the text.
std::optional<Tokens> split(std::string_view text)
{
    Tokens tokens;
    while (!text.empty()) {
        const auto between = takeWhile(text, [](char c) { return !isDigit(c) && !isLetter(c); });
        const char mark = between.empty() ? '\0' : readMark(between);
        const bool isAllowed = tokens.count == 0 ? between.empty() : between.empty() || mark != '\0';
        if (text.empty() && tokens.count > 0 && between == ".") break;
        if (!isAllowed || text.empty() || tokens.count == tokens.items.size()) return std::nullopt;
        const bool isNumber = isDigit(text.front());
        const auto token = isNumber ? takeWhile(text, isDigit) : takeWhile(text, isLetter);
        tokens.items.at(tokens.count++) = {token, mark, isNumber};
    }
    return tokens;
}

std::optional<double> countDays(unsigned year, unsigned month, unsigned day)
{
    using namespace std::chrono;
    const year_month_day date{std::chrono::year(static_cast<int>(year)), std::chrono::month(month),
                              std::chrono::day(day)};
    if (!date.ok()) return std::nullopt;
    constexpr sys_days first = year_month_day{std::chrono::year(1899), December, std::chrono::day(30)};
    return static_cast<double>((sys_days(date) - first).count());
}

bool isFullYear(const Token& token)
{
    return token.isNumber && token.size() == 4 && token.getNumber() >= 1000;
}

/// Two digits are a year from 1970 to 2069. 0: no year.
unsigned readYear(const Token& token)
{
    if (isFullYear(token)) return token.getNumber();
    if (!token.isNumber || token.size() != 2) return 0;
    return token.getNumber() + (token.getNumber() < 70 ? 2000 : 1900);
}

std::optional<DateText> makeDate(unsigned year, unsigned month, unsigned day, DateStep unit)
{
    if (year == 0) return std::nullopt;
    const auto days = countDays(year, month, day);
    return days ? std::optional(DateText{*days, unit}) : std::nullopt;
}

/// "Q" in English and German, "T" in Romance languages, or the word.
bool isQuarterWord(const Token& token)
{
    constexpr std::array<std::string_view, 10> words = {
        "Q", "q", "T", "Quarter", "quarter", "Quartal", "kvartal", "trimestre", "Kwartaal", "kwartaal"};
    for (const auto word : words)
        if (token.text == word) return true;
    return false;
}

std::optional<DateText> readQuarter(const Token& quarter, const Token& year)
{
    if (!quarter.isNumber || quarter.size() != 1) return std::nullopt;
    const auto number = quarter.getNumber();
    if (number < 1 || number > 4) return std::nullopt;
    return makeDate(readYear(year), 3 * number - 2, 1, DateStep::Quarter);
}

std::optional<DateText> readMonthOfYear(const Token& a, const Token& b)
{
    constexpr auto unit = DateStep::Month;
    if (!a.isNumber && b.isNumber) {
        const bool isYear = isFullYear(b) || b.mark == '-';
        return isYear ? makeDate(readYear(b), findMonth(a.text), 1, unit) : std::nullopt;
    }
    if (a.isNumber && !b.isNumber)
        return isFullYear(a) ? makeDate(a.getNumber(), findMonth(b.text), 1, unit) : std::nullopt;
    if (!a.isNumber || b.mark == ' ' || b.mark == '\0') return std::nullopt;
    if (isFullYear(a) && b.size() == 2 && b.mark != '.') {
        auto date = makeDate(a.getNumber(), b.getNumber(), 1, unit);
        if (date) date->isDoubtful = (a.getNumber() + 1) % 100 == b.getNumber();
        return date;
    }
    const bool isMonth = a.size() == 2 || (a.size() == 1 && b.mark == '/');
    return isMonth && isFullYear(b) ? makeDate(b.getNumber(), a.getNumber(), 1, unit) : std::nullopt;
}

bool isShort(const Token& token)
{
    return token.isNumber && token.size() <= 2;
}

std::optional<DateText> readNumbers(const Token& a, const Token& b, const Token& c, DateOrder order)
{
    if (b.mark != c.mark || b.mark == '\0' || b.mark == ' ' || !isShort(b)) return std::nullopt;
    if (isFullYear(a))
        return isShort(c) ? makeDate(a.getNumber(), b.getNumber(), c.getNumber(), DateStep::Day)
                          : std::nullopt;
    if (order == DateOrder::YearMonthDay)
        return isShort(a) && isShort(c) ? makeDate(readYear(a), b.getNumber(), c.getNumber(), DateStep::Day)
                                        : std::nullopt;
    if (!isShort(a)) return std::nullopt;
    const bool dayFirst = order == DateOrder::DayMonthYear || b.mark == '.';
    const auto& day = dayFirst ? a : b;
    const auto& month = dayFirst ? b : a;
    return makeDate(readYear(c), month.getNumber(), day.getNumber(), DateStep::Day);
}

std::optional<DateText> readThree(const Tokens& t, DateOrder order)
{
    if (!t[0].isNumber && isQuarterWord(t[0])) return readQuarter(t[1], t[2]);
    if (!t[1].isNumber && isQuarterWord(t[1])) {
        const auto yearFirst = readQuarter(t[2], t[0]);
        return yearFirst ? yearFirst : readQuarter(t[0], t[2]);
    }
    if (t[0].isNumber && t[1].isNumber && t[2].isNumber) return readNumbers(t[0], t[1], t[2], order);
    if (isShort(t[0]) && !t[1].isNumber)
        return makeDate(readYear(t[2]), findMonth(t[1].text), t[0].getNumber(), DateStep::Day);
    if (!t[0].isNumber && isShort(t[1]) && isFullYear(t[2]))
        return makeDate(t[2].getNumber(), findMonth(t[0].text), t[1].getNumber(), DateStep::Day);
    return std::nullopt;
}

/// 20240331, of a year from 1900 to 2099: other numbers are hardly dates.
std::optional<DateText> readCompact(const Token& token)
{
    if (!token.isNumber || token.size() != 8) return std::nullopt;
    const auto number = token.getNumber();
    const auto year = number / 10'000;
    if (year < 1900 || year > 2099) return std::nullopt;
    auto date = makeDate(year, number / 100 % 100, number % 100, DateStep::Day);
    if (date) date->isDoubtful = true;
    return date;
}

std::optional<DateText> readDay(std::string_view text, DateOrder order)
{
    const auto tokens = split(text);
    if (!tokens) return std::nullopt;
    const auto& t = *tokens;
    if (t.count == 1)
        return isFullYear(t[0]) ? makeDate(t[0].getNumber(), 1, 1, DateStep::Year) : readCompact(t[0]);
    if (t.count == 2) return readMonthOfYear(t[0], t[1]);
    if (t.count == 3) return readThree(t, order);
    return std::nullopt;
}

/// "T" or a blank, with the hours behind it, ends the date; npos where there is no time.
std::size_t findTime(std::string_view text)
{
    const auto colon = text.find(':');
    if (colon == std::string_view::npos || colon == 0) return std::string_view::npos;
    const auto start = text.find_last_of("T ", colon - 1);
    return start == std::string_view::npos || start == 0 ? std::string_view::npos : start;
}

/// One or two digits below `bound`, taken off.
std::optional<unsigned> takeClockNumber(std::string_view& text, unsigned bound)
{
    const auto digits = takeWhile(text, isDigit);
    const Token token{digits, '\0', true};
    if (digits.empty() || digits.size() > 2 || token.getNumber() >= bound) return std::nullopt;
    return token.getNumber();
}

std::optional<double> takeSeconds(std::string_view& text)
{
    const auto digits = takeWhile(text, [](char c) { return isDigit(c) || c == '.'; });
    const auto seconds = readPlainNumber<double>(digits);
    return seconds && *seconds < 61 ? seconds : std::nullopt;
}

/// A time of day.
struct Clock {
    /// The part of a day.
    double time = 0;
    /// As in DateText.
    std::optional<int> offset = {};
};

/// Reads what is left behind a time: "", "Z", "UTC", "+02:00" or "+0200". False for anything else.
bool readZone(std::string_view text, std::optional<int>& offset)
{
    text = trim(text, " ");
    if (text.empty()) return true;
    offset = 0;
    if (text == "Z" || text == "UTC" || text == "GMT") return true;
    const int sign = text.front() == '-' ? -1 : 1;
    if (text.front() != '+' && text.front() != '-') return false;
    text.remove_prefix(1);
    const auto digits = takeWhile(text, isDigit);
    auto hours = digits.substr(0, 2);
    auto minutes = digits.substr(hours.size());
    if (text.starts_with(':') && minutes.empty()) {
        text.remove_prefix(1);
        minutes = takeWhile(text, isDigit);
    }
    if (!text.empty() || hours.size() != 2 || (!minutes.empty() && minutes.size() != 2)) return false;
    const auto hour = takeClockNumber(hours, 24);
    const auto minute = minutes.empty() ? 0 : takeClockNumber(minutes, 60);
    if (!hour || !minute) return false;
    offset = sign * static_cast<int>(*hour * 60 + *minute);
    return true;
}

/// The hour of a clock with twelve hours; nothing where it has no such hour.
std::optional<unsigned> applyHalf(unsigned hour, std::string_view& rest)
{
    const auto half = trim(rest, " ");
    const bool isMorning = half == "AM" || half == "am" || half == "a.m.";
    const bool isEvening = half == "PM" || half == "pm" || half == "p.m.";
    if (!isMorning && !isEvening) return hour;
    rest = {};
    if (hour < 1 || hour > 12) return std::nullopt;
    return hour % 12 + (isEvening ? 12 : 0);
}

/// Reads 17:30, 5:30:15.5 PM, 17:30+02:00.
std::optional<Clock> readClock(std::string_view text)
{
    auto hour = takeClockNumber(text, 24);
    if (!hour || !text.starts_with(':')) return std::nullopt;
    text.remove_prefix(1);
    const auto minute = takeClockNumber(text, 60);
    std::optional<double> second = 0;
    if (text.starts_with(':')) {
        text.remove_prefix(1);
        second = takeSeconds(text);
    }
    hour = applyHalf(*hour, text);
    Clock clock;
    if (!hour || !minute || !second || !readZone(text, clock.offset)) return std::nullopt;
    clock.time = (*hour * 3600.0 + *minute * 60.0 + *second) / 86400.0;
    return clock;
}

}  // namespace

std::optional<DateText> readDate(std::string_view text, DateOrder order)
{
    text = trim(text, " ");
    if (text.size() < 4 || text.size() > longestDate) return std::nullopt;
    const auto start = findTime(text);
    if (start == std::string_view::npos) return readDay(text, order);
    const auto date = readDay(trim(text.substr(0, start), " ,"), order);
    const auto clock = readClock(text.substr(start + 1));
    if (!date || date->unit != DateStep::Day || !clock) return std::nullopt;
    return DateText{date->serial + clock->time, DateStep::Time, clock->offset};
}

const char* getDateFormat(DateStep unit)
{
    constexpr std::array formats = {"yyyy", "mmm yy", "mmm yy", "yyyy-mm-dd", "yyyy-mm-dd hh:mm"};
    return formats.at(static_cast<std::size_t>(unit));
}

}  // namespace quillon::report
