#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "chart/model/DataSeries.h"
#include "report/finish/ChartContext.h"
#include "report/finish/Colors.h"

namespace quillon::report {

/// A c:ser element and the series behind it.
struct SeriesPart {
    xercesc::DOMElement* element;
    /// Of the series in the data set, 0-based.
    std::size_t index;
    const chart::DataSeries& series;
};

/// The name of the group that the series stands in: "c:lineChart".
std::u16string_view getGroupName(const SeriesPart& series);

/// The axes that a group of series stands on; null where there are none.
struct Axes {
    xercesc::DOMElement* category = nullptr;
    xercesc::DOMElement* value = nullptr;
};

/// The axes that the group names. Requires: a group in its plot area.
Axes findAxes(const xercesc::DOMElement* group);

/// A place in a chart. It costs nothing until a sentence has to name it.
struct Place {
    /// Null for a place outside the series.
    const SeriesPart* series = nullptr;
    /// 0-based, in the series.
    std::optional<std::size_t> point = {};
    /// "fill", or the first part of a place: "label format".
    const char* what = "";
    const char* detail = "";

    /// A place inside this one.
    Place of(const char* inside) const
    {
        return *what == 0 ? Place{series, point, inside, ""} : Place{series, point, what, inside};
    }
    /// "series 1 (\"North\"), point 2, label, fill".
    std::string describe() const;
};

/// The chart part while it is finished: the places that the rules work on, and what they know of the chart.
class ChartPart {
 public:
    /// Requires: `doc` holds the chart part that the writer made for the chart of `context`.
    ChartPart(xercesc::DOMDocument* doc, const ChartContext& context);

    /// "series 1 (\"North\")".
    static std::string describe(const SeriesPart& series);
    static std::string describe(std::size_t index, const chart::DataSeries& series);
    /// Tells the caller what was replaced or left out; a sentence that was told before stays unsaid.
    void warn(const std::string& place, const std::string& sentence);
    void warn(const Place& place, const std::string& sentence);
    /// The same for a text that should be a colour.
    void warnNoColor(const Place& place, const std::u16string& text);

    /// Of the author's series; a waterfall draws one as several.
    const SeriesDetails& getDetails(const SeriesPart& one) const
    {
        return context.data.getDetails(context.kind == ChartKind::Waterfall ? 0 : one.index);
    }

    /// Parts of a waterfall below 0 have the colour of the parts above.
    std::size_t getColorPosition(const SeriesPart& one) const;
    /// The colour of a series that says none. Series that are not seen take no turn.
    PaintColor getStandardColor(const SeriesPart& one) const;
    /// Whether it is not seen but carries those that are stacked on it.
    bool isHidden(const SeriesPart& one) const { return hidden_[one.index]; }
    /// The 0-based column of its values in the workbook.
    unsigned long getColumn(const SeriesPart& one) const;

    xercesc::DOMDocument* const doc;
    xercesc::DOMElement* const chartSpace;
    xercesc::DOMElement* const chart;
    xercesc::DOMElement* const plotArea;
    /// The groups of series in the order that they are drawn in; those on the second axes come last. Each has
    /// a series, unless the chart has none at all.
    std::vector<xercesc::DOMElement*> groups;
    std::vector<xercesc::DOMElement*> secondGroups;
    /// Of the first group.
    const Axes axes;
    /// Null where no series stands on a second axis.
    Axes secondAxes;
    std::vector<SeriesPart> series;
    const ChartContext& context;
    const StandardColors colors;

 private:
    std::vector<bool> findHidden() const;

    std::set<std::string> told_;
    /// By series.
    std::vector<bool> hidden_;
};

}  // namespace quillon::report
