#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <xercesc/dom/DOM.hpp>

#include "chart/model/Chart.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"

namespace quillon::report {

/// What the finishing of one chart needs to know.
struct FinishingContext {
    const chart::Chart& chart;
    const ChartOptions& options;
    /// From 1, unique in the document.
    std::size_t drawingNumber;
    /// English Metric Units.
    std::int64_t width;
    std::int64_t height;
    /// The relationship id of the workbook in the chart part; null for a chart without one.
    const char16_t* workbookRelationshipId;
    std::function<void(const std::string&)> warn;
};

/// Turns the chart part that the writer made into one that word processors accept.
/// Throws: std::runtime_error that names series and point, or the text, that no document can hold.
void finishChartPart(xercesc::DOMDocument* doc, const FinishingContext& context);

/// The same for the w:r element that holds the inline drawing.
void finishDrawing(xercesc::DOMElement* run, const FinishingContext& context);

}  // namespace quillon::report
