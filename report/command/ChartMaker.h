#pragma once

#include <functional>
#include <memory>
#include <string>

#include "chart/model/Chart.h"
#include "report/command/ChartJob.h"
#include "report/table/Table.h"

namespace quillon::report {

/// Makes the chart that `job` asks for from its table; `note` gets a sentence on each column that is left
/// out. Throws: std::runtime_error that says what was wrong, where, and what is allowed.
std::shared_ptr<chart::Chart> makeChart(const ChartJob& job, const Table& table,
                                        const std::function<void(const std::string&)>& note);

}  // namespace quillon::report
