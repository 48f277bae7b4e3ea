#include "report/command/ChartMaker.h"

#include <fmt/format.h>

#include "chart/model/ColumnChart.h"
#include "report/options/QuotedText.h"
#include "report/table/ChartTable.h"
#include "report/table/Fail.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using Note = std::function<void(const std::string&)>;

/// Word processors draw such a slice as if the value had no sign.
void noteNegativeSlice(const std::string& table, const chart::DataSet& dataSet, const Note& note)
{
    const auto series = dataSet.getSeries(0);
    for (std::size_t i = 0; i < series->getSize(); ++i)
        if (series->getPoint(i)->getValue() < 0)
            return note(fmt::format("{}: the value of {} is negative; a pie shows only its size.", table,
                                    quoteText(toUtf8(dataSet.getCategories().at(i)))));
}

}  // namespace

ChartData readData(const ChartJob& job, const Listener& listener)
{
    TableOptions reading = job;
    reading.gaps = job.gaps || job.options.blank;
    return job.rows ? readChartData(job.rows, reading, listener)
                    : readChartData(job.table, reading, listener);
}

std::shared_ptr<chart::Chart> makeChart(const ChartJob& job, const ChartData& data, const Note& note)
{
    const auto& dataSet = *data.dataSet;
    const bool isPie = job.options.kind && sliceKinds.contains(*job.options.kind);
    if (isPie && dataSet.getSeriesCount() > 1)
        fail("{}: a pie shows one series, the table gives {}; choose one with --columns.", job.table,
             dataSet.getSeriesCount());
    if (isPie) noteNegativeSlice(job.table, dataSet, note);
    // The type among the options says what it is drawn as.
    auto chart = chart::ColumnChart::create();
    chart->setDataSet(data.dataSet);
    if (!job.title.empty()) chart->setTitle(chart::Title::create(quillon::toUtf16(job.title)));
    return chart;
}

}  // namespace quillon::report
