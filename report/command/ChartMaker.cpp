#include "report/command/ChartMaker.h"

#include "chart/model/ColumnChart.h"
#include "report/table/ChartTable.h"
#include "report/table/Fail.h"
#include "support/Text.h"

namespace quillon::report {

ChartData readData(const ChartJob& job, const Listener& listener)
{
    TableOptions reading = job;
    reading.gaps = job.gaps || job.options.blank;
    return readChartData(job.table, reading, listener);
}

std::shared_ptr<chart::Chart> makeChart(const ChartJob& job, const ChartData& data)
{
    const auto& dataSet = *data.dataSet;
    if (job.options.kind == ChartKind::Pie && dataSet.getSeriesCount() > 1)
        fail(
            "{}: a pie shows one series, the table gives {}; choose one with --columns, or show all as "
            "rings with --type doughnut.",
            job.table, dataSet.getSeriesCount());
    // The type among the options says what it is drawn as.
    auto chart = chart::ColumnChart::create();
    chart->setDataSet(data.dataSet);
    if (!job.title.empty()) chart->setTitle(chart::Title::create(quillon::toUtf16(job.title)));
    return chart;
}

}  // namespace quillon::report
