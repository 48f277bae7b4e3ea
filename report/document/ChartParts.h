#pragma once

#include <cstddef>
#include <string>

#include "chart/model/Chart.h"
#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "report/package/ThemeColors.h"
#include "support/Export.h"

namespace quillon::report {

/// What a chart adds to a package that a caller makes: bytes for two parts, and markup for the main document.
struct ChartParts {
    /// The chart part, in UTF-8, with its declaration. It names its workbook by the relationship id "rId1".
    std::string chart;
    /// The .xlsx workbook with the chart's data. Empty without one.
    std::string workbook;
    /// The w:r element with the inline drawing, for a paragraph, in UTF-8, with its namespaces declared.
    std::string run;
};

/// Makes the parts of a chart. `drawingNumber` is from 1 and unique in the document, `relationshipId` leads
/// from the main document to the chart part. `data` is what the chart's data set cannot say; its own data set
/// is not looked at. The warnings of `listener` say what was replaced so that the parts stay valid. Texts on
/// automatic colours are read best with those of the document's `theme`.
/// Throws: std::runtime_error for an option that does not suit the chart, and one that names what in the
/// chart cannot be written.
QUILLON_EXPORT ChartParts makeChartParts(const chart::Chart& chart, const ChartOptions& options,
                                         std::size_t drawingNumber, const std::string& relationshipId,
                                         const Listener& listener = {}, const ChartData& data = {},
                                         const ThemeColors& theme = {});

}  // namespace quillon::report
