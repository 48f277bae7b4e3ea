#pragma once

#include <cstddef>
#include <set>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "chart/model/DataSeries.h"
#include "report/finish/ChartContext.h"

namespace quillon::report {

/// A c:ser element and the series behind it.
struct SeriesPart {
    xercesc::DOMElement* element;
    /// Of the series in the data set, 0-based; also its column in the workbook, behind the categories.
    std::size_t index;
    const chart::DataSeries& series;
};

/// The axes that a group of series stands on; null where there are none.
struct Axes {
    xercesc::DOMElement* category = nullptr;
    xercesc::DOMElement* value = nullptr;
};

/// The axes that the group names. Requires: a group in its plot area.
Axes findAxes(const xercesc::DOMElement* group);

/// The chart part while it is finished: the places that the rules work on, and what they know of the chart.
class ChartPart {
 public:
    /// Requires: `doc` holds the chart part that the writer made for the chart of `context`.
    ChartPart(xercesc::DOMDocument* doc, const ChartContext& context);

    /// "series 1 (\"North\")".
    static std::string describe(const SeriesPart& series);
    /// Tells the caller what was replaced or left out; a sentence that was told before stays unsaid.
    void warn(const std::string& place, const std::string& sentence);

    xercesc::DOMDocument* const doc;
    xercesc::DOMElement* const chartSpace;
    xercesc::DOMElement* const chart;
    xercesc::DOMElement* const plotArea;
    /// c:barChart, c:lineChart or c:pieChart.
    xercesc::DOMElement* const group;
    std::vector<SeriesPart> series;
    const ChartContext& context;

 private:
    std::set<std::string> told_;
};

}  // namespace quillon::report
