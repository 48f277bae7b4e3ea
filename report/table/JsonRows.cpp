#include "report/table/JsonRows.h"

#include <nlohmann/json.hpp>
#include <unordered_map>

#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "report/table/Limits.h"

namespace quillon::report {
namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view blanks = " \t\r\n";
constexpr auto expected = "expected rows as objects, as in [{\"month\": \"May\", \"sales\": 3}]";

/// What the library says, without its names for error and place.
std::string describe(const std::exception& error)
{
    std::string_view sentence = error.what();
    sentence.remove_prefix(std::min(sentence.find("] ") + 2, sentence.size()));
    if (sentence.starts_with("parse error at line"))
        sentence.remove_prefix(std::min(sentence.find(": ") + 2, sentence.size()));
    return quoteText(sentence, 200);
}

/// A row and where it stands.
struct JsonRow {
    std::size_t line;
    Json object;
};

class JsonReader {
 public:
    JsonReader(const Place& place, std::string_view text) : place_(place), text_(text) {}

    std::vector<JsonRow> read()
    {
        const auto start = std::min(text_.find_first_not_of(blanks), text_.size());
        if (start == text_.size()) fail("{}: the file is empty; {}.", place_.name, expected);
        if (startsWithRow(start)) return readLines();
        return readList(parse(text_, 1));
    }

    bool countsLines() const { return countsLines_; }

 private:
    Json parse(std::string_view text, std::size_t line) const
    {
        try {
            return Json::parse(text);
        } catch (const Json::parse_error& error) {
            const auto before = text.substr(0, std::min(error.byte, text.size()));
            const auto newlines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
            fail("{}:{}: not well-formed JSON at character {} of the line: {}.", place_.name, line + newlines,
                 before.size() - (before.rfind('\n') + 1), describe(error));
        } catch (const Json::exception& error) {
            fail("{}:{}: not well-formed JSON: {}.", place_.name, line, describe(error));
        }
    }

    /// Whether the first line is a row by itself, and no object around all rows.
    bool startsWithRow(std::size_t start) const
    {
        const auto lineEnd = std::min(text_.find('\n', start), text_.size());
        const auto line = text_.substr(start, lineEnd - start);
        const bool isOnly = text_.find_first_not_of(blanks, lineEnd) == std::string_view::npos;
        return text_[start] == '{' && Json::accept(line) && !(isOnly && countLists(parse(line, 1)) == 1);
    }

    static std::ptrdiff_t countLists(const Json& object)
    {
        return std::count_if(object.begin(), object.end(), [](const Json& one) { return one.is_array(); });
    }

    std::vector<JsonRow> readLines()
    {
        countsLines_ = true;
        std::vector<JsonRow> rows;
        std::size_t line = 0;
        for (std::size_t at = 0; at < text_.size();) {
            const auto end = std::min(text_.find('\n', at), text_.size());
            const auto text = text_.substr(at, end - at);
            at = end + 1;
            ++line;
            if (text.find_first_not_of(blanks) == std::string_view::npos) continue;
            rows.push_back({line, parse(text, line)});
            if (!rows.back().object.is_object()) fail("{}:{}: {}.", place_.name, line, expected);
        }
        return rows;
    }

    std::vector<JsonRow> readList(Json value) const
    {
        // An object around the list, as services answer with.
        if (value.is_object()) {
            const auto lists = countLists(value);
            if (lists != 1) fail("{}: {}; the file has {} lists.", place_.name, expected, lists);
            const auto list =
                std::find_if(value.begin(), value.end(), [](const Json& one) { return one.is_array(); });
            value = Json(std::move(*list));
        }
        if (!value.is_array()) fail("{}: {}.", place_.name, expected);
        std::vector<JsonRow> rows;
        for (auto& row : value) {
            if (!row.is_object()) fail("{}, row {}: {}.", place_.name, rows.size() + 1, expected);
            rows.push_back({rows.size() + 1, std::move(row)});
        }
        return rows;
    }

    const Place& place_;
    std::string_view text_;
    bool countsLines_ = false;
};

/// The members of all rows, in the order in which they first come.
class Members {
 public:
    std::size_t find(const std::string& name)
    {
        const auto [found, isNew] = positions_.try_emplace(name, names.size());
        if (isNew) names.push_back(name);
        return found->second;
    }

    std::vector<std::string> names;

 private:
    std::unordered_map<std::string, std::size_t> positions_;
};

Cell readCell(const Json& value, const std::string& place, const std::string& member)
{
    if (value.is_number()) return {{}, CellKind::Number, value.get<double>()};
    if (value.is_boolean()) return {value.get<bool>() ? "true" : "false"};
    if (value.is_null()) return {};
    if (!value.is_string())
        fail("{}: column {}: expected a number, a text or null, got {}.", place, quoteText(member),
             value.is_array() ? "a list" : "an object");
    return {value.get_ref<const std::string&>()};
}

}  // namespace

std::unique_ptr<RowSource> readJsonRows(InputFile& file)
{
    const auto text = file.readAll(limits::wholeFile);
    constexpr std::string_view mark = "\xEF\xBB\xBF";
    const auto start = text.starts_with(mark) ? mark.size() : 0;
    Place place{file.getName()};
    JsonReader reader(place, std::string_view(text).substr(start));
    const auto rows = reader.read();
    place.countsLines = reader.countsLines();
    Members members;
    for (const auto& row : rows)
        for (const auto& item : row.object.items()) members.find(item.key());
    auto stored = std::make_unique<StoredRows>(place, true, '.', 0);
    stored->addNames(members.names);
    std::vector<Cell> cells;
    for (const auto& row : rows) {
        cells.assign(members.names.size(), {});
        for (const auto& item : row.object.items())
            cells[members.find(item.key())] = readCell(item.value(), place.at(row.line), item.key());
        stored->add(row.line, cells);
    }
    return stored;
}

}  // namespace quillon::report
