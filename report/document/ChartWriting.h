#pragma once

#include <string>
#include <xercesc/dom/DOM.hpp>

#include "report/finish/ChartContext.h"
#include "report/package/Xml.h"

namespace quillon::report {

/// A chart as it is written: the bytes of its parts, and the element that places it.
struct WrittenChart {
    std::string chart;
    /// Empty without one.
    std::string workbook;
    /// The w:r with the drawing; it belongs to the main document and stands nowhere yet.
    xercesc::DOMElement* run;
};

/// Writes a chart for `mainDocument`.
/// Throws: std::runtime_error that names the chart, and the series and point, that cannot be written.
WrittenChart writeChart(xercesc::DOMDocument* mainDocument, const ChartContext& context);

}  // namespace quillon::report
