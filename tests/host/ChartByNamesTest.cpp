#include <atomic>
#include <thread>
#include <xercesc/dom/DOM.hpp>

#include "chart/model/ColumnChart.h"
#include "chart/writer/DOCXChartWriter.h"
#include "tests/host/HostTest.h"

namespace quillon::chart {
namespace {

using orca::HostArray;

class ChartByNames : public HostTest {};

HostArray makeByNames()
{
    const auto set = make("DataSet", {HostArray::textArray({u"Q1", u"Q2"})});
    const auto series = orca::call(set, "appendSeries", {make("DataSeries", {u"North"})});
    // The set has a series without points now; points go in through either end.
    for (const double value : {1.5, -2.25}) orca::call(series, "appendPoint", {value});
    const auto format = make("DataPointShapeFormat", {u"rgb(255,128,0)", u"blue"});
    orca::set(orca::call(series, "getPoint", {2}), "Format", format);
    const auto title = make("Title", {u"Sales & costs"});
    const auto run = omGetArrayElement(orca::get(orca::get(title, "Text"), "Content"), 0);
    orca::set(run, "Color", make("Color", {u"#00ff00"}));
    auto chart = make("ColumnChart");
    orca::set(chart, "DataSet", set);
    orca::set(chart, "ChartTitle", title);
    return chart;
}

std::shared_ptr<Chart> makeNatively()
{
    const auto set = DataSet::create(std::vector<std::u16string>{u"Q1", u"Q2"});
    const auto series = set->appendSeries(DataSeries::create(u"North"));
    for (const double value : {1.5, -2.25}) series->appendPoint(value);
    series->getPoint(1)->setFormat(DataPointShapeFormat::create(u"rgb(255,128,0)", u"blue"));
    const auto title = Title::create(u"Sales & costs");
    title->getText()->getContent().front()->setColor(Color::create(u"#00ff00"));
    auto chart = ColumnChart::create();
    chart->setDataSet(set);
    chart->setTitle(title);
    return chart;
}

std::shared_ptr<xercesc::DOMDocument> write(const Chart& chart)
{
    auto* const implementation = xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
    std::shared_ptr<xercesc::DOMDocument> document(implementation->createDocument(),
                                                   [](auto* made) { made->release(); });
    chart.getDOCXWriter()->createChartDOMDocContent(document.get());
    return document;
}

/// Whether the markup is that of the chart built natively.
bool isNativeMarkup(const Chart& chart)
{
    return write(chart)->isEqualNode(write(*makeNatively()).get());
}

TEST_F(ChartByNames, GivesTheMarkupOfTheSameChartBuiltNatively)
{
    const auto chart = makeByNames();
    EXPECT_TRUE(isNativeMarkup(*chart.getNative<Chart>()));
    const auto series = orca::call(orca::get(chart, "DataSet"), "getSeries", {1});
    orca::set(orca::call(series, "getPoint", {1}), "Value", 2);
    EXPECT_FALSE(isNativeMarkup(*chart.getNative<Chart>()));
}

TEST_F(ChartByNames, BuildsDifferentChartsOnDifferentThreads)
{
    std::atomic<int> equal = 0;
    const auto build = [&] {
        for (int i = 0; i < 20; ++i) equal += isNativeMarkup(*makeByNames().getNative<Chart>()) ? 1 : 0;
    };
    std::vector<std::thread> threads(4);
    for (auto& thread : threads) thread = std::thread(build);
    for (auto& thread : threads) thread.join();
    EXPECT_EQ(equal, 80);
}

TEST_F(ChartByNames, OutlivesEveryHostValue)
{
    const auto chart = makeByNames().getNative<Chart>();
    EXPECT_EQ(orca::BindingRegistry::size(), 0);
    EXPECT_TRUE(isNativeMarkup(*chart));
}

}  // namespace
}  // namespace quillon::chart
