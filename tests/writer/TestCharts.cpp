#include "tests/writer/TestCharts.h"

#include "chart/writer/DOCXChartWriter.h"

namespace quillon::chart {

Document makeDocument(const char16_t* rootName)
{
    auto* implementation = xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
    Document document(implementation->createDocument(), [](auto* made) { made->release(); });
    if (rootName != nullptr) document->appendChild(document->createElement(rootName));
    return document;
}

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

}  // namespace quillon::chart
