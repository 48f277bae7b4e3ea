#include <langinfo.h>

#include <clocale>
#include <iterator>
#include <map>
#include <string>
#include <string_view>
#include <utility>

#include "report/options/Language.h"
#include "report/table/DateText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// Other names than those of calendars: a month in a Polish and a Czech date, and single ones.
constexpr std::string_view inDates[] = {
    "stycznia lutego marca kwietnia maja czerwca lipca sierpnia września października listopada grudnia",
    "ledna února března dubna května června července srpna září října listopadu prosince",
};
constexpr std::pair<const char*, unsigned> others[] = {
    {"jänner", 1}, {"jän", 1}, {"feber", 2}, {"febr", 2}, {"mär", 3}};

/// The small letter of an accented capital, from U+00C0 to U+017E; every other character stays.
constexpr unsigned toSmallLetter(unsigned letter)
{
    if (letter < 0x100) return letter < 0xDF ? letter + 0x20 : letter;
    // Capitals are even there, but for two stretches.
    const bool areOdd = (letter >= 0x139 && letter <= 0x148) || letter >= 0x179;
    return letter + ((letter % 2 != 0) == areOdd ? 1 : 0);
}

/// Small letters for A to Z and the accented capitals of European languages, in UTF-8.
std::string toSmallLetters(std::string_view text)
{
    auto result = toLower(text);
    for (std::size_t i = 1; i < result.size(); ++i) {
        const unsigned lead = static_cast<unsigned char>(result[i - 1]);
        if (lead < 0xC3 || lead > 0xC5) continue;
        const auto letter = toSmallLetter((lead & 0x1FU) << 6U | (static_cast<unsigned>(result[i]) & 0x3FU));
        result[i - 1] = static_cast<char>(0xC0U | letter >> 6U);
        result[i] = static_cast<char>(0x80U | (letter & 0x3FU));
    }
    return result;
}

using Months = std::map<std::string, unsigned, std::less<>>;

/// The names of the system's language, where it writes them in UTF-8.
void addSystemMonths(Months& months)
{
    const locale_t system = newlocale(LC_TIME_MASK | LC_CTYPE_MASK, "", nullptr);
    if (system == nullptr) return;
    const bool isUtf8 = nl_langinfo_l(CODESET, system) == std::string_view("UTF-8");
    for (unsigned month = 0; isUtf8 && month < 12; ++month)
        for (const int first : {static_cast<int>(MON_1), static_cast<int>(ABMON_1)}) {
            auto name =
                toSmallLetters(nl_langinfo_l(static_cast<nl_item>(first + static_cast<int>(month)), system));
            if (name.ends_with('.')) name.pop_back();
            if (!name.empty()) months.emplace(std::move(name), month + 1);
        }
    freelocale(system);
}

/// `names`: of twelve months, with a blank between and points behind short ones.
void addMonths(Months& months, std::string_view names)
{
    for (unsigned month = 0; month < 12; ++month) {
        auto name = pickName(names, month);
        if (name.ends_with('.')) name.remove_suffix(1);
        months.emplace(toSmallLetters(name), month + 1);
    }
}

Months collectMonths()
{
    Months months(std::begin(others), std::end(others));
    for (const auto names : listMonthNames()) addMonths(months, names);
    for (const auto names : inDates) addMonths(months, names);
    addSystemMonths(months);
    return months;
}

}  // namespace

unsigned findMonth(std::string_view name)
{
    static const Months months = collectMonths();
    if (name.ends_with('.')) name.remove_suffix(1);
    const auto found = months.find(toSmallLetters(name));
    return found == months.end() ? 0 : found->second;
}

}  // namespace quillon::report
