#include <fmt/format.h>
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <charconv>
#include <chrono>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <map>
#include <string_view>

#include "report/command/ChartJob.h"
#include "report/command/ChartMaker.h"
#include "report/command/ClassCatalogue.h"
#include "report/command/JobFile.h"
#include "report/command/OptionPage.h"
#include "report/document/Document.h"
#include "report/options/ListText.h"
#include "report/options/Options.h"
#include "report/options/QuotedText.h"
#include "report/table/ChartTable.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

constexpr int dataError = 1;
constexpr int usageError = 2;

constexpr auto description = "Makes a Word document with native, editable charts from tables in CSV files.";

constexpr auto examples =
    R"text(Options stand behind the TABLE they are for; those before the first are for all.

Examples:
  quillon-report revenue.csv --type column --title "Revenue" -o report.docx
  quillon-report weather.csv --type line --category date --columns temp_max,temp_min -o weather.docx
  quillon-report energy.csv --category year --series source --value net_generation -o energy.docx
  quillon-report sales.csv --colors red,#00ff00,"rgb(0,128,255)" --legend right -o sales.docx
  quillon-report a.csv --type bar --heading "A" b.csv --type pie --heading "B" -o both.docx
  quillon-report --job charts.json -o report.docx

A job file: {"charts": [{"table": "sales.csv", "type": "bar", "columns": ["north", "south"], "gaps": true}]}
The members of a chart are "table", a path from the job file on, and the options above without "--".

Exit status: 0 when the document is written, 1 when a file, its data or the value of an option is refused,
2 when an option is unknown, missing or out of place.)text";

void complain(const std::string& sentence)
{
    fmt::print(stderr, "quillon-report: {}\n", sentence);
}

/// Says what the author should know about a document that is written all the same.
void warn(const std::string& sentence)
{
    complain("warning: " + sentence);
}

/// An author who forgets the name of the document must not lose a table for it.
void refuseToReplace(const std::string& input, const std::string& output)
{
    std::error_code isNoFile;
    if (std::filesystem::equivalent(input, output, isNoFile))
        fail("Cannot write \"{}\": the charts are made from it.", output);
}

std::size_t readWholeNumber(const std::string& option, const std::string& text)
{
    std::size_t number = 0;
    const auto* const end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end)
        fail("{} {}: expected a whole number.", option, quoteText(text));
    return number;
}

/// Shows on a terminal how far a work has come that lasts over a second.
class ProgressLine {
 public:
    ~ProgressLine() { clear(); }

    void clear()
    {
        if (shown_) fmt::print(stderr, "\r\033[K");
        shown_ = false;
    }

    void show(std::size_t done, std::size_t total)
    {
        using namespace std::chrono_literals;
        if (isatty(STDERR_FILENO) == 0 || std::chrono::steady_clock::now() - start_ < 1s) return;
        shown_ = true;
        fmt::print(stderr, "\rchart {} of {}", done, total);
        static_cast<void>(std::fflush(stderr));
    }

 private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
    bool shown_ = false;
};

/// What the author typed: CLI11 keeps the words, and the order in which options and tables came.
class CommandLine {
 public:
    CommandLine();

    CLI::App& getApp() { return app_; }
    const std::string& getOutput() const { return output_; }
    /// Whether the author asks for the catalogue of classes and not for a document.
    bool wantsClasses() const { return classes_; }
    bool wantsJson() const { return json_; }
    /// Whether the author asks for the page of options.
    bool wantsOptions() const { return options_; }
    /// One job for each table, in order, or those of the job file.
    std::vector<ChartJob> getJobs() const;

 private:
    /// A job file holds all options of its charts. Throws: CLI::ExcludesError for one beside it.
    void refuseOptionsOfJobFile() const;
    void apply(const CLI::Option* option, std::size_t occurrence, ChartJob& job) const;

    CLI::App app_{description};
    std::vector<std::string> tableNames_;
    CLI::Option* tables_;
    std::map<const CLI::Option*, const JobOption*> jobOptions_;
    std::map<const CLI::Option*, const Option*> chartOptions_;
    std::string output_;
    std::string jobFile_;
    bool classes_ = false;
    bool json_ = false;
    bool options_ = false;
};

CommandLine::CommandLine()
{
    app_.footer(examples);
    tables_ = app_.add_option("TABLE", tableNames_, "a CSV file; several make several charts");
    for (const auto& option : getJobOptions()) {
        const auto name = std::string("--") + option.name;
        const bool isFlag = std::holds_alternative<bool ChartJob::*>(option.member);
        auto* added = isFlag ? app_.add_flag(name, option.help) : app_.add_option(name, option.help);
        if (!isFlag)
            added->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)->type_name("TEXT");
        jobOptions_[added] = &option;
    }
    for (const auto& option : getOptions()) {
        const auto name = std::string("--") + option.name;
        const bool isFlag = option.form == OptionForm::Flag;
        auto* added = isFlag ? app_.add_flag(name, option.meaning) : app_.add_option(name, option.meaning);
        if (!isFlag)
            added->expected(1)->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)->type_name("TEXT");
        chartOptions_[added] = &option;
    }
    auto* job = app_.add_option("--job", jobFile_, "a JSON file that lists the charts")->type_name("FILE");
    job->excludes(tables_);
    app_.add_option("-o,--output", output_, "the document to write")->type_name("FILE");
    auto* classes = app_.add_flag("--classes", classes_, "print the classes that a host program sees");
    classes->excludes(tables_)->excludes(job);
    app_.add_flag("--json", json_, "print them as JSON")->needs(classes);
    app_.add_flag("--options", options_, "print the options with an example of each")
        ->excludes(tables_)
        ->excludes(job)
        ->excludes(classes);
    app_.callback([this] { refuseOptionsOfJobFile(); });
}

