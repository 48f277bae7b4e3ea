#include "report/document/TableMarkup.h"

#include <algorithm>
#include <stdexcept>

#include "report/options/Length.h"
#include "report/options/NumberFormat.h"
#include "report/options/NumberText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

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

/// Whether all cells of a column that hold something look like numbers. The first column names the rows.
bool isNumeric(const TextTable& table, std::size_t column)
{
    bool any = false;
    for (const auto& row : table.rows) {
        const auto& cell = row[column];
        if (cell.empty()) continue;
        const auto letters = std::ranges::count_if(
            cell, [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); });
        if (cell.find_first_of("0123456789") == std::string::npos || letters > 3) return false;
        any = true;
    }
    return any && column > 0;
}

/// Twips by the length of the longest text, in shares of the text's width.
std::vector<std::int64_t> shareWidth(const TextTable& table, std::int64_t textWidth)
{
    constexpr std::size_t shortest = 4;
    constexpr std::size_t longest = 40;
    std::vector<std::size_t> lengths;
    std::size_t sum = 0;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        auto length = table.columns[i].size();
        for (const auto& row : table.rows) length = std::max(length, row[i].size());
        lengths.push_back(std::clamp(length, shortest, longest));
        sum += lengths.back();
    }
    const auto whole = static_cast<std::int64_t>(std::max(sum, shortest));
    std::vector<std::int64_t> widths;
    widths.reserve(lengths.size());
    for (const auto length : lengths)
        widths.push_back(textWidth / emuPerTwip * static_cast<std::int64_t>(length) / whole);
    return widths;
}

std::vector<std::int64_t> chooseWidths(const TextTable& table, std::int64_t textWidth)
{
    if (table.widths.empty()) return shareWidth(table, textWidth);
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

namespace {

/// The format of a series; without one, as many decimals for all values as one needs, so that they stand
/// below one another. Where they are many each value has its own.
std::string findFormat(const chart::DataSeries& series, const std::string& format)
{
    if (!format.empty()) return format;
    int decimals = 0;
    for (const auto& point : series.getPoints())
        decimals = std::max(decimals, countDecimals(point->getValue()));
    return decimals == 0 || decimals > maximumDecimals
               ? std::string()
               : "0." + std::string(static_cast<std::size_t>(decimals), '0');
}

}  // namespace

TextTable makeTable(const ChartData& data, const std::string& header)
{
    TextTable table;
    const auto& name = data.getCategoryName(data.levels.size());
    table.columns.push_back(header.empty() ? toUtf8(escapeCharacters(name)) : header);
    if (!data.dataSet) return table;
    const auto& set = *data.dataSet;
    std::size_t rows = set.getCategories().size();
    std::vector<std::string> formats;
    for (std::uint64_t i = 0; i < set.getSeriesCount(); ++i) {
        formats.push_back(findFormat(*set.getSeries(i), data.getDetails(i).numberFormat));
        table.columns.push_back(toUtf8(escapeCharacters(set.getSeries(i)->getName())));
        rows = std::max<std::size_t>(rows, set.getSeries(i)->getSize());
    }
    for (std::size_t row = 0; row < rows; ++row) {
        auto& cells = table.rows.emplace_back();
        cells.push_back(row < set.getCategories().size() ? toUtf8(escapeCharacters(set.getCategories()[row]))
                                                         : std::string());
        for (std::uint64_t i = 0; i < set.getSeriesCount(); ++i) {
            const auto& series = *set.getSeries(i);
            const bool isThere = row < series.getSize();
            cells.push_back(isThere ? formatNumber(series.getPoint(row)->getValue(), formats[i])
                                    : std::string());
        }
    }
    return table;
}

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
        for (const auto& cell : row) readXmlText(cell, "Table");
}

void appendTable(DOMElement* body, const TextTable& table, std::int64_t textWidth, TextPlace& place)
{
    const auto widths = chooseWidths(table, textWidth);
    std::int64_t whole = 0;
    for (const auto width : widths) whole += width;
    auto* element = appendElement(body, u"w:tbl");
    const auto style = place.styles.use("table", table.style.empty() ? "Report Table" : table.style);
    appendTableProperties(element, style, whole);
    auto* grid = appendElement(element, u"w:tblGrid");
    for (const auto width : widths)
        appendElement(grid, u"w:gridCol")->setAttribute(u"w:w", toNumber(width).c_str());
    std::vector<bool> numeric;
    for (std::size_t i = 0; i < table.columns.size(); ++i) numeric.push_back(isNumeric(table, i));
    auto* header = appendElement(element, u"w:tr");
    appendElement(appendElement(header, u"w:trPr"), u"w:tblHeader");
    for (std::size_t i = 0; i < table.columns.size(); ++i)
        appendCell(header, table.columns[i], widths[i], numeric[i]);
    for (const auto& cells : table.rows) {
        auto* row = appendElement(element, u"w:tr");
        appendElement(appendElement(row, u"w:trPr"), u"w:cantSplit");
        for (std::size_t i = 0; i < cells.size(); ++i) appendCell(row, cells[i], widths[i], numeric[i]);
    }
}

}  // namespace quillon::report
