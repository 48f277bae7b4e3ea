#include <boost/algorithm/string/join.hpp>
#include <boost/algorithm/string/replace.hpp>

#include "orca/ClassRegistry.h"
#include "orca/EnumClassInfo.h"
#include "tests/host/HostTest.h"

namespace quillon::chart {
namespace {

using orca::factory::ClassInfo;
using orca::factory::EnumClass;
using orca::factory::impl::PropertyImpl;

/// Every class in the order of registration with its superclass and constructors, then its properties and
/// methods, or its members, each in the order of declaration. "~" stands for "quillon.chart.", "$" for
/// "OrcaFactoryString".
constexpr auto expectedCatalogue = R"text(~Object < corvala.mixin.Heterogeneous
~Chart < ~Object
  DataSet: ~DataSet, get set
  ChartTitle: ~Title, get set
  PlotArea: ~PlotArea, get set
~BarChart < ~Chart ()
~ColumnChart < ~Chart ()
~LineChart < ~Chart ()
~PieChart < ~Chart ()
~PieChartSlice < ~ChartSlice ()
~DataPoint < ~Object () (double scalar)
  Value: double scalar, get set
  Format: ~DataPointShapeFormat, get set
  LabelFormat: ~DataLabelFormat, get set
  getX() -> double scalar
  getY() -> double scalar
~DataSeries < ~Object () ($ scalar)
  Name: $ scalar, get set
  Size: uint64 scalar, get
  Format: ~DataSeriesShapeFormat, get set
  LabelFormat: ~DataLabelFormat, get set
  appendPoint(double scalar) -> ~DataPoint
  appendPoint(double scalar, double scalar) -> ~DataPoint
  appendPoint(~DataPoint) -> ~DataPoint
  getPoint(uint64 scalar) -> ~DataPoint
~DataSet < ~Object () ($ vector)
  Categories: $ vector, get set
  SeriesCount: uint64 scalar, get
  appendSeries(~DataSeries) -> ~DataSeries
  getSeries(uint64 scalar) -> ~DataSeries
  getSeriesCount() -> uint64 scalar
~BorderFormat < ~Format () ($ scalar)
  Width: double scalar, get set
~SolidBorderFormat < ~BorderFormat () ($ scalar)
  DashType: ~SolidBorderDashType, get set
  CapType: ~SolidBorderCapType, get set
  JoinType: ~SolidBorderJoinType, get set
  CompoundType: ~SolidBorderCompoundType, get set
~GradientBorderFormat < ~BorderFormat () ($ scalar)
~SolidBorderDashType, uint32, Chart border types supported by Chart API.
  Dash 3, RoundDot 1, SquareDot 2, DashDot 4, LongDash 5, LongDashDot 6, LongDashDotDot 7, Solid 0
~SolidBorderCapType, uint32, Chart border cap types supported by Chart API.
  Flat 2, Round 1, Square 0
~SolidBorderCompoundType, uint32, Chart compound border types supported by Chart API.
  Double 1, Simple 0, ThinThick 2, ThickThin 3, Triple 4
~SolidBorderJoinType, uint32, Chart border join types supported by Chart API.
  Bevel 1, Miter 2, Rounded 0
~FillFormat < ~Format () ($ scalar)
~SolidFillFormat < ~FillFormat () ($ scalar)
~GradientFillFormat < ~FillFormat () ($ scalar)
~PatternFillFormat < ~FillFormat () ($ scalar)
~PictureFillFormat < ~FillFormat () ($ scalar)
~Color < ~Object () ($ scalar)
  Color: any, get set
~Format < ~Object
  Color: ~Color, get set $ scalar
  Transparency: uint32 scalar, get set
~ShapeFormat < ~Object ()
  Border: ~BorderFormat, get
  Fill: ~FillFormat, get
  Effects: ~Effects, get
~DataPointShapeFormat < ~ShapeFormat () ($ scalar) ($ scalar, $ scalar)
~DataSeriesShapeFormat < ~ShapeFormat () ($ scalar) ($ scalar, $ scalar)
~DataLabelFormat < ~Object ()
  ShapeFormat: ~ShapeFormat, get
  Effects: ~Effects, get
  Options: ~DataLabelOptions, get
~DataLabelOptions < ~Object ()
  ContentOptions: ~DataLabelContentOptions, get
~DataLabelContentOptions < ~Object ()
  ContainsValue: logical scalar, get set
  ContainsSeriesName: logical scalar, get set
  ContainsCategoryName: logical scalar, get set
  ContainsLegendKey: logical scalar, get set
  ShowLeaderLines: logical scalar, get set
  Separator: ~DataLabelContentSeparator, get set
~DataLabelContentSeparator, uint32, Separator for data label content options
  Comma 0, Semicolon 1, Period 2, NewLine 3, Space 4
~DataSeriesFormatOptions < ~Object ()
~PieChartDataSeriesFormatOptions < ~DataSeriesFormatOptions () (uint32 scalar) (uint32 scalar, uint32 scalar)
  PieExplosion: uint32 scalar, get set
  FirstSliceAngle: uint32 scalar, get set
~Effects < ~Object ()
  ThreeD: ~ThreeDEffect, get
  Shadow: ~ShadowEffect, get
  Glow: ~GlowEffect, get
  SoftEdges: ~SoftEdgesEffect, get
~ShadowEffect < ~Object ()
~GlowEffect < ~Object ()
~SoftEdgesEffect < ~Object ()
~ThreeDEffect < ~Object ()
~Text < ~TextBase () ($ scalar)
  Content: $ scalar, get set
~Paragraph < ~TextBase () ($ scalar) (~Text)
  Content: ~Text vector, get
  appendText(~Text) -> ~Text
~Title < ~Object () ($ scalar) (~Text) (~Paragraph)
  Text: ~Paragraph, get
~TextBase < ~Object () ($ scalar) (~Color)
  Color: ~Color, get set
~LegendPosition < ~Object
~LegendPositionRelative < ~Object
~AreaBase < ~Object () ($ scalar, $ scalar)
  Height: $ scalar, get set
  Width: $ scalar, get set
  Format: ~ShapeFormat, get
~PlotArea < ~AreaBase () ($ scalar, $ scalar, $ scalar, $ scalar)
  X: $ scalar, get set
  Y: $ scalar, get set
~ElementArea < ~AreaBase () ($ scalar, $ scalar)
)text";

std::string describe(const EnumClass& info)
{
    std::vector<std::string> members;
    for (const auto& member : info.getMembers())
        members.push_back(member.name + " " + std::to_string(member.value));
    return info.getName() + ", " + info.getUnderlyingType() + ", " + info.getDescription() + "\n  " +
           boost::join(members, ", ") + "\n";
}

std::string describe(const PropertyImpl& property)
{
    auto result = "  " + property.getName() + ": " + property.getType().text + ", get";
    if (property.isWritable()) result += " set";
    if (property.isWritable() && property.getSetType().text != property.getType().text)
        result += " " + property.getSetType().text;
    return result + "\n";
}

std::string describe(const ClassInfo& info)
{
    if (const auto* const enumClass = dynamic_cast<const EnumClass*>(&info)) return describe(*enumClass);
    auto result = info.getName() + " < " + boost::join(info.getSuperclassNames(), ", ");
    for (const auto& form : info.getOwnConstructors()) result += " " + form->getArgumentList();
    result += "\n";
    for (const auto& property : info.getOwnProperties()) result += describe(*property);
    for (const auto& form : info.getOwnMethods())
        result += "  " + form->getName() + form->getArgumentList() + " -> " +
                  form->getOutputs().front().text + "\n";
    return result;
}

class Catalogue : public HostTest {};

TEST_F(Catalogue, HoldsEveryClassAndMemberInItsOrder)
{
    std::string catalogue;
    for (const auto* info : orca::ClassRegistry::instance().getClasses()) catalogue += describe(*info);
    boost::replace_all(catalogue, "quillon.chart.", "~");
    boost::replace_all(catalogue, "OrcaFactoryString", "$");
    EXPECT_EQ(catalogue, expectedCatalogue);
}

}  // namespace
}  // namespace quillon::chart