void CommandLine::refuseOptionsOfJobFile() const
{
    if (jobFile_.empty()) return;
    for (const auto* option : app_.get_options())
        if ((chartOptions_.contains(option) || jobOptions_.contains(option)) && option->count() > 0)
            throw CLI::ExcludesError("--job", option->get_name());
}

void CommandLine::apply(const CLI::Option* option, std::size_t occurrence, ChartJob& job) const
{
    if (const auto found = chartOptions_.find(option); found != chartOptions_.end()) {
        const auto text = found->second->form == OptionForm::Flag ? "" : option->results().at(occurrence);
        const auto name = option->get_name();
        setOption(job.options, *found->second, readOptionText(*found->second, text, name), name);
        return;
    }
    const auto& member = jobOptions_.at(option)->member;
    if (const auto* flag = std::get_if<bool ChartJob::*>(&member)) {
        job.*(*flag) = true;
        return;
    }
    const auto& text = option->results().at(occurrence);
    if (const auto* list = std::get_if<std::vector<std::string> ChartJob::*>(&member))
        job.*(*list) = splitList(text);
    if (const auto* single = std::get_if<std::string ChartJob::*>(&member)) job.*(*single) = text;
    if (const auto* number = std::get_if<std::size_t ChartJob::*>(&member))
        job.*(*number) = readWholeNumber(option->get_name(), text);
}

std::vector<ChartJob> CommandLine::getJobs() const
{
    if (!jobFile_.empty()) {
        refuseToReplace(jobFile_, output_);
        return readJobFile(jobFile_);
    }
    std::vector<ChartJob> jobs;
    ChartJob common;
    std::map<const CLI::Option*, std::size_t> occurrences;
    for (const auto* option : app_.parse_order()) {
        const auto occurrence = occurrences[option]++;
        if (option == tables_) {
            jobs.push_back(common);
            jobs.back().table = tableNames_.at(occurrence);
        } else if (chartOptions_.contains(option) || jobOptions_.contains(option)) {
            apply(option, occurrence, jobs.empty() ? common : jobs.back());
        }
    }
    return jobs;
}

void addChart(Document& document, const ChartJob& job)
{
    TableOptions reading = job;
    reading.gaps = job.gaps || job.options.blank;
    const auto data = readChartData(job.table, reading, {nullptr, warn});
    const auto chart = makeChart(job, data, warn);
    if (!job.heading.empty()) document.addHeading(job.heading, 1);
    document.addChart(chart, job.options, data);
}

void write(const std::vector<ChartJob>& jobs, const std::string& output)
{
    for (const auto& job : jobs) refuseToReplace(job.table, output);
    Document document;
    ProgressLine progress;
    const Listener listener{[&progress](std::size_t done, std::size_t total) { progress.show(done, total); },
                            [&progress](const std::string& sentence) {
                                progress.clear();
                                warn(sentence);
                            }};
    for (std::size_t i = 0; i < jobs.size(); ++i) {
        try {
            addChart(document, jobs[i]);
        } catch (const std::runtime_error& error) {
            if (jobs.size() == 1) throw;
            fail("chart {}: {}", i + 1, error.what());
        }
    }
    document.save(output, listener);
}

void printClasses(bool asJson)
{
    registerChartClasses();
    fmt::print("{}", asJson ? describeClassesAsJson() : describeClasses());
}

int run(int argc, char** argv)
{
    CommandLine commandLine;
    try {
        commandLine.getApp().parse(argc, argv);
    } catch (const CLI::CallForHelp&) {
        fmt::print("{}", commandLine.getApp().help());
        return 0;
    } catch (const CLI::ParseError& error) {
        complain(fmt::format("{}; see quillon-report --help.", error.what()));
        return usageError;
    }
    if (commandLine.wantsClasses()) {
        printClasses(commandLine.wantsJson());
        return 0;
    }
    if (commandLine.wantsOptions()) {
        fmt::print("{}", describeOptions());
        return 0;
    }
    if (commandLine.getOutput().empty()) {
        complain("Expected --output, the document to write. See quillon-report --help.");
        return usageError;
    }
    const auto jobs = commandLine.getJobs();
    if (jobs.empty()) {
        complain("Expected at least one TABLE, a CSV file, or --job. See quillon-report --help.");
        return usageError;
    }
    write(jobs, commandLine.getOutput());
    return 0;
}

/// An exception that nobody can catch, because the libraries start before main: there, memory has run out.
[[noreturn]] void endWithSentence()
{
    constexpr std::string_view sentence = "quillon-report: Out of memory.\n";
    [[maybe_unused]] const auto count = ::write(STDERR_FILENO, sentence.data(), sentence.size());
    _exit(dataError);
}

std::terminate_handler usualEnd = nullptr;

void prepareStart()
{
    usualEnd = std::set_terminate(endWithSentence);
}

/// The functions in this section run before the libraries start.
[[gnu::section(".preinit_array"), gnu::used]] void (*beforeStart)() = prepareStart;

}  // namespace
}  // namespace quillon::report

int main(int argc, char** argv)
{
    std::set_terminate(quillon::report::usualEnd);
    try {
        return quillon::report::run(argc, argv);
    } catch (const std::bad_alloc&) {
        quillon::report::complain("Out of memory.");
    } catch (const std::exception& error) {
        quillon::report::complain(error.what());
    }
    return quillon::report::dataError;
}
