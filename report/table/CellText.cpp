#include "report/table/CellText.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cmath>

namespace quillon::report {
namespace {

constexpr std::array<std::string_view, 21> totalNames = {
    "total",         "totals",    "grand total", "subtotal",       "sum",           "summe",
    "gesamt",        "insgesamt", "gesamtsumme", "gesamtergebnis", "zwischensumme", "total general",
    "total général", "totale",    "totaal",      "totalt",         "i alt",         "suma",
    "razem",         "celkem",    "yhteensä"};

}  // namespace

std::string writeNumber(double number)
{
    return fmt::format("{}", number);
}

std::string writeIsoDate(double serial)
{
    using namespace std::chrono;
    constexpr double lastDay = 2'958'465;  // 31 December 9999
    if (!(serial >= -lastDay && serial <= lastDay)) return writeNumber(serial);
    constexpr std::int64_t dayLength = 86'400;
    const auto seconds = std::llround(serial * dayLength);
    const auto whole = static_cast<int>(std::floor(static_cast<double>(seconds) / dayLength));
    const auto second = static_cast<int>(seconds - whole * dayLength);
    constexpr sys_days first = year_month_day{year(1899), December, day(30)};
    const year_month_day date{first + days(whole)};
    auto text = fmt::format("{:04}-{:02}-{:02}", static_cast<int>(date.year()),
                            static_cast<unsigned>(date.month()), static_cast<unsigned>(date.day()));
    if (second == 0) return text;
    text += fmt::format(" {:02}:{:02}", second / 3600, second / 60 % 60);
    return second % 60 == 0 ? text : text + fmt::format(":{:02}", second % 60);
}

std::string writeCell(const Cell& cell)
{
    if (cell.kind == CellKind::Number) return writeNumber(cell.number);
    if (cell.kind == CellKind::Date) return writeIsoDate(cell.number);
    return std::string(cell.text);
}

bool namesTotal(std::string text)
{
    for (auto& c : text)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c + ('a' - 'A'));
    if (text.ends_with(':')) text.pop_back();
    return std::find(totalNames.begin(), totalNames.end(), text) != totalNames.end();
}

}  // namespace quillon::report
