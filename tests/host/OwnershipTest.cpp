#include "chart/model/DataSet.h"
#include "chart/model/GradientBorderFormat.h"
#include "chart/model/Title.h"
#include "tests/ThrownText.h"
#include "tests/host/HostTest.h"

namespace quillon::chart {
namespace {

using orca::BindingRegistry;
using orca::HostArray;

class Ownership : public HostTest {};

template <typename T>
std::weak_ptr<T> watch(const HostArray& value)
{
    return value.getNative<T>();
}

TEST_F(Ownership, IsOneShareThatEndsWithTheLastHostValue)
{
    auto title = make("Title");
    const auto watched = watch<Title>(title);
    auto second = title;
    orca::factory::full::acquireReference(watched.lock());
    EXPECT_EQ(watched.use_count(), 1);
    EXPECT_EQ(watched.lock()->bindingState(), 2);
    EXPECT_EQ(BindingRegistry::size(), 1);
    title = {};
    EXPECT_FALSE(watched.expired());
    second = {};
    EXPECT_TRUE(watched.expired());
    EXPECT_EQ(BindingRegistry::size(), 0);
}

TEST_F(Ownership, ReadsTheSameChildAsTheSameHostObject)
{
    const auto area = make("PlotArea");
    const auto format = orca::get(area, "Format");
    EXPECT_EQ(orca::get(area, "Format"), format);
    EXPECT_EQ(orca::get(orca::get(area, "Format"), "Fill"), orca::get(format, "Fill"));
    // Host, parent, and no third.
    EXPECT_EQ(watch<ShapeFormat>(format).use_count(), 2);
    const auto bindings = BindingRegistry::size();
    const auto series = make("DataSeries");
    for (int i = 0; i < 10; ++i) orca::call(series, "appendPoint", {i});
    EXPECT_EQ(BindingRegistry::size(), bindings + 1);
}

TEST_F(Ownership, KeepsAChildPastItsParentAndAParentPastItsChild)
{
    auto title = make("Title");
    auto paragraph = orca::get(title, "Text");
    const auto watched = watch<Paragraph>(paragraph);
    title = {};
    EXPECT_EQ(orca::get(paragraph, "Content").getElementCount(), 1);
    title = make("Title", {paragraph});
    paragraph = {};
    EXPECT_FALSE(watched.expired());
    EXPECT_EQ(BindingRegistry::size(), 1);
    EXPECT_EQ(watch<Paragraph>(orca::get(title, "Text")).lock(), watched.lock());
    title = {};
    EXPECT_TRUE(watched.expired());
}

TEST_F(Ownership, SharesAnObjectStoredUnderTwoParents)
{
    auto set = make("DataSet");
    const auto first = make("BarChart");
    const auto second = make("PieChart");
    orca::set(first, "DataSet", set);
    orca::set(second, "DataSet", set);
    const auto watched = watch<DataSet>(set);
    set = {};
    orca::set(orca::get(first, "DataSet"), "Categories", HostArray::textArray({u"Q1"}));
    EXPECT_EQ(orca::get(orca::get(second, "DataSet"), "Categories"), HostArray::cells(1, 1, {u"Q1"}));
    orca::set(first, "DataSet", HostArray());
    EXPECT_EQ(orca::get(first, "DataSet").describe(), "empty quillon.chart.DataSet");
    EXPECT_FALSE(watched.expired());
    orca::set(second, "DataSet", HostArray());
    EXPECT_TRUE(watched.expired());
}

TEST_F(Ownership, KeepsTheClassThatAChildReports)
{
    const auto shape = make("ShapeFormat");
    shape.getNative<ShapeFormat>()->setBorder(GradientBorderFormat::create(u"red"));
    EXPECT_EQ(orca::classOf(orca::get(shape, "Border")).getName(), "quillon.chart.GradientBorderFormat");
    // A class that nobody registers.
    const auto point = make("DataPoint", {1});
    auto format = make("DataPointShapeFormat", {u"red"});
    orca::set(point, "Format", format);
    EXPECT_EQ(orca::get(point, "Format"), format);
    format = {};
    format = orca::get(point, "Format");
    EXPECT_EQ(format.describe(), "quillon.chart.DataPointFormat");
    orca::set(orca::get(format, "Fill"), "Transparency", 40);
    EXPECT_EQ(point.getNative<DataPoint>()->getFormat()->getFill()->getTransparency(), 40);
    const auto other = make("DataPoint");
    orca::set(other, "Format", format);
    EXPECT_EQ(orca::get(other, "Format"), format);
}

TEST_F(Ownership, ReadsRunsAsOneHeterogeneousRow)
{
    const auto paragraph = make("Paragraph");
    EXPECT_EQ(orca::get(paragraph, "Content").describe(), "1x0 quillon.chart.Text array");
    const auto run = make("Text", {u"a"});
    EXPECT_EQ(orca::call(paragraph, "appendText", {run}), run);
    orca::call(paragraph, "appendText", {make("Text", {u"b"})});
    orca::call(paragraph, "appendText", {run});
    const auto content = orca::get(paragraph, "Content");
    EXPECT_EQ(content.describe(), "1x3 quillon.chart.Text array");
    EXPECT_TRUE(content.getObjectArray()->heterogeneous);
    EXPECT_EQ(omGetArrayElement(content, 0), run);
    EXPECT_EQ(omGetArrayElement(content, 2), run);
    EXPECT_EQ(*orca::get(omGetArrayElement(content, 1), "Content").getText(), u"b");
    EXPECT_EQ(orca::get(paragraph, "Content"), content);
    // Where one object is wanted, the first of an array is taken.
    EXPECT_EQ(orca::get(orca::get(make("Title", {content}), "Text"), "Content").getElementCount(), 1);
}

TEST_F(Ownership, SurvivesRefusedCallsAndFailedConstructors)
{
    const auto set = make("DataSet");
    orca::call(set, "appendSeries", {make("DataSeries")});
    const auto longer = make("DataSeries");
    orca::call(longer, "appendPoint", {1});
    const auto shares = watch<DataSeries>(longer).use_count();
    const auto bindings = BindingRegistry::size();
    EXPECT_THROW(orca::call(set, "appendSeries", {longer}), std::runtime_error);
    EXPECT_THROW(orca::set(set, "Categories", longer), orca::Error);
    EXPECT_THROW(make("PieChartDataSeriesFormatOptions", {150}), std::runtime_error);
    EXPECT_THROW(make("Title", {longer}), orca::Error);
    EXPECT_EQ(watch<DataSeries>(longer).use_count(), shares);
    EXPECT_EQ(BindingRegistry::size(), bindings);
    EXPECT_EQ(orca::get(set, "SeriesCount"), HostArray(std::uint64_t{1}));
}

TEST_F(Ownership, ForgetsAnObjectThatDiesWhileTheHostListsIt)
{
    const auto paragraph = make("Paragraph");
    orca::factory::full::releaseReference(paragraph.getNative<Paragraph>().get());
    EXPECT_EQ(BindingRegistry::size(), 0);
    EXPECT_EQ(paragraph.getNative<Paragraph>(), nullptr);
    const std::string gone = ": the object is gone, or of a class without this member.";
    EXPECT_EQ(thrownText([&] { orca::get(paragraph, "Content"); }), "quillon.chart.Paragraph.Content" + gone);
    // The receiving object is looked at before the arguments.
    EXPECT_EQ(thrownText([&] { orca::call(paragraph, "appendText", {2.5}); }),
              "quillon.chart.Paragraph.appendText" + gone);
}

TEST_F(Ownership, TakesEmptyHandlesWhereverTheyGo)
{
    const auto empty = HostArray();
    EXPECT_EQ(orca::get(make("TextBase", {empty}), "Color").describe(), "empty quillon.chart.Color");
    const auto paragraphClass = orca::internal::makeInterned(fullName("Paragraph"));
    EXPECT_EQ(orca::get(make("Title", {HostArray::empty(paragraphClass)}), "Text").describe(),
              "empty quillon.chart.Paragraph");
    const auto content = orca::get(orca::get(make("Title", {empty}), "Text"), "Content");
    EXPECT_EQ(omGetArrayElement(content, 0).describe(), "empty quillon.chart.Text");
    EXPECT_THROW(orca::call(make("DataSeries"), "appendPoint", {empty}), std::runtime_error);
    EXPECT_THROW(orca::call(make("DataSet"), "appendSeries", {empty}), std::runtime_error);
}

}  // namespace
}  // namespace quillon::chart
