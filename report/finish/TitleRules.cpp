#include <array>

#include "report/finish/Rules.h"
#include "report/finish/TextBody.h"
#include "report/options/ColorText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// Six digits; nothing for the default, black, and for no colour at all.
std::optional<std::u16string> readColor(ChartPart& part, const chart::TextBase& text, const Place& place)
{
    const auto color = text.getColor();
    if (!color || color->getText() == u"black") return {};
    auto digits = findColorDigits(color->getText());
    if (!digits) part.warnNoColor(place, color->getText());
    return digits;
}

void setColor(DOMElement* run, const std::u16string& digits)
{
    auto* fill = appendElement(findChild(run, u"a:rPr"), u"a:solidFill");
    appendElement(fill, u"a:srgbClr", digits.c_str());
}

DOMElement* insertRun(DOMElement* paragraph, const std::u16string& text)
{
    auto* run = paragraph->getOwnerDocument()->createElement(u"a:r");
    paragraph->insertBefore(run, findChild(paragraph, u"a:endParaRPr"));
    appendElement(run, u"a:rPr")->setAttribute(u"lang", u"en-US");
    appendTextElement(run, u"a:t", text);
    return run;
}

/// The text of a run has no breaks: each line of it becomes a run, with a break before it.
void breakLines(DOMElement* run, const std::u16string& text)
{
    const auto lines = splitLines(text);
    if (lines.size() == 1) return;
    auto* paragraph = static_cast<DOMElement*>(run->getParentNode());
    findChild(run, u"a:t")->setTextContent(lines.front().c_str());
    for (auto line = lines.begin() + 1; line != lines.end(); ++line) {
        auto* lineBreak = run->getOwnerDocument()->createElement(u"a:br");
        lineBreak->appendChild(findChild(run, u"a:rPr")->cloneNode(true));
        insertAfter(paragraph, lineBreak, run);
        run = static_cast<DOMElement*>(run->cloneNode(true));
        findChild(run, u"a:t")->setTextContent(line->c_str());
        insertAfter(paragraph, run, lineBreak);
    }
}

/// The writer made the first run; the others follow it. A run without a colour has that of its paragraph.
void finishTitle(ChartPart& part)
{
    const auto& title = part.context.chart.getTitle();
    if (!title) return;
    auto* paragraph = findPath(part.chart, {u"c:title", u"c:tx", u"c:rich", u"a:p"});
    const auto standard = readColor(part, *title->getText(), {.what = "title"});
    auto* element = findChild(paragraph, u"a:r");
    for (const auto& run : title->getText()->getContent()) {
        if (!run) continue;
        requireXmlText(run->getContent(), "title");
        if (element == nullptr) element = insertRun(paragraph, run->getContent());
        const auto color = readColor(part, *run, {.what = "title"});
        if (color || standard) setColor(element, color ? *color : *standard);
        breakLines(element, run->getContent());
        element = nullptr;
    }
}

constexpr std::array rules = {Rule{allKinds, finishTitle}};

}  // namespace

const std::span<const Rule> titleRules = rules;

}  // namespace quillon::report
