#include "report/fill/DocumentText.h"
#include "report/package/XmlText.h"
#include "support/Text.h"

#include <algorithm>
#include <array>
#include <set>

namespace quillon::report {
namespace {

constexpr std::string_view opening = "{{";
constexpr std::string_view closing = "}}";
/// Stands in the text of a paragraph for what is no text.
constexpr char object = '\x01';

/// The relationships that lead from the main part to others with running text.
constexpr std::array<std::string_view, 5> textKinds = {"header", "footer", "footnotes", "endnotes",
                                                       "comments"};
/// What surrounds runs without changing what they show.
constexpr std::array<std::string_view, 11> containers = {"r",         "hyperlink", "ins",        "moveTo",
                                                         "smartTag",  "sdt",       "sdtContent", "fldSimple",
                                                         "customXml", "dir",       "bdo"};
/// What shows nothing.
constexpr std::array<std::string_view, 25> invisible = {"pPr",
                                                        "rPr",
                                                        "proofErr",
                                                        "bookmarkStart",
                                                        "bookmarkEnd",
                                                        "permStart",
                                                        "permEnd",
                                                        "del",
                                                        "moveFrom",
                                                        "instrText",
                                                        "delText",
                                                        "delInstrText",
                                                        "fldChar",
                                                        "sdtPr",
                                                        "sdtEndPr",
                                                        "smartTagPr",
                                                        "customXmlPr",
                                                        "lastRenderedPageBreak",
                                                        "commentRangeStart",
                                                        "commentRangeEnd",
                                                        "commentReference",
                                                        "moveFromRangeStart",
                                                        "moveFromRangeEnd",
                                                        "moveToRangeStart",
                                                        "moveToRangeEnd"};

template <typename Names>
bool isOneOf(const XmlElement& element, const Names& names)
{
    return element.getNs() == Ns::Word && std::ranges::find(names, element.getName()) != names.end();
}

constexpr std::string_view blanks = " \t\n\r";

bool isName(std::string_view text)
{
    return !text.empty() && text.find_first_of("{}\x01\n") == std::string_view::npos;
}

void findParagraphs(const XmlElement& parent, std::vector<XmlElement>& found)
{
    for (const auto child : parent.getChildren()) {
        if (child.is(Ns::Word, "p")) found.push_back(child);
        findParagraphs(child, found);
    }
}

/// Text as the content of a w:t element, which tabs and line ends interrupt.
std::string makeTextMarkup(const std::string& text, const std::string& prefix)
{
    std::string markup;
    for (std::size_t at = 0; at <= text.size();) {
        const auto end = std::min(text.find_first_of("\t\r\n", at), text.size());
        markup += escapeText(std::string_view(text).substr(at, end - at));
        if (end == text.size()) break;
        markup.append("</").append(prefix).append("t><").append(prefix);
        markup.append(text[end] == '\t' ? "tab" : "br");
        markup.append("/><").append(prefix).append("t xml:space=\"preserve\">");
        at = text.compare(end, 2, "\r\n") == 0 ? end + 2 : end + 1;
    }
    return markup;
}

/// Gives a w:t element a text whose blanks count.
void setText(const XmlElement& element, const std::string& text, Edits& edits)
{
    const std::string prefix(element.getPrefix());
    edits.replace(element.getOuter(), "<" + prefix + "t xml:space=\"preserve\">" +
                                          makeTextMarkup(text, prefix) + "</" + prefix + "t>");
}

}  // namespace

std::vector<std::pair<std::string, std::string>> findTextParts(const Package& document)
{
    std::vector<std::pair<std::string, std::string>> parts = {{document.getMainPart(), "body"}};
    std::set<std::string> known = {document.getMainPart()};
    const auto relationships = document.getRelationships(document.getMainPart());
    for (const auto kind : textKinds)
        for (const auto& row : relationships)
            if (row.getKind() == kind && !row.isExternal && document.hasPart(row.target) &&
                known.insert(row.target).second)
                parts.emplace_back(row.target, kind);
    return parts;
}

ParagraphText::ParagraphText(const XmlElement& paragraph) : paragraph_(paragraph)
{
    collect(paragraph);
    join();
}

void ParagraphText::collect(const XmlElement& parent)
{
    for (const auto child : parent.getChildren()) {
        if (child.is(Ns::Word, "t"))
            pieces_.push_back({child, 0, child.getText()});
        else if (isOneOf(child, containers))
            collect(child);
        else if (child.is(Ns::Word, "tab"))
            pieces_.push_back({{}, 0, "\t"});
        else if (!isOneOf(child, invisible))
            pieces_.push_back({{}, 0, std::string(1, child.is(Ns::Word, "br") ? '\n' : object)});
    }
}

/// The text of the pieces, one after the other.
void ParagraphText::join()
{
    text_.clear();
    for (auto& piece : pieces_) {
        piece.begin = text_.size();
        text_ += piece.text;
    }
    shownBegin_ = text_.find_first_not_of(blanks);
    shownEnd_ = text_.find_last_not_of(blanks) + 1;
}

std::vector<TextMatch> ParagraphText::findPlaceholders() const
{
    std::vector<TextMatch> matches;
    std::size_t at = 0;
    for (std::size_t end = 0; (end = text_.find(closing, at)) != std::string::npos;) {
        // A name holds no brace: the opening is the last one before the closing.
        const auto before = std::string_view(text_).substr(at, end - at);
        const auto start = before.rfind(opening);
        const auto name = start == std::string_view::npos
                              ? std::string_view()
                              : trim(before.substr(start + opening.size()), blanks);
        const bool isPlaceholder = isName(name);
        if (isPlaceholder) matches.push_back({std::string(name), at + start, end + closing.size()});
        at = end + (isPlaceholder ? closing.size() : 1);
    }
    return matches;
}

bool ParagraphText::isAlone(const TextMatch& match) const
{
    return match.begin == shownBegin_ && match.end == shownEnd_;
}

bool ParagraphText::isBare() const
{
    for (const auto child : paragraph_.getChildren()) {
        if (child.is(Ns::Word, "pPr") && child.findChild("sectPr")) return false;
        if (child.is(Ns::Word, "pPr") || child.is(Ns::Word, "proofErr")) continue;
        if (!child.is(Ns::Word, "r")) return false;
        for (const auto content : child.getChildren())
            if (!content.is(Ns::Word, "t") && !content.is(Ns::Word, "rPr") &&
                !content.is(Ns::Word, "lastRenderedPageBreak"))
                return false;
    }
    return true;
}

XmlElement ParagraphText::getRun(const TextMatch& match) const
{
    XmlElement run;
    for (const auto& piece : pieces_)
        if (piece.element && piece.begin <= match.begin) run = piece.element.findAncestor(Ns::Word, "r");
    return run;
}

std::size_t ParagraphText::replace(const std::string& name, const std::string& replacement)
{
    auto matches = findPlaceholders();
    std::erase_if(matches, [&](const TextMatch& match) { return match.name != name; });
    replace(matches, replacement);
    return matches.size();
}

void ParagraphText::remove(const TextMatch& match, Edits& edits) const
{
    auto changed = *this;
    changed.replace({match}, "");
    changed.write(edits);
}

/// Each piece keeps what lies outside of the matches; that in which a match begins gets the replacement.
void ParagraphText::replace(const std::vector<TextMatch>& matches, const std::string& replacement)
{
    if (matches.empty()) return;
    auto first = matches.begin();
    for (auto& piece : pieces_) {
        std::string text;
        std::size_t at = piece.begin;
        const auto end = piece.begin + piece.text.size();
        while (first != matches.end() && first->end <= piece.begin) ++first;
        for (auto match = first; match != matches.end() && match->begin < end; ++match) {
            if (match->begin >= at) text += text_.substr(at, match->begin - at);
            if (match->begin >= piece.begin) text += replacement;
            at = std::min(match->end, end);
        }
        if (at == piece.begin || !piece.element) continue;
        piece.text = text + text_.substr(at, end - at);
        piece.isChanged = true;
    }
    join();
}

void ParagraphText::write(Edits& edits) const
{
    for (const auto& piece : pieces_)
        if (piece.isChanged) setText(piece.element, piece.text, edits);
}

std::vector<XmlElement> findParagraphs(const XmlElement& root)
{
    std::vector<XmlElement> found;
    findParagraphs(root, found);
    return found;
}

bool isInFallback(const XmlElement& element)
{
    return bool(element.findAncestor(Ns::MarkupCompatibility, "Fallback"));
}

std::string readPlaceholder(std::string_view text)
{
    const auto all = trim(text, blanks);
    if (all.size() < opening.size() + closing.size() || !all.starts_with(opening) || !all.ends_with(closing))
        return {};
    const auto name = trim(all.substr(opening.size(), all.size() - opening.size() - closing.size()), blanks);
    return isName(name) ? std::string(name) : std::string();
}

}  // namespace quillon::report
