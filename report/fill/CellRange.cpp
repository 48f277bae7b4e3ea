#include "report/fill/CellRange.h"

#include <algorithm>

#include "report/options/PlainNumber.h"
#include "report/workbook/Workbook.h"

namespace quillon::report {
namespace {

constexpr std::uint32_t lastRow = maximumRow;
constexpr std::uint32_t lastColumn = maximumColumn;

/// Reads "$AB" or "AB", and takes it from the front; nothing when there is none.
std::optional<std::uint32_t> takeColumn(std::string_view& text)
{
    auto rest = text.substr(text.starts_with('$') ? 1 : 0);
    std::uint32_t number = 0;
    std::size_t size = 0;
    for (; size < rest.size() && size < 4; ++size) {
        const char c = rest[size];
        const bool isLower = c >= 'a' && c <= 'z';
        if (!isLower && (c < 'A' || c > 'Z')) break;
        number = number * 26 + static_cast<std::uint32_t>(c - (isLower ? 'a' : 'A')) + 1;
    }
    if (size == 0 || number > lastColumn + 1) return {};
    text = rest.substr(size);
    return number - 1;
}

/// The same for "$12" or "12".
std::optional<std::uint32_t> takeRow(std::string_view& text)
{
    auto rest = text.substr(text.starts_with('$') ? 1 : 0);
    std::uint32_t number = 0;
    std::size_t size = 0;
    for (; size < rest.size() && size < 8 && rest[size] >= '0' && rest[size] <= '9'; ++size)
        number = number * 10 + static_cast<std::uint32_t>(rest[size] - '0');
    if (size == 0 || number == 0 || number > lastRow + 1) return {};
    text = rest.substr(size);
    return number - 1;
}

/// One end of an area; what is left out is nothing.
struct Corner {
    std::optional<std::uint32_t> column;
    std::optional<std::uint32_t> row;
};

std::optional<Corner> parseCorner(std::string_view text)
{
    Corner corner;
    corner.column = takeColumn(text);
    corner.row = takeRow(text);
    if (!text.empty() || (!corner.column && !corner.row)) return {};
    return corner;
}

/// The end of the sheet's name before the cells; 0 without one.
std::size_t findPrefixEnd(std::string_view text)
{
    if (!text.starts_with('\'')) {
        const auto mark = text.find('!');
        return mark == std::string_view::npos ? 0 : mark + 1;
    }
    for (std::size_t at = 1; at < text.size(); ++at) {
        if (text[at] != '\'') continue;
        if (text.substr(at, 2) == "'!") return at + 2;
        if (text.substr(at, 2) != "''") return 0;
        ++at;
    }
    return 0;
}

/// Splits at commas outside of quotes and parentheses.
std::vector<std::string_view> splitList(std::string_view text)
{
    std::vector<std::string_view> parts;
    bool isQuoted = false;
    int depth = 0;
    std::size_t start = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        if (text[at] == '\'') isQuoted = !isQuoted;
        if (!isQuoted) depth += text[at] == '(' ? 1 : text[at] == ')' ? -1 : 0;
        if (text[at] != ',' || isQuoted || depth > 0) continue;
        parts.push_back(text.substr(start, at - start));
        start = at + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

/// A whole number of rows or columns; none for an argument that is left out.
std::optional<std::int64_t> readSteps(std::string_view text)
{
    return text.empty() ? 0 : readPlainNumber<std::int32_t>(text);
}

std::uint32_t move(std::uint32_t number, std::int64_t by)
{
    return static_cast<std::uint32_t>(number + by);
}

}  // namespace

Area Area::join(const Area& other) const
{
    return {std::min(top, other.top), std::min(left, other.left), std::max(bottom, other.bottom),
            std::max(right, other.right)};
}

std::optional<Area> parseArea(std::string_view text)
{
    const auto colon = text.find(':');
    const auto first = parseCorner(text.substr(0, colon));
    const auto last = colon == std::string_view::npos ? first : parseCorner(text.substr(colon + 1));
    if (!first || !last) return {};
    const bool hasRows = first->row && last->row;
    const bool hasColumns = first->column && last->column;
    if (!hasRows && !hasColumns) return {};
    if (colon == std::string_view::npos && !(hasRows && hasColumns)) return {};
    const Area area{hasRows ? *first->row : 0, hasColumns ? *first->column : 0,
                    hasRows ? *last->row : lastRow, hasColumns ? *last->column : lastColumn};
    return Area{std::min(area.top, area.bottom), std::min(area.left, area.right),
                std::max(area.top, area.bottom), std::max(area.left, area.right)};
}

std::string formatCell(std::uint32_t row, std::uint32_t column, bool isAbsolute)
{
    const std::string mark = isAbsolute ? "$" : "";
    std::string letters;
    for (auto left = column + 1; left > 0; left = (left - 1) / 26)
        letters.insert(letters.begin(), static_cast<char>('A' + (left - 1) % 26));
    return mark + letters + mark + std::to_string(row + 1);
}

std::string formatArea(const Area& area, bool isAbsolute)
{
    const auto first = formatCell(area.top, area.left, isAbsolute);
    const auto last = formatCell(area.bottom, area.right, isAbsolute);
    return first == last ? first : first + ":" + last;
}

std::string CellRange::getSheet() const
{
    auto name = prefix.substr(0, prefix.empty() ? 0 : prefix.size() - 1);
    if (!name.starts_with('\'')) return name;
    name = name.substr(1, name.size() - 2);
    for (std::size_t at = 0; (at = name.find("''", at)) != std::string::npos; ++at) name.erase(at, 1);
    return name;
}

std::size_t CellRange::getLength() const
{
    std::size_t length = 0;
    for (const auto& area : areas) length += isRow ? area.getWidth() : area.getHeight();
    return length;
}

std::size_t CellRange::getLineCount() const
{
    return isRow ? areas[0].getHeight() : areas[0].getWidth();
}

CellRange CellRange::resize(std::size_t length) const
{
    auto range = *this;
    range.areas.clear();
    auto left = static_cast<std::uint32_t>(std::max<std::size_t>(length, 1));
    for (const auto& area : areas) {
        auto& resized = range.areas.emplace_back(area);
        const bool isLast = range.areas.size() == areas.size();
        const auto size = isRow ? area.getWidth() : area.getHeight();
        const auto taken = isLast ? left : std::min(left, size);
        (isRow ? resized.right : resized.bottom) = (isRow ? area.left : area.top) + taken - 1;
        left -= taken;
        if (left == 0) break;
    }
    return range;
}

CellRange CellRange::keepLines(std::size_t count) const
{
    auto range = *this;
    auto& area = range.areas[0];
    const auto number = static_cast<std::uint32_t>(count);
    (isRow ? area.top : area.left) = (isRow ? area.bottom : area.right) + 1 - number;
    return range;
}

CellRange CellRange::shift(std::int64_t rows, std::int64_t columns) const
{
    auto range = *this;
    for (auto& area : range.areas)
        area = {move(area.top, rows), move(area.left, columns), move(area.bottom, rows),
                move(area.right, columns)};
    return range;
}

std::string CellRange::format() const
{
    std::string text;
    for (const auto& area : areas) text += (text.empty() ? "" : ",") + prefix + formatArea(area, true);
    return hasParentheses && areas.size() > 1 ? "(" + text + ")" : text;
}

std::optional<CellOffset> parseOffset(std::string_view formula)
{
    constexpr std::string_view start = "OFFSET(";
    if (!formula.starts_with(start) || !formula.ends_with(')')) return {};
    const auto arguments = splitList(formula.substr(start.size(), formula.size() - start.size() - 1));
    const auto rows = arguments.size() > 1 ? readSteps(arguments[1]) : std::nullopt;
    const auto columns = arguments.size() > 2 ? readSteps(arguments[2]) : std::nullopt;
    const bool isColumn = arguments.size() < 5 || arguments[4] == "1" || arguments[4].empty();
    if (!rows || !columns || !isColumn || arguments.size() > 5) return {};
    return CellOffset{arguments[0], *rows, *columns, arguments.size() > 3 && !arguments[3].empty()};
}

std::optional<CellRange> parseRange(std::string_view text)
{
    CellRange range;
    range.hasParentheses = text.starts_with('(') && text.ends_with(')');
    if (range.hasParentheses) text = text.substr(1, text.size() - 2);
    for (const auto part : splitList(text)) {
        const auto end = findPrefixEnd(part);
        const auto area = parseArea(part.substr(end));
        const auto prefix = part.substr(0, end);
        if (!area || prefix.empty() || (!range.prefix.empty() && prefix != range.prefix)) return {};
        range.prefix = prefix;
        range.areas.push_back(*area);
    }
    return range;
}

}  // namespace quillon::report
