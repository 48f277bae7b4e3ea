#include <gtest/gtest.h>

#include <latch>
#include <thread>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "support/Text.h"
#include "tests/writer/TestCharts.h"

namespace quillon::chart {
namespace {

/// A chart past column Z with formats of every kind.
std::shared_ptr<Chart> makeWideChart(std::shared_ptr<Chart> (*create)(), unsigned long seriesCount)
{
    std::vector<SeriesData> series;
    for (unsigned long i = 0; i < seriesCount; ++i) series.push_back({u"S" + num2str(i), {1, 2.5}});
    const auto data = makeDataSet({u"A", u"B"}, series);
    for (unsigned long i = 0; i < seriesCount; ++i) {
        data->getSeries(i)->setFormat(DataSeriesShapeFormat::create(u"rgb(1,2,3)"));
        data->getSeries(i)->getPoint(0)->setFormat(DataPointShapeFormat::create(u"RED", u"#123456"));
    }
    return makeChart(create, data, Title::create(u"Wide"));
}

/// The threads come first, so that they are the first users of the shared tables too.
TEST(ConcurrentWriters, WriteChartsPastColumnZLikeOneThread)
{
    constexpr std::size_t threadCount = 8;
    std::shared_ptr<Chart> (*const creators[])() = {BarChart::create, ColumnChart::create, LineChart::create,
                                                    PieChart::create};
    std::vector<std::shared_ptr<Chart>> charts;
    for (std::size_t i = 0; i < threadCount; ++i)
        charts.push_back(makeWideChart(creators[i % 4], 40 + 20 * i));

    std::vector<Document> written(threadCount);
    std::latch start(threadCount);
    std::vector<std::jthread> threads;
    for (std::size_t i = 0; i < threadCount; ++i)
        threads.emplace_back([&, i] {
            start.arrive_and_wait();
            for (int round = 0; round < 3; ++round) written[i] = writeChart(*charts[i]);
        });
    threads.clear();

    for (std::size_t i = 0; i < threadCount; ++i)
        EXPECT_TRUE(writeChart(*charts[i])->isEqualNode(written[i].get())) << i;
}

}  // namespace
}  // namespace quillon::chart
