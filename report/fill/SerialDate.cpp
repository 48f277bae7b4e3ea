#include "report/fill/SerialDate.h"

#include <array>
#include <chrono>
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
/// Where dates of a worksheet count from.
constexpr auto dayZero = std::chrono::sys_days(std::chrono::year(1899) / 12 / 30);
constexpr double secondsOfDay = 86'400;

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
    const std::chrono::year_month_day date(dayZero + std::chrono::days(days));
    std::array<char, 64> text;
    static_cast<void>(std::snprintf(text.data(), text.size(), "%04d-%02u-%02u", static_cast<int>(date.year()),
                                    static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day())));
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
    // The 31st of a shorter month is a day of the next.
    const std::chrono::sys_days date(std::chrono::year(year) / std::chrono::month(month) /
                                     std::chrono::day(day));
    return static_cast<double>((date - dayZero).count()) + readTime(text.substr(10));
}

}  // namespace quillon::report
