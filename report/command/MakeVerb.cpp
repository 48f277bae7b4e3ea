#include "report/command/JobFile.h"
#include "report/command/Messages.h"
#include "report/command/Output.h"
#include "report/command/ReportMaker.h"
#include "report/command/TableArguments.h"
#include "report/command/Verbs.h"
#include "report/document/Document.h"

namespace quillon::report {
namespace {

/// A job file holds all options of its charts.
void requireJobAlone(const CommandLine& commandLine)
{
    if (!commandLine.getFiles().empty())
        throw UsageError("--job excludes TABLE; the job file names the tables.");
    for (const auto& word : commandLine.getWords())
        if (word.argument->isPerTable())
            throw UsageError("--job excludes --" + word.argument->name + "; it belongs in the job file.");
}

void makeFromTables(const CommandLine& commandLine, const Output& output)
{
    if (commandLine.has("json")) throw UsageError("--json is for --job, and for list and fill.");
    if (commandLine.getFiles().empty()) throw UsageError("Expected at least one TABLE, or --job.");
    const bool isCheck = commandLine.has("check");
    if (output.path.empty() && !isCheck) throw UsageError("Expected --output, the document to write.");
    const auto jobs = readTables(commandLine);
    for (const auto& job : jobs) output.requireOther(job.table);
    output.requireNameOfNew();
    if (!isCheck) output.requireWritable();
    ProgressLine progress;
    const auto listener = progress.getListener("chart");
    // Tables are read in silence: their progress counts bytes.
    const Listener reading{nullptr, listener.warning};
    Document document;
    for (std::size_t i = 0; i < jobs.size(); ++i)
        addChart(document, jobs[i], jobs.size() == 1 ? 0 : i + 1, reading);
    const auto bytes = document.toBytes(listener);
    if (!isCheck) output.write(bytes);
}

}  // namespace

void makeDocument(const CommandLine& commandLine)
{
    const Output output{commandLine.get("output"), commandLine.has("force")};
    if (!commandLine.has("job")) return makeFromTables(commandLine, output);
    requireJobAlone(commandLine);
    runJob(readJob(commandLine.get("job")), {output, commandLine.has("check"), commandLine.has("json")});
}

}  // namespace quillon::report
