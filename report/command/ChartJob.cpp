#include "report/command/ChartJob.h"

#include "report/options/ListText.h"
#include "report/options/Options.h"
#include "report/options/PlainNumber.h"
#include "report/options/QuotedText.h"
#include "report/table/Fail.h"

namespace quillon::report {
namespace {

/// The same member, seen from the job.
template <typename Value>
JobOption::Member toJobMember(Value TableOptions::*member)
{
    return static_cast<Value ChartJob::*>(member);
}

constexpr auto chartGroup = "The chart";

std::vector<JobOption> collectOptions()
{
    const auto fill = JobUse::Fill;
    const auto every = JobUse::Every;
    std::vector<JobOption> options = {
        {"title", "title", &ChartJob::title, "", "the chart's title", chartGroup, every},
        {"heading", "heading", &ChartJob::heading, "", "a heading above the chart", chartGroup, JobUse::New},
        {"chart", "fill", &ChartJob::fill, "",
         "the chart that takes the data: its name, alternative text, title or number", chartGroup, fill},
        {"at", "at", &ChartJob::at, "", "the placeholder that becomes a chart, as margin for {{margin}}",
         chartGroup, fill},
        {"match", "match", &ChartJob::match, "name|position",
         "how series and categories find the old ones whose look they take: by name or position (default: "
         "name)",
         chartGroup, fill},
    };
    for (const auto& option : tableOptions)
        options.push_back({option.name, option.name,
                           std::visit([](auto member) { return toJobMember(member); }, option.member),
                           option.values, option.help, option.group, every, option.least});
    return options;
}

std::size_t readWholeNumber(const JobOption& option, const std::string& text)
{
    const auto number = readPlainNumber<std::size_t>(text);
    if (!number || *number < option.least)
        fail("--{}: expected {}, got {}.", option.name, option.describeNumber(), quoteText(text));
    return *number;
}

/// Stores the text of an option where it says.
struct Store {
    ChartJob& job;
    const JobOption& option;
    const std::string& text;

    void operator()(std::string ChartJob::*member) const { job.*member = text; }
    void operator()(std::vector<std::string> ChartJob::*member) const { job.*member = splitList(text); }
    void operator()(std::size_t ChartJob::*member) const { job.*member = readWholeNumber(option, text); }
    void operator()(bool ChartJob::*member) const { job.*member = true; }
};

}  // namespace

std::string JobOption::describeNumber() const
{
    return fmt::format("a whole number, {} or more", least);
}

const char* JobOption::getValueName() const
{
    if (std::holds_alternative<bool ChartJob::*>(member)) return "";
    if (std::holds_alternative<std::size_t ChartJob::*>(member)) return "COUNT";
    if (std::holds_alternative<std::vector<std::string> ChartJob::*>(member)) return "LIST";
    return *values != '\0' ? "WORD" : "TEXT";
}

const std::vector<JobOption>& getJobOptions()
{
    static const auto options = collectOptions();
    return options;
}

void setFromText(ChartJob& job, const std::string& name, const std::string& text)
{
    for (const auto& option : getJobOptions())
        if (name == option.name) return std::visit(Store{job, option, text}, option.member);
    const auto& option = *findOption(name);
    const auto shown = "--" + name;
    setOption(job.options, option, readOptionText(option, text, shown), shown);
}

}  // namespace quillon::report
