#pragma once

#include <string>
#include <vector>

#include "report/command/ChartJob.h"

namespace quillon::report {

/// Reads a job file: {"charts": [{"table": "sales.csv", "type": "bar", ...}, ...]}. The members are named as
/// on the command line; lists are arrays. A table's path is relative to the job file. Throws:
/// std::runtime_error that names the file, the chart and the member, and says what is allowed.
std::vector<ChartJob> readJobFile(const std::string& path);

}  // namespace quillon::report
