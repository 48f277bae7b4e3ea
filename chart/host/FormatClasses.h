#pragma once

#include "chart/host/CosObjectClassInfo.h"
#include "chart/model/DataPointShapeFormat.h"
#include "chart/model/DataSeriesShapeFormat.h"
#include "chart/model/GradientBorderFormat.h"
#include "chart/model/GradientFillFormat.h"
#include "chart/model/PatternFillFormat.h"
#include "chart/model/PictureFillFormat.h"
#include "chart/model/SolidBorderFormat.h"
#include "chart/model/SolidFillFormat.h"
#include "orca/EnumClassInfo.h"

/// Colours, borders, fills, effects, and the shape formats that bundle them.
namespace quillon::chart::mi {

/// Its one property takes and gives a colour in several forms.
struct CosColor : CosClass<Color> {
    CosColor();
};

struct CosFormat : CosClass<Format> {
    CosFormat() : CosClass("What borders and fills share: a colour and a transparency.")
    {
        property<&Format::getColor, &Format::setColor>("Color",
                                                       "The colour object; a text is written into it.");
        property<&Format::getTransparency, &Format::setTransparency>("Transparency", "Percent.");
    }
};

/// A border or fill: a format with a constructor that takes the text of its colour.
template <typename C, typename Super>
struct CosColoredFormat : CosClass<C, Super> {
    explicit CosColoredFormat(std::string description) : CosClass<C, Super>(std::move(description))
    {
        this->template constructor<>();
        this->template constructor<std::u16string>({"color"});
    }
};

struct CosBorderFormat : CosColoredFormat<BorderFormat, Format> {
    CosBorderFormat() : CosColoredFormat("The outline of a shape.")
    {
        property<&BorderFormat::getWidth, &BorderFormat::setWidth>("Width", "The width of the line: points.");
    }
};

struct CosSolidBorderFormat : CosColoredFormat<SolidBorderFormat, BorderFormat> {
    using Border = SolidBorderFormat;

    CosSolidBorderFormat() : CosColoredFormat("An outline of one colour, with the style of its line.")
    {
        property<&Border::getDashType, &Border::setDashType>("DashType", "How the line is dashed.");
        property<&Border::getCapType, &Border::setCapType>("CapType", "How the line ends.");
        property<&Border::getJoinType, &Border::setJoinType>("JoinType", "How the line turns a corner.");
        property<&Border::getCompoundType, &Border::setCompoundType>("CompoundType",
                                                                     "Of how many strokes the line is made.");
    }
};

struct CosGradientBorderFormat : CosColoredFormat<GradientBorderFormat, BorderFormat> {
    CosGradientBorderFormat() : CosColoredFormat("An outline that is painted as a gradient.") {}
};

struct CosSolidBorderDashType : orca::factory::EnumClassInfo<SolidBorderDashType> {
    using Dash = SolidBorderDashType;

    CosSolidBorderDashType()
        : EnumClassInfo({"Chart border types supported by Chart API.",
                         {{"Dash", Dash::Dash},
                          {"RoundDot", Dash::RoundDot},
                          {"SquareDot", Dash::SquareDot},
                          {"DashDot", Dash::DashDot},
                          {"LongDash", Dash::LongDash},
                          {"LongDashDot", Dash::LongDashDot},
                          {"LongDashDotDot", Dash::LongDashDotDot},
                          {"Solid", Dash::Solid}}})
    {
    }
};

struct CosSolidBorderCapType : orca::factory::EnumClassInfo<SolidBorderCapType> {
    using Cap = SolidBorderCapType;

    CosSolidBorderCapType()
        : EnumClassInfo({"Chart border cap types supported by Chart API.",
                         {{"Flat", Cap::Flat}, {"Round", Cap::Round}, {"Square", Cap::Square}}})
    {
    }
};

struct CosSolidBorderCompoundType : orca::factory::EnumClassInfo<SolidBorderCompoundType> {
    using Compound = SolidBorderCompoundType;

