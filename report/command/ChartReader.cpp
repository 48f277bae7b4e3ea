#include "report/command/ChartReader.h"

#include <algorithm>

#include "report/command/ChartMaker.h"

namespace quillon::report {
namespace {

using Kind = JsonNode::Kind;

std::vector<std::string> readTexts(const JsonNode& value)
{
    std::vector<std::string> texts;
    for (const auto& item : value.items) texts.push_back(item.text);
    return texts;
}

/// Stores a member's value where the option says.
struct Store {
    ChartJob& job;
    const JsonNode& value;

    void operator()(std::string ChartJob::*member) const { job.*member = value.text; }
    void operator()(std::vector<std::string> ChartJob::*member) const
    {
        job.*member = value.is(Kind::Text) ? std::vector{value.text} : readTexts(value);
    }
    void operator()(std::size_t ChartJob::*member) const
    {
        job.*member = static_cast<std::size_t>(value.number);
    }
    void operator()(bool ChartJob::*member) const { job.*member = value.flag; }
};

const JobOption* findJobOption(const std::string& name)
{
    const auto& options = getJobOptions();
    const auto found = std::find_if(options.begin(), options.end(),
                                    [&name](const auto& option) { return name == option.jobName; });
    return found == options.end() ? nullptr : &*found;
}

/// A list of one may stand as a text.
bool takesTexts(const Option& option)
{
    return option.form == OptionForm::Choices || option.form == OptionForm::Texts;
}

}  // namespace

OptionValue readOptionValue(const JsonNode& value, const Option& option)
{
    switch (value.kind) {
        case Kind::Flag:
            return value.flag;
        case Kind::Number:
            return value.number;
        case Kind::Text:
            if (takesTexts(option)) return std::vector{value.text};
            return value.text;
        case Kind::List:
            return readTexts(value);
        case Kind::Null:
            return {};
        case Kind::Object:
            break;
    }
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const auto& member : value.members) pairs.emplace_back(member.name, member.value.text);
    return pairs;
}

ChartJob readChartJob(const JsonNode& chart, const std::filesystem::path& folder)
{
    ChartJob job;
    for (const auto& [name, position, value] : chart.members) {
        if (name == "table")
            job.table = value.text == "-" ? value.text : (folder / value.text).string();
        else if (const auto* option = findOption(name))
            setOption(job.options, *option, readOptionValue(value, *option), "\"" + name + "\"");
        else if (const auto* jobOption = findJobOption(name))
            std::visit(Store{job, value}, jobOption->member);
    }
    return job;
}

void checkChartJob(const ChartJob& job)
{
    checkTableOptions(job);
    if (job.fill.empty()) checkOptions(job.options, job.options.kind.value_or(ChartKind::Column));
}

}  // namespace quillon::report
