#include "report/fill/BlockWidth.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <optional>
#include <vector>

#include "report/options/Length.h"
#include "report/options/PlainNumber.h"

namespace quillon::report {
namespace {

/// Twentieths of a point, as all below.
constexpr std::int64_t letterWidth = 12'240;
constexpr std::int64_t inch = 1'440;
constexpr std::int64_t columnSpace = 720;
constexpr std::int64_t cellMargin = 108;
constexpr std::int64_t boxMargins = 288;
/// What is narrower is no place for a chart.
constexpr std::int64_t narrowest = 144;

/// Reads "1440", or with a unit "72pt", as the strict dialect has it.
std::optional<std::int64_t> readTwips(const XmlElement& element, std::string_view name)
{
    const auto text = element.getAttribute(Ns::Word, name).value_or("");
    double number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || !(std::abs(number) < 1e6)) return {};
    const std::string_view unit(end, static_cast<std::size_t>(text.data() + text.size() - end));
    constexpr std::array<std::pair<std::string_view, double>, 6> units = {
        {{"", 1}, {"pt", 20}, {"in", 1440}, {"cm", 1440 / 2.54}, {"mm", 144 / 2.54}, {"pc", 240}}};
    for (const auto& [key, factor] : units)
        if (key == unit) return std::llround(number * factor);
    return {};
}

std::int64_t readTwips(const XmlElement& element, std::string_view name, std::int64_t otherwise)
{
    return readTwips(element, name).value_or(otherwise);
}

/// The first that is there: in newer files a side is named by the direction of reading.
std::int64_t readSide(const XmlElement& element, std::string_view name, std::string_view newName,
                      std::int64_t otherwise)
{
    const auto side = readTwips(element, newName);
    return side ? *side : readTwips(element, name, otherwise);
}

/// The properties of the section around what stands directly in the body.
XmlElement findSection(XmlElement block, const XmlElement& body)
{
    for (; block; block = block.getNext())
        if (const auto section = block.findChild("pPr").findChild("sectPr")) return section;
    return body.findChild("sectPr");
}

std::int64_t getColumnWidth(const XmlElement& section)
{
    const auto margins = section.findChild("pgMar");
    const auto width = readTwips(section.findChild("pgSz"), "w", letterWidth) -
                       readTwips(margins, "left", inch) - readTwips(margins, "right", inch) -
                       readTwips(margins, "gutter", 0);
    const auto columns = section.findChild("cols");
    if (const auto first = columns.findChild("col")) return readTwips(first, "w", width);
    const auto count = std::clamp<std::int64_t>(readInteger(columns, Ns::Word, "num", 1), 1, 100);
    return (width - (count - 1) * readTwips(columns, "space", columnSpace)) / count;
}

std::int64_t getPageWidth(const XmlElement& paragraph, const XmlElement& main)
{
    const auto body = main.findChild("body");
    auto block = paragraph;
    while (block && !block.getParent().is(Ns::Word, "body")) block = block.getParent();
    return getColumnWidth(block ? findSection(block, body) : body.findChild("sectPr"));
}

std::int64_t getSpan(const XmlElement& cell)
{
    const auto span = cell.findChild("tcPr").findChild("gridSpan");
    return std::clamp<std::int64_t>(readInteger(span, Ns::Word, "val", 1), 1, 1000);
}

/// The columns of the grid that a cell takes.
std::int64_t getGridWidth(const XmlElement& cell, const XmlElement& table)
{
    const auto row = cell.getParent();
    auto first = readInteger(row.findChild("trPr").findChild("gridBefore"), Ns::Word, "val", 0);
    for (const auto other : row.getChildren()) {
        if (other == cell) break;
        if (other.is(Ns::Word, "tc")) first += getSpan(other);
    }
    std::int64_t width = 0;
    std::int64_t index = 0;
    for (const auto column : table.findChild("tblGrid").getChildren()) {
        if (index >= first && index < first + getSpan(cell)) width += readTwips(column, "w", 0);
        ++index;
    }
    return width;
}

std::int64_t getCellMargins(const XmlElement& cell, const XmlElement& table)
{
    const auto own = cell.findChild("tcPr").findChild("tcMar");
    const auto common = table.findChild("tblPr").findChild("tblCellMar");
    const auto read = [](const XmlElement& margins, std::string_view name, std::string_view newName,
                         std::int64_t otherwise) {
        const auto side = margins.findChild(newName) ? margins.findChild(newName) : margins.findChild(name);
        return readTwips(side, "w", otherwise);
    };
    return read(own, "left", "start", read(common, "left", "start", cellMargin)) +
           read(own, "right", "end", read(common, "right", "end", cellMargin));
}

std::int64_t getCellWidth(const XmlElement& cell)
{
    const auto table = cell.findAncestor(Ns::Word, "tbl");
    auto width = getGridWidth(cell, table);
    const auto preferred = cell.findChild("tcPr").findChild("tcW");
    if (width <= 0 && preferred.getAttribute(Ns::Word, "type") == "dxa") width = readTwips(preferred, "w", 0);
    return width - getCellMargins(cell, table);
}

/// The width of a text box, which its first copy tells; 0 when it does not.
std::int64_t getBoxWidth(const XmlElement& box)
{
    auto outer = box.findAncestor(Ns::MarkupCompatibility, "AlternateContent");
    if (!outer) outer = box.findAncestor(Ns::Word, "drawing");
    const auto extent = findInside(outer, Ns::WordDrawing, "extent");
    return readInteger(extent, Ns::None, "cx", 0) / emuPerTwip - boxMargins;
}

/// The nearest of the elements around a paragraph that has a width of its own.
XmlElement findFrame(const XmlElement& paragraph)
{
    auto element = paragraph.getParent();
    while (element && !element.is(Ns::Word, "tc") && !element.is(Ns::Word, "txbxContent"))
        element = element.getParent();
    return element;
}

}  // namespace

XmlElement findInside(const XmlElement& element, Ns ns, std::string_view name)
{
    if (!element || element.is(ns, name)) return element;
    for (const auto child : element.getChildren())
        if (const auto found = findInside(child, ns, name)) return found;
    return {};
}

std::int64_t readInteger(const XmlElement& element, Ns ns, std::string_view name, std::int64_t otherwise)
{
    if (!element) return otherwise;
    return readPlainNumber<std::int64_t>(element.getAttribute(ns, name).value_or("")).value_or(otherwise);
}

std::int64_t findBlockWidth(const XmlElement& paragraph, const XmlElement& main)
{
    const auto frame = findFrame(paragraph);
    std::int64_t width = 0;
    if (frame) width = frame.is(Ns::Word, "tc") ? getCellWidth(frame) : getBoxWidth(frame);
    if (width < narrowest) width = getPageWidth(paragraph, main);
    const auto indent = paragraph.findChild("pPr").findChild("ind");
    width -= std::max<std::int64_t>(readSide(indent, "left", "start", 0), 0);
    width -= std::max<std::int64_t>(readSide(indent, "right", "end", 0), 0);
    constexpr std::int64_t widest = 22 * inch;
    return std::clamp(width, narrowest, widest) * emuPerTwip;
}

}  // namespace quillon::report
