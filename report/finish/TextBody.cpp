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

void appendLine(DOMElement* body, std::u16string_view line)
{
    auto* paragraph = appendElement(body, u"a:p");
    auto* defaults = appendDefaults(paragraph);
    defaults->setAttribute(u"b", u"0");
    auto* color = appendElement(appendElement(defaults, u"a:solidFill"), u"a:schemeClr", u"tx1");
    appendElement(color, u"a:lumMod", u"65000");
    appendElement(color, u"a:lumOff", u"35000");
    if (line.empty()) return;
    auto* run = appendElement(paragraph, u"a:r");
    appendElement(run, u"a:rPr")->setAttribute(u"lang", u"en-US");
    appendTextElement(run, u"a:t", std::u16string(line));
}

}  // namespace

void fillTextProperties(DOMElement* body)
{
    appendElement(body, u"a:bodyPr");
    appendDefaults(appendElement(body, u"a:p"));
}

void fillText(DOMElement* body, const std::u16string& text, int rotation)
{
    auto* properties = appendElement(body, u"a:bodyPr");
    if (rotation != 0) {
        properties->setAttribute(u"rot", toUtf16(std::to_string(rotation * degree)).c_str());
        properties->setAttribute(u"vert", u"horz");
    }
    std::u16string_view rest = text;
    for (auto end = rest.find(u'\n'); end != std::u16string_view::npos; end = rest.find(u'\n')) {
        appendLine(body, rest.substr(0, end));
        rest.remove_prefix(end + 1);
    }
    appendLine(body, rest);
}

}  // namespace quillon::report
