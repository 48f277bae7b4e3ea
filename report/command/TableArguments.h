#pragma once

#include <string>
#include <vector>

#include "report/command/Argument.h"
#include "report/command/ChartJob.h"
#include "report/command/CommandLine.h"
#include "report/options/Options.h"

namespace quillon::report {

/// The heading above a group of options, in help and documentation.
const char* getTitle(OptionGroup group);

/// The options that stand behind a TABLE: those of the job, of the table and of the chart.
std::vector<Argument> makeTableArguments(JobUse use);

/// One job for each TABLE, in order; the first `skipped` words that stand alone are none. Options before the
/// first TABLE are for all, and give way to those behind one.
/// Throws: std::runtime_error for a value that is not allowed.
std::vector<ChartJob> readTables(const CommandLine& commandLine, std::size_t skipped = 0);

}  // namespace quillon::report
