#include "tests/writer/TestCharts.h"

#include <stdexcept>

#include "chart/writer/DOCXChartWriter.h"

namespace quillon::chart {

std::shared_ptr<DataSet> makeDataSet(const std::vector<std::u16string>& categories,
                                     const std::vector<SeriesData>& series)
{
    auto dataSet = DataSet::create(categories);
    // A series is measured when it is appended, so its points come afterwards.
    for (const auto& data : series) dataSet->appendSeries(DataSeries::create(data.name));
    for (std::size_t i = 0; i < series.size(); ++i)
        for (const double value : series[i].values) dataSet->getSeries(i)->appendPoint(value);
    return dataSet;
}

std::shared_ptr<DataSet> makeSales()
{
    return makeDataSet({u"North", u"South"}, {{u"Revenue", {1.5, -2}}, {u"Costs", {0.1, 1e21}}});
}

std::shared_ptr<Chart> makeChart(std::shared_ptr<Chart> (*create)(), std::shared_ptr<DataSet> data,
                                 std::shared_ptr<Title> title)
{
    auto chart = create();
    chart->setDataSet(std::move(data));
    chart->setTitle(std::move(title));
    return chart;
}

Document writeChart(const Chart& chart)
{
    auto document = makeDocument();
    chart.getDOCXWriter()->createChartDOMDocContent(document.get());
    return document;
}

std::string getFailure(const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::runtime_error& failure) {
        return failure.what();
    }
    return "no failure";
}

}  // namespace quillon::chart
