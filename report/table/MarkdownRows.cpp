#include "report/table/MarkdownRows.h"

#include <algorithm>
#include <vector>

#include "report/table/Fail.h"
#include "report/table/Limits.h"
#include "report/table/StoredRows.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

/// A row of the table, which begins with a bar.
bool isRow(std::string_view line)
{
    return trim(line).starts_with('|');
}

/// The line below the names: "|---|---:|".
bool isRule(std::string_view line)
{
    return isRow(line) && line.find('-') != std::string_view::npos &&
           line.find_first_not_of("|-: \t") == std::string_view::npos;
}

/// Takes the first line off the text.
std::string_view takeLine(std::string_view& text)
{
    const auto end = std::min(text.find('\n'), text.size());
    auto line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r')) line.remove_suffix(1);
    return line;
}

std::string_view peekLine(std::string_view text)
{
    return takeLine(text);
}

/// The cells between the bars of a row.
std::vector<std::string> readCells(std::string_view line)
{
    line = trim(line).substr(1);
    std::vector<std::string> cells(1);
    for (std::size_t at = 0; at < line.size(); ++at) {
        if (line[at] == '\\' && at + 1 < line.size() && (line[at + 1] == '|' || line[at + 1] == '\\'))
            cells.back() += line[++at];
        else if (line.substr(at).starts_with("<br>"))
            cells.back() += '\n', at += 3;
        else if (line[at] == '|')
            cells.emplace_back();
        else
            cells.back() += line[at];
    }
    // The last bar ends the row.
    if (trim(cells.back()).empty()) cells.pop_back();
    for (auto& cell : cells) cell = std::string(trim(cell));
    return cells;
}

/// The text from the line of names on, and how many lines stand before it.
std::size_t skipToTable(std::string_view& text, const std::string& name)
{
    for (std::size_t lines = 0; !text.empty(); ++lines) {
        auto rest = text;
        const bool isNames = isRow(takeLine(rest));
        if (isNames && isRule(peekLine(rest))) return lines;
        text = rest;
    }
    fail("{}: expected a table in Markdown, a line of names between bars and a line of dashes below it.",
         name);
}

}  // namespace

bool isMarkdown(const std::string& path, std::string_view start)
{
    if (path.ends_with(".md") || path.ends_with(".markdown")) return true;
    if (start.starts_with(byteOrderMark)) start.remove_prefix(byteOrderMark.size());
    return isRow(takeLine(start)) && isRule(takeLine(start));
}

std::unique_ptr<RowSource> readMarkdownRows(InputFile& file)
{
    const auto whole = file.readAll(limits::wholeFile);
    std::string_view text = whole;
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    auto line = skipToTable(text, file.getName()) + 1;
    auto stored = std::make_unique<StoredRows>(SourcePlace{file.getName()}, true, '.', 0);
    stored->addNames(readCells(takeLine(text)));
    takeLine(text);
    for (line += 2; isRow(peekLine(text)); ++line) {
        const auto texts = readCells(takeLine(text));
        std::vector<Cell> cells;
        cells.reserve(texts.size());
        for (const auto& cell : texts) cells.push_back({cell});
        stored->add(line, cells);
    }
    return stored;
}

}  // namespace quillon::report
