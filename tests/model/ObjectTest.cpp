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

template <typename X>
CreatedClass created(const std::string& hostName, const std::string& creator)
{
    const auto object = X::create();
    return {object, std::make_shared<X>(dynamic_cast<const X&>(*object)), "quillon.chart." + hostName,
            creator};
}

template <typename X>
CreatedClass created(const std::string& name)
{
    return created<X>(name, name + "Creator");
}

std::vector<CreatedClass> createEveryClass()
{
    return {
        created<BarChart>("BarChart"),
        created<ColumnChart>("ColumnChart"),
        created<LineChart>("LineChart"),
        created<PieChart>("PieChart"),
        created<PieChartSlice>("PieChartSlice"),
        created<DataPoint>("DataPoint"),
        created<DataSeries>("DataSeries"),
        created<DataSet>("DataSet"),
        created<BorderFormat>("BorderFormat"),
        created<SolidBorderFormat>("SolidBorderFormat"),
        created<GradientBorderFormat>("GradientBorderFormat"),
        created<FillFormat>("FillFormat"),
        created<SolidFillFormat>("SolidFillFormat"),
        created<GradientFillFormat>("GradientFillFormat"),
        created<PatternFillFormat>("PatternFillFormat"),
        created<PictureFillFormat>("PictureFillFormat"),
        created<Color>("Color"),
        created<ShapeFormat>("ShapeFormat"),
        created<DataPointShapeFormat>("DataPointFormat", "DataPointShapeFormatCreator"),
        created<DataSeriesShapeFormat>("DataSeriesShapeFormat"),
        created<DataLabelFormat>("DataLabelFormat"),
        created<DataLabelOptions>("DataLabelOptions"),
        created<DataLabelContentOptions>("DataLabelContentOptions"),
        created<DataSeriesFormatOptions>("DataSeriesFormatOptions"),
        created<PieChartDataSeriesFormatOptions>("PieChartDataSeriesFormatOptions"),
        created<Effects>("Effects"),
        created<ShadowEffect>("ShadowEffect"),
        created<GlowEffect>("GlowEffect"),
        created<SoftEdgesEffect>("SoftEdgesEffect"),
        created<ThreeDEffect>("ThreeDEffect"),
        created<Text>("Text"),
        created<Paragraph>("Paragraph"),
        created<Title>("Title"),
        created<TextBase>("TextBase"),
        created<LegendPosition>("LegendPosition"),
        created<LegendPosition::Relative>("LegendPositionRelative"),
        created<AreaBase>("AreaBase"),
        created<PlotArea>("PlotArea", "CreatePlotArea"),
        created<ElementArea>("ElementArea"),
    };
}

TEST(Object, TellsTheHostNameOfEveryClass)
{
    const auto classes = createEveryClass();
    EXPECT_EQ(classes.size(), 42U - 3U);
    for (const auto& [object, copy, hostName, creator] : classes) {
        EXPECT_EQ(object->getFullyQualifiedOrcaTypeName(), hostName);
        EXPECT_EQ(copy->getFullyQualifiedOrcaTypeName(), hostName);
        const Object& made = *object;
        EXPECT_TRUE(boost::core::demangle(typeid(made).name()).ends_with("::" + creator)) << creator;
    }
}

TEST(Object, TellsTheHostNameOfTheClassesWithoutObjectsOfTheirOwn)
{
    struct AnObject : Object {};
    struct AFormat : Format {};
    struct AChart : Chart {
        std::shared_ptr<DOCXChartWriter> getDOCXWriter() const override { return nullptr; }
        std::shared_ptr<DataSeriesFormatOptions> getDataSeriesFormatOptions() const override
        {
            return nullptr;
        }
    };
    EXPECT_STREQ(AnObject().getFullyQualifiedOrcaTypeName(), "quillon.chart.Object");
    EXPECT_STREQ(AFormat().getFullyQualifiedOrcaTypeName(), "quillon.chart.Format");
    EXPECT_STREQ(AChart().getFullyQualifiedOrcaTypeName(), "quillon.chart.Chart");
}

TEST(Object, LeavesTheHostWhenItIsDestroyed)
{
    const auto before = BindingRegistry::instance().size();
    for (const auto& each : createEveryClass()) {
        BindingRegistry::instance().announce(*each.object);
        BindingRegistry::instance().announce(*each.copy);
        EXPECT_EQ(each.object->bindingState(), 2U);
    }
    EXPECT_EQ(BindingRegistry::instance().size(), before);
}

TEST(Object, LivesAsLongAsTheHostHoldsItsShare)
{
    auto text = Text::create(u"run");
    const std::weak_ptr<Text> watch = text;
    BindingRegistry::instance().announce(*text);
    BindingRegistry::instance().announce(*text);
    orca::factory::full::acquireReference(text);
    orca::factory::full::acquireReference(text);
    EXPECT_EQ(text.use_count(), 2);

    Text* const plain = text.get();
    text.reset();
    EXPECT_EQ(watch.lock()->getContent(), u"run");
    orca::factory::full::releaseReference(plain);
    EXPECT_TRUE(watch.expired());
}

TEST(Object, OutlivesTheHostWhileALibraryObjectSharesIt)
{
    const auto before = BindingRegistry::instance().size();
    const auto text = Text::create(u"run");
    BindingRegistry::instance().announce(*text);
    orca::factory::full::acquireReference(text);
    orca::factory::full::retract(text.get());
    orca::factory::full::retract(text.get());
    EXPECT_EQ(text.use_count(), 1);
    EXPECT_EQ(text->bindingState(), 0U);
    EXPECT_EQ(BindingRegistry::instance().size(), before);
}

TEST(Object, StartsUnboundAlsoAsACopy)
{
    const auto text = Text::create();
    EXPECT_EQ(text->bindingState(), 0U);
    orca::factory::full::releaseReference(text.get());
    BindingRegistry::instance().announce(*text);
    EXPECT_EQ(Text(*text).bindingState(), 0U);
}

}  // namespace
}  // namespace quillon::chart
