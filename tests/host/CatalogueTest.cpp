#include <boost/algorithm/string/replace.hpp>

#include "orca/ClassRegistry.h"
#include "orca/EnumClassInfo.h"
#include "tests/host/HostTest.h"

namespace quillon::chart {
namespace {

using orca::factory::ClassInfo;
using orca::factory::EnumClass;

/// Every class in the order of registration: "Name < superclass", then its constructors, properties, methods
/// or members, each in the order of declaration. "~" stands for "quillon.chart.".
constexpr auto expectedCatalogue = R"text(~Object < corvala.mixin.Heterogeneous
~Chart < ~Object
  DataSet: ~DataSet, get set ~DataSet
  ChartTitle: ~Title, get set ~Title
  PlotArea: ~PlotArea, get set ~PlotArea
~BarChart < ~Chart
  new ()
~ColumnChart < ~Chart
  new ()
~LineChart < ~Chart
  new ()
~PieChart < ~Chart
  new ()
~PieChartSlice < ~ChartSlice
  new ()
~DataPoint < ~Object
  new ()
  new (double scalar)
  Value: double scalar, get set double scalar
  Format: ~DataPointShapeFormat, get set ~DataPointShapeFormat
  LabelFormat: ~DataLabelFormat, get set ~DataLabelFormat
  getX() -> double scalar
  getY() -> double scalar
~DataSeries < ~Object
  new ()
  new (OrcaFactoryString scalar)
  Name: OrcaFactoryString scalar, get set OrcaFactoryString scalar
  Size: uint64 scalar, get
  Format: ~DataSeriesShapeFormat, get set ~DataSeriesShapeFormat
  LabelFormat: ~DataLabelFormat, get set ~DataLabelFormat
  appendPoint(double scalar) -> ~DataPoint
  appendPoint(double scalar, double scalar) -> ~DataPoint
  appendPoint(~DataPoint) -> ~DataPoint
  getPoint(uint64 scalar) -> ~DataPoint
~DataSet < ~Object
  new ()
  new (OrcaFactoryString vector)
  Categories: OrcaFactoryString vector, get set OrcaFactoryString vector
  SeriesCount: uint64 scalar, get
  appendSeries(~DataSeries) -> ~DataSeries
  getSeries(uint64 scalar) -> ~DataSeries
  getSeriesCount() -> uint64 scalar
~BorderFormat < ~Format
  new ()
  new (OrcaFactoryString scalar)
  Width: double scalar, get set double scalar
~SolidBorderFormat < ~BorderFormat
  new ()
  new (OrcaFactoryString scalar)
  DashType: ~SolidBorderDashType, get set ~SolidBorderDashType
  CapType: ~SolidBorderCapType, get set ~SolidBorderCapType
  JoinType: ~SolidBorderJoinType, get set ~SolidBorderJoinType
  CompoundType: ~SolidBorderCompoundType, get set ~SolidBorderCompoundType
~GradientBorderFormat < ~BorderFormat
  new ()
  new (OrcaFactoryString scalar)
~SolidBorderDashType, uint32, Chart border types supported by Chart API.
  Dash 3
  RoundDot 1
  SquareDot 2
  DashDot 4
  LongDash 5
  LongDashDot 6
  LongDashDotDot 7
  Solid 0
~SolidBorderCapType, uint32, Chart border cap types supported by Chart API.
  Flat 2
  Round 1
  Square 0
~SolidBorderCompoundType, uint32, Chart compound border types supported by Chart API.
  Double 1
  Simple 0
  ThinThick 2
  ThickThin 3
  Triple 4
~SolidBorderJoinType, uint32, Chart border join types supported by Chart API.
  Bevel 1
  Miter 2
  Rounded 0
~FillFormat < ~Format
  new ()
  new (OrcaFactoryString scalar)
~SolidFillFormat < ~FillFormat
  new ()
  new (OrcaFactoryString scalar)
~GradientFillFormat < ~FillFormat
  new ()
  new (OrcaFactoryString scalar)
~PatternFillFormat < ~FillFormat
  new ()
  new (OrcaFactoryString scalar)
~PictureFillFormat < ~FillFormat
  new ()
  new (OrcaFactoryString scalar)
~Color < ~Object
  new ()
  new (OrcaFactoryString scalar)
  Color: any, get set any
~Format < ~Object
  Color: ~Color, get set OrcaFactoryString scalar
  Transparency: uint32 scalar, get set uint32 scalar
~ShapeFormat < ~Object
  new ()
  Border: ~BorderFormat, get
  Fill: ~FillFormat, get
  Effects: ~Effects, get
~DataPointShapeFormat < ~ShapeFormat
  new ()
  new (OrcaFactoryString scalar)
  new (OrcaFactoryString scalar, OrcaFactoryString scalar)
~DataSeriesShapeFormat < ~ShapeFormat
  new ()
  new (OrcaFactoryString scalar)
  new (OrcaFactoryString scalar, OrcaFactoryString scalar)
~DataLabelFormat < ~Object
  new ()
  ShapeFormat: ~ShapeFormat, get
  Effects: ~Effects, get
  Options: ~DataLabelOptions, get
~DataLabelOptions < ~Object
  new ()
  ContentOptions: ~DataLabelContentOptions, get
~DataLabelContentOptions < ~Object
  new ()
  ContainsValue: logical scalar, get set logical scalar
  ContainsSeriesName: logical scalar, get set logical scalar
  ContainsCategoryName: logical scalar, get set logical scalar
  ContainsLegendKey: logical scalar, get set logical scalar
  ShowLeaderLines: logical scalar, get set logical scalar
  Separator: ~DataLabelContentSeparator, get set ~DataLabelContentSeparator
~DataLabelContentSeparator, uint32, Separator for data label content options
  Comma 0
  Semicolon 1
  Period 2
  NewLine 3
  Space 4
~DataSeriesFormatOptions < ~Object
  new ()
~PieChartDataSeriesFormatOptions < ~DataSeriesFormatOptions
  new ()
  new (uint32 scalar)
  new (uint32 scalar, uint32 scalar)
  FirstSliceAngle: uint32 scalar, get set uint32 scalar
  PieExplosion: uint32 scalar, get set uint32 scalar
~Effects < ~Object
  new ()
  ThreeD: ~ThreeDEffect, get
  Shadow: ~ShadowEffect, get
  Glow: ~GlowEffect, get
  SoftEdges: ~SoftEdgesEffect, get
~ShadowEffect < ~Object
  new ()
~GlowEffect < ~Object
  new ()
~SoftEdgesEffect < ~Object
  new ()
~ThreeDEffect < ~Object
  new ()
~Text < ~TextBase
  new ()
  new (OrcaFactoryString scalar)
  Content: OrcaFactoryString scalar, get set OrcaFactoryString scalar
~Paragraph < ~TextBase
  new ()
  new (OrcaFactoryString scalar)
  new (~Text)
  Content: ~Text vector, get
  appendText(~Text) -> ~Text
~Title < ~Object
  new ()
  new (OrcaFactoryString scalar)
  new (~Text)
  new (~Paragraph)
  Text: ~Paragraph, get
~TextBase < ~Object
  new ()
  new (OrcaFactoryString scalar)
  new (~Color)
  Color: ~Color, get set ~Color
~LegendPosition < ~Object
~LegendPositionRelative < ~Object
~AreaBase < ~Object
  new ()
  new (OrcaFactoryString scalar, OrcaFactoryString scalar)
  Height: OrcaFactoryString scalar, get set OrcaFactoryString scalar
  Width: OrcaFactoryString scalar, get set OrcaFactoryString scalar
  Format: ~ShapeFormat, get
~PlotArea < ~AreaBase
  new ()
  new (OrcaFactoryString scalar, OrcaFactoryString scalar, OrcaFactoryString scalar, OrcaFactoryString scalar)
  X: OrcaFactoryString scalar, get set OrcaFactoryString scalar
  Y: OrcaFactoryString scalar, get set OrcaFactoryString scalar
~ElementArea < ~AreaBase
  new ()
  new (OrcaFactoryString scalar, OrcaFactoryString scalar)
)text";

std::string describe(const EnumClass& info)
{
    auto result = info.getName() + ", " + info.getUnderlyingType() + ", " + info.getDescription() + "\n";
    for (const auto& member : info.getMembers())
        result += "  " + member.name + " " + std::to_string(member.value) + "\n";
    return result;
}

std::string describeMembers(const ClassInfo& info)
{
    std::string result;
    for (const auto& form : info.getOwnConstructors()) result += "  new " + form->getArgumentList() + "\n";
    for (const auto& property : info.getOwnProperties()) {
        result += "  " + property->getName() + ": " + property->getType().text + ", get";
        result += property->isWritable() ? " set " + property->getSetType().text + "\n" : "\n";
    }
    for (const auto& form : info.getOwnMethods()) {
        result += "  " + form->getName() + form->getArgumentList();
        result += " -> " + form->getOutputs().front().text + "\n";
    }
    return result;
}

std::string describe(const ClassInfo& info)
{
    if (const auto* const enumClass = dynamic_cast<const EnumClass*>(&info)) return describe(*enumClass);
    std::string superclasses;
    for (const auto& name : info.getSuperclassNames()) superclasses += " " + name;
    return info.getName() + " <" + superclasses + "\n" + describeMembers(info);
}

class Catalogue : public HostTest {};

TEST_F(Catalogue, HoldsEveryClassAndMemberInItsOrder)
{
    std::string catalogue;
    for (const auto* info : orca::ClassRegistry::instance().getClasses()) catalogue += describe(*info);
    boost::replace_all(catalogue, "quillon.chart.", "~");
    EXPECT_EQ(catalogue, expectedCatalogue);
}

TEST_F(Catalogue, InheritsMembersBasesFirst)
{
    const auto names = [](const char* className) {
        std::string result;
        for (const auto* property :
             orca::ClassRegistry::instance().requireClass(fullName(className)).getProperties())
            result += property->getName() + " ";
        return result;
    };
    EXPECT_EQ(names("PlotArea"), "Height Width Format X Y ");
    EXPECT_EQ(names("SolidBorderFormat"), "Color Transparency Width DashType CapType JoinType CompoundType ");
    EXPECT_EQ(names("GradientBorderFormat"), "Color Transparency Width ");
    EXPECT_EQ(names("PieChartSlice"), "");
}

TEST_F(Catalogue, DescribesEveryMember)
{
    for (const auto* info : orca::ClassRegistry::instance().getClasses()) {
        EXPECT_NE(info->getDescription(), "") << info->getName();
        for (const auto& property : info->getOwnProperties())
            EXPECT_NE(property->getDescription(), "") << property->getName();
        for (const auto& method : info->getOwnMethods())
            EXPECT_NE(method->getDescription(), "") << method->getName();
        for (const auto& form : info->getOwnConstructors())
            for (const auto& name : form->getArgumentNames()) EXPECT_NE(name, "") << form->getSignature();
    }
}

}  // namespace
}  // namespace quillon::chart
