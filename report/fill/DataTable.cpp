#include "report/fill/DataTable.h"

#include <algorithm>

#include "report/document/TemplateParts.h"
#include "report/fill/BlockWidth.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "report/package/XmlText.h"

namespace quillon::report {
namespace {

constexpr auto usualGrid = "TableGrid";

constexpr auto plainBorders =
    "<w:tblBorders><w:top w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"auto\"/>"
    "<w:bottom w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"auto\"/>"
    "<w:insideH w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"auto\"/></w:tblBorders>";

/// The look of the run in which the placeholder begins, and the same in bold.
struct Look {
    std::string plain;
    std::string bold = "<w:rPr><w:b/></w:rPr>";
};

Look readLook(const ParagraphText& paragraph, const TextMatch& match)
{
    const auto properties = paragraph.getRun(match).findChild("rPr");
    if (!properties || properties.getPrefix() != "w:" || properties.isEmptyTag()) return {};
    const std::string source(properties.getSource());
    if (properties.findChild("b")) return {source, source};
    auto at = properties.getInner().begin;
    // The place of bold is behind style and fonts.
    for (const auto* name : {"rStyle", "rFonts"})
        if (const auto before = properties.findChild(name)) at = before.getOuter().end;
    auto bold = source;
    bold.insert(at - properties.getOuter().begin, "<w:b/>");
    return {source, bold};
}

std::string makeParagraph(const std::string& text, const std::string& look, const std::string& alignment)
{
    const auto properties = alignment.empty() ? "" : "<w:pPr><w:jc w:val=\"" + alignment + "\"/></w:pPr>";
    return "<w:p>" + properties + "<w:r>" + look + "<w:t xml:space=\"preserve\">" + escapeText(text) +
           "</w:t></w:r></w:p>";
}

/// A paragraph like another one, without its content.
std::string makeEmptyLike(const XmlElement& paragraph)
{
    const std::string prefix(paragraph.getPrefix());
    const auto properties = paragraph.findChild("pPr");
    return "<" + prefix + "p>" + (properties ? std::string(properties.getSource()) : "") + "</" + prefix +
           "p>";
}

/// Whether what follows a table needs a paragraph between them: the end of a cell, text box or page, and
/// another table, which would become one with it.
bool needsParagraph(const XmlElement& paragraph)
{
    const auto next = paragraph.getNext();
    return !next || next.is(Ns::Word, "tbl") || next.is(Ns::Word, "sectPr");
}

bool followsTable(const XmlElement& paragraph)
{
    XmlElement previous;
    for (const auto child : paragraph.getParent().getChildren()) {
        if (child == paragraph) break;
        previous = child;
    }
    return previous.is(Ns::Word, "tbl");
}

}  // namespace

std::string findTableStyle(const Package& document, const XmlElement& root)
{
    const auto used = findInside(root, Ns::Word, "tblStyle").getAttribute(Ns::Word, "val");
    if (used) return *used;
    const auto name = findRelated(document, "styles");
    if (!document.hasPart(name)) return {};
    const XmlSpans styles(document.getPart(name), name);
    for (const auto style : styles.getRoot().getChildren())
        if (style.getAttribute(Ns::Word, "styleId") == usualGrid) return usualGrid;
    return {};
}

Language findLanguageAt(const Package& document, const ParagraphText& paragraph, const TextMatch& match)
{
    const auto own = paragraph.getRun(match).findPath({"rPr", "lang"}).getAttribute(Ns::Word, "val");
    return findLanguage(own ? *own : readLanguage(document));
}

std::string DataTable::makeRow(std::size_t row, std::int64_t width, const std::string& look,
                               bool isStrict) const
{
    const bool isHeader = row == 0;
    std::string markup = isHeader ? "<w:tr><w:trPr><w:cantSplit/><w:tblHeader/></w:trPr>"
                                  : "<w:tr><w:trPr><w:cantSplit/></w:trPr>";
    const auto* right = isStrict ? "end" : "right";
    for (std::size_t column = 0; column < texts_.isNumeric.size(); ++column) {
        const auto& text = texts_.rows[row][column];
        markup += "<w:tc><w:tcPr><w:tcW w:w=\"" + std::to_string(width) + "\" w:type=\"dxa\"/></w:tcPr>" +
                  makeParagraph(text, look, texts_.isNumeric[column] ? right : "") + "</w:tc>";
    }
    return markup + "</w:tr>";
}

std::string DataTable::makeMarkup(const ParagraphText& paragraph, const TextMatch& match,
                                  const XmlElement& main) const
{
    const bool isStrict = getUri(Ns::Word, true) == main.getNsUri();
    const auto width = findBlockWidth(paragraph.getParagraph(), main) / emuPerTwip;
    const auto columnWidth =
        std::max<std::int64_t>(width / static_cast<std::int64_t>(texts_.isNumeric.size()), 1);
    const auto look = readLook(paragraph, match);
    std::string markup = "<w:tbl xmlns:w=\"" + std::string(getUri(Ns::Word, isStrict)) + "\"><w:tblPr>";
    if (!style_.empty()) markup += "<w:tblStyle w:val=\"" + escapeAttribute(style_) + "\"/>";
    markup += "<w:tblW w:w=\"" + std::to_string(width) + "\" w:type=\"dxa\"/>";
    if (style_.empty()) markup += plainBorders;
    markup += isStrict ? "<w:tblLook w:firstRow=\"1\" w:firstColumn=\"1\" w:noVBand=\"1\"/>"
                       : "<w:tblLook w:val=\"04A0\"/>";
    markup += "</w:tblPr><w:tblGrid>";
    for (std::size_t i = 0; i < texts_.isNumeric.size(); ++i)
        markup += "<w:gridCol w:w=\"" + std::to_string(columnWidth) + "\"/>";
    markup += "</w:tblGrid>";
    for (std::size_t row = 0; row < texts_.rows.size(); ++row)
        markup += makeRow(row, columnWidth, row == 0 ? look.bold : look.plain, isStrict);
    return markup + "</w:tbl>";
}

void DataTable::insert(const ParagraphText& paragraph, const TextMatch& match, const XmlElement& main,
                       Edits& edits) const
{
    const auto element = paragraph.getParagraph();
    const auto markup = makeMarkup(paragraph, match, main);
    const auto empty = makeEmptyLike(element);
    if (paragraph.isBare()) {
        edits.replace(element.getOuter(),
                      (followsTable(element) ? empty : "") + markup + (needsParagraph(element) ? empty : ""));
        return;
    }
    paragraph.remove(match, edits);
    edits.insert(element.getOuter().end, markup + (needsParagraph(element) ? empty : ""));
}

}  // namespace quillon::report
