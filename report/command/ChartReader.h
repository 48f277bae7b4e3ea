#pragma once

#include <filesystem>

#include "report/command/ChartJob.h"
#include "report/command/JsonTree.h"
#include "report/options/Options.h"

namespace quillon::report {

/// What a JSON value says, as the option has it; nothing for a value that no option has.
OptionValue readOptionValue(const JsonNode& value, const Option& option);

/// A chart of a job file; its table is from `folder` on. Members that belong to no chart are passed over.
/// Requires: the object has the form of a chart.
ChartJob readChartJob(const JsonNode& chart, const std::filesystem::path& folder);

/// Refuses options that do not go together, or do not suit the type of the chart.
/// Throws: std::runtime_error with a sentence.
void checkChartJob(const ChartJob& job);

}  // namespace quillon::report
