#include "report/options/Language.h"

#include <algorithm>
#include <string>

#include "support/Text.h"

namespace quillon::report {
namespace {

/// How numbers and days are written where a tag begins with one of these; the first row that suits counts.
struct Marks {
    std::string_view tags;
    std::string_view decimal;
    std::string_view group;
    std::string_view dayFormat;
};

/// The names of a language.
struct Names {
    std::string_view tags;
    std::string_view months;
    std::string_view shortMonths;
    std::string_view weekdays;
    std::string_view shortWeekdays;
    std::string_view captions;
};

/// A blank at which no line breaks.
constexpr std::string_view blank = "\u00A0";

/// English comes first. It has the one form of a day that all its countries read alike.
constexpr Marks markRows[] = {
    {"en", ".", ",", "yyyy-mm-dd"},      {"de-ch de-li it-ch", ".", "’", "dd.mm.yyyy"},
    {"es-mx", ".", ",", "dd/mm/yyyy"},   {"pt-br es it", ",", ".", "dd/mm/yyyy"},
    {"de", ",", ".", "dd.mm.yyyy"},      {"nl da", ",", ".", "dd-mm-yyyy"},
    {"fr pt", ",", blank, "dd/mm/yyyy"}, {"nb nn no pl cs", ",", blank, "dd.mm.yyyy"},
    {"fi", ",", blank, "d.m.yyyy"},      {"sv", ",", blank, "yyyy-mm-dd"},
};

constexpr Names nameRows[] = {
    {"en", "January February March April May June July August September October November December",
     "Jan Feb Mar Apr May Jun Jul Aug Sep Oct Nov Dec",
     "Sunday Monday Tuesday Wednesday Thursday Friday Saturday", "Sun Mon Tue Wed Thu Fri Sat",
     "Figure Table"},
    {"de", "Januar Februar März April Mai Juni Juli August September Oktober November Dezember",
     "Jan Feb Mrz Apr Mai Jun Jul Aug Sep Okt Nov Dez",
     "Sonntag Montag Dienstag Mittwoch Donnerstag Freitag Samstag", "So Mo Di Mi Do Fr Sa",
     "Abbildung Tabelle"},
    {"fr", "janvier février mars avril mai juin juillet août septembre octobre novembre décembre",
     "janv. févr. mars avr. mai juin juil. août sept. oct. nov. déc.",
     "dimanche lundi mardi mercredi jeudi vendredi samedi", "dim. lun. mar. mer. jeu. ven. sam.",
     "Figure Tableau"},
    {"es", "enero febrero marzo abril mayo junio julio agosto septiembre octubre noviembre diciembre",
     "ene feb mar abr may jun jul ago sep oct nov dic",
     "domingo lunes martes miércoles jueves viernes sábado", "dom lun mar mié jue vie sáb", "Figura Tabla"},
    {"it", "gennaio febbraio marzo aprile maggio giugno luglio agosto settembre ottobre novembre dicembre",
     "gen feb mar apr mag giu lug ago set ott nov dic",
     "domenica lunedì martedì mercoledì giovedì venerdì sabato", "dom lun mar mer gio ven sab",
     "Figura Tabella"},
    {"pt", "janeiro fevereiro março abril maio junho julho agosto setembro outubro novembro dezembro",
     "jan fev mar abr mai jun jul ago set out nov dez",
     "domingo segunda-feira terça-feira quarta-feira quinta-feira sexta-feira sábado",
     "dom seg ter qua qui sex sáb", "Figura Tabela"},
    {"nl", "januari februari maart april mei juni juli augustus september oktober november december",
     "jan feb mrt apr mei jun jul aug sep okt nov dec",
     "zondag maandag dinsdag woensdag donderdag vrijdag zaterdag", "zo ma di wo do vr za", "Figuur Tabel"},
    {"sv", "januari februari mars april maj juni juli augusti september oktober november december",
     "jan feb mar apr maj jun jul aug sep okt nov dec", "söndag måndag tisdag onsdag torsdag fredag lördag",
     "sön mån tis ons tor fre lör", "Figur Tabell"},
    {"da", "januar februar marts april maj juni juli august september oktober november december",
     "jan feb mar apr maj jun jul aug sep okt nov dec", "søndag mandag tirsdag onsdag torsdag fredag lørdag",
     "søn man tir ons tor fre lør", "Figur Tabel"},
    {"nb nn no", "januar februar mars april mai juni juli august september oktober november desember",
     "jan feb mar apr mai jun jul aug sep okt nov des", "søndag mandag tirsdag onsdag torsdag fredag lørdag",
     "søn man tir ons tor fre lør", "Figur Tabell"},
    {"fi",
     "tammikuu helmikuu maaliskuu huhtikuu toukokuu kesäkuu heinäkuu elokuu syyskuu lokakuu marraskuu "
     "joulukuu",
     "tammi helmi maalis huhti touko kesä heinä elo syys loka marras joulu",
     "sunnuntai maanantai tiistai keskiviikko torstai perjantai lauantai", "su ma ti ke to pe la",
     "Kuva Taulukko"},
    {"pl", "styczeń luty marzec kwiecień maj czerwiec lipiec sierpień wrzesień październik listopad grudzień",
     "sty lut mar kwi maj cze lip sie wrz paź lis gru",
     "niedziela poniedziałek wtorek środa czwartek piątek sobota", "niedz. pon. wt. śr. czw. pt. sob.",
     "Rysunek Tabela"},
    {"cs", "leden únor březen duben květen červen červenec srpen září říjen listopad prosinec",
     "led úno bře dub kvě čvn čvc srp zář říj lis pro", "neděle pondělí úterý středa čtvrtek pátek sobota",
     "ne po út st čt pá so", "Obrázek Tabulka"},
};

/// Whether one of `tags` is `tag`, or is what a country or a script stands behind in it.
bool suits(std::string_view tags, std::string_view tag)
{
    for (std::size_t i = 0; !pickName(tags, i).empty(); ++i) {
        const auto one = pickName(tags, i);
        if (tag.starts_with(one) && (tag.size() == one.size() || tag[one.size()] == '-')) return true;
    }
    return false;
}

template <typename Rows>
const auto& find(const Rows& rows, std::string_view tag)
{
    const auto* const found =
        std::ranges::find_if(rows, [tag](const auto& row) { return suits(row.tags, tag); });
    return found == std::end(rows) ? *std::begin(rows) : *found;
}

}  // namespace

Language findLanguage(std::string_view tag)
{
    auto wanted = toLower(tag);
    std::ranges::replace(wanted, '_', '-');
    const auto& marks = find(markRows, wanted);
    const auto& names = find(nameRows, wanted);
    return {marks.decimal,     marks.group,    marks.dayFormat,     names.months,
            names.shortMonths, names.weekdays, names.shortWeekdays, names.captions};
}

std::vector<std::string_view> listMonthNames()
{
    std::vector<std::string_view> lists;
    for (const auto& names : nameRows) lists.insert(lists.end(), {names.months, names.shortMonths});
    return lists;
}

std::string_view pickName(std::string_view names, std::size_t position)
{
    for (; position > 0 && !names.empty(); --position)
        names.remove_prefix(std::min(names.find(' '), names.size() - 1) + 1);
    return names.substr(0, names.find(' '));
}

}  // namespace quillon::report
