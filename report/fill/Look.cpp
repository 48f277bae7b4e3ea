#include "report/fill/Look.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>

#include "report/package/XmlText.h"

namespace quillon::report {
namespace {

constexpr std::array<std::string_view, 6> colorElements = {"schemeClr", "srgbClr",  "sysClr",
                                                           "prstClr",   "scrgbClr", "hslClr"};

/// What takes the colour of its series.
constexpr std::array<std::string_view, 4> coloredParts = {"spPr", "marker", "trendline", "errBars"};

bool isColor(const XmlElement& element)
{
    return element.getNs() == Ns::Drawing &&
           std::find(colorElements.begin(), colorElements.end(), element.getName()) != colorElements.end();
}

/// The first colour in a fill or line, in the order of the markup.
XmlElement findColor(const XmlElement& element)
{
    if (!element || isColor(element)) return element;
    for (const auto child : element.getChildren())
        if (const auto color = findColor(child)) return color;
    return {};
}

XmlElement findFill(const XmlElement& properties)
{
    for (const auto child : properties.getChildren())
        if (child.is(Ns::Drawing, "solidFill") || child.is(Ns::Drawing, "gradFill") ||
            child.is(Ns::Drawing, "pattFill"))
            return findColor(child);
    return {};
}

bool isSameColor(const XmlElement& left, const XmlElement& right)
{
    return left.getName() == right.getName() && left.getAttribute("val") == right.getAttribute("val");
}

template <typename Visit>
void visitAll(const XmlElement& element, Visit visit)
{
    visit(element);
    for (const auto child : element.getChildren()) visitAll(child, visit);
}

bool isVariation(const XmlElement& element)
{
    return element.is(Ns::Drawing, "lumMod") || element.is(Ns::Drawing, "lumOff");
}

/// The element written anew; a variation of the old colour goes when it has the place of one of the new.
void replaceColor(Edits& edits, const XmlElement& element, const Palette::Color& color, bool isVaried)
{
    const std::string prefix(element.getPrefix());
    const auto tag = prefix + (color.isOfTheme ? "schemeClr" : "srgbClr");
    std::string markup = "<" + tag + " val=\"" + escapeAttribute(color.value) + "\">";
    for (const auto& [name, value] : color.variation)
        markup.append("<")
            .append(prefix)
            .append(name)
            .append(" val=\"")
            .append(escapeAttribute(value))
            .append("\"/>");
    for (const auto child : element.getChildren())
        if (!isVaried || !isVariation(child)) markup += child.getSource();
    edits.replace(element.getOuter(), markup + "</" + tag + ">");
}

std::uint32_t readLeadingDigits(std::string_view id)
{
    std::uint32_t number = 0;
    if (id.size() > 9) std::from_chars(id.data() + 1, id.data() + 9, number, 16);
    return number;
}

bool isUniqueId(const XmlElement& element)
{
    return element.is(Ns::Chart2014, "uniqueId");
}

}  // namespace

Palette::Palette()
    : colors_({"accent1", "accent2", "accent3", "accent4", "accent5", "accent6"}),
      variations_({{},
                   {{"lumMod", "60000"}},
                   {{"lumMod", "80000"}, {"lumOff", "20000"}},
                   {{"lumMod", "80000"}},
                   {{"lumMod", "60000"}, {"lumOff", "40000"}},
                   {{"lumMod", "50000"}}})
{
}

Palette::Palette(const XmlSpans& colors) : Palette()
{
    std::vector<std::string> schemes;
    std::vector<std::vector<std::pair<std::string, std::string>>> variations;
    for (const auto child : colors.getRoot().getChildren()) {
        if (child.is(Ns::Drawing, "schemeClr"))
            schemes.push_back(child.getAttribute("val").value_or("accent1"));
        if (child.getName() != "variation") continue;
        variations.emplace_back();
        for (const auto change : child.getChildren())
            variations.back().emplace_back(change.getName(), change.getAttribute("val").value_or("100000"));
    }
    if (!schemes.empty()) colors_ = schemes;
    if (!variations.empty()) variations_ = variations;
}

Palette Palette::makeUsual()
{
    Palette palette;
    palette.colors_ = {"4472C4", "ED7D31", "A5A5A5", "FFC000", "5B9BD5", "70AD47"};
    palette.areOfTheme_ = false;
    return palette;
}

Palette::Color Palette::getColor(std::size_t index) const
{
    return {colors_[index % colors_.size()], variations_[index / colors_.size() % variations_.size()],
            areOfTheme_};
}

XmlElement findOwnColor(const XmlElement& element)
{
    const auto properties = element.findChild("spPr");
    auto color = findFill(properties);
    if (!color) color = findFill(properties.findChild(Ns::Drawing, "ln"));
    if (!color) color = findFill(element.findPath({"marker", "spPr"}));
    if (color.getName() == "srgbClr") return color;
    return color.getAttribute("val").value_or("").starts_with("accent") ? color : XmlElement();
}

void recolor(Edits& edits, const XmlElement& element, const Palette::Color& color,
             const std::vector<XmlElement>& without)
{
    const auto own = findOwnColor(element);
    if (!own) return;
    const bool isVaried = own.getName() == "schemeClr" && isVariation(own.getFirstChild());
    for (const auto part : element.getChildren()) {
        if (std::find(coloredParts.begin(), coloredParts.end(), part.getName()) == coloredParts.end())
            continue;
        if (std::find(without.begin(), without.end(), part) != without.end()) continue;
        visitAll(part, [&](const XmlElement& inner) {
            if (isColor(inner) && isSameColor(inner, own)) replaceColor(edits, inner, color, isVaried);
        });
    }
}

UniqueIds::UniqueIds(const XmlElement& root)
{
    visitAll(root, [&](const XmlElement& element) {
        if (isUniqueId(element))
            next_ = std::max(next_, readLeadingDigits(element.getAttribute("val").value_or("")) + 1);
    });
}

void UniqueIds::renew(Edits& edits, const XmlElement& element, const std::vector<XmlElement>& without)
{
    if (std::find(without.begin(), without.end(), element) != without.end()) return;
    for (const auto child : element.getChildren()) renew(edits, child, without);
    if (!isUniqueId(element)) return;
    const auto id = element.getAttribute("val").value_or("");
    std::array<char, 16> digits;
    static_cast<void>(std::snprintf(digits.data(), digits.size(), "{%08X", next_++));
    edits.setAttribute(element, "val",
                       digits.data() + (id.size() > 9 ? id.substr(9) : "-0000-4000-8000-000000000000}"));
}

}  // namespace quillon::report
