#include <memory>

#include "report/command/ChartJob.h"
#include "report/command/ChartReader.h"
#include "report/command/JobForm.h"
#include "report/options/Options.h"

namespace quillon::report {
namespace {

using Kind = Form::Kind;

std::string describe(const Option& option)
{
    std::string help = option.meaning;
    return *option.standard == '\0' ? help : help + " (default: " + option.standard + ")";
}

const JsonNode* findMember(const JsonNode& job, std::initializer_list<const char*> names)
{
    for (const auto* name : names)
        if (const auto* found = job.find(name)) return found;
    return nullptr;
}

/// What a whole job must be: a document of blocks, one of charts, or a template that is filled.
void checkJob(const JsonNode& job)
{
    const auto* blockList = job.find("blocks");
    const auto* chartList = job.find("charts");
    const bool fillsTemplate = job.find("template") != nullptr && blockList == nullptr;
    if (blockList != nullptr && chartList != nullptr)
        throw std::runtime_error("expected either \"blocks\" or \"charts\"; a block may be a chart.");
    if (!fillsTemplate && blockList == nullptr && chartList == nullptr)
        throw std::runtime_error("expected a member \"charts\" or \"blocks\", a list.");
    if (fillsTemplate && chartList == nullptr && job.find("texts") == nullptr)
        throw std::runtime_error(
            "a template needs \"charts\" or \"texts\" to be filled with, or \"blocks\".");
    if (fillsTemplate && findMember(job, {"header", "footer", "properties"}) != nullptr)
        throw std::runtime_error("\"header\", \"footer\" and \"properties\" go with \"blocks\".");
    if (chartList != nullptr && chartList->items.empty())
        throw std::runtime_error("\"charts\": the list is empty.");
    for (std::size_t i = 0; chartList != nullptr && i < chartList->items.size(); ++i) {
        const auto& one = chartList->items[i];
        const bool hasPlace = (one.find("fill") != nullptr) != (one.find("at") != nullptr);
        const auto place = "chart " + std::to_string(i + 1) + ": ";
        if (fillsTemplate && !hasPlace)
            throw std::runtime_error(place +
                                     "expected either \"fill\", a chart of the template, or \"at\", a "
                                     "placeholder.");
        if (!fillsTemplate && findMember(one, {"fill", "at", "match"}) != nullptr)
            throw std::runtime_error(place + "\"fill\", \"at\" and \"match\" need a \"template\".");
    }
}

/// All forms of a job file. They point to each other, so that they are made once and never copied.
struct JobForms {
    const Form text{.kind = Kind::Text, .what = "a text"};
    const Form path{.kind = Kind::Path, .what = "the path of a file"};
    const Form flag{.kind = Kind::Flag, .what = "true or false"};
    const Form number{.kind = Kind::Number, .what = "a number"};
    const Form textList{.kind = Kind::List, .what = "a list of texts", .items = &text};
    const Form listOrText{.kind = Kind::Any, .what = "a list of texts", .alternatives = {&textList, &text}};
    const Form texts{.kind = Kind::Texts, .what = "an object of texts"};
    const Form level{.kind = Kind::Integer, .what = "a whole number from 1 to 9", .minimum = 1, .maximum = 9};
    const Form depth{.kind = Kind::Integer, .what = "a whole number from 0 to 8", .minimum = 0, .maximum = 8};

    std::vector<std::unique_ptr<Form>> kept_;
    /// Forms that are made of the tables of options, and live as long as the program.
    const Form* keep(Form form) { return kept_.emplace_back(std::make_unique<Form>(std::move(form))).get(); }

    const Form* makeChoices(const std::string& values)
    {
        return keep({.kind = Kind::Text, .what = "a text", .choices = splitValues(values)});
    }

    const Form* formOf(const JobOption& option)
    {
        if (std::holds_alternative<bool ChartJob::*>(option.member)) return &flag;
        if (std::holds_alternative<std::size_t ChartJob::*>(option.member))
            return keep({.kind = Kind::Integer,
                         .what = option.describeNumber(),
                         .minimum = static_cast<double>(option.least),
                         .maximum = 4e9});
        if (std::holds_alternative<std::vector<std::string> ChartJob::*>(option.member)) return &listOrText;
        return *option.values == '\0' ? &text : makeChoices(option.values);
    }

