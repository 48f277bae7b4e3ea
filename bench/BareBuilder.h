#pragma once

#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>

namespace quillon::bench {

enum class ChartType { Bar, Column, Line, Pie };

/// The plain data from which both sides of a comparison make their chart.
struct PlainChart {
    ChartType type;
    std::u16string title;
    std::vector<std::u16string> categories;
    std::vector<std::vector<double>> series;
    /// Whether every point has a red fill and a blue border of its own.
    bool formattedPoints = false;
};

/// Makes the tree that the chart's writer makes, with straight Xerces calls and nothing else: the baseline.
void buildBare(xercesc::DOMDocument* doc, const PlainChart& chart);

}  // namespace quillon::bench
