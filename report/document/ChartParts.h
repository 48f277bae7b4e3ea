#pragma once

#include <cstddef>
#include <string>

#include "report/document/Document.h"
#include "support/Export.h"

namespace quillon::report {

/// What a chart adds to a package that a caller makes: bytes for two parts, and markup for the main document.
struct ChartParts {
    /// The chart part, in UTF-8, with its declaration.
    std::string chart;
    /// The .xlsx workbook with the chart's data, which the chart part names by `workbookRelationshipId`.
    /// Empty without one.
    std::string workbook;
    /// The w:r element with the inline drawing, for a paragraph, in UTF-8, with its namespaces declared.
    std::string run;
};

/// The relationship from the chart part to its workbook.
inline constexpr auto workbookRelationshipId = "rId1";

/// Makes the parts of a chart. `drawingNumber` is from 1 and unique in the document, `relationshipId` leads
/// from the main document to the chart part. The warnings of `listener` say what was replaced so that the
/// parts stay valid. Throws: std::runtime_error for a width or height that is no length, and one that
/// names what in the chart cannot be written.
QUILLON_EXPORT ChartParts makeChartParts(const chart::Chart& chart, const ChartOptions& options,
                                         std::size_t drawingNumber, const std::string& relationshipId,
                                         const Listener& listener = {});

}  // namespace quillon::report
