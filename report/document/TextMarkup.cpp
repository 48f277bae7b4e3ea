#include "report/document/TextMarkup.h"

#include <algorithm>
#include <stdexcept>

#include "report/options/QuotedText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

void appendText(DOMElement* run, const char16_t* name, std::u16string_view text)
{
    if (text.empty()) return;
    appendTextElement(run, name, std::u16string(text))->setAttribute(u"xml:space", u"preserve");
}

DOMElement* appendFieldMark(DOMElement* parent, const char16_t* type)
{
    auto* mark = appendElement(appendElement(parent, u"w:r"), u"w:fldChar");
    mark->setAttribute(u"w:fldCharType", type);
    return mark;
}

void appendTabStop(DOMElement* tabs, const TabStop& stop)
{
    auto* tab = appendElement(tabs, u"w:tab");
    tab->setAttribute(u"w:val", stop.alignment);
    if (stop.leader != nullptr) tab->setAttribute(u"w:leader", stop.leader);
    tab->setAttribute(u"w:pos", num2str(static_cast<unsigned long>(stop.twips)).c_str());
}

/// The look of a run; its elements stand in the order of the schema.
void addLook(DOMElement* run, const TextRun& look, const std::u16string& style)
{
    if (!look.bold && !look.italic && style.empty()) return;
    auto* properties = run->getOwnerDocument()->createElement(u"w:rPr");
    run->insertBefore(properties, run->getFirstChild());
    if (!style.empty()) appendValue(properties, u"w:rStyle", style);
    if (look.bold) appendElement(properties, u"w:b");
    if (look.italic) appendElement(properties, u"w:i");
}

void appendReference(DOMElement* parent, const TextRun& run, const TextPlace& place)
{
    const auto& name = run.reference;
    const auto caption = place.captions.find(name);
    if (caption == place.captions.end()) {
        std::string known;
        for (const auto& [other, text] : place.captions) known += (known.empty() ? "" : ", ") + other;
        throw std::runtime_error("Reference " + quoteText(name) + ": there is no caption of that name" +
                                 (known.empty() ? "." : "; the captions are " + known + "."));
    }
    appendField(parent, u" REF " + nameBookmark(name) + u" \\h ", toUtf16(caption->second), run);
}

/// An address without the characters that none may hold; those of other languages it may.
std::string escapeAddress(std::string_view address)
{
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string escaped;
    for (const char c : address) {
        const bool isAllowed = c != ' ' && std::string_view("\"<>\\^`{|}").find(c) == std::string_view::npos;
        if (isAllowed)
            escaped += c;
        else
            escaped +=
                {'%', digits[static_cast<unsigned char>(c) >> 4], digits[static_cast<unsigned char>(c) & 15]};
    }
    return escaped;
}

void appendLink(DOMElement* parent, const TextRun& run, TextPlace& place)
{
    auto* link = appendElement(parent, u"w:hyperlink");
    link->setAttribute(
        u"r:id",
        toUtf16(place.target.relateOutside(place.part, "hyperlink", escapeAddress(run.link))).c_str());
    addLook(appendRun(link, toUtf16(run.text)), run, place.styles.use("character", "Hyperlink"));
}

}  // namespace

DOMElement* appendValue(DOMElement* parent, const char16_t* name, const std::u16string& value)
{
    auto* element = appendElement(parent, name);
    element->setAttribute(u"w:val", value.c_str());
    return element;
}

DOMElement* appendParagraph(DOMElement* parent, const std::u16string& style)
{
    auto* paragraph = appendElement(parent, u"w:p");
    if (!style.empty()) appendValue(getProperties(paragraph), u"w:pStyle", style);
    return paragraph;
}

DOMElement* getProperties(DOMElement* paragraph)
{
    if (auto* properties = findChild(paragraph, u"w:pPr")) return properties;
    auto* properties = paragraph->getOwnerDocument()->createElement(u"w:pPr");
    paragraph->insertBefore(properties, paragraph->getFirstChild());
    return properties;
}

DOMElement* appendRun(DOMElement* parent, std::u16string_view text)
{
    auto* run = appendElement(parent, u"w:r");
    while (!text.empty()) {
        const auto end = text.find_first_of(u"\t\r\n");
        appendText(run, u"w:t", text.substr(0, end));
        if (end == std::u16string_view::npos) return run;
        appendElement(run, text[end] == u'\t' ? u"w:tab" : u"w:br");
        text.remove_prefix(text.substr(end, 2) == u"\r\n" ? end + 2 : end + 1);
    }
    return run;
}

void appendRuns(DOMElement* parent, const TextRuns& runs, TextPlace& place)
{
    for (const auto& run : runs) {
        if (!run.reference.empty())
            appendReference(parent, run, place);
        else if (!run.link.empty())
            appendLink(parent, run, place);
        else if (!run.text.empty())
            addLook(appendRun(parent, toUtf16(run.text)), run, {});
    }
}

void setTabStops(DOMElement* paragraph, const std::vector<TabStop>& stops,
                 const std::vector<std::int64_t>& stopsOfStyle)
{
    if (std::ranges::equal(stops, stopsOfStyle, {}, &TabStop::twips)) return;
    auto* tabs = appendElement(getProperties(paragraph), u"w:tabs");
    const auto isWanted = [&stops](std::int64_t twips) {
        return std::ranges::find(stops, twips, &TabStop::twips) != stops.end();
    };
    for (const auto twips : stopsOfStyle)
        if (!isWanted(twips)) appendTabStop(tabs, {u"clear", twips});
    for (const auto& stop : stops) appendTabStop(tabs, stop);
}

void startField(DOMElement* parent, const std::u16string& instruction, bool isStale)
{
    auto* begin = appendFieldMark(parent, u"begin");
    if (isStale) begin->setAttribute(u"w:dirty", u"true");
    appendText(appendElement(parent, u"w:r"), u"w:instrText", instruction);
    appendFieldMark(parent, u"separate");
}

void endField(DOMElement* parent)
{
    appendFieldMark(parent, u"end");
}

void appendField(DOMElement* parent, const std::u16string& instruction, std::u16string_view text,
                 const TextRun& look)
{
    auto* before = parent->getLastElementChild();
    startField(parent, instruction);
    appendRun(parent, text);
    endField(parent);
    auto* run = before == nullptr ? parent->getFirstElementChild() : before->getNextElementSibling();
    for (; run != nullptr; run = run->getNextElementSibling()) addLook(run, look, {});
}

void startBookmark(DOMElement* parent, const std::u16string& name, const std::u16string& id)
{
    auto* start = appendElement(parent, u"w:bookmarkStart");
    start->setAttribute(u"w:id", id.c_str());
    start->setAttribute(u"w:name", name.c_str());
}

void endBookmark(DOMElement* parent, const std::u16string& id)
{
    appendElement(parent, u"w:bookmarkEnd")->setAttribute(u"w:id", id.c_str());
}

std::u16string nameBookmark(const std::string& caption)
{
    return toUtf16(caption);
}

}  // namespace quillon::report
