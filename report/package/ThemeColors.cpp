#include "report/package/ThemeColors.h"

#include <charconv>
#include <optional>
#include <stdexcept>

#include "report/package/XmlSpans.h"

namespace quillon::report {
namespace {

/// Of an a:srgbClr, or an a:sysClr with the colour that its system last had.
std::optional<std::uint32_t> readColor(const XmlElement& color)
{
    const auto last = color.getAttribute("lastClr");
    const auto digits = last ? *last : color.getAttribute("val").value_or("");
    const auto* behind = digits.data() + digits.size();
    std::uint32_t number = 0;
    const auto [end, error] = std::from_chars(digits.data(), behind, number, 16);
    if (digits.size() != 6 || error != std::errc() || end != behind) return {};
    return number;
}

}  // namespace

ThemeColors readThemeColors(const std::string& part)
try {
    ThemeColors colors;
    if (part.empty()) return colors;
    const XmlSpans xml(part, "theme");
    const auto scheme = xml.getRoot().findPath({"themeElements", "clrScheme"});
    for (std::size_t i = 0; i < colors.accents.size(); ++i)
        if (const auto color = readColor(scheme.findChild("accent" + std::to_string(i + 1)).getFirstChild()))
            colors.accents[i] = *color;
    return colors;
} catch (const std::runtime_error&) {
    return {};
}

}  // namespace quillon::report
