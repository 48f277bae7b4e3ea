#pragma once

#include <xercesc/dom/DOM.hpp>

#include "report/finish/ChartContext.h"

namespace quillon::report {

/// The relationship from a chart part to its workbook.
inline constexpr auto workbookRelationshipId = "rId1";

/// Turns the chart part that the writer made into one that word processors accept.
/// Throws: ChartError for what no document can hold.
void finishChartPart(xercesc::DOMDocument* doc, const ChartContext& context);

/// The same for the w:r element that holds the inline drawing.
void finishDrawing(xercesc::DOMElement* run, const ChartContext& context);

}  // namespace quillon::report
