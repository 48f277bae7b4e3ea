#include "report/fill/DataTable.h"

#include <algorithm>

#include "report/fill/BlockWidth.h"
#include "report/options/Length.h"
#include "report/options/NumberText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr auto usualGrid = "TableGrid";
constexpr auto usualDate = "yyyy-mm-dd";

constexpr auto plainBorders =
    "<w:tblBorders><w:top w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"auto\"/>"
    "<w:bottom w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"auto\"/>"
    "<w:insideH w:val=\"single\" w:sz=\"4\" w:space=\"0\" w:color=\"auto\"/></w:tblBorders>";

const std::string& choose(const std::string& wanted, const std::string& otherwise)
{
    return wanted.empty() ? otherwise : wanted;
}

/// Text that XML can hold.
std::string makeText(const std::u16string& text)
{
    requireXmlText(text, "table");
    return toUtf8(text);
}

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
    for (const auto& relationship : document.getRelationships(document.getMainPart())) {
        if (relationship.getKind() != "styles" || !document.hasPart(relationship.target)) continue;
        const XmlSpans styles(document.getPart(relationship.target), relationship.target);
        for (const auto style : styles.getRoot().getChildren())
            if (style.getAttribute(Ns::Word, "styleId") == usualGrid) return usualGrid;
    }
    return {};
}

DataTable::DataTable(const ChartData& data, const TableFormats& formats, std::string style)
    : style_(std::move(style))
{
    if (data.dataSet == nullptr) throw std::runtime_error("The table has no data set.");
    addCategories(data, formats);
    for (std::size_t i = 0; i < data.dataSet->getSeriesCount(); ++i) addSeries(data, i, formats);
    for (const auto& column : columns_) rowCount_ = std::max(rowCount_, column.texts.size());
}

void DataTable::addCategories(const ChartData& data, const TableFormats& formats)
{
    for (const auto& level : data.levels) {
        Column column{false, {""}};
        for (const auto& text : level) column.texts.push_back(makeText(text));
        columns_.push_back(std::move(column));
    }
    Column column{data.categoryKind == CategoryKind::Number, {""}};
    const bool isDate = data.categoryKind == CategoryKind::Date;
    const auto& format = choose(formats.categoryFormat, choose(data.categoryFormat, isDate ? usualDate : ""));
    const auto& categories = data.dataSet->getCategories();
    for (std::size_t i = 0; i < std::max(categories.size(), data.categoryValues.size()); ++i) {
        const bool hasNumber = data.categoryKind != CategoryKind::Text && i < data.categoryValues.size() &&
                               (isDate || column.isNumber);
        if (hasNumber)
            column.texts.push_back(formatNumber(data.categoryValues[i], format));
        else
            column.texts.push_back(i < categories.size() ? makeText(categories[i]) : "");
    }
    columns_.push_back(std::move(column));
}

void DataTable::addSeries(const ChartData& data, std::size_t index, const TableFormats& formats)
{
    const auto series = data.dataSet->getSeries(static_cast<unsigned long>(index));
    const auto& details = data.getDetails(index);
    const auto& format = choose(formats.numberFormat, details.numberFormat);
    Column column{true, {makeText(series->getName())}};
    for (const auto& point : series->getPoints())
        column.texts.push_back(formatNumber(point->getValue(), format));
    columns_.push_back(std::move(column));
    if (details.sizes.empty()) return;
    Column sizes{true, {""}};
    for (const auto size : details.sizes) sizes.texts.push_back(formatNumber(size, ""));
    columns_.push_back(std::move(sizes));
}

std::string DataTable::makeRow(std::size_t row, std::int64_t width, const std::string& look,
                               bool isStrict) const
{
    const bool isHeader = row == 0;
    std::string markup = isHeader ? "<w:tr><w:trPr><w:cantSplit/><w:tblHeader/></w:trPr>"
                                  : "<w:tr><w:trPr><w:cantSplit/></w:trPr>";
    for (const auto& column : columns_) {
        const auto text = row < column.texts.size() ? column.texts[row] : "";
        const auto* right = isStrict ? "end" : "right";
        markup += "<w:tc><w:tcPr><w:tcW w:w=\"" + std::to_string(width) + "\" w:type=\"dxa\"/></w:tcPr>" +
                  makeParagraph(text, look, column.isNumber ? right : "") + "</w:tc>";
    }
    return markup + "</w:tr>";
}

std::string DataTable::makeMarkup(const ParagraphText& paragraph, const TextMatch& match,
                                  const XmlElement& main) const
{
    const bool isStrict = getUri(Ns::Word, true) == main.getNsUri();
    const auto width = findBlockWidth(paragraph.getParagraph(), main) / emuPerTwip;
    const auto columnWidth = std::max<std::int64_t>(width / static_cast<std::int64_t>(columns_.size()), 1);
    const auto look = readLook(paragraph, match);
    std::string markup = "<w:tbl xmlns:w=\"" + std::string(getUri(Ns::Word, isStrict)) + "\"><w:tblPr>";
    if (!style_.empty()) markup += "<w:tblStyle w:val=\"" + escapeAttribute(style_) + "\"/>";
    markup += "<w:tblW w:w=\"" + std::to_string(width) + "\" w:type=\"dxa\"/>";
    if (style_.empty()) markup += plainBorders;
    markup += isStrict ? "<w:tblLook w:firstRow=\"1\" w:firstColumn=\"1\" w:noVBand=\"1\"/>"
                       : "<w:tblLook w:val=\"04A0\"/>";
    markup += "</w:tblPr><w:tblGrid>";
    for (std::size_t i = 0; i < columns_.size(); ++i)
        markup += "<w:gridCol w:w=\"" + std::to_string(columnWidth) + "\"/>";
    markup += "</w:tblGrid>";
    for (std::size_t row = 0; row < rowCount_; ++row)
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
