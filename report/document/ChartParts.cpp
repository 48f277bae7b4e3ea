#include "report/document/ChartParts.h"

#include "report/document/AppendChart.h"
#include "report/package/Xml.h"

namespace quillon::report {

ChartParts makeChartParts(const chart::Chart& chart, const ChartOptions& options, std::size_t drawingNumber,
                          const std::string& relationshipId, const Listener& listener)
{
    const auto doc = createDocument();
    auto* paragraph = doc->createElement(u"w:p");
    doc->appendChild(paragraph);
    auto parts = appendChart(paragraph, {chart, options, drawingNumber, relationshipId, listener});
    auto* run = findChild(paragraph, u"w:r");
    declareNamespaces(run);
    parts.run = serialise(run);
    return parts;
}

}  // namespace quillon::report
