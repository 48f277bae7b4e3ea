#pragma once

#include <memory>

#include "chart/model/Chart.h"
#include "fuzz/Input.h"
#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"

namespace quillon::fuzz {

/// A data set of any texts and numbers; series and points may stand in several places.
std::shared_ptr<chart::DataSet> makeDataSet(Input& input);

/// A chart of any kind, with formats of all kinds.
std::shared_ptr<chart::Chart> makeChart(Input& input);

/// Any type and options, mostly those that suit the chart as it is drawn then.
report::ChartOptions makeOptions(Input& input, const chart::Chart& chart);

/// What the data set cannot say: formats, dates, levels, error bars.
report::ChartData makeData(Input& input, std::shared_ptr<chart::DataSet> dataSet);

}  // namespace quillon::fuzz
