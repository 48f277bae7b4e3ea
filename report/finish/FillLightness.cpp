#include "report/finish/FillLightness.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// Red, green and blue, 0 to 1.
using Rgb = std::array<double, 3>;

Rgb toRgb(std::uint32_t number)
{
    const auto channel = [number](unsigned shift) { return (number >> shift & 0xFFU) / 255.0; };
    return {channel(16), channel(8), channel(0)};
}

/// A part of the whole that a child of a colour says.
double readShare(const DOMElement* color, const char16_t* name, double standard)
{
    const auto* child = findChild(color, name);
    return child == nullptr ? standard : static_cast<double>(str2uint(child->getAttribute(u"val"))) / 1e5;
}

/// Lighter or darker, in the same hue and saturation.
Rgb changeLightness(const Rgb& color, double factor, double offset)
{
    const auto [low, high] = std::minmax({color[0], color[1], color[2]});
    const double lightness = (low + high) / 2;
    const double changed = std::clamp(lightness * factor + offset, 0.0, 1.0);
    const double reach = std::min(lightness, 1 - lightness);
    const double scale = reach > 0 ? std::min(changed, 1 - changed) / reach : 0;
    Rgb made{};
    for (std::size_t i = 0; i < made.size(); ++i) made[i] = changed + (color[i] - lightness) * scale;
    return made;
}

Rgb readColor(const DOMElement* color, const ThemeColors& theme)
{
    const std::u16string_view value = color->getAttribute(u"val");
    if (std::u16string_view(color->getTagName()) == u"a:srgbClr")
        return toRgb(static_cast<std::uint32_t>(std::stoul(toUtf8(value), nullptr, 16)));
    constexpr std::u16string_view accent = u"accent";
    if (!value.starts_with(accent)) return {1, 1, 1};
    const auto number = static_cast<std::size_t>(value[accent.size()] - u'1');
    return changeLightness(toRgb(theme.accents.at(number)), readShare(color, u"a:lumMod", 1),
                           readShare(color, u"a:lumOff", 0));
}

/// As the eye adds up red, green and blue: 0 for black, 1 for white.
double getLuminance(const Rgb& color)
{
    constexpr Rgb weights = {0.2126, 0.7152, 0.0722};
    double sum = 0;
    for (std::size_t i = 0; i < weights.size(); ++i)
        sum +=
            weights[i] * (color[i] <= 0.04045 ? color[i] / 12.92 : std::pow((color[i] + 0.055) / 1.055, 2.4));
    return sum;
}

}  // namespace

/// Gradients and patterns are half white; what shines through is white.
TextColor chooseTextColor(const DOMElement* fill, const ThemeColors& theme)
{
    const bool isSolid = std::u16string_view(fill->getTagName()) == u"a:solidFill";
    const auto* color = fill->getFirstElementChild();
    while (!std::u16string_view(color->getTagName()).ends_with(u"Clr") ||
           color->getAttributeNode(u"val") == nullptr)
        color = color->getFirstElementChild();
    const double share = readShare(color, u"a:alpha", 1) * (isSolid ? 1 : 0.5);
    auto seen = readColor(color, theme);
    for (auto& channel : seen) channel = channel * share + 1 - share;
    // Where small texts in black and in white are read equally well.
    constexpr double middle = 0.36;
    return getLuminance(seen) < middle ? TextColor::White : TextColor::Black;
}

}  // namespace quillon::report
