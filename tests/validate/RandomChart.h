#pragma once

#include <memory>
#include <optional>
#include <set>
#include <string>

#include "chart/model/Chart.h"
#include "report/options/ChartData.h"
#include "report/options/ChartKind.h"
#include "report/options/ChartOptions.h"

namespace quillon {

/// What it takes to write a chart.
struct RandomChart {
    report::ChartKind kind;
    std::shared_ptr<chart::Chart> chart;
    report::ChartData data;
    report::ChartOptions options;
    /// The names of the options that were set.
    std::set<std::string> optionNames;
};

/// From 0 to `count` - 1, the same sequence in every run: the standard fixes that of the engine, from which
/// one number is taken.
unsigned pick(unsigned count);
/// A text for fields without a notation for what XML cannot hold.
std::string pickPlainText();
/// A chart of a kind, or any, with any options that go together, with odd texts and numbers.
RandomChart makeRandomChart(std::optional<report::ChartKind> kind = {});

}  // namespace quillon
