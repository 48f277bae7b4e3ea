#include <fmt/format.h>
#include <fmt/ranges.h>

#include <filesystem>
#include <nlohmann/json.hpp>

#include "report/command/ChartMaker.h"
#include "report/command/Output.h"
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

/// One column of numbers over dates is a line, everything else columns.
const char* chooseType(const ChartData& data)
{
    return data.categoryKind == CategoryKind::Date ? "line" : "column";
}

std::string quote(const std::string& text)
{
    return Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
}

Json listSeries(const ChartData& data)
{
    auto names = Json::array();
    for (std::size_t i = 0; i < data.dataSet->getSeriesCount() && i < 3; ++i)
        names.push_back(toUtf8(data.dataSet->getSeries(i)->getName()));
    return names;
}

std::string makeExample(const std::string& table, const ChartData& data)
{
    const auto title = std::filesystem::path(table).stem().string();
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
      "table": {table},
      "type": "{type}", // {types}
      "columns": {columns},
      "title": {title},
      "legend": "bottom"
    }}}},
    {{"caption": "What the table shows", "name": "overview"}},
    {{"table": {{"table": {table}, "columns": {columns}}}}}
  ]
}}
)text",
        fmt::arg("title", quote(title)), fmt::arg("table", quote(table)), fmt::arg("type", chooseType(data)),
        fmt::arg("types", fmt::join(findOption("type")->choices, "|")),
        fmt::arg("columns", listSeries(data).dump(-1, ' ', false, Json::error_handler_t::replace)));
}

}  // namespace

void writeExampleJob(const CommandLine& commandLine)
{
    const auto files = commandLine.getFiles();
    if (files.size() != 1) throw UsageError("Expected one TABLE to write an example for.");
    const Output output{commandLine.get("output"), commandLine.has("force")};
    ChartJob job;
    job.table = files.front();
    job.gaps = true;
    const auto example = makeExample(findRelativePath(job.table, output.path), readData(job, {}));
    output.requireOther(job.table);
    if (output.path.empty() || output.isStandard()) {
        fmt::print("{}", example);
        return;
    }
    output.writePlain(example);
}

}  // namespace quillon::report
