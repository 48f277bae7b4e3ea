#include <fmt/format.h>

#include "report/command/Messages.h"
#include "report/command/Output.h"
#include "report/command/TableArguments.h"
#include "report/command/TemplateFiller.h"
#include "report/command/Verbs.h"
#include "report/options/QuotedText.h"

namespace quillon::report {
namespace {

std::vector<std::pair<std::string, std::string>> readTexts(const CommandLine& commandLine)
{
    std::vector<std::pair<std::string, std::string>> texts;
    for (const auto& text : commandLine.getAll("text")) {
        const auto equals = text.find('=');
        if (equals == std::string::npos || equals == 0)
            throw UsageError("--text " + quoteText(text) +
                             ": expected a name and a text, as in month=October.");
        for (const auto& [name, other] : texts)
            if (name == text.substr(0, equals))
                throw UsageError("--text: " + quoteText(name) + " is given twice.");
        texts.emplace_back(text.substr(0, equals), text.substr(equals + 1));
    }
    return texts;
}

void requirePlaces(const std::vector<ChartJob>& jobs)
{
    for (const auto& job : jobs)
        if (job.fill.empty() == job.at.empty())
            throw UsageError(
                quoteText(job.table, 200) +
                ": expected either --chart or --at after it; `quillon-report list` shows what the "
                "document has.");
}

Filling readFilling(const CommandLine& commandLine)
{
    Filling filling{.charts = readTables(commandLine, 1), .texts = readTexts(commandLine)};
    requirePlaces(filling.charts);
    if (filling.charts.empty() && filling.texts.empty())
        throw UsageError("Expected at least one TABLE with --chart or --at, or --text.");
    return filling;
}

void requireTarget(const Output& output, const std::string& path, const Filling& filling)
{
    if (output.path.empty()) throw UsageError("Expected --output, the document to write, or --check.");
    output.requireOtherThanTemplate(path);
    for (const auto& job : filling.charts) output.requireOther(job.table);
    output.requireWritable();
}

}  // namespace

void fillDocument(const CommandLine& commandLine)
{
    const auto files = commandLine.getFiles();
    if (files.empty()) throw UsageError("Expected a DOCUMENT to fill.");
    const Output output{commandLine.get("output"), commandLine.has("force")};
    const bool isCheck = commandLine.has("check");
    const auto filling = readFilling(commandLine);
    if (!isCheck) requireTarget(output, files.front(), filling);
    auto document = openTemplate(files.front());
    requireOutputOfKind(document, output.path);
    ProgressLine progress;
    const auto result = fillTemplate(document, filling, progress.getListener("chart"));
    if (!isCheck) output.write(document.toBytes());
    progress.clear();
    if (commandLine.has("json") && !output.isStandard())
        fmt::print("{}", describeFillingAsJson(result, output.path));
    else if (!output.isStandard())
        fmt::print("{}", describeFilling(result));
}

}  // namespace quillon::report
