#include <langinfo.h>

#include <array>
#include <clocale>
#include <map>
#include <string>

#include "report/table/DateText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// The months of a language, long names and short ones; what is written alike in an earlier row need not come
/// again.
struct Language {
    std::array<const char*, 12> full;
    std::array<const char*, 12> brief;
};

constexpr Language languages[] = {
    // English
    {{"january", "february", "march", "april", "may", "june", "july", "august", "september", "october",
      "november", "december"},
     {"jan", "feb", "mar", "apr", "may", "jun", "jul", "aug", "sep", "oct", "nov", "dec"}},
    // German, with Austria's January
    {{"januar", "februar", "märz", "april", "mai", "juni", "juli", "august", "september", "oktober",
      "november", "dezember"},
     {"jän", "feber", "mär", "apr", "mai", "jun", "jul", "aug", "sept", "okt", "nov", "dez"}},
    {{"jänner", "", "mrz", "", "", "", "", "", "", "", "", ""},
     {"", "", "", "", "", "", "", "", "", "", "", ""}},
    // French
    {{"janvier", "février", "mars", "avril", "mai", "juin", "juillet", "août", "septembre", "octobre",
      "novembre", "décembre"},
     {"janv", "févr", "mars", "avr", "mai", "juin", "juil", "août", "sept", "oct", "nov", "déc"}},
    // Spanish
    {{"enero", "febrero", "marzo", "abril", "mayo", "junio", "julio", "agosto", "septiembre", "octubre",
      "noviembre", "diciembre"},
     {"ene", "feb", "mar", "abr", "may", "jun", "jul", "ago", "sept", "oct", "nov", "dic"}},
    // Italian
    {{"gennaio", "febbraio", "marzo", "aprile", "maggio", "giugno", "luglio", "agosto", "settembre",
      "ottobre", "novembre", "dicembre"},
     {"gen", "feb", "mar", "apr", "mag", "giu", "lug", "ago", "set", "ott", "nov", "dic"}},
    // Portuguese
    {{"janeiro", "fevereiro", "março", "abril", "maio", "junho", "julho", "agosto", "setembro", "outubro",
      "novembro", "dezembro"},
     {"jan", "fev", "mar", "abr", "mai", "jun", "jul", "ago", "set", "out", "nov", "dez"}},
    // Dutch
    {{"januari", "februari", "maart", "april", "mei", "juni", "juli", "augustus", "september", "oktober",
      "november", "december"},
     {"jan", "feb", "mrt", "apr", "mei", "jun", "jul", "aug", "sep", "okt", "nov", "dec"}},
    // Swedish, Danish, Norwegian
    {{"januari", "februari", "mars", "april", "maj", "juni", "juli", "augusti", "september", "oktober",
      "november", "december"},
     {"jan", "febr", "mars", "apr", "maj", "jun", "jul", "aug", "sept", "okt", "nov", "dec"}},
    {{"januar", "februar", "marts", "april", "maj", "juni", "juli", "august", "september", "oktober",
      "november", "desember"},
     {"jan", "feb", "mar", "apr", "maj", "jun", "jul", "aug", "sep", "okt", "nov", "des"}},
    // Finnish
    {{"tammikuu", "helmikuu", "maaliskuu", "huhtikuu", "toukokuu", "kesäkuu", "heinäkuu", "elokuu", "syyskuu",
      "lokakuu", "marraskuu", "joulukuu"},
     {"tammi", "helmi", "maalis", "huhti", "touko", "kesä", "heinä", "elo", "syys", "loka", "marras",
      "joulu"}},
    // Polish, as it stands alone and in a date
    {{"styczeń", "luty", "marzec", "kwiecień", "maj", "czerwiec", "lipiec", "sierpień", "wrzesień",
      "październik", "listopad", "grudzień"},
     {"sty", "lut", "mar", "kwi", "maj", "cze", "lip", "sie", "wrz", "paź", "lis", "gru"}},
    {{"stycznia", "lutego", "marca", "kwietnia", "maja", "czerwca", "lipca", "sierpnia", "września",
      "października", "listopada", "grudnia"},
     {"", "", "", "", "", "", "", "", "", "", "", ""}},
    // Czech, as it stands alone and in a date
    {{"leden", "únor", "březen", "duben", "květen", "červen", "červenec", "srpen", "září", "říjen",
      "listopad", "prosinec"},
     {"led", "úno", "bře", "dub", "kvě", "čvn", "čvc", "srp", "zář", "říj", "lis", "pro"}},
    {{"ledna", "února", "března", "dubna", "května", "června", "července", "srpna", "září", "října",
      "listopadu", "prosince"},
     {"", "", "", "", "", "", "", "", "", "", "", ""}},
};

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

Months collectMonths()
{
    Months months;
    for (const auto& language : languages)
        for (unsigned month = 0; month < 12; ++month)
            for (const std::string name : {language.full.at(month), language.brief.at(month)})
                if (!name.empty()) months.emplace(name, month + 1);
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
