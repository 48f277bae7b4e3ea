#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "report/document/Blocks.h"
#include "report/document/Styles.h"
#include "report/package/PackageWriter.h"

/// Paragraphs, runs, fields and links as elements. Texts have been checked when they were added.
namespace quillon::report {

/// Where text is written: the part, what may be referred to, and what links are related to.
struct TextPlace {
    PartTarget& target;
    Styles& styles;
    /// The name of the part, which relationships start from.
    std::string part;
    /// By the name of a caption: the label with its number, as in "Figure 2".
    const std::map<std::string, std::string>& captions;
};

/// Sets the attribute `w:val`.
xercesc::DOMElement* appendValue(xercesc::DOMElement* parent, const char16_t* name,
                                 const std::u16string& value);

/// Appends a paragraph; `style` is a style id, or empty.
xercesc::DOMElement* appendParagraph(xercesc::DOMElement* parent, const std::u16string& style = {});
/// The properties of a paragraph, made when there are none.
xercesc::DOMElement* getProperties(xercesc::DOMElement* paragraph);

/// Appends a run with text, whose tabs and line breaks have elements of their own.
xercesc::DOMElement* appendRun(xercesc::DOMElement* parent, std::u16string_view text);
/// Appends runs with their looks, links and references.
/// Throws: std::runtime_error that lists the captions for a reference to none.
void appendRuns(xercesc::DOMElement* parent, const TextRuns& runs, TextPlace& place);
/// The tab stop of a paragraph. Twips: from the margin, in twentieths of a point.
struct TabStop {
    const char16_t* alignment;
    std::int64_t twips;
    /// What leads to it, u"dot"; null for blank space.
    const char16_t* leader = nullptr;
};
/// Sets the tab stops of a paragraph in place of those of its style, where they are others.
void setTabStops(xercesc::DOMElement* paragraph, const std::vector<TabStop>& stops,
                 const std::vector<std::int64_t>& stopsOfStyle);

/// A field is its instruction and, between the calls, the text that it has until it is updated, which a word
/// processor does when it opens a document with a stale field.
void startField(xercesc::DOMElement* parent, const std::u16string& instruction, bool isStale = false);
void endField(xercesc::DOMElement* parent);
/// Appends a field with its text.
void appendField(xercesc::DOMElement* parent, const std::u16string& instruction, std::u16string_view text,
                 const TextRun& look = {});

/// Marks a place, between the calls, by a name that links and fields lead to. `id` is unique in the part.
void startBookmark(xercesc::DOMElement* parent, const std::u16string& name, const std::u16string& id);
void endBookmark(xercesc::DOMElement* parent, const std::u16string& id);

/// The name of the bookmark of a caption.
std::u16string nameBookmark(const std::string& caption);

}  // namespace quillon::report
