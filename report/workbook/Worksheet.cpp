#include "report/workbook/Worksheet.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <stdexcept>

#include "report/package/Xml.h"
#include "report/workbook/Workbook.h"
#include "report/workbook/WorkbookParts.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr auto declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
constexpr auto mainNamespace = " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
/// The first number of a format that is not built in.
constexpr std::size_t firstFormat = 164;
constexpr std::size_t maximumFormatLength = 255;

/// Appends UTF-8 as it stands in markup. A parser would take a carriage return for a line feed.
void appendMarkup(std::string& markup, std::string_view text)
{
    for (const char c : text) {
        switch (c) {
            case '&':
                markup += "&amp;";
                break;
            case '<':
                markup += "&lt;";
                break;
            case '>':
                markup += "&gt;";
                break;
            case '"':
                markup += "&quot;";
                break;
            case '\r':
                markup += "&#13;";
                break;
            default:
                markup += c;
        }
    }
}

bool isBlank(char16_t c)
{
    return c == u' ' || c == u'\t' || c == u'\n' || c == u'\r';
}

void appendNumber(std::string& markup, double number)
{
    std::array<char, 32> digits{};
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    markup.append(digits.data(), end);
}

std::string makeAttribute(const char* name, std::size_t number)
{
    return std::string(" ") + name + "=\"" + std::to_string(number) + "\"";
}

}  // namespace

std::size_t CellFormats::add(const std::string& format, const std::string& place)
{
    if (format.empty() || format == "General") return 0;
    if (readXmlText(format, place).size() > maximumFormatLength)
        throw std::runtime_error(place + ": expected up to 255 characters.");
    std::string code;
    appendMarkup(code, format);
    const auto known = std::find(codes_.begin(), codes_.end(), code);
    const auto style = static_cast<std::size_t>(known - codes_.begin()) + 1;
    if (known == codes_.end()) codes_.push_back(std::move(code));
    return style;
}

std::string CellFormats::makePart() const
{
    std::string formats;
    std::string cells = R"(<xf numFmtId="0" fontId="0" fillId="0" borderId="0" xfId="0"/>)";
    for (std::size_t i = 0; i < codes_.size(); ++i) {
        const auto id = makeAttribute("numFmtId", firstFormat + i);
        formats += "<numFmt" + id + " formatCode=\"" + codes_[i] + "\"/>";
        cells += "<xf" + id + R"( fontId="0" fillId="0" borderId="0" xfId="0" applyNumberFormat="1"/>)";
    }
    if (!codes_.empty())
        formats = "<numFmts" + makeAttribute("count", codes_.size()) + ">" + formats + "</numFmts>";
    return std::string(declaration) + "<styleSheet" + mainNamespace + ">" + formats +
           workbookparts::fontsFillsAndBorders + "<cellXfs" + makeAttribute("count", codes_.size() + 1) +
           ">" + cells + "</cellXfs>" + workbookparts::cellStyles + "</styleSheet>";
}

std::size_t SharedStrings::add(std::u16string_view text)
{
    ++useCount_;
    const auto [known, isNew] = positions_.try_emplace(text, positions_.size());
    if (isNew) {
        items_ +=
            isBlank(text.front()) || isBlank(text.back()) ? "<si><t xml:space=\"preserve\">" : "<si><t>";
        appendMarkup(items_, toUtf8(escapeCharacters(text)));
        items_ += "</t></si>";
    }
    return known->second;
}

std::string SharedStrings::makePart() const
{
    return std::string(declaration) + "<sst" + mainNamespace + makeAttribute("count", useCount_) +
           makeAttribute("uniqueCount", positions_.size()) + ">" + items_ + "</sst>";
}

void Worksheet::beginRow()
{
    rowNumber_ = std::to_string(++rowCount_) + "\"";
    cells_ += "<row r=\"";
    cells_ += rowNumber_;
    cells_ += '>';
}

void Worksheet::beginCell(std::size_t column)
{
    cells_ += "<c r=\"";
    cells_ += letters_[column];
    cells_ += rowNumber_;
}

void Worksheet::writeText(std::size_t column, std::u16string_view text)
{
    if (text.empty()) return;
    if (text.size() > maximumTextLength)
        throw std::runtime_error("The embedded workbook could not be made: cell " + letters_[column] +
                                 std::to_string(rowCount_) + ": the text has " + std::to_string(text.size()) +
                                 " characters; a cell holds up to 32767.");
    beginCell(column);
    cells_ += " t=\"s\"><v>";
    cells_ += std::to_string(strings_.add(text));
    cells_ += "</v></c>";
}

void Worksheet::writeNumber(std::size_t column, double number, std::size_t style)
{
    if (!std::isfinite(number)) return;
    beginCell(column);
    if (style != 0) cells_ += makeAttribute("s", style);
    cells_ += "><v>";
    appendNumber(cells_, number);
    cells_ += "</v></c>";
}

std::string Worksheet::makePart(std::size_t wideColumn) const
{
    auto part = std::string(declaration) + "<worksheet" + mainNamespace +
                "><dimension ref=\"A1:" + letters_.back() + std::to_string(rowCount_) + "\"/>" +
                workbookparts::sheetView;
    if (wideColumn != noColumn)
        part += "<cols><col" + makeAttribute("min", wideColumn + 1) + makeAttribute("max", wideColumn + 1) +
                R"( width="18" customWidth="1"/></cols>)";
    part.reserve(part.size() + cells_.size() + 40);
    part += "<sheetData>";
    part += cells_;
    part += "</sheetData></worksheet>";
    return part;
}

}  // namespace quillon::report
