#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "report/fill/ChartMarkup.h"
#include "report/fill/ChartReader.h"
#include "report/fill/Matching.h"

namespace quillon::report {

/// What a source of points holds from now on.
struct SourcePlan {
    /// Number, Text or Levels; None when the source is left alone.
    PointSource::Kind kind = PointSource::Kind::None;
    /// Series share what they have in common.
    std::shared_ptr<const Categories> content = {};
    /// What replaces the number format; empty keeps it.
    std::string format = {};
    /// Empty for cells that are to be found.
    std::string formula = {};
    /// Whether cells hold the points: literals have none.
    bool hasCells = true;
};

/// The labels of points whose text is computed.
struct LabelTexts {
    /// The points that had one.
    std::set<std::size_t> before = {};
    std::map<std::size_t, std::string> after = {};
};

/// A series that the chart has from now on.
struct SeriesPlan {
    /// Whose place, or whose look for a series that is added.
    const SeriesMarkup* look = nullptr;
    bool isAdded = false;
    /// Whether a series that is added takes a colour of its own.
    bool hasOwnColor = true;
    /// Whether it does without the error bars of that look, whose amounts are those of another series.
    bool leavesErrorBars = false;
    std::uint32_t index = 0;
    std::uint32_t order = 0;
    /// What it is called from now on.
    std::string title = {};
    SourcePlan name = {};
    SourcePlan categories = {};
    /// The position of the series whose cells hold the categories.
    std::size_t categoriesOf = 0;
    SourcePlan values = {};
    SourcePlan sizes = {};
    SourcePlan errorsPlus = {};
    SourcePlan errorsMinus = {};
    /// For each point, the old one whose format it takes.
    std::shared_ptr<const Matches> points = {};
    LabelTexts labels = {};
};

}  // namespace quillon::report