    Form makeForm(const Option& option)
    {
        const auto what = describeForm(option);
        const std::vector<std::string> choices(option.choices.begin(), option.choices.end());
        switch (option.form) {
            case OptionForm::Flag:
                return flag;
            case OptionForm::Number:
            case OptionForm::Integer:
                return {.kind = option.form == OptionForm::Number ? Kind::Number : Kind::Integer,
                        .what = what,
                        .minimum = option.minimum,
                        .maximum = option.maximum};
            case OptionForm::Choices: {
                const auto* choice =
                    keep({.kind = Kind::Text, .what = "a text", .choices = choices, .ignoresCase = true});
                const auto* list = keep({.kind = Kind::List, .what = what, .items = choice});
                return {.kind = Kind::Any, .what = what, .alternatives = {list, choice}};
            }
            case OptionForm::Texts:
                return listOrText;
            case OptionForm::TextPairs:
                return texts;
            default:
                return {.kind = Kind::Text, .what = what, .choices = choices, .ignoresCase = true};
        }
    }

    const Form* formOf(const Option& option)
    {
        auto form = makeForm(option);
        form.check = [&option](const JsonNode& node) { option.check(readOptionValue(node, option)); };
        return keep(std::move(form));
    }

    void addTableOptions(std::vector<FormMember>& list)
    {
        for (const auto& option : getJobOptions())
            for (const auto& tableOption : tableOptions)
                if (std::string_view(tableOption.name) == option.name)
                    list.push_back({option.jobName, formOf(option), option.help});
    }

    Form makeChart()
    {
        Form form{.kind = Kind::Object, .what = "an object, a chart", .name = "chart"};
        form.members.push_back({"table", &path, "the table of the chart's data", true});
        for (const auto& option : getJobOptions())
            form.members.push_back({option.jobName, formOf(option), option.help});
        for (const auto& option : getOptions())
            form.members.push_back({option.name, formOf(option), describe(option)});
        form.check = [](const JsonNode& node) { checkChartJob(readChartJob(node, JobPlace{})); };
        return form;
    }

    const Form chart = makeChart();
    const Form charts{.kind = Kind::List, .what = "a list of charts", .items = &chart};

    const Form run{
        .kind = Kind::Object,
        .what = "an object, a run of text",
        .name = "run",
        .members = {{"text", &text, "what it says"},
                    {"bold", &flag},
                    {"italic", &flag},
                    {"link", &text, "an address that the text leads to"},
                    {"reference", &text, "the name of a caption, whose label and number stand here"}}};
    const Form runOrText{.kind = Kind::Any, .what = "a text or a run", .alternatives = {&text, &run}};
    const Form runs{.kind = Kind::List, .what = "a list of runs", .items = &runOrText};
    const Form runsOrText{.kind = Kind::Any,
                          .what = "a text, or a list of texts and runs",
                          .name = "runs",
                          .alternatives = {&text, &runs}};

    const Form item{.kind = Kind::Object,
                    .what = "an object, an item",
                    .members = {{"text", &runsOrText, "what it says", true},
                                {"level", &depth, "how far it is indented, 0 to 8 (default: 0)"}}};
    const Form itemOrText{
        .kind = Kind::Any, .what = "a text, or an object with a text", .alternatives = {&text, &item}};
    const Form items{.kind = Kind::List, .what = "a list of items", .items = &itemOrText};

    const Form cell{.kind = Kind::Any, .what = "a text or a number", .alternatives = {&text, &number}};
    const Form row{.kind = Kind::List, .what = "a list of cells", .items = &cell};
    const Form rows{.kind = Kind::List, .what = "a list of rows, each a list of cells", .items = &row};

    const FormMember widths{"widths", &textList, "the widths of the columns, as in 3cm"};
    const FormMember style{"style", &text, "the name of a table style"};

    const Form ownTable{.kind = Kind::Object,
                        .what = "a table",
                        .members = {{"rows", &rows, "the cells, row by row", true},
                                    {"columns", &textList, "the header row", true},
                                    widths,
                                    style}};

    Form makeDataTable()
    {
        Form form{.kind = Kind::Object, .what = "a table"};
        form.members.push_back({"table", &path, "the table whose data it shows", true});
        form.members.push_back({"header", &text, "what stands above the categories"});
        form.members.push_back(
            {"number-format", formOf(*findOption("number-format")), "how its numbers look"});
        form.members.push_back({"category-format", formOf(*findOption("category-format")),
                                "how its dates look (default: as the language orders them)"});
        form.members.insert(form.members.end(), {widths, style});
        addTableOptions(form.members);
        form.check = [](const JsonNode& node) { checkTableOptions(readChartJob(node, JobPlace{})); };
        return form;
    }

