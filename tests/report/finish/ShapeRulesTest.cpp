#include <gtest/gtest.h>

#include <cmath>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/GradientBorderFormat.h"
#include "chart/model/GradientFillFormat.h"
#include "chart/model/LineChart.h"
#include "chart/model/PatternFillFormat.h"
#include "chart/model/PictureFillFormat.h"
#include "chart/model/PieChart.h"
#include "chart/model/SolidBorderFormat.h"
#include "tests/report/finish/FinishedPart.h"

namespace quillon::report {
namespace {

using chart::DataPointShapeFormat;
using chart::DataSeriesShapeFormat;
using Format = std::shared_ptr<chart::ShapeFormat>;

const auto makeColumns = makeChart<chart::ColumnChart>;
const auto makeLine = makeChart<chart::LineChart>;
const auto makePie = makeChart<chart::PieChart>;

/// A chart whose first series has the format.
std::shared_ptr<chart::Chart> format(const std::shared_ptr<chart::Chart>& chart,
                                     const std::shared_ptr<DataSeriesShapeFormat>& shape)
{
    chart->getDataSet()->getSeries(0)->setFormat(shape);
    return chart;
}

/// The same for its second point.
std::shared_ptr<chart::Chart> formatPoint(const std::shared_ptr<chart::Chart>& chart,
                                          const std::shared_ptr<DataPointShapeFormat>& shape)
{
    chart->getDataSet()->getSeries(0)->getPoint(1)->setFormat(shape);
    return chart;
}

template <typename Shape>
std::shared_ptr<Shape> makeWide(const std::shared_ptr<Shape>& shape, double width = 3)
{
    shape->getBorder()->setWidth(width);
    return shape;
}

TEST(Shapes, TakeDefaultsAsNotSet)
{
    for (const auto& make : {makeColumns, makeLine, makePie}) {
        auto plain = make(2, {1, 2});
        auto chart = format(make(2, {1, 2}), DataSeriesShapeFormat::create());
        chart->setPlotArea(chart::PlotArea::create());
        if (make == makePie) format(plain, DataSeriesShapeFormat::create(u"white", u"white"));
        EXPECT_EQ(FinishedPart(chart).getBytes(), FinishedPart(plain).getBytes());
    }
    const FinishedPart white(
        format(makeColumns(1, {1}), DataSeriesShapeFormat::create(u"#FFFFFF", u"#ffffff")));
    EXPECT_EQ(white.find("c:ser/c:spPr/a:solidFill/a:srgbClr/@val"), "FFFFFF");
}

TEST(Shapes, HaveAutomaticColoursInRounds)
{
    const std::pair<std::size_t, const char*> cases[] = {
        {0, "accent1 - -"},          {5, "accent6 - -"},          {6, "accent1 60000 -"},
        {13, "accent2 80000 20000"}, {20, "accent3 80000 -"},     {27, "accent4 60000 40000"},
        {34, "accent5 50000 -"},     {41, "accent6 70000 30000"}, {42, "accent1 70000 -"},
        {48, "accent1 50000 50000"}, {54, "accent1 - -"},
    };
    const FinishedPart columns(makeColumns(55, {1}));
    const FinishedPart lines(makeLine(55, {1}));
    const FinishedPart pie(makePie(1, std::vector<double>(55, 1)));
    for (const auto& [position, expected] : cases) {
        const auto number = "[" + std::to_string(position + 1) + "]";
        const auto find = [](const FinishedPart& part, const std::string& fill) {
            return part.find(fill + "@val") + " " + part.find(fill + "a:lumMod/@val") + " " +
                   part.find(fill + "a:lumOff/@val");
        };
        EXPECT_EQ(find(columns, "c:ser" + number + "/c:spPr/a:solidFill/a:schemeClr/"), expected);
        EXPECT_EQ(find(lines, "c:ser" + number + "/c:spPr/a:ln/a:solidFill/a:schemeClr/"), expected);
        EXPECT_EQ(find(pie, "c:dPt" + number + "/c:spPr/a:solidFill/a:schemeClr/"), expected);
        EXPECT_EQ(find(pie, "c:dPt" + number + "/c:spPr/a:ln/a:solidFill/a:schemeClr/"), expected);
    }
}

TEST(Shapes, OfPointsHaveWhatTheirSeriesHas)
{
    const auto red = DataSeriesShapeFormat::create(u"red", u"blue");
    const auto bare = DataPointShapeFormat::create();
    const std::tuple<std::shared_ptr<chart::Chart>, const char*, const char*> cases[] = {
        {formatPoint(makeColumns(2, {1, 2}), bare), "- accent1", "FFFFFF -"},
        {formatPoint(format(makeColumns(1, {1, 2}), red), bare), "FF0000 -", "FFFFFF -"},
        {formatPoint(format(makeLine(1, {1, 2}), red), bare), "FF0000 -", "FF0000 -"},
        {formatPoint(makeLine(1, {1, 2}), bare), "- accent1", "- accent1"},
        {formatPoint(format(makePie(1, {1, 2}), red), bare), "FF0000 FF0000 -", "0000FF FFFFFF -"},
        {format(makePie(1, {1, 2}), red), "FF0000 FF0000 -", "0000FF 0000FF -"},
        {formatPoint(makePie(1, {1, 2}), bare), "- accent1 accent2", "FFFFFF accent1"},
        {formatPoint(makePie(1, {1, 2}), DataPointShapeFormat::create(u"lime", u"navy")), "00FF00 accent1",
         "000080 accent1"},
    };
    for (const auto& [chart, fill, outline] : cases) {
        const FinishedPart part(chart);
        const auto find = [&part](const std::string& path) {
            return part.find(path + "/a:solidFill/a:srgbClr/@val") + " " +
                   part.find(path + "/a:solidFill/a:schemeClr/@val");
        };
        EXPECT_EQ(find("c:dPt/c:spPr"), fill);
        EXPECT_EQ(find("c:dPt/c:spPr/a:ln"), outline);
        EXPECT_EQ(part.find("c:dPt/c:spPr/a:ln/@w").substr(0, 5), "19050");
    }
}

TEST(Shapes, AreOutlinedWhereTheBorderSaysSo)
{
    const auto gradient = DataSeriesShapeFormat::create(u"red", u"white");
    gradient->setBorder(chart::GradientBorderFormat::create(u"red"));
    const auto faint = DataSeriesShapeFormat::create(u"red");
    faint->getBorder()->setTransparency(10);
    const std::tuple<std::shared_ptr<DataSeriesShapeFormat>, const char*, const char*> cases[] = {
        {DataSeriesShapeFormat::create(u"red"), "-", ""},
        {DataSeriesShapeFormat::create(u"red", u"#FF0000"), "-", ""},
        {DataSeriesShapeFormat::create(u"red", u"white"), "-", ""},
        {DataSeriesShapeFormat::create(u"white", u"red"), "FF0000", "-"},
        {DataSeriesShapeFormat::create(u"red", u"blue"), "0000FF", "-"},
        {makeWide(DataSeriesShapeFormat::create(u"red")), "FF0000", "-"},
        {makeWide(DataSeriesShapeFormat::create()), "FFFFFF", "-"},
        {faint, "FF0000", "-"},
        {gradient, "-", "-"},
    };
    for (const auto& [shape, color, none] : cases) {
        const FinishedPart part(format(makeColumns(1, {1}), shape));
        EXPECT_EQ(part.find("c:ser/c:spPr/a:ln/a:solidFill/a:srgbClr/@val"), color);
        EXPECT_EQ(part.find("c:ser/c:spPr/a:ln/a:noFill"), none);

        auto chart = makeColumns(1, {1});
        const auto area = chart::PlotArea::create();
        area->getFormat()->setFill(shape->getFill());
        area->getFormat()->setBorder(shape->getBorder());
        chart->setPlotArea(area);
        EXPECT_EQ(FinishedPart(chart).find("c:plotArea/c:spPr/a:ln/a:solidFill/a:srgbClr/@val"), color);
    }
}

TEST(Shapes, OfLinesHaveTheColourOfTheFillOrTheBorder)
{
    const auto make = [](const char16_t* fill, const char16_t* border) {
        return makeWide(DataSeriesShapeFormat::create(fill, border));
    };
    const auto faint = make(u"red", u"blue");
    faint->getFill()->setTransparency(20);
    const auto fainter = make(u"white", u"blue");
    fainter->getFill()->setTransparency(20);
    fainter->getBorder()->setTransparency(30);
    const std::tuple<std::shared_ptr<DataSeriesShapeFormat>, const char*, const char*, const char*> cases[] =
        {
            {make(u"red", u"blue"), "FF0000", "-", "-"},
            {make(u"red", u"white"), "FF0000", "-", "-"},
            {make(u"white", u"blue"), "0000FF", "-", "-"},
            {make(u"white", u"white"), "-", "accent1", "-"},
            {faint, "FF0000", "-", "80000"},
            {fainter, "0000FF", "-", "70000"},
        };
    for (const auto& [shape, digits, accent, alpha] : cases) {
        const FinishedPart part(format(makeLine(1, {1}), shape));
        EXPECT_EQ(part.find("c:ser/c:spPr/a:ln/a:solidFill/a:srgbClr/@val"), digits);
        EXPECT_EQ(part.find("c:ser/c:spPr/a:ln/a:solidFill/a:schemeClr/@val"), accent);
        EXPECT_EQ(part.find("c:ser/c:spPr/a:ln/a:solidFill/a:srgbClr/a:alpha/@val"), alpha);
        EXPECT_EQ(part.find("c:ser/c:spPr/a:ln/@w"), "38100");
        EXPECT_EQ(part.find("c:ser/c:spPr/a:solidFill"), "-");
    }
}

TEST(Shapes, HaveGradientsAndPatterns)
{
    const auto write = [](const auto& make, const std::shared_ptr<chart::FillFormat>& fill) {
        const auto shape = DataSeriesShapeFormat::create();
        fill->setTransparency(25);
        shape->setFill(fill);
        return FinishedPart(format(make(1, {1}), shape));
    };
    const auto gradient = write(makeColumns, chart::GradientFillFormat::create(u"red"));
    EXPECT_EQ(gradient.find("c:ser/c:spPr/a:gradFill/a:gsLst/a:gs/@pos"), "0 100000");
    EXPECT_EQ(gradient.find("c:ser/c:spPr/a:gradFill/a:gsLst/a:gs/a:srgbClr/@val"), "FF0000 FF0000");
    EXPECT_EQ(gradient.find("c:ser/c:spPr/a:gradFill/a:gsLst/a:gs[2]/a:srgbClr/a:tint/@val"), "40000");
    EXPECT_EQ(gradient.find("a:gradFill/a:gsLst/a:gs/a:srgbClr/a:alpha/@val"), "75000 75000");
    const auto line = write(makeLine, chart::GradientFillFormat::create());
    EXPECT_EQ(line.find("c:ser/c:spPr/a:ln/a:gradFill/a:gsLst/a:gs/a:schemeClr/@val"), "accent1 accent1");
    const auto pattern = write(makeColumns, chart::PatternFillFormat::create(u"red"));
    EXPECT_EQ(pattern.find("c:ser/c:spPr/a:pattFill/@prst"), "wdUpDiag");
    EXPECT_EQ(pattern.find("a:pattFill/a:fgClr/a:srgbClr/@val"), "FF0000");
    EXPECT_EQ(pattern.find("a:pattFill/a:bgClr/a:srgbClr/@val"), "FFFFFF");
    const auto picture = write(makeColumns, chart::PictureFillFormat::create(u"red"));
    EXPECT_EQ(picture.find("c:ser/c:spPr/a:solidFill/a:srgbClr/@val"), "FF0000");
    EXPECT_EQ(
        picture.getWarnings(),
        std::vector<std::string>{"chart 1, series 1 (\"North\"), fill: a picture fill holds no picture; "
                                 "its colour is shown."});
    const auto border = DataSeriesShapeFormat::create(u"white", u"white");
    border->setBorder(chart::GradientBorderFormat::create(u"blue"));
    EXPECT_EQ(FinishedPart(format(makeColumns(1, {1}), border))
                  .find("c:ser/c:spPr/a:ln/a:gradFill/a:gsLst/a:gs[1]/a:srgbClr/@val"),
              "0000FF");
}

TEST(Shapes, OfObjectsWinOverColoursOfCategoriesAndDashes)
{
    const auto points = formatPoint(makeColumns(1, {1, 2, 3}), DataPointShapeFormat::create(u"red"));
    EXPECT_EQ(FinishedPart(points, {.categoryColors = {{"c", "blue"}}})
                  .find("c:dPt/c:spPr/a:solidFill/a:srgbClr/@val"),
              "0000FF FF0000 0000FF");
    const auto border = chart::SolidBorderFormat::create();
    border->setDashType(chart::SolidBorderDashType::LongDash);
    const auto dotted = DataSeriesShapeFormat::create();
    dotted->setBorder(border);
    EXPECT_EQ(
        FinishedPart(format(makeLine(2, {1, 2}), dotted), {.dashed = {"North"}}).find("a:prstDash/@val"),
        "lgDash dash");
}

TEST(Shapes, LeaveOutWhatCannotBeShown)
{
    const auto shape = makeWide(DataPointShapeFormat::create(u"red"), -1);
    shape->getFill()->setTransparency(101);
    auto chart = formatPoint(makeColumns(1, {1, 2}), shape);
    const auto label = chart::DataLabelFormat::create();
    label->getShapeFormat()->getBorder()->setWidth(INFINITY);
    chart->getDataSet()->getSeries(0)->setLabelFormat(label);
    chart->setPlotArea(chart::PlotArea::create());
    chart->getPlotArea()->getFormat()->getBorder()->setWidth(1584.01);
    const FinishedPart part(chart);
    const std::string series = "chart 1, series 1 (\"North\"), ";
    const std::string allowed = "; expected 0 to 1584 points. It is left out.";
    EXPECT_EQ(
        part.getWarnings(),
        (std::vector<std::string>{
            series + "point 2, fill: the transparency is 101; expected 0 to 100 percent. It is left out.",
            series + "point 2, border: the width is -1" + allowed,
            series + "label, border: the width is INF" + allowed,
            "chart 1, plot area, border: the width is 1584.01" + allowed,
        }));
    EXPECT_EQ(part.find("c:dPt/c:spPr/a:ln/@w"), "19050");
    EXPECT_EQ(part.find("a:alpha/@val"), "-");
    EXPECT_EQ(part.find("c:dLbls/c:spPr"), "-");
    EXPECT_EQ(part.find("c:plotArea/c:spPr"), "-");
}

TEST(Shapes, MayBeWithoutFillAndBorder)
{
    const auto shape = DataSeriesShapeFormat::create(u"red");
    shape->setFill(nullptr);
    shape->setBorder(nullptr);
    for (const auto& make : {makeColumns, makeLine, makePie}) {
        const auto point = DataPointShapeFormat::create(u"red");
        point->setFill(nullptr);
        point->setBorder(nullptr);
        const FinishedPart part(formatPoint(format(make(1, {1, 2}), shape), point));
        EXPECT_EQ(part.find("c:dPt/c:spPr/a:solidFill/a:schemeClr/@val").substr(0, 7), "accent1");
        EXPECT_EQ(part.find("c:dPt/c:spPr/a:ln/a:solidFill/a:srgbClr/@val"), "-");
    }
}

}  // namespace
}  // namespace quillon::report
