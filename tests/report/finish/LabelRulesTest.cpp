#include <gtest/gtest.h>

#include "chart/model/ColumnChart.h"
#include "chart/model/PieChart.h"
#include "tests/report/finish/FinishedPart.h"

namespace quillon::report {
namespace {

using chart::DataLabelFormat;

std::shared_ptr<DataLabelFormat> makeSeriesName()
{
    auto format = DataLabelFormat::create();
    const auto content = format->getOptions()->getContentOptions();
    content->setContainsValue(false);
    content->setContainsCategoryName(false);
    content->setContainsSeriesName(true);
    return format;
}

std::string findFlags(const FinishedPart& part, const std::string& label)
{
    std::string flags;
    for (const auto* name : {"LegendKey", "Val", "CatName", "SerName", "Percent", "BubbleSize"})
        flags += part.find(label + "/c:show" + name + "/@val");
    return flags;
}

TEST(Labels, OfAPointWinOverThoseOfItsSeries)
{
    auto chart = makeChart<chart::ColumnChart>(2, {1, 2, 3});
    const auto series = chart->getDataSet()->getSeries(0);
    series->setLabelFormat(DataLabelFormat::create());
    for (const auto index : {0, 2})
        series->getPoint(static_cast<unsigned>(index))->setLabelFormat(makeSeriesName());
    const FinishedPart part(chart);
    EXPECT_EQ(part.find("c:ser[1]/c:dLbls/c:dLbl/c:idx/@val"), "0 2");
    EXPECT_EQ(findFlags(part, "c:ser[1]/c:dLbls"), "011000");
    EXPECT_EQ(part.find("c:ser[1]/c:dLbls/c:separator"), ", ");
    EXPECT_EQ(findFlags(part, "c:ser[1]/c:dLbls/c:dLbl[2]"), "000100");
    EXPECT_EQ(part.find("c:ser[2]/c:dLbls"), "-");
}

TEST(Labels, OfSinglePointsLeaveTheOthersWithout)
{
    auto chart = makeChart<chart::ColumnChart>(1, {1, 2, 3});
    chart->getDataSet()->getSeries(0)->getPoint(1)->setLabelFormat(DataLabelFormat::create());
    const FinishedPart part(chart);
    EXPECT_EQ(findFlags(part, "c:ser/c:dLbls"), "000000");
    EXPECT_EQ(findFlags(part, "c:ser/c:dLbls/c:dLbl"), "011000");
    EXPECT_EQ(part.find("c:dLbls/c:extLst"), "-");
}

TEST(Labels, HaveLeaderLinesWhereTheirChartKeepsThem)
{
    const auto write = [](const std::shared_ptr<chart::Chart>& chart) {
        const auto format = DataLabelFormat::create();
        format->getOptions()->getContentOptions()->setShowLeaderLines(true);
        chart->getDataSet()->getSeries(0)->setLabelFormat(format);
        const FinishedPart part(chart);
        return part.find("c:ser/c:dLbls/c:showLeaderLines/@val") + " " +
               part.find("c:ser/c:dLbls/c:extLst/c:ext/c15:showLeaderLines/@val");
    };
    EXPECT_EQ(write(makeChart<chart::ColumnChart>()), "0 1");
    EXPECT_EQ(write(makeChart<chart::PieChart>()), "1 -");
}

}  // namespace
}  // namespace quillon::report
