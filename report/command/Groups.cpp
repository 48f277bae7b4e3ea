#include "report/command/Groups.h"

#include <algorithm>
#include <unordered_map>

#include "report/command/ChartReader.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "report/table/RowFilter.h"

namespace quillon::report {
namespace {

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
    for (std::size_t end = 0; (end = text.find(close, at)) != std::string::npos; at = end + close.size()) {
        // The last opening before: a name holds none.
        const auto before = std::string_view(text).substr(at, end - at);
        const auto start = before.rfind(open);
        const std::string* found = nullptr;
        if (start != std::string_view::npos) found = find(std::string(before.substr(start + open.size())));
        result += found == nullptr ? before : before.substr(0, start);
        result += found == nullptr ? close : *found;
    }
    return result + text.substr(at);
}

const std::string* findText(const NamedTexts& texts, const std::string& name)
{
    const auto found =
        std::find_if(texts.begin(), texts.end(), [&name](const auto& one) { return one.first == name; });
    return found == texts.end() ? nullptr : &found->second;
}

std::string makeOutput(const std::string& pattern, const Group& group)
{
    std::string made;
    return replaceNames(pattern, "{", "}", [&](const std::string& name) {
        const auto* text = findText(group.texts, name);
        std::vector<std::string> names;
        for (const auto& one : group.texts) names.push_back(one.first);
        if (text == nullptr)
            fail("\"output\": {} is not a column with one text in each group{}", quoteText("{" + name + "}"),
                 suggestName(name, names));
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
                "\"output\": the groups {} and {} would both be written to {}; name another column in "
                "it.",
                quoteText(other->second->name), quoteText(group.name), quoteText(group.output, 200));
    }
}

/// Adds the names that are left in a value and in all that it holds.
void collectUnfilled(const JsonNode& node, std::vector<Unfilled>& unfilled)
{
    replaceNames(node.text, "{{", "}}", [&](const std::string& name) -> const std::string* {
        const bool isNew = std::ranges::find(unfilled, name, &Unfilled::name) == unfilled.end();
        if (isNew && !name.empty()) unfilled.push_back({name, node.position});
        return nullptr;
    });
    for (const auto& item : node.items) collectUnfilled(item, unfilled);
    for (const auto& member : node.members)
        if (member.name != "texts") collectUnfilled(member.value, unfilled);
}

using TextsByName = std::unordered_map<std::string, const std::string*>;

void fillIn(JsonNode& node, const TextsByName& texts)
{
    node.text = replaceNames(node.text, "{{", "}}", [&texts](const std::string& name) {
        const auto found = texts.find(name);
        return found == texts.end() ? nullptr : found->second;
    });
    for (auto& item : node.items) fillIn(item, texts);
    for (auto& member : node.members) fillIn(member.value, texts);
}

}  // namespace

std::vector<Group> readGroups(const JsonNode& forEach, const JobPlace& place, const Note& note)
{
    const auto source = std::make_shared<const ChartJob>(readChartJob(forEach, place));
    const auto& by = *forEach.find("by");
    const auto& output = *forEach.find("output");
    std::vector<Group> groups;
    requireDone(by.position, *place.source, [&] {
        for (auto& rows : readRowGroups(source->table, *source, by.text, note))
            groups.push_back({std::move(rows), source, by.text, {}});
    });
    requireDone(output.position, *place.source, [&] {
        for (auto& group : groups) group.output = (place.folder / makeOutput(output.text, group)).string();
        requireDifferent(groups);
    });
    return groups;
}

void showGroup(ChartJob& job, const Group& group)
{
    const auto normalise = [](const ChartJob& one) {
        return std::filesystem::path(one.table).lexically_normal();
    };
    if (normalise(job) != normalise(*group.source)) return;
    job.groupedBy = group.by;
    if (group.rows && haveSameSource(job, *group.source))
        job.rows = group.rows;
    else
        job.where.push_back(makeCondition(group.by, group.name));
}

JsonNode fillInTexts(JsonNode job, const NamedTexts& texts)
{
    TextsByName byName;
    for (const auto& [name, text] : texts) byName.emplace(name, &text);
    fillIn(job, byName);
    return job;
}

JsonNode makeGroupJob(const JsonNode& job, const Group& group)
{
    auto made = job;
    std::erase_if(made.members, [](const auto& member) { return member.name == "for-each"; });
    return fillInTexts(std::move(made), group.texts);
}

std::vector<Unfilled> findUnfilled(const JsonNode& job)
{
    std::vector<Unfilled> unfilled;
    collectUnfilled(job, unfilled);
    return unfilled;
}

}  // namespace quillon::report
