#include "report/command/Groups.h"

#include <algorithm>
#include <map>
#include <unordered_map>

#include "report/command/ChartReader.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/ColumnReader.h"
#include "report/table/Fail.h"
#include "report/table/Sources.h"
#include "report/table/TableScan.h"

namespace quillon::report {
namespace {

using Kind = JsonNode::Kind;

/// A text as part of a file's name.
std::string makeFileText(std::string text)
{
    for (auto& c : text)
        if (c == '/' || c == '\\' || c == ':' || static_cast<unsigned char>(c) < 0x20 || c == 0x7F) c = '-';
    if (text.find_first_not_of(". ") == std::string::npos) std::fill(text.begin(), text.end(), '-');
    return text;
}

/// Replaces each name between `open` and `close` by what `find` gives for it, which may be null.
template <typename Find>
std::string replaceNames(const std::string& text, std::string_view open, std::string_view close,
                         const Find& find)
{
    std::string result;
    std::size_t at = 0;
    for (auto start = text.find(open); start != std::string::npos; start = text.find(open, at)) {
        const auto end = text.find(close, start + open.size());
        if (end == std::string::npos) break;
        const auto name = text.substr(start + open.size(), end - start - open.size());
        const std::string* found = find(name);
        const auto next = found == nullptr ? start + open.size() : end + close.size();
        result += text.substr(at, start - at);
        result += found == nullptr ? std::string(open) : *found;
        at = next;
    }
    return result + text.substr(at);
}

const std::string* findText(const NamedTexts& texts, const std::string& name)
{
    const auto found =
        std::find_if(texts.begin(), texts.end(), [&name](const auto& one) { return one.first == name; });
    return found == texts.end() ? nullptr : &found->second;
}

/// All columns of the table as text.
Table readTexts(const ChartJob& job, std::size_t& byColumn, const std::string& by)
{
    const Note ignore = [](const std::string&) {};
    const TableScan scan(openSource(job.table, job, nullptr), job, ignore);
    byColumn = scan.findColumn(by);
    std::vector<ColumnRequest> requests;
    for (std::size_t column = 0; column < scan.getNames().size(); ++column)
        requests.push_back({column, ColumnRole::Label});
    return readColumns(scan, requests, job, ignore);
}

/// The columns that have one text in all the rows.
NamedTexts findCommonTexts(const Table& table, const std::vector<std::size_t>& rows)
{
    NamedTexts texts;
    for (const auto& column : table.columns) {
        const auto first = column.texts.getIndex(rows.front());
        if (std::all_of(rows.begin(), rows.end(),
                        [&](std::size_t row) { return column.texts.getIndex(row) == first; }))
            texts.emplace_back(column.name, column.texts[rows.front()]);
    }
    return texts;
}

std::string makeOutput(const std::string& pattern, const Group& group)
{
    std::string made;
    return replaceNames(pattern, "{", "}", [&](const std::string& name) {
        const auto* text = findText(group.texts, name);
        std::vector<std::string> names;
        for (const auto& one : group.texts) names.push_back(one.first);
        if (text == nullptr)
            fail("\"for-each\", \"output\": {} is not a column with one text in each group{}",
                 quoteText("{" + name + "}"), suggestName(name, names));
        made = makeFileText(*text);
        return &made;
    });
}

void requireDifferent(const std::vector<Group>& groups)
{
    std::unordered_map<std::string, const Group*> outputs;
    for (const auto& group : groups) {
        const auto [other, isNew] = outputs.emplace(group.output, &group);
        if (!isNew)
            fail(
                "\"for-each\": the groups {} and {} would both be written to {}; name another column in "
                "\"output\".",
                quoteText(other->second->name), quoteText(group.name), quoteText(group.output, 200));
    }
}

/// Adds the condition to all that is made of the table.
void addCondition(JsonNode& node, const std::string& table, const std::string& condition)
{
    for (auto& item : node.items) addCondition(item, table, condition);
    for (auto& member : node.members) addCondition(member.value, table, condition);
    const auto* source = node.find("table");
    if (source == nullptr || !source->is(Kind::Text) || source->text != table) return;
    JsonNode text{.kind = Kind::Text, .text = condition};
    for (auto& member : node.members) {
        if (member.name != "where") continue;
        if (member.value.is(Kind::Text))
            member.value = {.kind = Kind::List, .position = member.value.position, .items = {member.value}};
        member.value.items.push_back(std::move(text));
        return;
    }
    node.members.push_back({"where", 0, {.kind = Kind::List, .items = {std::move(text)}}});
}

}  // namespace

std::vector<Group> readGroups(const JsonNode& forEach, const std::filesystem::path& folder)
{
    const auto job = readChartJob(forEach, folder);
    const auto& by = forEach.find("by")->text;
    std::size_t byColumn = 0;
    const auto table = readTexts(job, byColumn, by);
    const auto& column = table.columns[byColumn].texts;
    std::vector<std::vector<std::size_t>> rows(column.getTexts().size());
    for (std::size_t row = 0; row < table.rowCount; ++row) {
        if (column[row].empty())
            fail("{}: column {}: expected a text, the name of a group, got an empty cell.",
                 table.place.at(table.lines[row]), quoteText(by));
        rows[column.getIndex(row)].push_back(row);
    }
    std::vector<Group> groups;
    for (const auto& some : rows) {
        auto& group = groups.emplace_back(Group{column[some.front()], findCommonTexts(table, some), {}});
        group.output = (folder / makeOutput(forEach.find("output")->text, group)).string();
    }
    requireDifferent(groups);
    return groups;
}

JsonNode fillInTexts(JsonNode job, const NamedTexts& texts)
{
    job.text =
        replaceNames(job.text, "{{", "}}", [&](const std::string& name) { return findText(texts, name); });
    for (auto& item : job.items) item = fillInTexts(std::move(item), texts);
    for (auto& member : job.members) member.value = fillInTexts(std::move(member.value), texts);
    return job;
}

JsonNode makeGroupJob(const JsonNode& job, const Group& group)
{
    const auto& forEach = *job.find("for-each");
    auto made = job;
    std::erase_if(made.members, [](const auto& member) { return member.name == "for-each"; });
    addCondition(made, forEach.find("table")->text,
                 fmt::format("\"{}\"=\"{}\"", forEach.find("by")->text, group.name));
    return fillInTexts(std::move(made), group.texts);
}

}  // namespace quillon::report
