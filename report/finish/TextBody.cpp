#include "report/finish/TextBody.h"

#include <string_view>

#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// Units of the markup in a degree.
constexpr int degree = 60'000;
/// Hundredths of a point.
constexpr auto plainSize = u"900";

double getWidth(char16_t character)
{
    constexpr std::u16string_view narrow = u" .,:;'|!()[]ijltfrI";
    constexpr std::u16string_view wide = u"mwMW@%";
    constexpr char16_t firstOfWideScripts = 0x1100;
    if (character >= firstOfWideScripts) return 1;
    if (narrow.find(character) != std::u16string_view::npos) return 0.3;
    if (wide.find(character) != std::u16string_view::npos) return 0.85;
    return character >= u'A' && character <= u'Z' ? 0.63 : 0.52;
}

void appendColor(DOMElement* properties, TextColor color)
{
    auto* fill = appendElement(properties, u"a:solidFill");
    auto* element = appendElement(fill, u"a:schemeClr", color == TextColor::White ? u"bg1" : u"tx1");
    if (color != TextColor::Grey) return;
    appendElement(element, u"a:lumMod", u"65000");
    appendElement(element, u"a:lumOff", u"35000");
}

/// The paragraph's a:defRPr.
DOMElement* appendDefaults(DOMElement* paragraph, TextColor color)
{
    auto* defaults = appendElement(appendElement(paragraph, u"a:pPr"), u"a:defRPr");
    defaults->setAttribute(u"sz", plainSize);
    appendColor(defaults, color);
    return defaults;
}

void appendLines(DOMElement* body, const std::u16string& text, TextColor color)
{
    for (const auto& line : splitLines(text)) {
        auto* paragraph = appendElement(body, u"a:p");
        appendDefaults(paragraph, color)->setAttribute(u"b", u"0");
        if (line.empty()) continue;
        auto* run = appendElement(paragraph, u"a:r");
        appendElement(run, u"a:rPr")->setAttribute(u"lang", u"en-US");
        appendTextElement(run, u"a:t", line);
    }
}

}  // namespace

double getTextSize(const ChartOptions& options)
{
    constexpr double standard = 9;
    return options.fontSize.value_or(standard);
}

std::vector<std::u16string> splitLines(std::u16string_view text)
{
    std::vector<std::u16string> lines;
    for (bool isLast = false; !isLast;) {
        const auto end = text.find(u'\n');
        isLast = end == std::u16string_view::npos;
        auto line = text.substr(0, end);
        if (!isLast && line.ends_with(u'\r')) line.remove_suffix(1);
        lines.emplace_back(line);
        if (!isLast) text.remove_prefix(end + 1);
    }
    return lines;
}

double getTextWidth(std::u16string_view text)
{
    double width = 0;
    for (const char16_t character : text) width += getWidth(character);
    return width;
}

void fillTextProperties(DOMElement* body, TextColor color)
{
    appendElement(body, u"a:bodyPr");
    appendDefaults(appendElement(body, u"a:p"), color);
}

void fillAxisText(DOMElement* body, const std::u16string& text, int rotation)
{
    auto* properties = appendElement(body, u"a:bodyPr");
    if (rotation != 0) {
        properties->setAttribute(u"rot", toUtf16(std::to_string(rotation * degree)).c_str());
        properties->setAttribute(u"vert", u"horz");
    }
    appendLines(body, text, TextColor::Grey);
}

void fillLabelText(DOMElement* body, const std::u16string& text, TextColor color)
{
    appendElement(body, u"a:bodyPr");
    appendLines(body, text, color);
}

}  // namespace quillon::report
