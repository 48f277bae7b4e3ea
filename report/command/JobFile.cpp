#include "report/command/JobFile.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>

#include "report/options/Options.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

using Json = nlohmann::json;

Json parseFile(const std::string& path)
{
    std::ifstream file(path);
    if (!file || std::filesystem::is_directory(path))
        fail("Cannot read \"{}\": {}.", path, file ? "it is a folder" : std::strerror(errno));
    try {
        return Json::parse(file);
    } catch (const Json::parse_error& error) {
        const std::string sentence = error.what();  // "[the library's name of the error] what is wrong"
        fail("{}: not well-formed JSON: {}.", path, sentence.substr(sentence.find("] ") + 2));
    }
}

/// Stores a member's value where the option says, or throws with what was expected.
struct Store {
    ChartJob& job;
    const Json& value;
    const std::string& place;

    void operator()(std::string ChartJob::*member) const
    {
        if (!value.is_string()) fail("{}: expected a text.", place);
        job.*member = value.get<std::string>();
    }
    void operator()(std::vector<std::string> ChartJob::*member) const
    {
        if (value.is_string()) return (job.*member).push_back(value.get<std::string>());
        if (!value.is_array()) fail("{}: expected a list of texts.", place);
        for (const auto& item : value) {
            if (!item.is_string()) fail("{}: expected a list of texts.", place);
            (job.*member).push_back(item.get<std::string>());
        }
    }
    void operator()(std::size_t ChartJob::*member) const
    {
        if (!value.is_number_unsigned()) fail("{}: expected a whole number, 0 or more.", place);
        job.*member = value.get<std::size_t>();
    }
    void operator()(bool ChartJob::*member) const
    {
        if (!value.is_boolean()) fail("{}: expected true or false.", place);
        job.*member = value.get<bool>();
    }
};

/// What a JSON value says, as an option has it; nothing for a value that no option has.
OptionValue readValue(const Json& value)
{
    if (value.is_boolean()) return value.get<bool>();
    if (value.is_number()) return value.get<double>();
    if (value.is_string()) return value.get<std::string>();
    if (value.is_array() &&
        std::all_of(value.begin(), value.end(), [](const auto& v) { return v.is_string(); }))
        return value.get<std::vector<std::string>>();
    if (!value.is_object()) return {};
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const auto& [name, text] : value.items()) {
        if (!text.is_string()) return {};
        pairs.emplace_back(name, text.get<std::string>());
    }
    return pairs;
}

const JobOption& findJobOption(const std::string& name, const std::string& place)
{
    std::string known = "table";
    for (const auto& option : getJobOptions()) {
        if (name == option.name) return option;
        known += std::string(", ") + option.name;
    }
    for (const auto& option : getOptions()) known += std::string(", ") + option.name;
    fail("{}: unknown member; the members are {}.", place, known);
}

ChartJob readChart(const Json& chart, const std::string& place, const std::filesystem::path& folder)
{
    if (!chart.is_object()) fail("{}: expected an object.", place);
    ChartJob job;
    for (const auto& [name, value] : chart.items()) {
        const auto memberPlace = fmt::format(R"({}, "{}")", place, name);
        const Store store{job, value, memberPlace};
        if (name == "table")
            store(&ChartJob::table);
        else if (const auto* option = findOption(name))
            setOption(job.options, *option, readValue(value), memberPlace);
        else
            std::visit(store, findJobOption(name, memberPlace).member);
    }
    if (job.table.empty()) fail("{}: expected a member \"table\", the path of a CSV file.", place);
    job.table = (folder / job.table).string();
    return job;
}

}  // namespace

std::vector<ChartJob> readJobFile(const std::string& path)
{
    const auto file = parseFile(path);
    if (!file.is_object() || file.size() != 1 || !file.contains("charts") || !file["charts"].is_array())
        fail("{}: expected an object with the one member \"charts\", a list.", path);
    std::vector<ChartJob> jobs;
    for (const auto& chart : file["charts"])
        jobs.push_back(readChart(chart, fmt::format("{}: chart {}", path, jobs.size() + 1),
                                 std::filesystem::path(path).parent_path()));
    if (jobs.empty()) fail("{}: the list of charts is empty.", path);
    return jobs;
}

}  // namespace quillon::report
