#include "report/document/TableMarkup.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <stdexcept>

#include "report/options/Length.h"
#include "report/options/NumberText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

using Rows = std::vector<std::vector<std::string>>;

std::u16string toNumber(std::int64_t number)
{
    return num2str(static_cast<unsigned long>(std::max<std::int64_t>(number, 0)));
}

void setWidth(DOMElement* parent, const char16_t* name, std::int64_t twips)
{
    auto* width = appendElement(parent, name);
    width->setAttribute(u"w:w", toNumber(twips).c_str());
    width->setAttribute(u"w:type", u"dxa");
}

/// All digits of a number, with the mark of the language.
std::string writeDigits(double number, const Language& language)
{
    if (!std::isfinite(number)) return {};
    auto digits = toUtf8(num2str(number));
    const auto point = digits.find('.');
    return point == std::string::npos ? digits : digits.replace(point, 1, language.decimalMark);
}

std::string writeDate(double date, const Language& language)
{
    const auto format = std::string(language.dayFormat) + (date == std::floor(date) ? "" : " hh:mm");
    return formatNumber(date, format, language);
}

std::string writeCell(const TableCell& cell, const Language& language)
{
    if (!cell.number) return cell.text;
    if (!cell.format.empty()) return formatNumber(*cell.number, cell.format, language);
    return cell.isDate ? writeDate(*cell.number, language) : writeDigits(*cell.number, language);
}

bool looksLikeNumber(const std::string& cell)
{
    const auto letters =
        std::ranges::count_if(cell, [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
    return cell.find_first_of("0123456789") != std::string::npos && letters <= 3;
}

/// Whether all cells of a column that hold something are numbers. The first column names the rows.
bool isNumericColumn(const TextTable& table, std::size_t column)
{
    bool any = false;
    for (const auto& row : table.rows) {
        const auto& cell = row[column];
        if (!cell.number && cell.text.empty()) continue;
        if (!cell.number && !looksLikeNumber(cell.text)) return false;
        any = true;
    }
    return any && column > 0;
}

/// Twips by the length of the longest text and the margins beside it, in shares of the text's width.
std::vector<std::int64_t> shareWidth(const Rows& rows, std::int64_t textWidth)
{
    constexpr std::size_t shortest = 4;
    constexpr std::size_t longest = 40;
    constexpr std::size_t margins = 3;
    std::vector<std::size_t> lengths;
    std::size_t sum = 0;
    for (std::size_t i = 0; i < rows.front().size(); ++i) {
        std::size_t length = 0;
        for (const auto& row : rows) length = std::max(length, row[i].size());
        lengths.push_back(std::clamp(length, shortest, longest) + margins);
        sum += lengths.back();
    }
    const auto whole = static_cast<std::int64_t>(std::max(sum, shortest));
    std::vector<std::int64_t> widths;
    widths.reserve(lengths.size());
    for (const auto length : lengths)
        widths.push_back(textWidth / emuPerTwip * static_cast<std::int64_t>(length) / whole);
    return widths;
}

std::vector<std::int64_t> chooseWidths(const TextTable& table, const Rows& rows, std::int64_t textWidth)
{
    if (table.widths.empty()) return shareWidth(rows, textWidth);
    std::vector<std::int64_t> widths;
    for (const auto& width : table.widths) widths.push_back(parseLength(width) / emuPerTwip);
    return widths;
}

void appendTableProperties(DOMElement* element, const std::u16string& style, std::int64_t width)
{
    auto* properties = appendElement(element, u"w:tblPr");
    appendValue(properties, u"w:tblStyle", style);
    setWidth(properties, u"w:tblW", width);
    appendElement(properties, u"w:tblLayout")->setAttribute(u"w:type", u"fixed");
    auto* look = appendElement(properties, u"w:tblLook");
    look->setAttribute(u"w:val", u"0420");
    look->setAttribute(u"w:firstRow", u"1");
    for (const auto* off : {u"w:lastRow", u"w:firstColumn", u"w:lastColumn"}) look->setAttribute(off, u"0");
    look->setAttribute(u"w:noHBand", u"0");
    look->setAttribute(u"w:noVBand", u"1");
}

void appendCell(DOMElement* row, const std::string& text, std::int64_t width, bool isNumber)
{
    auto* cell = appendElement(row, u"w:tc");
    setWidth(appendElement(cell, u"w:tcPr"), u"w:tcW", width);
    auto* paragraph = appendParagraph(cell);
    if (isNumber) appendValue(getProperties(paragraph), u"w:jc", u"right");
    if (!text.empty()) appendRun(paragraph, toUtf16(text));
}

}  // namespace

void checkTable(const TextTable& table)
{
    if (table.columns.empty()) throw std::runtime_error("Table: expected at least one column.");
    for (std::size_t i = 0; i < table.rows.size(); ++i)
        if (table.rows[i].size() != table.columns.size())
            throw std::runtime_error("Table: expected " + std::to_string(table.columns.size()) +
                                     (table.columns.size() == 1 ? " cell" : " cells") + " in row " +
                                     std::to_string(i + 1) + ", got " + std::to_string(table.rows[i].size()) +
                                     ".");
    if (!table.widths.empty() && table.widths.size() != table.columns.size())
        throw std::runtime_error("Table: expected a width for each of the " +
                                 std::to_string(table.columns.size()) + " columns, got " +
                                 std::to_string(table.widths.size()) + ".");
    for (const auto& width : table.widths) parseLength("widths", width);
    for (const auto& name : table.columns) readXmlText(name, "Table, header row");
    for (const auto& row : table.rows)
        for (const auto& cell : row) readXmlText(cell.number ? cell.format : cell.text, "Table");
}

TableTexts writeTexts(const TextTable& table, const Language& language)
{
    TableTexts texts{{table.columns}, {}};
    for (const auto& cells : table.rows) {
        auto& row = texts.rows.emplace_back();
        for (const auto& cell : cells) row.push_back(writeCell(cell, language));
    }
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        texts.isNumeric.push_back(isNumericColumn(table, i));
    return texts;
}

void appendTable(DOMElement* body, const TextTable& table, std::int64_t textWidth, TextPlace& place)
{
    const auto texts = writeTexts(table, findLanguage(place.styles.getLanguage()));
    const auto widths = chooseWidths(table, texts.rows, textWidth);
    auto* element = appendElement(body, u"w:tbl");
    const auto style = place.styles.use("table", table.style.empty() ? "Report Table" : table.style);
    appendTableProperties(element, style, std::accumulate(widths.begin(), widths.end(), std::int64_t{0}));
    auto* grid = appendElement(element, u"w:tblGrid");
    for (const auto width : widths)
        appendElement(grid, u"w:gridCol")->setAttribute(u"w:w", toNumber(width).c_str());
    for (const auto& cells : texts.rows) {
        auto* row = appendElement(element, u"w:tr");
        const bool isHeader = &cells == &texts.rows.front();
        appendElement(appendElement(row, u"w:trPr"), isHeader ? u"w:tblHeader" : u"w:cantSplit");
        for (std::size_t i = 0; i < cells.size(); ++i)
            appendCell(row, cells[i], widths[i], texts.isNumeric[i]);
    }
}

}  // namespace quillon::report