    CosSolidBorderCompoundType()
        : EnumClassInfo({"Chart compound border types supported by Chart API.",
                         {{"Double", Compound::Double},
                          {"Simple", Compound::Simple},
                          {"ThinThick", Compound::ThinThick},
                          {"ThickThin", Compound::ThickThin},
                          {"Triple", Compound::Triple}}})
    {
    }
};

struct CosSolidBorderJoinType : orca::factory::EnumClassInfo<SolidBorderJoinType> {
    using Join = SolidBorderJoinType;

    CosSolidBorderJoinType()
        : EnumClassInfo({"Chart border join types supported by Chart API.",
                         {{"Bevel", Join::Bevel}, {"Miter", Join::Miter}, {"Rounded", Join::Rounded}}})
    {
    }
};

struct CosFillFormat : CosColoredFormat<FillFormat, Format> {
    CosFillFormat() : CosColoredFormat("How the inside of a shape is painted.") {}
};

struct CosSolidFillFormat : CosColoredFormat<SolidFillFormat, FillFormat> {
    CosSolidFillFormat() : CosColoredFormat("A fill of one colour.") {}
};

struct CosGradientFillFormat : CosColoredFormat<GradientFillFormat, FillFormat> {
    CosGradientFillFormat() : CosColoredFormat("A fill that is painted as a gradient.") {}
};

struct CosPatternFillFormat : CosColoredFormat<PatternFillFormat, FillFormat> {
    CosPatternFillFormat() : CosColoredFormat("A fill with a pattern.") {}
};

struct CosPictureFillFormat : CosColoredFormat<PictureFillFormat, FillFormat> {
    CosPictureFillFormat() : CosColoredFormat("A fill with a picture.") {}
};

struct CosShapeFormat : CosClass<ShapeFormat> {
    CosShapeFormat() : CosClass("What a drawn shape needs: a border, a fill and effects.")
    {
        constructor<>();
        property<&ShapeFormat::getBorder>("Border", "The outline.");
        property<&ShapeFormat::getFill>("Fill", "How the inside is painted.");
        property<&ShapeFormat::getEffects>("Effects", "The visual effects.");
    }
};

/// The shape format of a point or series, which can be constructed from colours.
template <typename C>
struct CosDataShapeFormat : CosClass<C, ShapeFormat> {
    explicit CosDataShapeFormat(std::string description) : CosClass<C, ShapeFormat>(std::move(description))
    {
        this->template constructor<>();
        this->template constructor<std::u16string>({"color"});
        this->template constructor<std::u16string, std::u16string>({"fillColor", "borderColor"});
    }
};

struct CosDataPointShapeFormat : CosDataShapeFormat<DataPointShapeFormat> {
    CosDataPointShapeFormat()
        : CosDataShapeFormat(
              "The shape format of one data point; its objects report the class name "
              "quillon.chart.DataPointFormat.")
    {
    }
};

struct CosDataSeriesShapeFormat : CosDataShapeFormat<DataSeriesShapeFormat> {
    CosDataSeriesShapeFormat() : CosDataShapeFormat("The shape format of a data series.") {}
};

struct CosEffects : CosClass<Effects> {
    CosEffects() : CosClass("The visual effects of a shape.")
    {
        constructor<>();
        property<&Effects::getThreeD>("ThreeD", "The three-dimensional effect.");
        property<&Effects::getShadow>("Shadow", "The shadow.");
        property<&Effects::getGlow>("Glow", "The glow.");
        property<&Effects::getSoftEdges>("SoftEdges", "The soft edges.");
    }
};

struct CosShadowEffect : CosClass<ShadowEffect> {
    CosShadowEffect() : CosClass("A shadow; it has no settings.") { constructor<>(); }
};

struct CosGlowEffect : CosClass<GlowEffect> {
    CosGlowEffect() : CosClass("A glow; it has no settings.") { constructor<>(); }
};

struct CosSoftEdgesEffect : CosClass<SoftEdgesEffect> {
    CosSoftEdgesEffect() : CosClass("Soft edges; they have no settings.") { constructor<>(); }
};

struct CosThreeDEffect : CosClass<ThreeDEffect> {
    CosThreeDEffect() : CosClass("A three-dimensional effect; it has no settings.") { constructor<>(); }
};

}  // namespace quillon::chart::mi
