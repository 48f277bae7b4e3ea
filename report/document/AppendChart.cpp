#include "report/document/AppendChart.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "chart/model/Chart.h"
#include "chart/writer/DOCXChartWriter.h"
#include "report/finish/Finishing.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

void requireSheetSize(const chart::DataSet& dataSet)
{
    unsigned long rows = dataSet.getCategories().size();
    for (unsigned long i = 0; i < dataSet.getSeriesCount(); ++i)
        rows = std::max<unsigned long>(rows, dataSet.getSeries(i)->getSize());
    if (dataSet.getSeriesCount() > maximumColumn)
        throw std::runtime_error("A chart takes at most " + std::to_string(maximumColumn) + " series, got " +
                                 std::to_string(dataSet.getSeriesCount()) + ".");
    if (rows > maximumRow)
        throw std::runtime_error("A series takes at most " + std::to_string(maximumRow) + " points, got " +
                                 std::to_string(rows) + ".");
}

std::string makeChartPart(chart::DOCXChartWriter& writer, const FinishingContext& context)
{
    const auto doc = createDocument();
    writer.createChartDOMDocContent(doc.get());
    requireSheetSize(*context.chart.getDataSet());
    finishChartPart(doc.get(), context);
    return serialise(doc.get());
}

void appendDrawing(DOMElement* paragraph, chart::DOCXChartWriter& writer, const FinishingContext& context,
                   const std::string& relationshipId)
{
    writer.createChartDOMElemContent(paragraph->getOwnerDocument(), paragraph,
                                     num2str(static_cast<unsigned long>(context.drawingNumber)),
                                     toUtf16(relationshipId));
    finishDrawing(findChild(paragraph, u"w:r"), context);
}

ChartParts writeChart(DOMElement* paragraph, const PlacedChart& placed)
{
    const auto& options = placed.options;
    const auto workbookId = toUtf16(workbookRelationshipId);
    const FinishingContext context{placed.chart,
                                   options,
                                   placed.number,
                                   parseLength(options.width),
                                   parseLength(options.height),
                                   options.workbook ? workbookId.c_str() : nullptr,
                                   placed.listener.warning};
    const auto writer = placed.chart.getDOCXWriter();
    ChartParts parts;
    parts.chart = makeChartPart(*writer, context);
    if (options.workbook) parts.workbook = makeWorkbook(placed.chart);
    appendDrawing(paragraph, *writer, context, placed.relationshipId);
    return parts;
}

}  // namespace

ChartParts appendChart(DOMElement* paragraph, const PlacedChart& placed)
{
    try {
        return writeChart(paragraph, placed);
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        const std::string place = "chart " + std::to_string(placed.number);
        const std::string message = error.what();
        throw std::runtime_error(message.starts_with(place) ? message : place + ": " + message);
    }
}

}  // namespace quillon::report
