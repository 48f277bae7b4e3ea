#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <exception>
#include <new>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report/command/ClassCatalogue.h"
#include "report/command/Completion.h"
#include "report/command/Help.h"
#include "report/command/JobForm.h"
#include "report/command/Messages.h"
#include "report/command/OptionPage.h"
#include "report/command/Verbs.h"

namespace quillon::report {
namespace {

constexpr int dataError = 1;
constexpr int usageError = 2;

struct Page {
    const char* option;
    std::string (*print)(const CommandLine& commandLine);
};

std::string printClasses(const CommandLine& commandLine)
{
    registerChartClasses();
    return commandLine.has("json") ? describeClassesAsJson() : describeClasses();
}

/// What is printed in place of a document.
constexpr Page pages[] = {
    {"version", [](const CommandLine&) { return describeVersion() + "\n"; }},
    {"classes", printClasses},
    {"options", [](const CommandLine&) { return describeOptions(); }},
    {"schema",
     [](const CommandLine&) { return describeSchema(getJobForm(), "A job file of quillon-report"); }},
    {"man", [](const CommandLine&) { return describeAsManPage(); }},
    {"completion", [](const CommandLine& line) { return describeCompletion(line.get("completion")); }},
};

void run(std::vector<std::string> words)
{
    const auto& verb = words.empty() ? getVerbs().front() : findVerb(words.front());
    if (*verb.name != '\0') words.erase(words.begin());
    const CommandLine commandLine(verb.getArguments(), words);
    if (commandLine.has("help")) return fmt::print("{}", describeVerb(verb));
    for (const auto& page : pages)
        if (commandLine.has(page.option)) return fmt::print("{}", page.print(commandLine));
    verb.run(commandLine);
}

/// Says what went wrong; as JSON too where that is asked for, unless standard output takes a document.
void tellError(const std::string& sentences, std::span<char*> words)
{
    const auto has = [words](std::string_view word) { return std::ranges::count(words, word) > 0; };
    if (has("--json") && !has("-")) fmt::print("{}", describeErrorAsJson(sentences));
    complain(sentences);
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
    using namespace quillon::report;
    std::set_terminate(usualEnd);
    const std::span words(argv + 1, argv + argc);
    try {
        run({words.begin(), words.end()});
        return 0;
    } catch (const UsageError& error) {
        tellError(std::string(error.what()) + " See quillon-report --help.", words);
        return usageError;
    } catch (const std::bad_alloc&) {
        complain("Out of memory.");
    } catch (const std::exception& error) {
        tellError(error.what(), words);
    }
    return dataError;
}
