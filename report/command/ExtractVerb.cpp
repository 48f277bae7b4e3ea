#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

#include "report/command/DataWriter.h"
#include "report/command/Output.h"
#include "report/command/TemplateFiller.h"
#include "report/command/Verbs.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

DataForm findForm(const std::string& path)
{
    const auto ending = std::filesystem::path(path).extension().string();
    if (path.empty() || path == "-" || ending == ".csv") return DataForm::Csv;
    if (ending == ".json") return DataForm::Json;
    if (ending == ".md") return DataForm::Markdown;
    fail("--output {}: expected a name that ends in .csv, .json or .md.", quoteText(path, 200));
}

/// The chart asked for, or the only one.
std::string chooseChart(const CommandLine& commandLine, const std::vector<FoundChart>& charts)
{
    if (commandLine.has("chart")) return commandLine.get("chart");
    if (charts.size() == 1) return "1";
    if (charts.empty()) fail("The document has no chart.");
    throw UsageError(fmt::format(
        "Expected --chart: the document has {} charts; `quillon-report list` shows them.", charts.size()));
}

}  // namespace

void extractData(const CommandLine& commandLine)
{
    const auto files = commandLine.getFiles();
    if (files.size() != 1) throw UsageError("Expected one DOCUMENT to extract from.");
    const Output output{commandLine.get("output"), commandLine.has("force")};
    const auto form = findForm(output.path);
    const auto document = openTemplate(files.front());
    const auto data = document.getChartData(chooseChart(commandLine, document.getCharts()));
    const auto text = writeData(data, form);
    if (output.path.empty() || output.isStandard()) {
        fmt::print("{}", text);
        return;
    }
    output.requireOther(files.front());
    output.writePlain(text);
}

}  // namespace quillon::report
