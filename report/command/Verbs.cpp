#include "report/command/Verbs.h"

#include <array>
#include <filesystem>

#include "report/command/TableArguments.h"
#include "report/options/ListText.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"

namespace quillon::report {
namespace {

constexpr auto general = "General";

const Argument help{.name = "help", .letter = 'h', .help = "print this help and exit", .group = general};

Argument makeOutput(const char* text)
{
    return {.name = "output", .letter = 'o', .value = "FILE", .help = text, .group = general};
}

Argument makeForce(const char* text = "replace a write-protected file too")
{
    return {.name = "force", .help = text, .group = general};
}

Argument makeCheck(const char* text = "say what would happen, and write nothing")
{
    return {.name = "check", .help = text, .group = general};
}

Argument makeJson(const char* text)
{
    return {.name = "json", .help = text, .group = general};
}

std::vector<Argument> append(std::vector<Argument> arguments, std::vector<Argument> more)
{
    arguments.insert(arguments.end(), more.begin(), more.end());
    return arguments;
}

constexpr auto documentOutput = "the document to write; - is standard output, and .pdf makes a PDF";

const std::vector<Argument>& getMakeArguments()
{
    static const auto arguments =
        append({makeOutput(documentOutput),
                {.name = "job",
                 .letter = 'j',
                 .value = "FILE",
                 .help = "make the document that a job file describes, with text, tables, and charts side by "
                         "side; quillon-report init writes an example",
                 .group = general},
                makeCheck("do everything but write: say what is wrong, and what a template gets"),
                makeForce(),
                makeJson("with --job: tell what was filled, or what is wrong, as JSON"),
                help,
                {.name = "version", .help = "print the version and exit", .group = general},
                // What documentation and installation are made of.
                {.name = "classes"},
                {.name = "options"},
                {.name = "schema"},
                {.name = "man"},
                {.name = "completion", .value = "SHELL", .choices = {"bash", "zsh"}}},
               makeTableArguments(JobUse::New));
    return arguments;
}

const std::vector<Argument>& getListArguments()
{
    static const std::vector<Argument> arguments = {makeJson("print the list, or what is wrong, as JSON"),
                                                    help};
    return arguments;
}

const std::vector<Argument>& getExtractArguments()
{
    static const std::vector<Argument> arguments = {
        {.name = "chart",
         .value = "NAME",
         .help = "the chart: its name, alternative text, title or number (default: the only one)",
         .group = general},
        makeOutput("the table to write: .csv, .json or .md (default: CSV to standard output)"),
        makeForce(),
        help};
    return arguments;
}

const std::vector<Argument>& getFillArguments()
{
    static const auto arguments = append({makeOutput(documentOutput),
                                          {.name = "text",
                                           .value = "NAME=TEXT",
                                           .help = "what stands for {{NAME}}",
                                           .group = general,
                                           .often = Often::Repeatedly},
                                          makeCheck(),
                                          makeForce(),
                                          makeJson("tell what was filled, or what is wrong, as JSON"),
                                          help},
                                         makeTableArguments(JobUse::Fill));
    return arguments;
}

const std::vector<Argument>& getInitArguments()
{
    static const auto arguments = append({makeOutput("the job file to write (default: standard output)"),
                                          makeForce("replace a file that is there already"), help},
                                         makeTableArguments(JobUse::New));
    return arguments;
}

const std::array verbs = {
    Verb{"", "TABLE [OPTION ...] ... -o DOCUMENT",
         "make a Word document with native, editable charts from tables",
         "A TABLE is a CSV or TSV file, a workbook (.xlsx or .ods), JSON, Markdown, or a SQLite database; "
         "- is standard input. Options apply to the TABLE before them; those before the first TABLE are for "
         "all.",
         R"text(quillon-report revenue.csv --type column --title "Revenue" -o report.docx
quillon-report weather.csv --type line --category date --columns temp_max,temp_min -o weather.docx
quillon-report energy.csv --category year --series source --value net_generation -o energy.docx
quillon-report costs.csv --line Target --second Margin --second-format 0% -o costs.docx
quillon-report points.csv --type scatter --x Height --trendline linear -o points.docx
quillon-report budget.csv --type waterfall --totals "Last year,This year" --gaps -o budget.docx
quillon-report sales.csv --colors red,#00ff00,"rgb(0,128,255)" --legend right -o sales.pdf
quillon-report a.csv --type bar --heading "A" b.csv --type pie --heading "B" -o both.docx
quillon-report --job report.json -o report.docx)text",
         getMakeArguments, makeDocument},
    Verb{"list", "DOCUMENT [--json]", "list the charts and placeholders of a document",
         "A chart that cannot be filled is listed with the reason.", "quillon-report list report.docx",
         getListArguments, listCharts},
    Verb{"extract", "DOCUMENT [--chart NAME] [-o FILE]", "write the data of a chart as a table",
         "The categories come first, then a column for each series; of scatter and bubble charts the columns "
         "of X, values and sizes.",
         "quillon-report extract report.docx --chart Revenue -o revenue.csv", getExtractArguments,
         extractData},
    Verb{
        "fill", "DOCUMENT [TABLE --chart NAME | TABLE --at NAME] ... -o DOCUMENT",
        "give the charts of a document new data, and its placeholders charts and texts",
        "Options apply to the TABLE before them; those before the first TABLE are for all. --chart gives a "
        "chart new data, and it keeps its look. --at puts a new chart, with any option, in the place of a "
        "paragraph {{NAME}} or of a picture with that alternative text; {{table:NAME}} becomes a table.",
        R"text(quillon-report fill report.docx revenue.csv --chart Revenue costs.csv --chart Costs -o october.docx
quillon-report fill report.docx margin.csv --at margin --type line --text month=October -o october.docx
quillon-report fill report.docx revenue.csv --chart Revenue --check)text",
        getFillArguments, fillDocument},
    Verb{
        "init", "TABLE [OPTION ...] [-o JOB]", "write an example of a job file from a table",
        "The example makes a report with a chart and a table, and has the options that are given; change it, "
        "and run it with --job.",
        R"text(quillon-report init sales.csv -o report.json
quillon-report init shop.sqlite --query "SELECT month, total FROM sales" -o report.json)text",
        getInitArguments, writeExampleJob},
};

/// A table has an ending, stands in a folder, or is there.
bool mayBeTable(const std::string& word)
{
    std::error_code ignored;
    return word.starts_with('-') || word.find_first_of("./") != std::string::npos ||
           std::filesystem::exists(word, ignored);
}

[[noreturn]] void failUnknown(const std::string& word)
{
    std::vector<std::string> names;
    for (const auto& verb : getVerbs().subspan(1)) names.emplace_back(verb.name);
    const auto near = findNearName(word, names);
    throw UsageError(
        "There is no verb or table " + quoteText(word, 200) +
        (near.empty() ? "; the verbs are " + joinNames(names) + "." : "; did you mean " + near + "?"));
}

}  // namespace

std::span<const Verb> getVerbs()
{
    return verbs;
}

const Verb& findVerb(const std::string& word)
{
    for (const auto& verb : verbs)
        if (word == verb.name) return verb;
    if (!mayBeTable(word)) failUnknown(word);
    return verbs.front();
}

}  // namespace quillon::report
