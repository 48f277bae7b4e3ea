#pragma once

#include <string>
#include <variant>
#include <vector>

#include "report/options/ChartOptions.h"
#include "report/table/TableOptions.h"

namespace quillon::report {

/// One chart that the author asks for: a table, how to read it, and how to show it. An empty text stands for
/// the default.
struct ChartJob : TableOptions {
    std::string table;
    std::string title;
    std::string heading;
    /// How the chart looks and stands.
    ChartOptions options;
};

/// How the command line (behind "--") and a job file name a member of ChartJob; the options of the chart have
/// a table of their own.
struct JobOption {
    using Member = std::variant<std::string ChartJob::*, std::vector<std::string> ChartJob::*,
                                std::size_t ChartJob::*, bool ChartJob::*>;

    const char* name;
    Member member;
    const char* help;
};

/// Title and heading, and behind them the options of the table.
const std::vector<JobOption>& getJobOptions();

}  // namespace quillon::report
