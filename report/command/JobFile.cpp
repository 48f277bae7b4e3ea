#include "report/command/JobFile.h"

#include <fmt/format.h>

#include <atomic>
#include <cerrno>
#include <cstring>
#include <exception>
#include <fstream>
#include <iostream>
#include <iterator>
#include <optional>
#include <set>
#include <thread>
#include <utility>

#include "report/command/ChartReader.h"
#include "report/command/CommandLine.h"
#include "report/command/Groups.h"
#include "report/command/JobForm.h"
#include "report/command/Messages.h"
#include "report/command/ReportMaker.h"
#include "report/command/TemplateFiller.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"
#include "report/table/JsonText.h"

namespace quillon::report {
namespace {

std::string readText(const std::string& path)
{
    if (path == "-") return {std::istreambuf_iterator<char>(std::cin), {}};
    std::ifstream file(path, std::ios::binary);
    if (!file || std::filesystem::is_directory(path))
        fail("Cannot read {}: {}.", quoteText(path, 200), file ? "it is a folder" : std::strerror(errno));
    std::string text(std::istreambuf_iterator<char>(file), {});
    if (file.bad()) fail("Cannot read {}: {}.", quoteText(path, 200), std::strerror(errno));
    return text;
}

const JsonNode* findTemplate(const JsonNode& job)
{
    return job.find("blocks") == nullptr ? job.find("template") : nullptr;
}

NamedTexts readTexts(const JsonNode& job)
{
    NamedTexts texts;
    if (const auto* node = job.find("texts"))
        for (const auto& member : node->members) texts.emplace_back(member.name, member.value.text);
    return texts;
}

/// Every file that the job names, but for its template.
void collectFiles(const JsonNode& node, const std::filesystem::path& folder, std::set<std::string>& files)
{
    for (const auto& item : node.items) collectFiles(item, folder, files);
    for (const auto& member : node.members) {
        collectFiles(member.value, folder, files);
        const bool isFile = member.name == "table" || member.name == "image";
        if (isFile && !member.value.text.empty()) files.insert((folder / member.value.text).string());
    }
}

/// What a document is made of, besides the tree of its own job.
struct Making {
    const Job& job;
    const JobOptions& options;
    /// Opened once for all documents; nothing where none is filled.
    std::optional<Template> document = {};
    std::set<std::string> files = {};

    void requireOutput(const Output& output) const
    {
        output.requireOther(job.path);
        for (const auto& file : files) output.requireOther(file);
        if (const auto* found = job.tree.find("template"))
            output.requireOtherThanTemplate((job.folder / found->text).string());
        if (!document) output.requireNameOfNew();
        output.requireWritable();
    }
};

/// The names of the texts of a job, and of a group.
std::vector<std::string> listNames(const NamedTexts& texts, const Group* group)
{
    std::vector<std::string> names;
    for (const auto& text : texts) names.push_back(text.first);
    if (group != nullptr)
        for (const auto& text : group->texts) names.push_back(text.first);
    return names;
}

/// Warns of each {{name}} that nothing stands for, and returns the names. A job without texts makes a
/// document to be filled later.
std::vector<std::string> tellUnfilled(const JsonNode& job, const std::vector<std::string>& known,
                                      const JobPlace& place, const Listener& listener)
{
    const auto* reason = place.group == nullptr
                             ? "it is not in \"texts\""
                             : "it is neither in \"texts\" nor a column with one text in each group";
    std::vector<std::string> names;
    for (const auto& [name, position] : findUnfilled(job)) {
        names.push_back(name);
        if (known.empty()) continue;
        listener.warning(fmt::format("{}: {} stays as it is: {}{}",
                                     describePosition(place.source->text, place.source->name, position),
                                     quoteText("{{" + name + "}}"), reason, suggestName(name, known)));
    }
    return names;
}

/// The same in front of each line.
std::string putInFront(const std::string& what, const std::string& lines)
{
    auto result = what + lines;
    for (auto at = result.find('\n'); at != std::string::npos; at = result.find('\n', at + 1))
        result.insert(at + 1, what);
    return result;
}

/// A document, and what was filled in it.
struct Made {
    FillResult result = {};
    std::string bytes = {};
};

/// Makes one document, to be written to a path.
Made makeOne(const Making& making, const JsonNode& tree, const Group* group, const std::string& path,
             const Listener& listener)
{
    const JobPlace place{making.job.folder, group, &making.job.source};
    Made made;
    if (making.document) {
        Filling filling{.texts = readTexts(tree)};
        if (group != nullptr) filling.furtherTexts = group->texts;
        if (const auto* charts = tree.find("charts"))
            for (const auto& chart : charts->items) {
                filling.charts.push_back(readChartJob(chart, place));
                filling.places.push_back(
                    describePosition(place.source->text, place.source->name, chart.position) + ": ");
            }
        auto document = *making.document;
        requireOutputOfKind(document, path);
        made.result = fillTemplate(document, filling, listener);
        made.bytes = document.toBytes();
    } else {
        const auto texts = readTexts(tree);
        const auto filled = fillInTexts(tree, texts);
        made.result.left = tellUnfilled(filled, listNames(texts, group), place, listener);
        made.bytes = makeReport(filled, place, listener).toBytes(listener);
    }
    return made;
}

void tell(const Making& making, const FillResult& result, const std::string& output)
{
    if (output == "-") return;
    if (making.options.asJson)
        fmt::print("{}", describeFillingAsJson(result, output));
    else if (making.document)
        fmt::print("{}", describeFilling(result));
}

void tellGroups(const Making& making, const std::vector<Made>& made, const std::vector<Group>& groups)
{
    std::vector<std::string> outputs;
    std::vector<FillResult> results;
    outputs.reserve(groups.size());
    results.reserve(groups.size());
    for (const auto& group : groups) outputs.push_back(group.output);
    for (const auto& one : made) results.push_back(one.result);
    if (making.options.asJson) return fmt::print("{}", describeFillingsAsJson(results, outputs));
    for (std::size_t i = 0; i < groups.size(); ++i) {
        fmt::print("{}\n", outputs[i]);
        tell(making, results[i], outputs[i]);
    }
}

/// Makes the documents of all groups, and writes them once all are made, on all cores. A failure ends it:
/// that of the first group in their order which fails is told, whichever thread comes first.
class GroupRun {
 public:
    GroupRun(const Making& making, const std::vector<Group>& groups)
        : making_(making),
          groups_(groups),
          made_(groups.size()),
          warnings_(groups.size()),
          failures_(groups.size())
    {
    }

