#include "report/document/ChartWriting.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "chart/writer/DOCXChartWriter.h"
#include "report/finish/Finishing.h"
#include "report/finish/ShownChart.h"
#include "report/options/ChartError.h"
#include "report/options/Length.h"
#include "report/options/Options.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMDocument;
using xercesc::DOMElement;

namespace {

/// Checks of size come before the work.
void requireSheetSize(const chart::DataSet& dataSet)
{
    unsigned long rows = dataSet.getCategories().size();
    for (unsigned long i = 0; i < dataSet.getSeriesCount(); ++i)
        rows = std::max<unsigned long>(rows, dataSet.getSeries(i)->getSize());
    if (dataSet.getSeriesCount() > maximumColumn)
        throw ChartError("", "a chart takes at most " + std::to_string(maximumColumn) + " series, got " +
                                 std::to_string(dataSet.getSeriesCount()) + ".");
    if (rows > maximumRow)
        throw ChartError("", "a series takes at most " + std::to_string(maximumRow) + " points, got " +
                                 std::to_string(rows) + ".");
}

std::string makeChartPart(chart::DOCXChartWriter& writer, const ChartContext& context)
{
    const auto doc = createDocument();
    writer.createChartDOMDocContent(doc.get());
    finishChartPart(doc.get(), context);
    return serialise(doc.get());
}

DOMElement* makeRun(DOMDocument* mainDocument, chart::DOCXChartWriter& writer, const ChartContext& context)
{
    auto* holder = mainDocument->createElement(u"w:p");
    writer.createChartDOMElemContent(mainDocument, holder,
                                     num2str(static_cast<unsigned long>(context.number)),
                                     toUtf16(context.relationshipId));
    auto* run = static_cast<DOMElement*>(holder->removeChild(holder->getFirstChild()));
    holder->release();
    finishDrawing(run, context);
    return run;
}

WrittenChart write(DOMDocument* mainDocument, const ChartContext& given)
{
    checkOptions(given.options, given.kind);
    if (const auto& dataSet = given.chart.getDataSet()) requireSheetSize(*dataSet);
    const auto options = withSize(given.options);
    const auto shown = prepareChart(given);
    const ChartContext context{*shown.chart,         shown.data,     options,        given.kind, given.number,
                               given.relationshipId, given.listener, shown.workbook, given.theme};
    // The writer makes the drawing of a chart without data; the chart part it refuses.
    const auto writer = context.chart.getDOCXWriter();
    WrittenChart written;
    written.chart = makeChartPart(*writer, context);
    if (context.options.workbook) written.workbook = makeWorkbook(context.data, context.workbook);
    written.run = makeRun(mainDocument, *writer, context);
    return written;
}

}  // namespace

WrittenChart writeChart(DOMDocument* mainDocument, const ChartContext& context)
{
    try {
        return write(mainDocument, context);
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const ChartError& error) {
        throw std::runtime_error(context.describe(error.getPlace(), error.getSentence()));
    } catch (const std::exception& error) {
        throw std::runtime_error(context.describe("", error.what()));
    }
}

}  // namespace quillon::report
