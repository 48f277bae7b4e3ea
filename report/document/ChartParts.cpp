#include "report/document/ChartParts.h"

#include "report/document/ChartWriting.h"

namespace quillon::report {

ChartParts makeChartParts(const chart::Chart& chart, const ChartOptions& options, std::size_t drawingNumber,
                          const std::string& relationshipId, const Listener& listener, const ChartData& data,
                          const ThemeColors& theme)
{
    return translateXercesErrors([&]() -> ChartParts {
        const auto doc = createDocument();
        auto written = writeChart(doc.get(), {.chart = chart,
                                              .data = data,
                                              .options = options,
                                              .kind = getKind(chart, options),
                                              .number = drawingNumber,
                                              .relationshipId = relationshipId,
                                              .listener = listener,
                                              .theme = theme});
        declareNamespaces(written.run);
        return {std::move(written.chart), std::move(written.workbook), serialise(written.run)};
    });
}

}  // namespace quillon::report
