#pragma once

#include <functional>
#include <memory>
#include <string>

#include "chart/model/Chart.h"
#include "report/command/ChartJob.h"
#include "report/options/ChartData.h"

namespace quillon::report {

/// Makes the chart that `job` asks for of the data of its table; `note` gets a sentence on what a pie does
/// not show. Throws: std::runtime_error that says what was wrong, where, and what is allowed.
std::shared_ptr<chart::Chart> makeChart(const ChartJob& job, const ChartData& data,
                                        const std::function<void(const std::string&)>& note);

}  // namespace quillon::report
