#include "report/document/Pages.h"

#include <algorithm>
#include <array>
#include <utility>

#include "report/document/FixedParts.h"
#include "report/document/TemplateParts.h"
#include "report/options/Length.h"
#include "report/package/Edits.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

bool hasTab(const PageLine& line)
{
    return std::ranges::any_of(line.runs,
                               [](const auto& run) { return run.text.find('\t') != std::string::npos; });
}

/// The stretches of a page line's text between "{page}" and "{pages}", and these two.
void appendPageText(DOMElement* paragraph, const TextRun& run, TextPlace& place)
{
    struct Field {
        std::string_view mark;
        const char16_t* instruction;
    };
    constexpr std::array fields = {Field{"{page}", u" PAGE "}, Field{"{pages}", u" NUMPAGES "}};
    auto rest = run;
    while (!rest.text.empty()) {
        const Field* next = nullptr;
        auto at = rest.text.size();
        for (const auto& field : fields)
            if (const auto found = rest.text.find(field.mark); found < at) {
                at = found;
                next = &field;
            }
        auto before = rest;
        before.text = rest.text.substr(0, at);
        appendRuns(paragraph, {before}, place);
        if (next == nullptr) return;
        appendField(paragraph, next->instruction, u"1", run);
        rest.text.erase(0, at + next->mark.size());
    }
}

}  // namespace

Pages::Pages(const DocumentContent& content, TextPlace& place)
    : content_(content), place_(place), textWidth_(report::getTextWidth(setup_))
{
    if (content.look) readLook();
}

void Pages::setUp(const PageSetup& setup)
{
    setup_ = setup;
    hasPagesOfLook_ = false;
    textWidth_ = report::getTextWidth(setup);
}

void Pages::readLook()
{
    const XmlSpans xml(content_.look->getPart(place_.part), place_.part);
    const auto section = xml.getRoot().findPath({"body", "sectPr"});
    hasPagesOfLook_ = static_cast<bool>(section);
    if (!section) return;
    textWidth_ = readTextWidth(section);
    pageLines_ = readPageLines(xml.getRoot().findChild("body"));
}

std::string Pages::addPageLine(const PageLine& line, bool isHeader)
{
    const auto* kind = isHeader ? "header" : "footer";
    const auto name = place_.target.findFreeName(std::string("word/") + kind, ".xml");
    const auto doc = createDocument();
    auto* root = doc->createElement(isHeader ? u"w:hdr" : u"w:ftr");
    declareNamespaces(root);
    doc->appendChild(root);
    auto* paragraph = appendParagraph(root, place_.styles.use("paragraph", kind));
    const auto width = textWidth_ / emuPerTwip;
    if (hasTab(line))
        setTabStops(paragraph, {{u"center", width / 2}, {u"right", width}}, place_.styles.getTabStops(kind));
    TextPlace place{place_.target, place_.styles, name, place_.captions};
    for (const auto& run : line.runs) {
        if (run.reference.empty())
            appendPageText(paragraph, run, place);
        else
            appendRuns(paragraph, {run}, place);
    }
    place_.target.addPart(name, serialise(doc.get()), isHeader ? content_type::header : content_type::footer);
    return place_.target.relate(place_.part, kind, name);
}

/// The first section has the references to headers and footers. Further ones go on with them, but for those
/// whose tabs lead elsewhere on wider or narrower pages.
void Pages::endSection(DOMElement* parent)
{
    addPageLines();
    if (hasPagesOfLook_)
        appendSectionOfLook(parent);
    else
        appendSection(parent, setup_, pageLines_);
    pageLines_.clear();
}

/// Puts the document's own header and footer in the place of those of its look.
void Pages::addPageLines()
{
    const auto before = std::exchange(pageLineWidth_, textWidth_);
    if (before == textWidth_) return;
    for (const bool isHeader : {true, false}) {
        const auto& line = isHeader ? content_.header : content_.footer;
        if (line.runs.empty() || (before > 0 && !hasTab(line))) continue;
        const std::u16string element = isHeader ? u"w:headerReference" : u"w:footerReference";
        std::erase_if(pageLines_, [&](const auto& other) {
            return other.element == element && other.type == u"default";
        });
        pageLines_.push_back({element, u"default", toUtf16(addPageLine(line, isHeader))});
    }
}

/// The pages of the look stay as they are, but for the document's own header and footer.
void Pages::appendSectionOfLook(DOMElement* parent) const
{
    const XmlSpans xml(content_.look->getPart(place_.part), place_.part);
    const auto section = xml.getRoot().findPath({"body", "sectPr"});
    std::string markup;
    for (const auto& [element, type, id] : pageLines_)
        markup += "<" + toUtf8(element) + " w:type=\"" + toUtf8(type) + "\" r:id=\"" + toUtf8(id) + "\"/>";
    for (const auto child : section.getChildren())
        if (!child.is(Ns::Word, "headerReference") && !child.is(Ns::Word, "footerReference"))
            markup += child.getSource();
    Edits edits;
    edits.setInner(section, markup);
    appendMarkup(parent, edits.apply(xml.getText(), section.getOuter()));
}

}  // namespace quillon::report
