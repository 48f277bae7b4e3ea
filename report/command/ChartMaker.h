#pragma once

#include <functional>
#include <memory>
#include <string>

#include "chart/model/Chart.h"
#include "report/command/ChartJob.h"
#include "report/options/ChartData.h"
#include "report/options/Listener.h"
#include "report/table/ChartTable.h"

namespace quillon::report {

/// The data of the job's table, for a chart that has `target`. Throws: as readChartData.
ChartData readData(const ChartJob& job, const Listener& listener, const TableTarget& target = {});

/// Makes the chart that `job` asks for of the data of its table; `note` gets a sentence on what can hardly be
/// seen in it. Throws: std::runtime_error that says what was wrong, where, and what is allowed.
std::shared_ptr<chart::Chart> makeChart(const ChartJob& job, const ChartData& data,
                                        const std::function<void(const std::string&)>& note);

}  // namespace quillon::report
