#include "chart/model/Chart.h"

#include <gtest/gtest.h>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/ElementArea.h"
#include "chart/model/LegendPosition.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"

namespace quillon::chart {
namespace {

TEST(Chart, StartsEmptyAndMakesNewDefaultOptions)
{
    for (const auto create : {BarChart::create, ColumnChart::create, LineChart::create, PieChart::create}) {
        const auto chart = create();
        EXPECT_TRUE(!chart->getDataSet() && !chart->getPlotArea() && !chart->getTitle());
        const auto options = chart->getDataSeriesFormatOptions();
        EXPECT_NE(options, chart->getDataSeriesFormatOptions());
        const bool isPie = dynamic_cast<PieChart*>(chart.get()) != nullptr;
        EXPECT_STREQ(options->getFullyQualifiedOrcaTypeName(),
                     isPie ? "quillon.chart.PieChartDataSeriesFormatOptions"
                           : "quillon.chart.DataSeriesFormatOptions");
    }
}

TEST(Chart, PassesAPieSliceThrough)
{
    PieChart chart;
    const auto slice = PieChartSlice::create();
    EXPECT_EQ(chart.append(slice), slice);
    EXPECT_EQ(chart.append(nullptr), nullptr);
    EXPECT_EQ(slice.use_count(), 1);
}

TEST(Chart, CopiesItsParts)
{
    ColumnChart source;
    source.setDataSet(DataSet::create(std::vector<std::u16string>{u"a", u"b"}));
    source.setPlotArea(PlotArea::create(u"1", u"2", u"3", u"4"));
    source.setTitle(Title::create(u"Revenue"));

    const ColumnChart copy(source);
    source.getPlotArea()->setX(u"changed");
    source.getTitle()->getText()->getContent().front()->setContent(u"changed");
    source.getDataSet()->setCategories({});
    EXPECT_EQ(copy.getDataSet()->getCategories(), (std::vector<std::u16string>{u"a", u"b"}));
    EXPECT_EQ(copy.getPlotArea()->getX(), u"1");
    EXPECT_EQ(copy.getTitle()->getText()->getContent().front()->getContent(), u"Revenue");

    const ColumnChart empty;
    const ColumnChart copyOfEmpty(empty);
    EXPECT_TRUE(!copyOfEmpty.getDataSet() && !copyOfEmpty.getPlotArea() && !copyOfEmpty.getTitle());
}

TEST(Chart, SharesItsPartsAndLetsGoOfThem)
{
    auto first = BarChart::create();
    auto second = PieChart::create();
    first->setDataSet(DataSet::create());
    first->setPlotArea(PlotArea::create());
    first->setTitle(Title::create());
    second->setDataSet(first->getDataSet());
    second->setPlotArea(first->getPlotArea());
    second->setTitle(first->getTitle());
    const std::weak_ptr<Object> parts[] = {
        first->getDataSet(),
        first->getDataSet()->appendSeries(u"s", {1}),
        first->getDataSet()->getSeries(0)->getPoint(0),
        first->getPlotArea()->getFormat()->getFill()->getColor(),
        first->getTitle()->getText()->getContent().front(),
    };
    EXPECT_EQ(second->getDataSet()->getSeriesCount(), 1U);
    first.reset();
    for (const auto& part : parts) EXPECT_FALSE(part.expired());
    second.reset();
    for (const auto& part : parts) EXPECT_TRUE(part.expired());
}

TEST(PlotArea, TakesTheHeightBeforeTheWidthAndIsCopiedWithItsFormat)
{
    const auto placeOf = [](const PlotArea& area) {
        return area.getX() + u"/" + area.getY() + u"/" + area.getHeight() + u"/" + area.getWidth();
    };
    EXPECT_EQ(placeOf(PlotArea()), u"///");
    const PlotArea source(u"1", u"2", u"3", u"4");
    const PlotArea copy(source);
    source.getFormat()->getFill()->setColor(u"blue");
    EXPECT_EQ(placeOf(copy), u"1/2/3/4");
    EXPECT_EQ(copy.getFormat()->getFill()->getColor()->getText(), u"white");
    for (const auto& area :
         {AreaBase::create(u"2in", u"3in"), std::shared_ptr<AreaBase>(ElementArea::create(u"2in", u"3in"))})
        EXPECT_EQ(area->getHeight() + u" by " + area->getWidth(), u"2in by 3in");
}

TEST(LegendPosition, AlwaysHasARelativeOfItsOwn)
{
    const LegendPosition source;
    const LegendPosition copy(source);
    EXPECT_TRUE(source.getRelative() && copy.getRelative());
    EXPECT_NE(copy.getRelative(), source.getRelative());
}

}  // namespace
}  // namespace quillon::chart
