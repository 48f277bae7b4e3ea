#include "report/finish/CategoryValues.h"

#include <array>
#include <chrono>
#include <cmath>

#include "report/options/PlainNumber.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr auto dayZero = std::chrono::sys_days(std::chrono::year(1899) / 12 / 30);
/// The most labels that an axis has room for.
constexpr double maximumLabels = 13;
constexpr double daysOfMonth = 30.4;
constexpr double monthsOfYear = 12;

std::chrono::year_month_day toDate(double serial)
{
    // Far enough for every calendar that counts.
    const double days = std::fmin(std::fmax(std::floor(serial), -1e6), 1e7);
    return dayZero + std::chrono::days(static_cast<int>(days));
}

int toMonth(double serial)
{
    const auto date = toDate(serial);
    return static_cast<int>(date.year()) * 12 + static_cast<int>(static_cast<unsigned>(date.month())) - 1;
}

int toYear(double serial)
{
    return static_cast<int>(toDate(serial).year());
}

template <typename GetUnit>
bool keepsApart(const std::vector<double>& dates, const GetUnit& getUnit)
{
    for (std::size_t i = 1; i < dates.size(); ++i)
        if (getUnit(dates[i]) == getUnit(dates[i - 1])) return false;
    return true;
}

/// Dates that a larger unit keeps apart, but that are not first days of it, would move to its first day.
bool areOn(const std::vector<double>& dates, bool (*isFirst)(std::chrono::year_month_day))
{
    for (const double date : dates)
        if (!isFirst(toDate(date))) return false;
    return true;
}

DateUnit findBase(const std::vector<double>& dates)
{
    if (dates.size() > 1 && keepsApart(dates, toYear)) return DateUnit::Years;
    return dates.size() > 1 && keepsApart(dates, toMonth) ? DateUnit::Months : DateUnit::Days;
}

/// Digits, all of them; nothing for anything else.
std::optional<int> readDigits(const std::string& text, std::size_t at, std::size_t count)
{
    if (at + count > text.size() || text[at] == '-') return {};
    return readPlainNumber<int>(std::string_view(text).substr(at, count));
}

}  // namespace

std::optional<double> readNumberText(const std::u16string& text)
{
    const std::string utf8(trim(toUtf8(text)));
    const auto number = readPlainNumber<double>(utf8);
    return number && std::isfinite(*number) ? number : std::nullopt;
}

std::optional<double> readDateText(const std::u16string& text)
{
    const std::string utf8(trim(toUtf8(text)));
    const bool hasDay = utf8.size() == 10 && utf8[7] == '-';
    if ((!hasDay && utf8.size() != 7) || utf8[4] != '-') return {};
    const auto year = readDigits(utf8, 0, 4);
    const auto month = readDigits(utf8, 5, 2);
    const auto day = hasDay ? readDigits(utf8, 8, 2) : 1;
    if (!year || !month || !day) return {};
    const std::chrono::year_month_day date{std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*day))};
    if (!date.ok()) return {};
    return static_cast<double>((std::chrono::sys_days(date) - dayZero).count());
}

std::vector<double> readCategories(const std::vector<std::u16string>& categories, CategoryReader read)
{
    std::vector<double> numbers;
    for (const auto& category : categories) {
        const auto number = read(category);
        if (!number) return {};
        numbers.push_back(*number);
    }
    return numbers;
}

DateScale chooseDateScale(const std::vector<double>& dates)
{
    const auto base = findBase(dates);
    const double days = dates.empty() ? 0 : dates.back() - dates.front();
    const double months = days / daysOfMonth;
    const double years = months / monthsOfYear;
    const auto stepOf = [](double count) {
        return static_cast<unsigned>(std::fmax(1, std::ceil(count / maximumLabels)));
    };
    if (base == DateUnit::Days && days <= maximumLabels) return {base, DateUnit::Days, 1, "d mmm"};
    if (base == DateUnit::Days && days <= 2 * maximumLabels) return {base, DateUnit::Days, 7, "d mmm"};
    if (base == DateUnit::Days && months <= 3) return {base, DateUnit::Days, 14, "d mmm"};
    if (base != DateUnit::Years && months <= maximumLabels) return {base, DateUnit::Months, 1, "mmm yy"};
    if (base != DateUnit::Years && months <= 3 * maximumLabels) return {base, DateUnit::Months, 3, "mmm yy"};
    return {base, DateUnit::Years, stepOf(years), "yyyy"};
}

const char* chooseDateFormat(const std::vector<double>& dates)
{
    constexpr auto isFirstOfMonth = [](std::chrono::year_month_day date) {
        return date.day() == std::chrono::day(1);
    };
    constexpr auto isFirstOfYear = [](std::chrono::year_month_day date) {
        return date.day() == std::chrono::day(1) && date.month() == std::chrono::January;
    };
    if (dates.size() > 1 && areOn(dates, isFirstOfYear)) return "yyyy";
    return areOn(dates, isFirstOfMonth) ? "mmm yyyy" : "yyyy-mm-dd";
}

}  // namespace quillon::report
