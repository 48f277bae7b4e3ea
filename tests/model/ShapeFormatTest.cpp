#include "chart/model/ShapeFormat.h"

#include <gtest/gtest.h>

#include <set>

#include "chart/model/DataLabelFormat.h"
#include "chart/model/DataPointShapeFormat.h"
#include "chart/model/DataSeriesShapeFormat.h"
#include "chart/model/GradientBorderFormat.h"
#include "chart/model/GradientFillFormat.h"
#include "chart/model/PatternFillFormat.h"
#include "chart/model/PictureFillFormat.h"
#include "chart/model/SolidBorderFormat.h"
#include "chart/model/SolidFillFormat.h"
#include "tests/ThrownText.h"

namespace quillon::chart {
namespace {

std::u16string colorOf(const std::shared_ptr<Format>& format)
{
    return format->getColor()->getText();
}

TEST(ShapeFormat, IsWhiteUnlessToldFillAndBorder)
{
    const auto colorsOf = [](const ShapeFormat& format) {
        return colorOf(format.getFill()) + u"/" + colorOf(format.getBorder());
    };
    EXPECT_EQ(colorsOf(ShapeFormat()), u"white/white");
    EXPECT_EQ(colorsOf(DataSeriesShapeFormat(u"red")), u"red/red");
    EXPECT_EQ(colorsOf(DataPointShapeFormat(u"red", u"blue")), u"red/blue");
}

/// Width, transparency and the four line types of a border, as stored.
std::vector<double> linesOf(const SolidBorderFormat& border)
{
    const auto number = [](auto member) { return static_cast<double>(member); };
    return {border.getWidth(),
            number(border.getTransparency()),
            number(border.getCompoundType()),
            number(border.getDashType()),
            number(border.getCapType()),
            number(border.getJoinType())};
}

TEST(ShapeFormat, CopiesABorderWhole)
{
    ShapeFormat source;
    auto& border = dynamic_cast<SolidBorderFormat&>(*source.getBorder());
    EXPECT_EQ(linesOf(border), (std::vector<double>{0.5, 0, 0, 0, 2, 0}));
    border.setWidth(-2);
    border.setTransparency(4'000'000'000);
    border.setCompoundType(SolidBorderCompoundType::Triple);
    border.setDashType(SolidBorderDashType::LongDashDotDot);
    border.setCapType(SolidBorderCapType::Square);
    border.setJoinType(SolidBorderJoinType::Miter);
    border.getColor()->setFromTriplet(1, 0, 0);

    const ShapeFormat copy(source);
    border.getColor()->setFromText(u"changed");
    EXPECT_EQ(linesOf(dynamic_cast<SolidBorderFormat&>(*copy.getBorder())),
              (std::vector<double>{-2, 4e9, 4, 7, 0, 2}));
    EXPECT_EQ(colorOf(copy.getBorder()), u"FF0000");
    EXPECT_TRUE(copy.getBorder()->getColor()->isFromTriplet());
    EXPECT_NE(copy.getEffects(), source.getEffects());
}

TEST(ShapeFormat, CopiesAGradientBorderAndOfAFillTheColorTextAlone)
{
    ShapeFormat source(u"red", u"white");
    source.setBorder(GradientBorderFormat::create(u"green"));
    source.getBorder()->setTransparency(7);
    source.getFill()->setTransparency(40);
    source.getFill()->getColor()->setFromTriplet(1, 0, 0);

    const ShapeFormat copy(source);
    EXPECT_STREQ(copy.getBorder()->getFullyQualifiedOrcaTypeName(), "quillon.chart.GradientBorderFormat");
    EXPECT_EQ(copy.getBorder()->getTransparency(), 7U);
    EXPECT_EQ(colorOf(copy.getBorder()), u"green");
    EXPECT_EQ(colorOf(copy.getFill()), u"FF0000");
    EXPECT_EQ(copy.getFill()->getTransparency(), 0U);
    EXPECT_FALSE(copy.getFill()->getColor()->isFromTriplet());
}

TEST(ShapeFormat, NamesWhatCannotBeCopied)
{
    const auto copyError = [](std::shared_ptr<FillFormat> fill, std::shared_ptr<BorderFormat> border) {
        ShapeFormat source;
        source.setFill(std::move(fill));
        source.setBorder(std::move(border));
        return thrownText<std::exception>([&] { ShapeFormat copy(source); });
    };
    const std::shared_ptr<FillFormat> fills[] = {FillFormat::create(), GradientFillFormat::create(),
                                                 PatternFillFormat::create(), PictureFillFormat::create()};
    for (const auto& fill : fills) {
        EXPECT_EQ(copyError(fill, SolidBorderFormat::create()),
                  std::string("Unsupported fill format type: ") + fill->getFullyQualifiedOrcaTypeName());
        EXPECT_EQ(copyError(fill, BorderFormat::create()),
                  "Unknown border format type: quillon.chart.BorderFormat");
        EXPECT_EQ(copyError(fill, nullptr), std::bad_typeid().what());
    }
    EXPECT_EQ(copyError(nullptr, GradientBorderFormat::create()), std::bad_typeid().what());
}

TEST(Format, KeepsItsColorObjectWhenTheTextChanges)
{
    const auto fill = PatternFillFormat::create();
    const auto color = fill->getColor();
    EXPECT_EQ(color->getText(), u"white");
    EXPECT_EQ(fill->getTransparency(), 0U);
    color->setFromTriplet(1, 0, 0);
    fill->setColor(u"green");
    EXPECT_EQ(fill->getColor(), color);
    EXPECT_EQ(color->getText(), u"green");
    EXPECT_TRUE(color->isFromTriplet());
}

TEST(DataLabelFormat, HoldsObjectsOfItsOwnAndCopiesThem)
{
    const DataLabelFormat source;
    const DataLabelFormat copy(source);
    std::set<std::shared_ptr<Object>> held;
    for (const auto* label : {&source, &copy}) {
        const auto options = label->getOptions();
        held.insert({label->getShapeFormat(), label->getEffects(), label->getShapeFormat()->getEffects(),
                     options, options->getShapeFormat(), options->getEffects(),
                     options->getContentOptions()});
        const auto effects = label->getEffects();
        held.insert(
            {effects->getThreeD(), effects->getShadow(), effects->getGlow(), effects->getSoftEdges()});
    }
    EXPECT_EQ(held.size(), 22U);
    EXPECT_FALSE(held.contains(nullptr));
}

TEST(DataLabelFormat, CopiesAllContentOptions)
{
    const auto describe = [](const DataLabelContentOptions& options) {
        return std::vector<int>{options.getContainsValue(),        options.getContainsSeriesName(),
                                options.getContainsCategoryName(), options.getContainsLegendKey(),
                                options.getShowLeaderLines(),      static_cast<int>(options.getSeparator())};
    };
    DataLabelContentOptions options;
    EXPECT_EQ(describe(options), (std::vector{1, 0, 1, 0, 0, 0}));
    options.setContainsValue(false);
    options.setContainsSeriesName(true);
    options.setContainsCategoryName(false);
    options.setContainsLegendKey(true);
    options.setShowLeaderLines(true);
    options.setSeparator(DataLabelContentSeparator::NewLine);
    EXPECT_EQ(describe(DataLabelContentOptions(options)), (std::vector{0, 1, 0, 1, 1, 3}));
}

}  // namespace
}  // namespace quillon::chart
