#pragma once

#include "report/command/ChartJob.h"
#include "report/command/Groups.h"
#include "report/command/JsonTree.h"
#include "report/options/Options.h"

namespace quillon::report {

/// What a JSON value says, as the option has it; nothing for a value that no option has.
OptionValue readOptionValue(const JsonNode& value, const Option& option);

/// A chart of a job file. Members that belong to no chart are passed over.
/// Requires: the object has the form of a chart.
ChartJob readChartJob(const JsonNode& chart, const JobPlace& place);

/// Refuses options that do not go together, or do not suit the type of the chart.
/// Throws: std::runtime_error with a sentence.
void checkChartJob(const ChartJob& job);

}  // namespace quillon::report
