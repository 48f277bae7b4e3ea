#include "chart/model/Object.h"

#include <gtest/gtest.h>

#include <boost/core/demangle.hpp>
#include <typeinfo>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/ElementArea.h"
#include "chart/model/GradientBorderFormat.h"
#include "chart/model/GradientFillFormat.h"
#include "chart/model/LegendPosition.h"
#include "chart/model/LineChart.h"
#include "chart/model/PatternFillFormat.h"
#include "chart/model/PictureFillFormat.h"
#include "chart/model/PieChart.h"
#include "chart/model/PieChartDataSeriesFormatOptions.h"
#include "chart/model/SolidBorderFormat.h"
#include "chart/model/SolidFillFormat.h"
#include "orca/BindingRegistry.h"

namespace quillon::chart {
namespace {

using orca::BindingRegistry;

struct CreatedClass {
    std::shared_ptr<Object> object;
    std::shared_ptr<Object> copy;
    std::string hostName;
    std::string creator;
};

/// An object and its copy, and the names that follow from the name of the class; two classes go their own
/// way.
template <typename X>
CreatedClass created()
{
    auto name = boost::core::demangle(typeid(X).name()).substr(sizeof("quillon::chart::") - 1);
    if (const auto nested = name.find("::"); nested != std::string::npos) name.erase(nested, 2);
    const auto object = X::create();
    return {object, std::make_shared<X>(dynamic_cast<const X&>(*object)),
            "quillon.chart." + (name == "DataPointShapeFormat" ? "DataPointFormat" : name),
            "::" + (name == "PlotArea" ? "CreatePlotArea" : name + "Creator")};
}

template <typename... Classes>
std::vector<CreatedClass> createEach()
{
    return {created<Classes>()...};
}

constexpr auto createEveryClass =
    createEach<BarChart, ColumnChart, LineChart, PieChart, PieChartSlice, DataPoint, DataSeries, DataSet,
               BorderFormat, SolidBorderFormat, GradientBorderFormat, FillFormat, SolidFillFormat,
               GradientFillFormat, PatternFillFormat, PictureFillFormat, Color, ShapeFormat,
               DataPointShapeFormat, DataSeriesShapeFormat, DataLabelFormat, DataLabelOptions,
               DataLabelContentOptions, DataSeriesFormatOptions, PieChartDataSeriesFormatOptions, Effects,
               ShadowEffect, GlowEffect, SoftEdgesEffect, ThreeDEffect, Text, Paragraph, Title, TextBase,
               LegendPosition, LegendPosition::Relative, AreaBase, PlotArea, ElementArea>;

TEST(Object, TellsTheHostNameOfEveryClass)
{
    for (const auto& [object, copy, hostName, creator] : createEveryClass()) {
        EXPECT_EQ(object->getFullyQualifiedOrcaTypeName(), hostName);
        EXPECT_EQ(copy->getFullyQualifiedOrcaTypeName(), hostName);
        const Object& made = *object;
        EXPECT_TRUE(boost::core::demangle(typeid(made).name()).ends_with(creator)) << creator;
    }
}

TEST(Object, TellsTheHostNameOfTheClassesWithoutObjectsOfTheirOwn)
{
    EXPECT_STREQ(BarChart().Object::getFullyQualifiedOrcaTypeName(), "quillon.chart.Object");
    EXPECT_STREQ(BarChart().Chart::getFullyQualifiedOrcaTypeName(), "quillon.chart.Chart");
    EXPECT_STREQ(FillFormat().Format::getFullyQualifiedOrcaTypeName(), "quillon.chart.Format");
}

std::shared_ptr<orca::HostObject> announce(Object& object)
{
    return BindingRegistry::announce(object,
                                     orca::internal::makeInterned(object.getFullyQualifiedOrcaTypeName()));
}

TEST(Object, LeavesTheHostWhenItIsDestroyed)
{
    const auto before = BindingRegistry::size();
    std::vector<std::shared_ptr<orca::HostObject>> hosts;
    for (const auto& each : createEveryClass()) {
        for (const auto& object : {each.object, each.copy}) hosts.push_back(announce(*object));
        EXPECT_EQ(each.object->bindingState(), 2U);
        EXPECT_EQ(announce(*each.object), hosts.end()[-2]);
    }
    EXPECT_EQ(BindingRegistry::size(), before);
    for (const auto& host : hosts) EXPECT_EQ(host->getObject(), nullptr);
}

TEST(Object, LivesWhileTheHostOrTheLibrarySharesIt)
{
    auto text = Text::create(u"run");
    const std::weak_ptr<Text> watch = text;
    auto host = announce(*text);
    for (int i = 0; i < 2; ++i) orca::factory::full::acquireReference(text);
    EXPECT_EQ(text.use_count(), 2);
    EXPECT_EQ(Text(*text).bindingState(), 0U);
    for (int i = 0; i < 2; ++i) orca::factory::full::retract(text.get());
    EXPECT_EQ(text->bindingState(), 0U);
    EXPECT_EQ(text.use_count(), 1);

    host = announce(*text);
    orca::factory::full::acquireReference(text);
    text.reset();
    EXPECT_EQ(watch.lock()->getContent(), u"run");
    orca::factory::full::releaseReference(host->getObject());
    EXPECT_TRUE(watch.expired());
    EXPECT_EQ(host->getObject(), nullptr);
}

}  // namespace
}  // namespace quillon::chart
