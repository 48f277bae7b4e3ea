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

/// The placeholders of a document, in order: its text, headers, footers and notes, with what stands in
/// tables, text boxes, links, fields and content controls. The two copies of a text box count once.
QUILLON_EXPORT std::vector<Placeholder> findPlaceholders(const Package& document);

/// There is no placeholder of that name.
class MissingPlaceholder : public std::runtime_error {
 public:
    using std::runtime_error::runtime_error;
};

/// Replaces a placeholder wherever it stands in text, which takes the look of its first character. Tabs and
/// line ends of `text`, in UTF-8, become those of the document. Returns how many there were.
/// Throws: MissingPlaceholder with the placeholders that there are when this is none of them, and
/// std::runtime_error when it stands where it cannot become text.
QUILLON_EXPORT std::size_t replaceText(Package& document, const std::string& name, const std::string& text);

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
/// Throws: as replaceText and makeChartParts.
QUILLON_EXPORT void insertChart(Package& document, const std::string& name, const NewChart& chart);

/// Puts a table of the data wherever `{{table:name}}` is alone in a paragraph, in the style that tables of
/// the document have. Throws: as replaceText.
QUILLON_EXPORT void insertTable(Package& document, const std::string& name, const ChartData& data,
                                const TableFormats& formats = {});

}  // namespace quillon::report
