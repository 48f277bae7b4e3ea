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

/// The paragraph's a:defRPr.
DOMElement* appendDefaults(DOMElement* paragraph)
{
    auto* defaults = appendElement(appendElement(paragraph, u"a:pPr"), u"a:defRPr");
    defaults->setAttribute(u"sz", plainSize);
    return defaults;
}

DOMElement* appendLine(DOMElement* body, const std::u16string& line)
{
    auto* paragraph = appendElement(body, u"a:p");
    auto* defaults = appendDefaults(paragraph);
    defaults->setAttribute(u"b", u"0");
    if (line.empty()) return defaults;
    auto* run = appendElement(paragraph, u"a:r");
    appendElement(run, u"a:rPr")->setAttribute(u"lang", u"en-US");
    appendTextElement(run, u"a:t", line);
    return defaults;
}

}  // namespace

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

void fillTextProperties(DOMElement* body)
{
    appendElement(body, u"a:bodyPr");
    appendDefaults(appendElement(body, u"a:p"));
}

void fillAxisText(DOMElement* body, const std::u16string& text, int rotation)
{
    auto* properties = appendElement(body, u"a:bodyPr");
    if (rotation != 0) {
        properties->setAttribute(u"rot", toUtf16(std::to_string(rotation * degree)).c_str());
        properties->setAttribute(u"vert", u"horz");
    }
    for (const auto& line : splitLines(text)) {
        auto* fill = appendElement(appendLine(body, line), u"a:solidFill");
        auto* color = appendElement(fill, u"a:schemeClr", u"tx1");
        appendElement(color, u"a:lumMod", u"65000");
        appendElement(color, u"a:lumOff", u"35000");
    }
}

void fillLabelText(DOMElement* body, const std::u16string& text)
{
    appendElement(body, u"a:bodyPr");
    for (const auto& line : splitLines(text)) appendLine(body, line);
}

}  // namespace quillon::report
