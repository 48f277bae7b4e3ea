#include <fmt/format.h>
#include <fmt/ranges.h>

#include <cmath>
#include <filesystem>
#include <nlohmann/json.hpp>
#include <type_traits>

#include "report/command/ChartMaker.h"
#include "report/command/Messages.h"
#include "report/command/Output.h"
#include "report/command/TableArguments.h"
#include "report/command/Verbs.h"
#include "report/options/Options.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Json = nlohmann::ordered_json;

/// The path of the table as the job file has to name it.
std::string findRelativePath(const std::string& table, const std::string& job)
{
    if (table == "-" || job.empty() || job == "-") return table;
    const auto folder = std::filesystem::absolute(job).parent_path();
    return std::filesystem::absolute(table).lexically_relative(folder.lexically_normal()).string();
}

Json toJson(const OptionValue& value)
{
    if (const auto* pairs = std::get_if<std::vector<std::pair<std::string, std::string>>>(&value)) {
        auto object = Json::object();
        for (const auto& [name, text] : *pairs) object[name] = text;
        return object;
    }
    return std::visit(
        [](const auto& held) -> Json {
            if constexpr (std::is_constructible_v<Json, decltype(held)>)
                return held;
            else
                return nullptr;
        },
        value);
}

bool hasGaps(const ChartData& data)
{
    for (std::size_t i = 0; i < data.dataSet->getSeriesCount(); ++i)
        for (const auto& point : data.dataSet->getSeries(i)->getPoints())
            if (std::isnan(point->getValue())) return true;
    return false;
}

/// Whether the series of the data are columns of the table.
bool showsColumns(const ChartJob& job)
{
    return job.series.empty() && !job.transpose && job.aggregate != "count";
}

Json listSeries(const ChartData& data)
{
    constexpr std::size_t most = 3;
    auto names = Json::array();
    for (std::size_t i = 0; i < data.dataSet->getSeriesCount() && i < most; ++i)
        names.push_back(toUtf8(data.dataSet->getSeries(i)->getName()));
    return names;
}

/// The members that name the table and say how it is read, for a chart and for a table.
Json describeTable(const ChartJob& job, const std::string& path, const ChartData& data)
{
    Json members = {{"table", path}};
    for (const auto& option : tableOptions)
        std::visit(
            [&](auto member) {
                if (job.*member != TableOptions().*member) members[option.name] = job.*member;
            },
            option.member);
    if (hasGaps(data)) members["gaps"] = true;
    if (job.columns.empty() && showsColumns(job)) members["columns"] = listSeries(data);
    return members;
}

/// Numbers over dates are lines, everything else columns, unless the author says more.
Json describeChart(const ChartJob& job, const Json& table, const std::string& title, const ChartData& data)
{
    auto members = table;
    members["type"] = data.categoryKind == CategoryKind::Date ? "line" : "column";
    members["title"] = job.title.empty() ? title : job.title;
    members["legend"] = "bottom";
    for (const auto& option : getOptions())
        if (option.get(job.options) != option.get({})) members[option.name] = toJson(option.get(job.options));
    return members;
}

std::string write(const Json& value)
{
    return value.dump(-1, ' ', false, Json::error_handler_t::replace);
}

/// A member on each line.
std::string writeLines(const Json& object, const std::string& indent)
{
    std::string lines;
    std::string comment;
    for (const auto& [name, value] : object.items()) {
        if (!lines.empty()) lines.append(",").append(comment).append("\n");
        lines.append(indent).append(write(name)).append(": ").append(write(value));
        comment = name == "type" ? fmt::format(" // {}", fmt::join(findOption("type")->choices, "|")) : "";
    }
    return lines;
}

std::string makeExample(const ChartJob& job, const std::string& path, const ChartData& data)
{
    const auto title = path == "-" ? "Report" : std::filesystem::path(path).stem().string();
    const auto table = describeTable(job, path, data);
    return fmt::format(
        R"text({{
  // Run it:  quillon-report --job FILE -o report.docx
  // All members, and their values, are in docs/report.md; docs/job.schema.json lets editors complete them.
  "properties": {{"title": {title}}},
  "footer": "Page {{page}} of {{pages}}",
  "blocks": [
    {{"paragraph": {title}, "style": "Title"}},
    {{"heading": "Overview"}},
    {{"paragraph": ["Text may be ", {{"text": "bold", "bold": true}}, ", and lead to ", {{"reference": "overview"}}, "."]}},
    {{"chart": {{
{chart}
    }}}},
    {{"caption": "What the table shows", "name": "overview"}},
    {{"table": {table}}}
  ]
}}
)text",
        fmt::arg("title", write(title)),
        fmt::arg("chart", writeLines(describeChart(job, table, title, data), "      ")),
        fmt::arg("table", write(table)));
}

}  // namespace

void writeExampleJob(const CommandLine& commandLine)
{
    const auto jobs = readTables(commandLine);
    if (jobs.size() != 1) throw UsageError("Expected one TABLE to write an example for.");
    const Output output{commandLine.get("output"), commandLine.has("force")};
    auto job = jobs.front();
    job.gaps = true;
    const auto data = readData(job, {nullptr, warn});
    job.gaps = jobs.front().gaps;
    const auto example = makeExample(job, findRelativePath(job.table, output.path), data);
    output.requireOther(job.table);
    output.requireNew();
    if (output.path.empty() || output.isStandard())
        fmt::print("{}", example);
    else
        output.writePlain(example);
}

}  // namespace quillon::report
