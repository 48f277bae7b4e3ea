#pragma once

#include <string>

namespace quillon::report {

/// Where the legend of a chart stands. Automatic: below a pie and below several series, nowhere otherwise.
enum class Legend { Automatic, None, Right, Top, Left, Bottom };

/// How a chart stands in its document.
struct ChartOptions {
    /// Lengths with a unit (cm, mm, in, pt), 0.1 to 22 inches. Default: 6in by 3.5in.
    std::string width = "6in";
    std::string height = "3.5in";
    Legend legend = Legend::Automatic;
    /// What a screen reader says. Default, for an empty text: made from type, title, series and range of the
    /// data.
    std::string altText = {};
    /// Whether the document carries the chart's data as an embedded workbook, for editing in a word
    /// processor.
    bool workbook = true;
};

}  // namespace quillon::report
