#include "chart/model/Color.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <locale>
#include <regex>
#include <stdexcept>

#include "support/Text.h"

namespace quillon::chart {
namespace {

const std::wregex& rgbExpression()
{
    static const std::wregex expression = [] {
        std::wregex result;
        result.imbue(std::locale::classic());
        result.assign(LR"((rgb|RGB)\((\d{1,3})\s*,\s*(\d{1,3})\s*,\s*(\d{1,3})\))", std::regex::ECMAScript);
        return result;
    }();
    return expression;
}

bool isSpacePair(char16_t first, char16_t second)
{
    return isSpace(first) && isSpace(second);
}

/// Cheap refusal of most texts; whatever follows "rgb(" in a match is ASCII.
bool mayBeRgbExpression(std::u16string_view text)
{
    return (text.starts_with(u"rgb(") || text.starts_with(u"RGB(")) &&
           std::all_of(text.begin(), text.end(), [](char16_t c) { return c < 0x80; });
}

/// The low eight bits of 255 times `component`, rounded half away from zero.
unsigned char toByte(double component)
{
    const double scaled = std::fmod(std::round(component * 255.0), 256.0);
    if (!std::isfinite(scaled)) return 0;
    return static_cast<unsigned char>(static_cast<int>(scaled) & 0xFF);
}

}  // namespace

bool isRgbColorString(const std::u16string& text)
{
    if (!mayBeRgbExpression(text)) return false;
    // The expression takes a run of white space like a single one, but recurses into each; so runs are
    // shortened.
    std::wstring wide = toWideString(text);
    wide.erase(std::unique(wide.begin(), wide.end(), isSpacePair), wide.end());
    if (!std::regex_match(wide, rgbExpression())) return false;
    const auto components = parseRgbComponents(text);
    return std::all_of(components.begin(), components.end(),
                       [](std::uint32_t number) { return number < 256; });
}

std::array<std::uint32_t, 3> parseRgbComponents(const std::u16string& text)
{
    const std::u16string rest = text.substr(4);
    const auto first = rest.find(u',');
    const auto second = rest.find(u',', first + 1);
    // The middle part is cut to a length of `second` and may run past the comma, where str2uint stops by
    // itself.
    return {str2uint(rest.substr(0, first)), str2uint(rest.substr(first + 1, second)),
            str2uint(rest.substr(second + 1))};
}

Color::Color(const std::u16string& text) : text_(text) {}

void Color::setFromText(const std::u16string& text)
{
    text_ = text;
    fromTriplet_ = false;
}

void Color::setFromTriplet(double red, double green, double blue)
{
    text_ = toUpperString(num2HexStr(toByte(red)) + num2HexStr(toByte(green)) + num2HexStr(toByte(blue)));
    fromTriplet_ = true;
}

std::u16string Color::toHexString() const
{
    if (text_.starts_with(u'#')) return text_;
    if (isRgbColorString(text_)) {
        std::u16string digits;
        for (const auto component : parseRgbComponents(text_))
            digits += num2HexStr(static_cast<unsigned char>(component));
        return toUpperString(digits);
    }
    const auto* named = findNamedColor(toLowerString(text_));
    return named != nullptr ? *named : u"FFFFFF";
}

std::array<double, 3> Color::toTriplet() const
{
    if (!isRgbColorString(text_)) throw std::runtime_error("Invalid color");
    const std::string digits = toUtf8(toHexString().substr(1));
    std::array<double, 3> triplet{};
    for (std::size_t i = 0; i < triplet.size(); ++i) {
        unsigned component = 0;
        std::from_chars(digits.data() + 2 * i, digits.data() + std::min(2 * i + 2, digits.size()), component,
                        16);
        triplet[i] = component / 255.0;
    }
    return triplet;
}

const char* Color::getFullyQualifiedOrcaTypeName() const
{
    return hostNameOf(std::type_identity<Color>());
}

}  // namespace quillon::chart
