#include "report/table/Layout.h"

#include <algorithm>
#include <map>
#include <set>

#include "report/options/QuotedText.h"
#include "report/table/CellText.h"
#include "report/table/Fail.h"
#include "report/table/NumberText.h"

namespace quillon::report {
namespace {

constexpr std::size_t previewRows = 64;

struct PreviewRow {
    std::size_t line;
    std::vector<std::string> cells;

    const std::string& getCell(std::size_t column) const
    {
        static const std::string none;
        return column < cells.size() ? cells[column] : none;
    }
    std::size_t countFilled() const
    {
        return cells.size() - static_cast<std::size_t>(std::count(cells.begin(), cells.end(), ""));
    }
};
using Preview = std::vector<PreviewRow>;

Preview readPreview(RowSource& source)
{
    Preview preview;
    source.read([&preview](const Row& row) {
        if (isEmptyRow(row)) return true;
        PreviewRow copy{row.line, {}};
        for (const auto& cell : row.cells) copy.cells.push_back(writeCell(cell));
        preview.push_back(std::move(copy));
        return preview.size() < previewRows;
    });
    return preview;
}

/// The number of cells on which most rows agree, the larger of two that are as frequent, without the columns
/// at the end that are always empty.
std::size_t findWidth(const Preview& preview)
{
    std::map<std::size_t, std::size_t> counts;
    std::size_t width = 1;
    for (const auto& row : preview)
        if (row.cells.size() > 1) ++counts[row.cells.size()];
    for (const auto& row : preview)
        if (const auto size = row.cells.size(); size > 1)
            width = std::max(width, size, [&](auto a, auto b) {
                return std::pair(counts[a], a) < std::pair(counts[b], b);
            });
    const auto isFilled = [&](const PreviewRow& row) { return !row.getCell(width - 1).empty(); };
    while (width > 1 && std::none_of(preview.begin(), preview.end(), isFilled)) --width;
    return width;
}

bool isNumber(const std::string& text)
{
    return readNumber(text, {'.'}).has_value() || readNumber(text, {','}).has_value();
}

/// Years name columns, though they are numbers.
bool isYear(const std::string& text)
{
    const auto number = readNumber(text, {'.', ""});
    return text.size() == 4 && number && *number >= 1800 && *number <= 2200;
}

/// The columns on the left that are empty from the row `top` on: the table begins beside them.
std::size_t countEmptyColumns(const Preview& preview, std::size_t top)
{
    std::size_t count = preview[top].cells.size();
    for (std::size_t row = top; row < preview.size(); ++row)
        for (std::size_t i = 0; i < count; ++i)
            if (!preview[row].getCell(i).empty()) count = i;
    return count;
}

/// Whether the row `top` has a name in each column but the first one of the table.
bool namesColumns(const Preview& preview, std::size_t top, std::size_t width)
{
    const auto& row = preview[top];
    if (row.cells.size() < width) return false;
    const auto first = countEmptyColumns(preview, top);
    if (first > 0 && (first + 1 >= width || top + 1 == preview.size())) return false;
    for (std::size_t i = first + 1; i < width; ++i) {
        const auto& text = row.getCell(i);
        if (text.empty() || (isNumber(text) && !isYear(text))) return false;
    }
    return true;
}

bool isTitle(const PreviewRow& row, std::size_t width)
{
    return width > 1 && (row.countFilled() == 1 || row.countFilled() <= width / 2);
}

/// The position of the header: below a title, where it is clear, otherwise the first row.
std::size_t findHeader(const Preview& preview, std::size_t width)
{
    for (std::size_t i = 0; i < preview.size(); ++i) {
        if (namesColumns(preview, i, width)) return i;
        if (!isTitle(preview[i], width)) break;
    }
    return 0;
}

bool countsUp(const PreviewRow& row, std::size_t width)
{
    for (std::size_t i = 2; i < width; ++i)
        if (readNumber(row.getCell(i), {'.', ""}) !=
            readNumber(row.getCell(i - 1), {'.', ""}).value_or(0) + 1)
            return false;
    return width > 3;
}

/// Whether numbers stand where names are expected: neither years nor 1, 2, 3 ...
bool holdsData(const PreviewRow& row, std::size_t width)
{
    bool allYears = true;
    for (std::size_t i = 1; i < width; ++i) {
        if (!isNumber(row.getCell(i))) return false;
        allYears = allYears && isYear(row.getCell(i));
    }
    return width > 1 && !allYears && !countsUp(row, width);
}

std::vector<std::string> numberColumns(std::size_t width)
{
    std::vector<std::string> names;
    for (std::size_t i = 1; i <= width; ++i) names.push_back(fmt::format("Column {}", i));
    return names;
}

/// A name that comes again gets a number behind it.
void numberRepeated(std::vector<std::string>& names, const std::string& place, const Note& note)
{
    std::set<std::string> seen;
    const std::set<std::string> all(names.begin(), names.end());
    for (auto& name : names) {
        if (name.empty() || seen.insert(name).second) continue;
        std::string numbered;
        for (std::size_t number = 2;
             numbered.empty() || all.contains(numbered) || !seen.insert(numbered).second; ++number)
            numbered = fmt::format("{} {}", name, number);
        note(fmt::format("{}: two columns are named {}; the later one is read as {}.", place, quoteText(name),
                         quoteText(numbered)));
        name = numbered;
    }
}

/// The cells of the header; one short where the first column, of row names, has none.
std::vector<std::string> readNames(const Preview& preview, std::size_t header, std::size_t width)
{
    auto names = preview[header].cells;
    const bool isShort = names.size() + 1 == width && preview.size() > header + 2 &&
                         std::all_of(preview.begin() + static_cast<std::ptrdiff_t>(header) + 1, preview.end(),
                                     [&](const PreviewRow& row) { return row.cells.size() == width; });
    if (isShort) names.insert(names.begin(), "");
    while (names.size() > width && names.back().empty()) names.pop_back();
    return names;
}

}  // namespace

bool isEmptyRow(const Row& row)
{
    return std::all_of(row.cells.begin(), row.cells.end(), [](const Cell& cell) { return cell.isEmpty(); });
}

void noteLeftOut(const SourcePlace& place, std::size_t first, std::size_t last, const char* side,
                 const Note& note)
{
    const auto* unit = place.getUnit();
    if (first == last)
        note(fmt::format("{}: {} {} stands {} the table and is left out.", place.name, unit, first, side));
    else
        note(fmt::format("{}: {}s {} to {} stand {} the table and are left out.", place.name, unit, first,
                         last, side));
}

std::string describeSkip(const TableOptions& options)
{
    return options.skip == 0 ? std::string() : fmt::format(" behind --skip {}", options.skip);
}

Layout findLayout(RowSource& source, const TableOptions& options, const Note& note)
{
    const auto& place = source.getPlace();
    const auto preview = readPreview(source);
    if (preview.empty())
        fail("{}: the table is empty{}; expected a header row and rows of data{}.", place.name,
             describeSkip(options), place.hint);
    const auto width = findWidth(preview);
    if (options.noHeader) return {numberColumns(width), 0, 0};
    const bool isSearched = !source.namesColumns() && options.skip == 0;
    const auto header = isSearched ? findHeader(preview, width) : 0;
    if (!source.namesColumns() && holdsData(preview[header], width)) {
        note(fmt::format(
            "{}: the first row holds numbers, so that the columns are named \"Column 1\" and so on; "
            "--no-header says that this is right.",
            place.at(preview[header].line)));
        return {numberColumns(width), 0, header};
    }
    if (header > 0) noteLeftOut(place, preview.front().line, preview[header - 1].line, "above", note);
    auto names = readNames(preview, header, width);
    const auto line = preview[header].line;
    numberRepeated(names, place.at(line), note);
    return {std::move(names), line, header + 1};
}

}  // namespace quillon::report
