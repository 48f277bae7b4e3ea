#pragma once

#include <cstddef>
#include <string>
#include <xercesc/dom/DOM.hpp>

#include "report/document/ChartParts.h"

namespace quillon::report {

/// A chart on its way into a document.
struct PlacedChart {
    const chart::Chart& chart;
    const ChartOptions& options;
    /// From 1, unique in the document; messages name the chart by it.
    std::size_t number;
    /// Of the chart part, in the main document.
    std::string relationshipId;
    const Listener& listener;
};

/// Appends the run with the drawing to `paragraph`, and returns the other parts.
/// Throws: std::runtime_error that names the chart, and the series and point, that cannot be written.
ChartParts appendChart(xercesc::DOMElement* paragraph, const PlacedChart& placed);

}  // namespace quillon::report
