#include "report/finish/Colors.h"

#include <gtest/gtest.h>

#include "chart/model/ColumnChart.h"
#include "chart/model/PieChart.h"
#include "tests/ThrownText.h"
#include "tests/report/finish/FinishedPart.h"

namespace quillon::report {
namespace {

using Texts = std::vector<std::string>;
using Pairs = std::vector<std::pair<std::string, std::string>>;

/// Series "A", "B", "A" of three points in categories "x", "y", "x".
template <typename Type>
std::shared_ptr<chart::Chart> makeNamed()
{
    auto chart = makeChart<Type>(3, {1, 2, 3});
    chart->getDataSet()->setCategories({u"x", u"y", u"x"});
    const char16_t* const names[] = {u"A", u"B", u"A"};
    for (std::size_t i = 0; i < 3; ++i) chart->getDataSet()->getSeries(i)->setName(names[i]);
    return chart;
}

TEST(Colors, OfOptionsTakeTheirTurns)
{
    const std::tuple<Texts, Texts, Pairs, const char*> cases[] = {
        {{}, {}, {}, "accent1 accent2 accent3"},
        {{"red"}, {}, {}, "FF0000 accent2 accent3"},
        {{}, {"red", "#00ff00"}, {}, "FF0000 00FF00 FF0000"},
        {{"blue"}, {"red", "#00ff00"}, {}, "0000FF 00FF00 FF0000"},
        {{"blue", "blue", "blue"}, {"red"}, {{"A", "rgb(1,2,3)"}}, "010203 0000FF 010203"},
        {{}, {}, {{"B", "blue"}, {"A", "lime"}}, "00FF00 0000FF 00FF00"},
    };
    for (const auto& [colors, palette, named, expected] : cases) {
        ChartOptions options;
        options.colors = colors;
        options.palette = palette;
        options.seriesColors = named;
        const auto write = [&options](const auto& chart, const std::string& element) {
            const FinishedPart part(chart, options);
            std::string found;
            for (const auto* number : {"[1]", "[2]", "[3]"})
                for (const auto* color : {"a:srgbClr/@val", "a:schemeClr/@val"}) {
                    const auto text = part.find(element + number + "/c:spPr/a:solidFill/" + color);
                    if (text != "-") found += (found.empty() ? "" : " ") + text;
                }
            return found;
        };
        EXPECT_EQ(write(makeNamed<chart::ColumnChart>(), "c:ser"), expected);
        for (auto& [name, color] : options.seriesColors) name = name == "A" ? "x" : "y";
        EXPECT_EQ(write(makeNamed<chart::PieChart>(), "c:dPt"), expected);
    }
}

TEST(Colors, OfObjectsWinOverOptions)
{
    auto chart = makeNamed<chart::ColumnChart>();
    chart->getDataSet()->getSeries(1)->setFormat(chart::DataSeriesShapeFormat::create(u"navy"));
    chart->getDataSet()->getSeries(2)->setFormat(chart::DataSeriesShapeFormat::create());
    ChartOptions options;
    options.colors = {"red", "red", "red"};
    options.seriesColors = {{"B", "lime"}};
    EXPECT_EQ(FinishedPart(chart, options).find("c:ser/c:spPr/a:solidFill/a:srgbClr/@val"),
              "FF0000 000080 FF0000");
}

TEST(Colors, AreRefusedForWhatIsNotThere)
{
    const auto columns = makeNamed<chart::ColumnChart>();
    const auto pie = makeNamed<chart::PieChart>();
    const auto none = makeChart<chart::ColumnChart>(0);
    const auto many = makeChart<chart::PieChart>(1, std::vector<double>(22, 1));
    std::string first20 = "\"c\"";
    for (int i = 1; i < 20; ++i) first20 += ", \"c\"";
    const std::tuple<std::shared_ptr<chart::Chart>, Texts, Pairs, std::string> cases[] = {
        {columns, Texts(4, "red"), {}, "colors: expected at most one for each series, 3 in all; got 4."},
        {pie, Texts(4, "red"), {}, "colors: expected at most one for each slice, 3 in all; got 4."},
        {none, {"red"}, {}, "colors: expected at most one for each series, 0 in all; got 1."},
        {columns,
         {},
         {{"C", "red"}},
         R"(series-colors: there is no series "C"; the series are "A", "B", "A".)"},
        {pie,
         {},
         {{"xx", "red"}},
         R"(series-colors: there is no slice "xx"; the slices are "x", "y", "x"; did you mean "x"?)"},
        {none, {}, {{"A", "red"}}, R"(series-colors: there is no series "A"; there are no series.)"},
        {many,
         {},
         {{"A", "red"}},
         R"(series-colors: there is no slice "A"; the slices are )" + first20 + " and 2 more."},
    };
    for (const auto& [chart, colors, named, sentence] : cases) {
        ChartOptions options;
        options.colors = colors;
        options.seriesColors = named;
        EXPECT_EQ(thrownText([&, &c = chart] { FinishedPart(c, options); }), "chart 1: " + sentence);
    }
}

}  // namespace
}  // namespace quillon::report
