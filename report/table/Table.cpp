#include "report/table/Table.h"

#include <csv.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstring>
#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string_view>

#include "report/table/Fail.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

struct Delimiter {
    const char* name;
    char character;
};
constexpr std::array delimiters = {Delimiter{"comma", ','}, Delimiter{"semicolon", ';'},
                                   Delimiter{"tab", '\t'}};

/// A cell's text as it stands in a message.
std::string shorten(std::string_view text)
{
    constexpr std::size_t longest = 40;
    if (text.size() <= longest) return std::string(text);
    auto end = longest;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0U) == 0x80U) --end;
    return std::string(text.substr(0, end)) + "...";
}

std::string readFile(const std::string& path)
{
    struct stat status {};
    if (stat(path.c_str(), &status) != 0) fail("Cannot read \"{}\": {}.", path, std::strerror(errno));
    if (S_ISDIR(status.st_mode)) fail("Cannot read \"{}\": it is a folder.", path);
    std::ifstream file(path, std::ios::binary);
    std::ostringstream content;
    content << file.rdbuf();
    if (!file)
        fail("Cannot read \"{}\": {}.", path,
             file.is_open() ? "it is empty or cannot be read" : std::strerror(errno));
    return content.str();
}

void requireText(const std::string& path, const std::string& bytes)
{
    if (bytes.starts_with("\xFF\xFE") || bytes.starts_with("\xFE\xFF"))
        fail("{}: the file is in UTF-16; save it as UTF-8.", path);
    if (const auto at = bytes.find('\0'); at != std::string::npos)
        fail("{}:{}: the file holds a zero byte; expected text in UTF-8.", path,
             1 + std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
}

char detectDelimiter(std::string_view bytes)
{
    std::array<std::size_t, delimiters.size()> counts{};
    bool quoted = false;
    bytes.remove_prefix(std::min(bytes.find_first_not_of("\r\n"), bytes.size()));
    for (const char c : bytes) {
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        if (c == '\n' || c == '\r') break;
        for (std::size_t i = 0; i < delimiters.size(); ++i)
            if (c == delimiters[i].character) ++counts[i];
    }
    const auto best = std::max_element(counts.begin(), counts.end());
    return delimiters[static_cast<std::size_t>(best - counts.begin())].character;
}

char chooseDelimiter(const std::string& name, std::string_view bytes)
{
    if (name.empty()) return detectDelimiter(bytes);
    for (const auto& delimiter : delimiters)
        if (name == delimiter.name) return delimiter.character;
    fail("Delimiter \"{}\": expected comma, semicolon or tab.", name);
}

/// Collects the rows while the parser runs, and keeps count of the lines.
class RowCollector {
 public:
    void addField(const char* bytes, std::size_t size)
    {
        if (row_.cells.empty()) row_.line = line_;
        row_.cells.emplace_back(bytes, size);
        line_ += static_cast<std::size_t>(std::count(bytes, bytes + size, '\n'));
        afterReturn_ = false;
    }

    void endLine(int terminator)
    {
        if (!row_.cells.empty()) rows.push_back(std::move(row_));
        row_ = {};
        const bool secondHalf = terminator == '\n' && afterReturn_;
        if (!secondHalf) ++line_;
        afterReturn_ = terminator == '\r';
    }

    std::size_t getLine() const { return line_; }

    std::vector<Table::Row> rows;

 private:
    Table::Row row_{};
    std::size_t line_ = 1;
    bool afterReturn_ = false;
};

std::vector<Table::Row> parseRows(const std::string& path, std::string_view bytes, char delimiter)
{
    csv_parser parser;
    if (csv_init(&parser, CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL) != 0) throw std::bad_alloc();
    csv_set_delim(&parser, static_cast<unsigned char>(delimiter));
    RowCollector collector;
    const auto onField = [](void* field, std::size_t size, void* self) {
        static_cast<RowCollector*>(self)->addField(static_cast<const char*>(field), size);
    };
    const auto onRow = [](int terminator, void* self) {
        static_cast<RowCollector*>(self)->endLine(terminator);
    };
    const bool parsed =
        csv_parse(&parser, bytes.data(), bytes.size(), onField, onRow, &collector) == bytes.size() &&
        csv_fini(&parser, onField, onRow, &collector) == 0;
    const int error = csv_error(&parser);
    csv_free(&parser);
    if (!parsed && error == CSV_ENOMEM) throw std::bad_alloc();
    if (!parsed)
        fail(
            "{}:{}: a quote is not closed, or stands inside a field; quote the whole field and double each "
            "quote in it.",
            path, collector.getLine());
    return std::move(collector.rows);
}

void requireUtf8(const std::string& path, const std::vector<Table::Row>& rows)
{
    for (const auto& row : rows)
        for (std::size_t i = 0; i < row.cells.size(); ++i) try {
                toUtf16(row.cells[i]);
            } catch (const std::runtime_error&) {
                fail("{}:{}: field {} is not in UTF-8; save the file as UTF-8.", path, row.line, i + 1);
            }
}

void requireColumns(const Table& table, std::size_t headerLine)
{
    std::set<std::string> seen;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        if (table.columns[i].empty()) fail("{}:{}: column {} has no name.", table.path, headerLine, i + 1);
        if (!seen.insert(table.columns[i]).second)
            fail("{}:{}: two columns are named \"{}\"; each needs a name of its own.", table.path, headerLine,
                 shorten(table.columns[i]));
    }
    for (const auto& row : table.rows)
        if (row.cells.size() != table.columns.size())
            fail("{}:{}: expected {} fields, as in the header row, got {}.", table.path, row.line,
                 table.columns.size(), row.cells.size());
}

}  // namespace

std::size_t Table::findColumn(const std::string& name) const
{
    const auto found = std::find(columns.begin(), columns.end(), name);
    if (found != columns.end()) return static_cast<std::size_t>(found - columns.begin());
    std::string known;
    for (const auto& column : columns) known += (known.empty() ? "\"" : ", \"") + shorten(column) + "\"";
    fail("{}: there is no column \"{}\"; the columns are {}.", path, shorten(name), known);
}

std::optional<double> Table::readNumber(const std::string& cell)
{
    const bool hasPlus = cell.starts_with('+') && !cell.starts_with("+-");
    const std::string_view digits = std::string_view(cell).substr(hasPlus ? 1 : 0);
    double number = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size() || !std::isfinite(number))
        return std::nullopt;
    return number;
}

void Table::refuseCell(const Row& row, std::size_t column, const std::string& expected) const
{
    const auto& cell = row.cells[column];
    fail("{}:{}: column \"{}\": expected {}, got {}.", path, row.line, shorten(columns[column]), expected,
         cell.empty() ? "an empty cell" : "\"" + shorten(cell) + "\"");
}

Table readTable(const std::string& path, const std::string& delimiter)
{
    const std::string bytes = readFile(path);
    requireText(path, bytes);
    std::string_view text = bytes;
    if (text.starts_with(byteOrderMark)) text.remove_prefix(byteOrderMark.size());
    auto rows = parseRows(path, text, chooseDelimiter(delimiter, text));
    requireUtf8(path, rows);
    if (rows.empty()) fail("{}: the table is empty; expected a header row and rows of data.", path);
    const auto headerLine = rows.front().line;
    Table table{path, std::move(rows.front().cells), {}};
    table.rows.assign(std::make_move_iterator(rows.begin() + 1), std::make_move_iterator(rows.end()));
    requireColumns(table, headerLine);
    if (table.rows.empty()) fail("{}: the table has a header row and no rows of data.", path);
    return table;
}

}  // namespace quillon::report
