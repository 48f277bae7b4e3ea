#include "report/ChartParts.h"

#include "report/AppendChart.h"
#include "report/Xml.h"

namespace quillon::report {

ChartParts makeChartParts(const chart::Chart& chart, const ChartOptions& options, std::size_t drawingNumber,
                          const std::string& relationshipId, const Document::Warning& warning)
{
    const auto doc = createDocument();
    auto* paragraph = doc->createElement(u"w:p");
    doc->appendChild(paragraph);
    auto parts = appendChart(paragraph, {chart, options, drawingNumber, relationshipId, warning});
    auto* run = findChild(paragraph, u"w:r");
    declareNamespaces(run);
    parts.run = serialise(run);
    return parts;
}

}  // namespace quillon::report