    void run()
    {
        doAll("document", &GroupRun::makeGroup);
        if (!making_.options.isCheck) doAll("writing document", &GroupRun::writeGroup);
        tellGroups(making_, made_, groups_);
    }

 private:
    using Step = void (GroupRun::*)(std::size_t index);

    /// Throws: the failure of the first group that fails.
    void doAll(const char* what, Step step)
    {
        next_ = done_ = 0;
        const std::size_t count =
            std::min<std::size_t>(std::max(1U, std::thread::hardware_concurrency()), groups_.size());
        std::vector<std::jthread> threads;
        for (std::size_t i = 0; i < count; ++i)
            threads.emplace_back([this, what, step] { work(what, step); });
        threads.clear();
        progress_.clear();
        tellWarnings();
    }

    void work(const char* what, Step step)
    {
        // What was taken is done, so that no group before one that failed is left out.
        while (!isStopped_) {
            const auto i = next_++;
            if (i >= groups_.size()) break;
            try {
                (this->*step)(i);
            } catch (const std::runtime_error& error) {
                stop(i, std::make_exception_ptr(
                            std::runtime_error(putInFront(quoteText(groups_[i].name) + ": ", error.what()))));
            } catch (...) {
                stop(i, std::current_exception());
            }
            progress_.show(fmt::format("{} {} of {}", what, ++done_, groups_.size()));
        }
    }

    void stop(std::size_t index, std::exception_ptr failure)
    {
        failures_[index] = std::move(failure);
        isStopped_ = true;
    }

    void makeGroup(std::size_t index)
    {
        const auto& group = groups_[index];
        const Listener listener{nullptr,
                                [&](const std::string& sentence) { warnings_[index].push_back(sentence); }};
        made_[index] =
            makeOne(making_, makeGroupJob(making_.job.tree, group), &group, group.output, listener);
    }

    void writeGroup(std::size_t index)
    {
        const auto bytes = std::exchange(made_[index].bytes, {});
        Output{groups_[index].output, making_.options.output.force}.write(bytes);
    }

    /// Each sentence once, in the order of the groups, and the first failure behind those before it.
    void tellWarnings()
    {
        std::set<std::string_view> known;
        for (std::size_t i = 0; i < groups_.size(); ++i) {
            for (const auto& sentence : warnings_[i])
                if (known.insert(sentence).second) warn(sentence);
            if (failures_[i]) std::rethrow_exception(failures_[i]);
        }
        warnings_.assign(groups_.size(), {});
    }

    const Making& making_;
    const std::vector<Group>& groups_;
    std::vector<Made> made_;
    std::vector<std::vector<std::string>> warnings_;
    std::vector<std::exception_ptr> failures_;
    std::atomic<std::size_t> next_ = 0;
    std::atomic<std::size_t> done_ = 0;
    std::atomic<bool> isStopped_ = false;
    ProgressLine progress_;
};

void runGroups(const Making& making)
{
    if (!making.options.output.path.empty())
        throw UsageError("--output is for one document; \"for-each\" names those of its groups.");
    const JobPlace place{making.job.folder, nullptr, &making.job.source};
    const auto groups = readGroups(*making.job.tree.find("for-each"), place, warn);
    for (const auto& group : groups) making.requireOutput({group.output, making.options.output.force});
    GroupRun(making, groups).run();
}

}  // namespace

Job readJob(const std::string& path)
{
    JobText source{readText(path), path == "-" ? "standard input" : path};
    auto tree = parseJson(source.text, source.name);
    Job job{path, path == "-" ? std::filesystem::path() : std::filesystem::path(path).parent_path(),
            std::move(source), std::move(tree)};
    requireNoProblems(findProblems(job.tree, getJobForm(), job.folder), job.source);
    return job;
}

void runJob(const Job& job, const JobOptions& options)
{
    Making making{job, options};
    collectFiles(job.tree, job.folder, making.files);
    if (const auto* found = findTemplate(job.tree))
        making.document = Template::open((job.folder / found->text).string());
    if (job.tree.find("for-each") != nullptr) return runGroups(making);
    if (options.output.path.empty() && !options.isCheck)
        throw UsageError("Expected --output, the document to write.");
    if (!options.isCheck) making.requireOutput(options.output);
    ProgressLine progress;
    const auto made = makeOne(making, job.tree, nullptr, options.output.path, progress.getListener("chart"));
    if (!options.isCheck) options.output.write(made.bytes);
    progress.clear();
    tell(making, made.result, options.output.path);
}

}  // namespace quillon::report
