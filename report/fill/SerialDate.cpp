#include "report/fill/SerialDate.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string_view>

#include "report/options/PlainNumber.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr double missing = std::numeric_limits<double>::quiet_NaN();
/// From 30 December 1899, where dates of a worksheet count from, to 1 January 1970.
constexpr std::int64_t daysTo1970 = 25'569;
constexpr double secondsOfDay = 86'400;

std::int64_t toDays(std::int64_t year, unsigned month, unsigned day)
{
    year -= month <= 2 ? 1 : 0;
    const auto era = (year >= 0 ? year : year - 399) / 400;
    const auto yearOfEra = year - era * 400;
    const auto dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    return era * 146'097 + yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear - 719'468;
}

struct Date {
    std::int64_t year;
    unsigned month;
    unsigned day;
};

Date toDate(std::int64_t days)
{
    days += 719'468;
    const auto era = (days >= 0 ? days : days - 146'096) / 146'097;
    const auto dayOfEra = days - era * 146'097;
    const auto yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36'524 - dayOfEra / 146'096) / 365;
    const auto dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const auto month = (5 * dayOfYear + 2) / 153;
    const auto realMonth = static_cast<unsigned>(month < 10 ? month + 3 : month - 9);
    return {yearOfEra + era * 400 + (realMonth <= 2 ? 1 : 0), realMonth,
            static_cast<unsigned>(dayOfYear - (153 * month + 2) / 5 + 1)};
}

/// The number that `count` characters are; false where they are none.
template <typename Number>
bool readDigits(std::string_view text, std::size_t at, std::size_t count, Number& number)
{
    const auto digits = text.substr(at, count);
    const auto read = readPlainNumber<Number>(digits);
    number = read.value_or(0);
    return read && digits.size() == count;
}

/// The part of a day that "T06:30" or "T06:30:15" is, none without a time; NaN for another text.
double readTime(std::string_view text)
{
    std::array<unsigned, 3> time{};
    if (text.empty()) return 0;
    if (text.size() != 6 && text.size() != 9) return missing;
    for (std::size_t at = 0; at < text.size(); at += 3)
        if (text[at] != (at == 0 ? 'T' : ':') || !readDigits(text, at + 1, 2, time.at(at / 3)))
            return missing;
    if (time[0] > 23 || time[1] > 59 || time[2] > 59) return missing;
    return (time[0] * 3600 + time[1] * 60 + time[2]) / secondsOfDay;
}

}  // namespace

std::string writeDate(double serial)
{
    // Far enough for every calendar, near enough for whole numbers.
    if (std::isnan(serial) || std::abs(serial) > 1e7) return toUtf8(num2str(serial));
    const auto seconds =
        static_cast<std::int64_t>(std::llround((serial - std::floor(serial)) * secondsOfDay));
    const auto days = static_cast<std::int64_t>(std::floor(serial)) + (seconds == 86'400 ? 1 : 0);
    const auto date = toDate(days - daysTo1970);
    std::array<char, 64> text;
    static_cast<void>(std::snprintf(text.data(), text.size(), "%04lld-%02u-%02u",
                                    static_cast<long long>(date.year), date.month, date.day));
    std::string written(text.data());
    if (seconds == 0 || seconds == 86'400) return written;
    static_cast<void>(std::snprintf(text.data(), text.size(), "T%02d:%02d:%02d",
                                    static_cast<int>(seconds / 3600), static_cast<int>(seconds / 60 % 60),
                                    static_cast<int>(seconds % 60)));
    return written + text.data();
}

double readDate(const std::string& text)
{
    int year = 0;
    unsigned month = 0;
    unsigned day = 0;
    if (text.size() < 10 || text[4] != '-' || text[7] != '-') return missing;
    if (!readDigits(text, 0, 4, year) || !readDigits(text, 5, 2, month) || !readDigits(text, 8, 2, day))
        return missing;
    if (month < 1 || month > 12 || day < 1 || day > 31) return missing;
    return static_cast<double>(toDays(year, month, day) + daysTo1970) + readTime(text.substr(10));
}

}  // namespace quillon::report
