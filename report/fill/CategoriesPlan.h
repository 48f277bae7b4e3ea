#pragma once

#include <cstddef>
#include <memory>

#include "report/fill/ChartMarkup.h"
#include "report/fill/ChartReader.h"
#include "report/fill/FillReport.h"
#include "report/fill/Matching.h"
#include "report/options/ChartData.h"

namespace quillon::report {

/// The categories that a chart has from now on, and which of the old ones they continue.
struct CategoriesPlan {
    Categories before = {};
    std::shared_ptr<const Categories> after = {};
    /// For each category, the old one whose formats it takes.
    std::shared_ptr<const Matches> matches = {};
    bool areNew = false;
    /// Whether every series gets categories, as none had any.
    bool areMissing = false;
    /// Of the longest series.
    std::size_t pointsBefore = 0;
    std::size_t pointsAfter = 0;
};

/// The categories of the data, for as many points as its longest series has; without any, the chart keeps its
/// own.
CategoriesPlan planCategories(const ChartMarkup& part, const ChartData& data, const FillOptions& options);

}  // namespace quillon::report
