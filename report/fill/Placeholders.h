#pragma once

#include <cstddef>
#include <stdexcept>
#include <string>
#include <vector>

#include "chart/model/Chart.h"
#include "report/fill/FillReport.h"
#include "report/fill/Placeholder.h"
#include "report/options/ChartData.h"
#include "report/options/ChartOptions.h"
#include "report/options/Listener.h"
#include "report/package/Package.h"
#include "support/Export.h"

namespace quillon::report {

/// A chart for a placeholder; the members outlive the call that takes it.
struct NewChart {
    const chart::Chart& chart;
    const ChartOptions& options;
    const Listener& listener;
    const ChartData& data;
};

/// Puts a chart wherever the placeholder is alone in a paragraph, as wide as the column or cell unless the
/// options have another width, or is the alternative text of a picture, whose size and place it takes. The
/// name of the first in the document is that of the placeholder, those of the others have numbers behind it.
/// Throws: as DocumentTexts::failMissing and makeChartParts.
QUILLON_EXPORT void insertChart(Package& document, const std::string& name, const NewChart& chart);

/// Puts a table of the data wherever `{{table:name}}` is alone in a paragraph, in the style that tables of
/// the document have. Throws: as DocumentTexts::failMissing.
QUILLON_EXPORT void insertTable(Package& document, const std::string& name, const ChartData& data,
                                const ChartOptions& options = {});

}  // namespace quillon::report
