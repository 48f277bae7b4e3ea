#include "report/command/ChartJob.h"

namespace quillon::report {
namespace {

/// The same member, seen from the job.
template <typename Value>
JobOption::Member toJobMember(Value TableOptions::*member)
{
    return static_cast<Value ChartJob::*>(member);
}

std::vector<JobOption> collectOptions()
{
    std::vector<JobOption> options = {
        {"title", &ChartJob::title, "the chart's title"},
        {"heading", &ChartJob::heading, "a heading above the chart"},
    };
    for (const auto& option : tableOptions)
        options.push_back({option.name,
                           std::visit([](auto member) { return toJobMember(member); }, option.member),
                           option.help});
    return options;
}

}  // namespace

const std::vector<JobOption>& getJobOptions()
{
    static const auto options = collectOptions();
    return options;
}

}  // namespace quillon::report