    const Form dataTable = makeDataTable();
    const Form table{.kind = Kind::Choice,
                     .what = "an object with \"table\", a file, or with \"columns\" and \"rows\"",
                     .alternatives = {&ownTable, &dataTable}};

    const Form page{
        .kind = Kind::Object,
        .what = "an object, the pages of the section",
        .members = {{"paper", makeChoices("A3|A4|A5|letter|legal"), "the size of the pages (default: A4)"},
                    {"landscape", &flag},
                    {"top", &text, "margin, as in 2cm (default: 1in)"},
                    {"right", &text, "margin (default: 1in)"},
                    {"bottom", &text, "margin (default: 1in)"},
                    {"left", &text, "margin (default: 1in)"}}};

    static Form makeBlock(const char* what, std::vector<FormMember> members)
    {
        members.front().isRequired = true;
        return {.kind = Kind::Object, .what = what, .members = std::move(members)};
    }

    const Form blockForms[11] = {
        makeBlock("a heading", {{"heading", &text, "its text"}, {"level", &level, "1 to 9 (default: 1)"}}),
        makeBlock("a paragraph", {{"paragraph", &runsOrText, "its text"},
                                  {"style", &text, "the name of a paragraph style, as in Title"}}),
        makeBlock("a list", {{"list", &items, "its items"},
                             {"kind", makeChoices("bullets|numbers"), "(default: bullets)"}}),
        makeBlock("a chart", {{"chart", &chart, "a chart in a line of its own"},
                              {"table", &flag, "whether a table of its data follows"}}),
        makeBlock("charts", {{"charts", &charts, "charts side by side"}}),
        makeBlock("a table", {{"table", &table, "a table of a file's data, or of its own"}}),
        makeBlock("an image", {{"image", &path, "a PNG or JPEG file"},
                               {"width", &text, "as in 3cm (default: the image's own)"},
                               {"height", &text},
                               {"alt-text", &text, "what a screen reader says"}}),
        makeBlock("a caption",
                  {{"caption", &text, "what it says after its number"},
                   {"label", &text, "what is counted (default: Figure or Table, in the language)"},
                   {"name", &text, "for references to it"}}),
        makeBlock("a page break", {{"page-break", &flag, "true"}}),
        makeBlock("a section", {{"section", &page, "new pages"}}),
        makeBlock("a table of contents", {{"contents", &level, "the levels of headings that it lists"}}),
    };

    std::vector<const Form*> listBlocks() const
    {
        std::vector<const Form*> forms;
        for (const auto& form : blockForms) forms.push_back(&form);
        return forms;
    }

    const Form block{
        .kind = Kind::Choice, .what = "an object, a block", .name = "block", .alternatives = listBlocks()};
    const Form blocks{.kind = Kind::List, .what = "a list of blocks", .items = &block};

    const Form properties{.kind = Kind::Object,
                          .what = "an object, the properties of the document",
                          .members = {{"title", &text},
                                      {"author", &text},
                                      {"keywords", &text},
                                      {"language", &text, "as in de-DE (default: en-US)"}}};

    Form makeForEach()
    {
        Form form{.kind = Kind::Object, .what = "an object, the groups"};
        form.members = {{"table", &path, "the table whose rows are parted into groups", true},
                        {"by", &text, "the column whose texts name the groups", true},
                        {"output", &text, "the document of a group, as in report-{region}.docx", true}};
        for (const auto& option : getJobOptions())
            if (std::string_view(option.group) == tableOptions.front().group)
                form.members.push_back({option.jobName, formOf(option), option.help});
        return form;
    }

    const Form forEach = makeForEach();

    const Form job{
        .kind = Kind::Object,
        .what = "an object",
        .members = {{"$schema", &text, "the address of this schema, for editors"},
                    {"template", &path,
                     "a document that is filled; with blocks, one that lends them its look"},
                    {"charts", &charts, "the charts of a new document, or those that a template gets"},
                    {"texts", &texts, "what stands for the placeholders {{name}}"},
                    {"for-each", &forEach, "one document for each group of a table's rows"},
                    {"blocks", &blocks, "what the document is made of"},
                    {"header", &runsOrText, "a line at the top of each page, with {page} and {pages}"},
                    {"footer", &runsOrText, "a line at the bottom of each page"},
                    {"properties", &properties}},
        .check = checkJob};
};

}  // namespace

const Form& getJobForm()
{
    static const JobForms forms;
    return forms.job;
}

}  // namespace quillon::report
