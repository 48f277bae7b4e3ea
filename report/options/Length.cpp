#include "report/options/Length.h"

#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>
#include <string>

#include "report/options/ChartOptions.h"
#include "report/options/QuotedText.h"

namespace quillon::report {
namespace {

struct Unit {
    std::string_view name;
    double emu;
};

constexpr std::array units = {Unit{"cm", emuPerInch / 2.54}, Unit{"mm", emuPerInch / 25.4},
                              Unit{"in", emuPerInch}, Unit{"pt", emuPerPoint}};

[[noreturn]] void refuse(std::string_view text, const char* expected)
{
    throw std::runtime_error("expected " + std::string(expected) + ", got " + quoteText(text) + ".");
}

}  // namespace

double readLength(std::string_view text)
{
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    const std::string_view unitName = text.substr(static_cast<std::size_t>(end - text.data()));
    if (error != std::errc()) refuse(text, "a number followed by cm, mm, in or pt, as in 15cm");
    for (const auto& unit : units)
        if (unit.name == unitName) return number * unit.emu;
    refuse(text, "one of the units cm, mm, in, pt after the number, as in 15cm");
}

std::int64_t parseLength(std::string_view text)
{
    const double emu = readLength(text);
    if (!(emu >= 0.1 * emuPerInch && emu <= 22 * emuPerInch)) refuse(text, "0.1in to 22in");
    return std::llround(emu);
}

std::int64_t parseLength(const std::string& name, std::string_view text)
{
    try {
        return parseLength(text);
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(name + ": " + error.what());
    }
}

double parsePoints(std::string_view text)
{
    return static_cast<double>(parseLength(text)) / emuPerPoint;
}

ChartOptions withSize(ChartOptions options)
{
    if (options.width.empty()) options.width = "6in";
    if (options.height.empty()) options.height = "3.5in";
    return options;
}

}  // namespace quillon::report
