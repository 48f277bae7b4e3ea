#pragma once

#include <cstddef>
#include <string>

#include "chart/model/Chart.h"
#include "report/options/ChartData.h"
#include "report/options/ChartKind.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "report/package/ThemeColors.h"
#include "report/workbook/Workbook.h"

namespace quillon::report {

/// A chart on its way into a document: what it says, and where it stands. It goes the whole way.
struct ChartContext {
    const chart::Chart& chart;
    const ChartData& data;
    const ChartOptions& options;
    ChartKind kind;
    /// From 1, unique in the document; sentences name the chart by it.
    std::size_t number;
    /// Of the chart part, in the part that holds the drawing.
    std::string relationshipId;
    const Listener& listener;
    /// What the workbook holds beside the data.
    WorkbookOptions workbook = {};
    /// Of the document, as far as it is known.
    ThemeColors theme = {};

    /// "chart 3, series 1: the sentence"; an empty place is the chart as a whole.
    std::string describe(const std::string& place, const std::string& sentence) const
    {
        return "chart " + std::to_string(number) + (place.empty() ? "" : ", ") + place + ": " + sentence;
    }

    /// Tells the caller what concerns the chart as a whole.
    void warn(const std::string& sentence) const
    {
        if (listener.warning) listener.warning(describe("", sentence));
    }
};

}  // namespace quillon::report
