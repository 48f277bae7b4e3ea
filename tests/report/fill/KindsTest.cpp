#include <gtest/gtest.h>

#include <cstring>
#include <random>

#include "tests/ThrownText.h"
#include "tests/report/fill/TestTemplates.h"

namespace quillon::report {
namespace {

using Texts = std::vector<std::string>;

const std::string dateAxes =
    makeAxis("dateAx", '1', '2',
             "<c:auto val=\"1\"/><c:lblOffset val=\"100\"/><c:baseTimeUnit val=\"months\"/>") +
    makeAxis("valAx", '2', '1');
const std::string xAxes = makeAxis("valAx", '1', '2') + makeAxis("valAx", '2', '1');

std::string makeDates(const Texts& days)
{
    return makeNumberReference('A', days, "mmm\\ yy");
}

std::string makeLevels()
{
    const auto level = [](const std::string& points) { return "<c:lvl>" + points + "</c:lvl>"; };
    return "<c:multiLvlStrRef><c:f>Sheet1!$A$2:$B$5</c:f><c:multiLvlStrCache><c:ptCount val=\"4\"/>" +
           level(
               "<c:pt idx=\"0\"><c:v>Q1</c:v></c:pt><c:pt idx=\"1\"><c:v>Q2</c:v></c:pt><c:pt "
               "idx=\"2\"><c:v>Q1</c:v></c:pt><c:pt idx=\"3\"><c:v>Q2</c:v></c:pt>") +
           level("<c:pt idx=\"0\"><c:v>2025</c:v></c:pt><c:pt idx=\"2\"><c:v>2026</c:v></c:pt>") +
           "</c:multiLvlStrCache></c:multiLvlStrRef>";
}

/// Points of a series over x values of its own.
std::string makePointSeries(int position, const std::string& x, const Texts& y,
                            const std::string& behind = "")
{
    const auto number = std::to_string(position);
    const char column = static_cast<char>('C' + position);
    return "<c:ser><c:idx val=\"" + number + "\"/><c:order val=\"" + number + "\"/><c:tx><c:v>S" + number +
           "</c:v></c:tx>" + (x.empty() ? "" : "<c:xVal>" + x + "</c:xVal>") + "<c:yVal>" +
           makeNumberReference(column, y) + "</c:yVal>" + behind + "</c:ser>";
}

std::string makePoints(const std::string& element, const std::string& series)
{
    return makeChartPart("<c:" + element + "><c:varyColors val=\"0\"/>" + series +
                         "<c:axId val=\"1\"/><c:axId val=\"2\"/></c:" + element + ">" + xAxes);
}

std::string makeErrorBars(const Texts& plus)
{
    return "<c:errBars><c:errDir val=\"y\"/><c:errBarType val=\"both\"/><c:errValType "
           "val=\"cust\"/><c:plus>" +
           makeNumberReference('F', plus) +
           "</c:plus><c:minus><c:numLit><c:formatCode>General</c:formatCode><c:ptCount val=\"1\"/><c:pt "
           "idx=\"0\"><c:v>0.5</c:v></c:pt></c:numLit></c:minus></c:errBars>";
}

std::string makeColumns(const std::string& categories, const Texts& values,
                        const std::string& axes = textAxes, const std::string& format = "")
{
    return makeChartPart(
        makeGroup("barChart", columnSettings, {{1, "North", values, format, categories}}, "12") + axes);
}

std::string changeAll(std::string text, const std::string& from, const std::string& to)
{
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string toUtf16Bytes(const std::string& text)
{
    std::string bytes;
    for (const char16_t unit : u'\xFEFF' + toUtf16(text))
        bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8)};
    return bytes;
}

/// Chart parts of every kind and way of writing.
std::vector<std::string> makeAllParts()
{
    const auto dates = makeColumns(makeDates({"46023", "46054", "46082"}), {"1", "2", "3"}, dateAxes);
    const auto bars = makeColumns(makeTextReference('A', {"a", "b", "c"}), {"1", " 2.0 ", "#N/A"});
    std::vector<std::string> parts = {
        dates,
        changeAll(dates, "<c:chart>", "<c:date1904 val=\"1\"/><c:chart>"),
        bars,
        changeAll(changeAll(changeAll(bars, "<c:", "<chart:"), "</c:", "</chart:"),
                  "xmlns:c=", "xmlns:chart="),
        changeAll(changeAll(changeAll(bars, "<c:", "<"), "</c:", "</"), "xmlns:c=", "xmlns="),
        changeAll(bars, "http://schemas.openxmlformats.org/drawingml/2006/chart",
                  "http://purl.oclc.org/ooxml/drawingml/chart"),
        toUtf16Bytes(bars),
        makeColumns(makeLevels(), {"1", "2", "3", "4"}),
        makeColumns("", {"1", "2"}),
        makeColumns(makeNumberReference('A', {"2024", "2025"}), {"1", "2"}),
        makeColumns(makeTextReference('A', {"a", "b"}), {"1", "", "3", ""}),
        makeColumns("<c:strLit><c:ptCount val=\"2\"/><c:pt idx=\"0\"><c:v>a</c:v></c:pt><c:pt "
                    "idx=\"2\"><c:v>out of the count</c:v></c:pt></c:strLit>",
                    {"1", "2"}),
        makeColumns(makeTextReference('A', {"a", "b"}), {"1", "2"}, textAxes, makeErrorBars({"1", "2"})),
        makeColumns(makeTextReference('A', {"a"}), {"1"}, textAxes, "<c:dPt><c:idx val=\"7\"/></c:dPt>"),
        makePoints("scatterChart",
                   makePointSeries(0, makeNumberReference('A', {"1", "2.5"}), {"1", "2"}) +
                       makePointSeries(1, makeNumberReference('A', {"1", "2.5"}), {"3", "4"}) +
                       makePointSeries(2, makeNumberReference('B', {"7", "8", "9"}), {"3", "", "5"})),
        makePoints("scatterChart", makePointSeries(0, makeTextReference('A', {"a", "b"}), {"1", "2"}) +
                                       makePointSeries(1, "", {"3"})),
        makePoints("bubbleChart", makePointSeries(0, makeNumberReference('A', {"1", "2.5"}), {"1", "2"},
                                                  "<c:bubbleSize>" + makeNumberReference('F', {"10", "20"}) +
                                                      "</c:bubbleSize>")),
    };
    for (const auto* kind :
         {"lineChart", "areaChart", "radarChart", "bar3DChart", "doughnutChart", "ofPieChart", "stockChart"})
        parts.push_back(makeChartPart(
            makeGroup(kind, "", {{0, "A", {"1", "2", "3"}}, {1, "B", {"4", "5", ""}}}, "12") + textAxes));
    return parts;
}

TEST(Kinds, KeepTheirBytesWhenFilledWithTheirOwnData)
{
    const auto parts = makeAllParts();
    auto document = makeTemplate(parts);
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const auto number = std::to_string(i + 1);
        document.fill(number, document.getChartData(number));
        EXPECT_TRUE(getChartPart(document, static_cast<int>(i) + 1) == parts[i]) << number;
    }
}

std::string print(const ChartData& data)
{
    std::string text = std::to_string(static_cast<int>(data.categoryKind)) + "|";
    for (const auto& category : data.dataSet->getCategories()) text += toUtf8(category) + ",";
    for (const auto& level : data.levels)
        for (const auto& name : level) text += "/" + toUtf8(name);
    const auto list = data.dataSet->getSeriesList();
    for (const auto& series : *list) {
        text += "|" + toUtf8(series->getName()) + ":";
        for (const auto& point : series->getPoints())
            text += toUtf8(num2str(point->getX()) + u";" + num2str(point->getY())) + ",";
    }
    for (const auto& details : data.series)
        for (const auto& numbers : {details.sizes, details.errorsPlus, details.errorsMinus})
            for (const double number : numbers) text += "+" + toUtf8(num2str(number));
    return text;
}

TEST(Kinds, AreReadAsData)
{
    const auto document = makeTemplate(makeAllParts());
    const std::pair<int, std::string> expected[] = {
        {1, "2|2026-01-01,2026-02-01,2026-03-01,|North:0;1,0;2,0;3,"},
        {2, "2|2030-01-02,2030-02-02,2030-03-02,|North:0;1,0;2,0;3,"},
        {3, "1|a,b,c,|North:0;1,0;2,0;NaN,"},
        {8, "1|Q1,Q2,Q1,Q2,/2025//2026/|North:0;1,0;2,0;3,0;4,"},
        {9, "1|1,2,|North:0;1,0;2,"},
        {10, "3|2024,2025,|North:0;1,0;2,"},
        {11, "1|a,b,|North:0;1,0;NaN,0;3,0;NaN,"},
        {13, "1|a,b,|North:0;1,0;2,+1+2+0.5+0.5"},
        {15, "1||S0:1;1,2.5;2,NaN;NaN,|S1:1;3,2.5;4,NaN;NaN,|S2:7;3,8;NaN,9;5,"},
        {16, "1||S0:1;1,2;2,|S1:1;3,NaN;NaN,"},
        {17, "1||S0:1;1,2.5;2,+10+20"},
    };
    for (const auto& [number, text] : expected)
        EXPECT_EQ(print(document.getChartData(std::to_string(number))), text);
    const auto dates = document.getChartData("1");
    EXPECT_EQ(dates.categoryValues, (std::vector<double>{46023, 46054, 46082}));
    EXPECT_EQ(dates.categoryFormat, "mmm\\ yy");
}

TEST(Kinds, OfCategoriesFollowTheData)
{
    const auto texts = makeColumns(makeTextReference('A', {"a", "b", "c"}), {"1", "2", "3"});
    const auto dates = makeColumns(makeDates({"46023", "46054", "46082"}), {"1", "2", "3"}, dateAxes);
    auto isoDates = makeData({"2026-07-31", "2026-08-31"}, {{"North", {1, 2}}});
    auto realDates = isoDates;
    realDates.categoryValues = {46234, 46265};
    realDates.categoryKind = CategoryKind::Date;
    auto formatted = realDates;
    formatted.categoryFormat = "d.m.yy";
    auto years = makeData({"2024-01-01", "2026-01-01"}, {{"North", {1, 2}}});
    years.categoryValues = {45292, 46023};
    years.categoryKind = CategoryKind::Date;
    auto overYears = makeData({"2010-01-01", "2010-02-01", "2026-01-01"}, {{"North", {1, 2, 3}}});
    overYears.categoryValues = {40179, 40210, 46023};
    overYears.categoryKind = CategoryKind::Date;
    const auto ownFormat = [&texts](const std::string& format) {
        return changeAll(texts, "\"General\" sourceLinked=\"1\"", "\"" + format + "\" sourceLinked=\"0\"");
    };
    auto levels = makeData({"Q1", "Q2"}, {{"North", {1, 2}}});
    levels.levels = {{u"2026", u""}};
    const auto days = makeData({"2026-07-30", "2026-07-31"}, {{"North", {1, 2}}});
    auto hours = makeData({"2026-07-31T08:00:00", "2026-07-31T09:00:00"}, {{"North", {1, 2}}});
    hours.categoryKind = CategoryKind::Date;
    hours.categoryValues = {46234 + 8 / 24.0, 46234 + 9 / 24.0};
    const auto plain = makeData({"x", "y"}, {{"North", {1, 2}}});
    const struct {
        std::string part;
        ChartData data;
        /// In the filled part.
        std::string categories;
        std::string axis;
    } cases[] = {
        {texts, isoDates,
         "<c:strRef><c:f>Sheet1!$A$2:$A$3</c:f><c:strCache><c:ptCount val=\"2\"/><c:pt "
         "idx=\"0\"><c:v>2026-07-31</c:v>",
         "<c:catAx>"},
        {texts, realDates,
         "<c:numRef><c:f>Sheet1!$A$2:$A$3</c:f><c:numCache><c:formatCode>yyyy\\-mm\\-dd</"
         "c:formatCode><c:ptCount val=\"2\"/><c:pt idx=\"0\"><c:v>46234</c:v>",
         "<c:numFmt formatCode=\"mmm yy\" sourceLinked=\"0\"/><c:crossAx val=\"2\"/><c:crosses "
         "val=\"autoZero\"/><c:auto val=\"1\"/><c:lblOffset val=\"100\"/><c:baseTimeUnit "
         "val=\"months\"/></c:dateAx>"},
        {texts, years, "<c:formatCode>yyyy\\-mm\\-dd</c:formatCode>",
         "<c:numFmt formatCode=\"yyyy\" sourceLinked=\"0\"/>"},
        // Labels of a larger unit than that of the dates would repeat.
        {texts, overYears, "<c:numRef>",
         "<c:baseTimeUnit val=\"months\"/><c:majorUnit val=\"2\"/><c:majorTimeUnit val=\"years\"/>"},
        // What the author says of the dates or their axis holds, as long as it tells the labels apart.
        {texts, formatted, "<c:formatCode>d.m.yy</c:formatCode>",
         "<c:numFmt formatCode=\"d.m.yy\" sourceLinked=\"1\"/>"},
        {changeAll(texts, "\"General\"", "\"m/yy\""), years, "<c:numRef>",
         "<c:numFmt formatCode=\"yyyy\" sourceLinked=\"0\"/>"},
        {changeAll(texts, "<c:numFmt formatCode=\"General\" sourceLinked=\"1\"/>", ""), years, "<c:numRef>",
         "<c:axPos val=\"b\"/><c:numFmt formatCode=\"yyyy\" sourceLinked=\"0\"/><c:crossAx"},
        {ownFormat("m/yy"), years, "<c:numRef>", "<c:numFmt formatCode=\"m/yy\" sourceLinked=\"0\"/>"},
        {ownFormat("mmm"), years, "<c:numRef>", "<c:numFmt formatCode=\"yyyy\" sourceLinked=\"0\"/>"},
        {dates, isoDates,
         "<c:formatCode>mmm\\ yy</c:formatCode><c:ptCount val=\"2\"/><c:pt idx=\"0\"><c:v>46234</c:v>",
         "<c:dateAx>"},
        // Days would fall together in a month, and so would their labels.
        {dates, days, "<c:v>46233</c:v>",
         "<c:numFmt formatCode=\"d mmm\" sourceLinked=\"0\"/><c:crossAx val=\"2\"/><c:crosses "
         "val=\"autoZero\"/><c:auto val=\"1\"/><c:lblOffset val=\"100\"/><c:baseTimeUnit "
         "val=\"days\"/><c:majorUnit val=\"1\"/><c:majorTimeUnit val=\"days\"/></c:dateAx>"},
        // Steps that suited months go with them.
        {changeAll(dates, "<c:baseTimeUnit val=\"months\"/>",
                   "<c:baseTimeUnit val=\"months\"/><c:majorUnit val=\"2\"/><c:majorTimeUnit "
                   "val=\"months\"/>"),
         days, "<c:v>46233</c:v>",
         "<c:baseTimeUnit val=\"days\"/><c:majorUnit val=\"1\"/><c:majorTimeUnit val=\"days\"/></c:dateAx>"},
        // An axis of dates has no unit below days.
        {texts, hours, "<c:formatCode>yyyy\\-mm\\-dd\\ hh:mm</c:formatCode>",
         "<c:numFmt formatCode=\"yyyy\\-mm\\-dd\\ hh:mm\" sourceLinked=\"1\"/><c:crossAx "
         "val=\"2\"/><c:crosses "
         "val=\"autoZero\"/><c:auto val=\"0\"/><c:lblAlgn val=\"ctr\"/>"},
        {dates, hours, "<c:formatCode>yyyy\\-mm\\-dd\\ hh:mm</c:formatCode>",
         "<c:auto val=\"0\"/><c:lblOffset val=\"100\"/></c:catAx>"},
        {dates, isoDates, "<c:v>46234</c:v>", "<c:baseTimeUnit val=\"months\"/></c:dateAx>"},
        {dates, plain,
         "<c:strRef><c:f>Sheet1!$A$2:$A$3</c:f><c:strCache><c:ptCount val=\"2\"/><c:pt "
         "idx=\"0\"><c:v>x</c:v>",
         "<c:auto val=\"1\"/><c:lblOffset val=\"100\"/></c:catAx>"},
        {changeAll(dates, "<c:auto val=\"1\"/>", "<c:auto val=\"0\"/>"), plain, "<c:v>x</c:v>",
         "<c:auto val=\"1\"/><c:lblOffset val=\"100\"/></c:catAx>"},
        {texts, levels,
         "<c:lvl><c:pt idx=\"0\"><c:v>Q1</c:v></c:pt><c:pt "
         "idx=\"1\"><c:v>Q2</c:v></c:pt></c:lvl><c:lvl><c:pt idx=\"0\"><c:v>2026</c:v></c:pt></c:lvl>",
         "<c:catAx>"},
        {changeAll(texts, "<c:auto val=\"1\"/>", "<c:auto val=\"0\"/>"), realDates, "<c:numRef>",
         "<c:catAx>"},
        {makeColumns("", {"1", "2", "3"}), plain, "</c:tx><c:cat><c:strRef>", "<c:catAx>"},
    };
    for (const auto& row : cases) {
        auto document = makeTemplate({row.part});
        EXPECT_EQ(document.fill("1", row.data).warnings, Texts());
        EXPECT_NE(getChartPart(document).find(row.categories), std::string::npos) << getChartPart(document);
        EXPECT_NE(getChartPart(document).find(row.axis), std::string::npos) << getChartPart(document);
        EXPECT_EQ(document.getChartData("1").dataSet->getCategories(), row.data.dataSet->getCategories());
    }
}

TEST(Kinds, MatchCategoriesByAllTheirLevels)
{
    const std::string red = "<c:dPt><c:idx val=\"2\"/></c:dPt>";
    const struct {
        std::vector<std::u16string> years;
        const char* moved;
    } cases[] = {
        {{u"2026", u"", u"2027", u""}, "<c:dPt><c:idx val=\"0\"/></c:dPt>"},
        {{u"2025", u"", u"2026", u""}, "<c:dPt><c:idx val=\"2\"/></c:dPt>"},
        {{u"2028", u"", u"2029", u""}, "<c:dPt><c:idx val=\"2\"/></c:dPt>"},
    };
    for (const auto& row : cases) {
        auto document = makeTemplate({makeColumns(makeLevels(), {"1", "2", "3", "4"}, textAxes, red)});
        auto data = makeData({"Q1", "Q2", "Q1", "Q2"}, {{"North", {5, 6, 7, 8}}});
        data.levels = {row.years};
        document.fill("1", data);
        EXPECT_NE(getChartPart(document).find(row.moved), std::string::npos) << getChartPart(document);
    }
}

Template makeWaterfall(const ChartData& data)
{
    Document document;
    const auto chart = chart::ColumnChart::create();
    chart->setDataSet(data.dataSet);
    document.addChart(chart, {.kind = ChartKind::Waterfall, .labels = {Label::Value}}, data);
    return Template(document.toBytes());
}

/// All that the caches hold, and the texts of labels.
Texts listValues(const std::string& part)
{
    Texts values;
    for (std::size_t at = 0; (at = part.find("<", at)) != std::string::npos; ++at)
        for (const auto* name : {"<c:v>", "<a:t>", "<c:pt idx=", "<q:total val=", "<c:legendEntry"})
            if (part.compare(at, std::strlen(name), name) == 0)
                values.push_back(part.substr(at, part.find("<", at + 1) - at));
    return values;
}

TEST(Kinds, KeepTextsThatReadAsTheNewDates)
{
    const auto part = makeColumns(makeTextReference('A', {"2026-07-30", "2026-07-31"}), {"1", "2"});
    auto document = makeTemplate({part});
    auto data = makeData({"2026-07-30", "2026-07-31"}, {{"North", {1, 2}}});
    data.categoryKind = CategoryKind::Date;
    data.categoryValues = {46233, 46234};
    document.fill("1", data);
    EXPECT_EQ(getChartPart(document), part);
    data.categoryFormat = "d mmm";
    document.fill("1", data);
    EXPECT_NE(getChartPart(document).find("<c:v>46234</c:v>"), std::string::npos);
}

/// A value axis with fixed ends.
std::string makeScale(char id, const std::string& ends)
{
    return changeAll(makeAxis("valAx", id, static_cast<char>(id - 1)), "<c:scaling/>",
                     "<c:scaling>" + ends + "</c:scaling>");
}

TEST(Kinds, SayWhichValuesAFixedScaleCutsOff)
{
    const auto makeBars = [](const std::string& grouping, const std::string& ends) {
        return makeChartPart(makeGroup("barChart",
                                       "<c:barDir val=\"col\"/><c:grouping val=\"" + grouping + "\"/>",
                                       {{0, "North", {"1", "2", "3"}}, {1, "South", {"4", "5", "6"}}}, "12") +
                             makeGroup("lineChart", lineSettings, {{2, "Goal", {"1", "2", "3"}}}, "34") +
                             makeAxis("catAx", '1', '2') + makeScale('2', ends) +
                             makeAxis("catAx", '3', '4') + makeScale('4', "<c:max val=\"3\"/>"));
    };
    const std::string ends = "<c:max val=\"10\"/><c:min val=\"0\"/>";
    const std::string behind = " lies outside and does not show in full; set the ";
    const auto low = behind + "minimum to automatic in the document.";
    const auto high = behind + "maximum to automatic in the document.";
    const struct {
        std::string part;
        std::vector<NamedValues> series;
        Texts warnings;
    } cases[] = {
        {makeBars("clustered", ends),
         {{"North", {0, gap, 9}}, {"South", {8, 8, 10}}, {"Goal", {1, 1, 3}}},
         {}},
        {makeBars("clustered", ends),
         {{"North", {-1, gap, -2.5}}, {"South", {8, 8, 11}}, {"Goal", {1, 4, 1}}},
         {"the value axis is fixed to start at 0; -2.5 (\"North\", \"Mar\")" + low,
          "the value axis is fixed to end at 10; 11 (\"South\", \"Mar\")" + high,
          "the second value axis is fixed to end at 3; 4 (\"Goal\", \"Feb\")" + high}},
        {makeBars("stacked", ends),
         {{"North", {9, 9.9, 1}}, {"South", {-8, 0.1, 9.5}}, {"Goal", {1, 1, 1}}},
         {"the value axis is fixed to start at 0; -8 (the series together, \"Jan\")" + low,
          "the value axis is fixed to end at 10; 10.5 (the series together, \"Mar\")" + high}},
        {makeBars("clustered", "<c:logBase val=\"10\"/><c:max val=\"10\"/>"),
         {{"North", {1, gap, 1e-9}}, {"South", {8, 0, 10}}, {"Goal", {-1, 1, 1}}},
         {"the value axis is logarithmic; 0 (\"South\", \"Feb\") is not above 0 and does not show."}},
        {makeBars("percentStacked", "<c:max val=\"1\"/><c:min val=\"0\"/>"),
         {{"North", {90, 99, 1}}, {"South", {8, 1, 95}}, {"Goal", {1, 1, 1}}},
         {}},
    };
    for (const auto& row : cases) {
        auto document = makeTemplate({row.part});
        EXPECT_EQ(document.fill("1", makeData({"Jan", "Feb", "Mar"}, row.series)).warnings, row.warnings);
    }
    const auto limit = [](const std::string& part, const std::string& both) {
        return changeAll(part, "<c:scaling/>", "<c:scaling>" + both + "</c:scaling>");
    };
    auto dates = makeTemplate(
        {limit(makeColumns(makeDates({"46023", "46054"}), {"1", "2"}, dateAxes), "<c:max val=\"46054\"/>")});
    EXPECT_EQ(dates.fill("1", makeData({"2026-02-01", "2026-03-01"}, {{"North", {1, 2}}})).warnings,
              Texts{"the axis of dates is fixed to end at 2026-02-01; 2026-03-01" + high});
    auto points = makeTemplate({limit(
        makePoints("scatterChart", makePointSeries(0, makeNumberReference('A', {"7", "8"}), {"7", "8"})),
        "<c:min val=\"5\"/>")});
    auto near = makeData({}, {{"S0", {6, 7}}});
    EXPECT_EQ(points.fill("1", near).warnings, Texts());
    near.dataSet->getSeries(0)->getPoint(1)->setX(4.5);
    EXPECT_EQ(points.fill("1", near).warnings,
              Texts{"the X axis is fixed to start at 5; 0 (\"S0\", point 1)" + low});
}

TEST(Kinds, KeepTheNamesThatTheDataLeavesUnsaid)
{
    const auto part =
        makeChartPart(makeGroup("barChart", columnSettings,
                                {{0, "North", {"1", "2", "3"}}, {1, "South", {"4", "5", "6"}}}, "12") +
                      textAxes);
    const std::string names = "1|Jan,Feb,Mar,|";
    const struct {
        std::vector<NamedValues> series;
        std::string data;
        Texts warnings;
    } cases[] = {
        {{{"North", {7, 8, 9}}, {"South", {1, 1, 1}}}, names + "North:0;7,0;8,0;9,|South:0;1,0;1,0;1,", {}},
        {{{"", {7, 8, 9}}, {"", {1, 1, 1}}, {"", {2, 2, 2}}},
         names + "North:0;7,0;8,0;9,|South:0;1,0;1,0;1,|Series 3:0;2,0;2,0;2,",
         {}},
        {{{"South", {7, 8}}},
         "1|Jan,Feb,|South:0;7,0;8,",
         {"the data has 2 points and no categories; of the chart's 3 the first stay."}},
        {{{"South", {7, 8, 9, 10}}},
         "1|Jan,Feb,Mar,,|South:0;7,0;8,0;9,0;10,",
         {"the data has 4 points and no categories; those behind the chart's 3 have no name."}},
    };
    for (const auto& row : cases) {
        auto document = makeTemplate({part});
        EXPECT_EQ(document.fill("1", makeData({}, row.series)).warnings, row.warnings);
        EXPECT_EQ(print(document.getChartData("1")), row.data);
    }
}

TEST(Kinds, OfPiesShowTheSeriesThatTheyShowed)
{
    auto document =
        makeTemplate({makeChartPart(makeGroup("pieChart", "", {{0, "Sales", {"1", "2", "3"}}}, ""))});
    const auto report = document.fill("1", makeData({}, {{"Costs", {4, 5, 6}}, {"Sales", {7, 8, 9}}}));
    EXPECT_EQ(report.warnings, Texts{"a pie shows one series, \"Sales\"; the others do not show."});
    EXPECT_EQ(document.getCharts()[0].series, (Texts{"Sales", "Costs"}));
    const auto part = getChartPart(document);
    EXPECT_LT(part.find("<c:v>Sales</c:v>"), part.find("<c:v>Costs</c:v>"));
}

TEST(Kinds, OfStockKeepTheOrderOfTheirSeries)
{
    const auto make = [](const Texts& high, const Texts& low, const Texts& close) {
        return makeChartPart(
            makeGroup("stockChart", "", {{0, "High", high}, {1, "Low", low}, {2, "Close", close}}, "12") +
            textAxes);
    };
    auto document = makeTemplate({make({"3", "4", "5"}, {"1", "2", "3"}, {"2", "3", "4"})});
    document.fill("1", makeData({}, {{"Close", {7, 6, 5}}, {"High", {9, 8, 7}}, {"Low", {5, 4, 3}}}));
    EXPECT_EQ(getChartPart(document), make({"9", "8", "7"}, {"5", "4", "3"}, {"7", "6", "5"}));
}

TEST(Kinds, OfWaterfallsComputeTheirBarsAnew)
{
    const std::vector<std::string> names = {"Start", "Up", "Down", "End"};
    auto before = makeData(names, {{"Change", {10, 5, -3, gap}}});
    auto after = makeData(names, {{"Change", {10, -25, 20, gap}}});
    before.totals = after.totals = {u"Start", u"End"};
    // Bars that cross 0 need series and labels that the chart did not have, and has no more.
    for (const auto& [from, to] :
         {std::pair(before, after), std::pair(after, after), std::pair(before, before)}) {
        auto document = makeWaterfall(from);
        auto plain = to;
        plain.totals.clear();
        EXPECT_EQ(document.fill("1", plain).warnings, Texts());
        EXPECT_EQ(listValues(getChartPart(document)), listValues(getChartPart(makeWaterfall(to))));
        EXPECT_EQ(document.getChartData("1").totals, to.totals);
        EXPECT_EQ(document.getCharts()[0].series, Texts{"Change"});
    }
    auto document = makeWaterfall(after);
    document.fill("1", before);
    EXPECT_EQ(getChartPart(document).find("<a:t>"), std::string::npos);
    after.totals = {u"Down"};
    document.fill("1", after);
    EXPECT_EQ(document.getChartData("1").totals, after.totals);

    // A new category may have the name of a total, and be none.
    auto twice = makeData({"Start", "Up", "End", "End"}, {{"Change", {10, 5, gap, 3}}});
    auto untold = makeWaterfall(before);
    untold.fill("1", twice);
    twice.totals = before.totals;
    auto told = makeWaterfall(before);
    told.fill("1", twice);
    EXPECT_EQ(listValues(getChartPart(told)), listValues(getChartPart(untold)));

    EXPECT_EQ(document.fill("1", makeData({"Start", "Up"}, {{"Change", {10, 5}}})).warnings,
              Texts{"the total \"Down\" is gone; say which categories are totals now (totals)."});
    EXPECT_EQ(thrownText([&] {
                  document.fill("1", makeData(names, {{"A", {1}}, {"B", {2}}}));
              }),
              "A waterfall shows one series, of changes and totals; the data has 2.");
}

TEST(Kinds, ShowANumberFormatWhereTheyHaveTheirOwn)
{
    const auto fill = [](const ChartData& data, const ChartOptions& options) {
        auto chart = chart::ColumnChart::create();
        chart->setDataSet(data.dataSet);
        Document document;
        document.addChart(chart, options, data);
        Template filled(document.toBytes());
        filled.fill("1", filled.getChartData("1"), {.numberFormat = "0.00"});
        std::string formats;
        const auto part = getChartPart(filled);
        const std::string name = "<c:numFmt formatCode=\"";
        for (auto at = part.find(name); at != std::string::npos; at = part.find(name, at + 1)) {
            const auto begin = at + name.size();
            formats += part.substr(begin, part.find('"', begin) - begin) + " ";
        }
        const auto text = part.find("<a:t>");
        return formats +
               (text == std::string::npos ? "" : part.substr(text + 5, part.find("</a:t>") - text - 5));
    };
    const auto bars = makeData({"5", "6"}, {{"North", {1, 2}}});
    auto waterfall = makeData({"a", "b", "c"}, {{"Change", {10, -25, 20}}});
    waterfall.totals = {u"a"};
    const auto value = std::vector{Label::Value};
    // Labels of a series, then the axes: names of categories keep theirs, and so does a label of fixed text.
    EXPECT_EQ(fill(bars, {.labels = value}), "0.00 General 0.00 ");
    EXPECT_EQ(fill(bars, {.kind = ChartKind::Pie, .labels = {Label::Percent}}), "0% ");
    // The first slice has a label of its own, in white.
    auto slices = makeData({"5", "6"}, {{"North", {1, 2}}});
    EXPECT_EQ(fill(slices, {.kind = ChartKind::Pie, .labels = value, .colors = {"navy", "yellow"}}),
              "0.00 0.00 ");
    EXPECT_EQ(fill(bars, {.stacking = Stacking::Percent}), "General 0% ");
    EXPECT_EQ(fill(bars, {.kind = ChartKind::Scatter}), "General 0.00 ");
    EXPECT_EQ(fill(waterfall, {.kind = ChartKind::Waterfall, .labels = value}),
              "#,##0;#,##0 0.00;0.00 -#,##0;-#,##0 -0.00;-0.00 0.00 General 0.00 20.00");
}

TEST(Kinds, WithoutNamesOfSeriesHoldThemThemselves)
{
    auto part = makeColumns(makeTextReference('A', {"a", "b"}), {"1", "2"});
    part.erase(part.find("<c:tx>"), part.find("</c:tx>") + 7 - part.find("<c:tx>"));
    auto document = makeTemplate({part});
    document.fill("1", document.getChartData("1"));
    EXPECT_EQ(getChartPart(document), part);
    const auto report = document.fill("1", makeData({"a", "b"}, {{"East & <b>", {1, 2}}, {"West", {3, 4}}}));
    EXPECT_EQ(report.warnings, Texts());
    EXPECT_NE(getChartPart(document).find("<c:order val=\"1\"/><c:tx><c:v>East &amp; &lt;b&gt;</c:v></c:tx>"),
              std::string::npos);
    EXPECT_EQ(print(document.getChartData("1")), "1|a,b,|East & <b>:0;1,0;2,|West:0;3,0;4,");
}

TEST(Kinds, OfPointsTakeXValuesAndSizesOfTheirOwn)
{
    const auto parts = makeAllParts();
    auto document = makeTemplate({parts[14], parts[16]});
    auto data = makeData({}, {{"S0", {1, 2}}, {"S1", {3, 4}}, {"New", {5, 6}}});
    for (std::size_t i = 0; i < 2; ++i) {
        data.dataSet->getSeries(0)->getPoint(i)->setX(7);
        data.dataSet->getSeries(1)->getPoint(i)->setX(8 + static_cast<double>(i));
    }
    document.fill("1", data);
    const auto part = getChartPart(document);
    EXPECT_EQ(print(document.getChartData("1")), "1||S0:7;1,7;2,|S1:8;3,9;4,|New:0;5,0;6,");
    // Two series can share a column only as long as they share its values.
    EXPECT_EQ(part.find("<c:xVal><c:numRef><c:f>Sheet1!$A$2:$A$3</c:f>"),
              part.rfind("<c:xVal><c:numRef><c:f>Sheet1!$A$2:$A$3</c:f>"));

    // A table of categories has the x values in them.
    for (const auto kind : {CategoryKind::Automatic, CategoryKind::Text}) {
        auto table = makeData({"0.5", "8"}, {{"S0", {1, 2}}});
        table.categoryKind = kind;
        EXPECT_EQ(document.fill("1", table).warnings, Texts());
        EXPECT_EQ(print(document.getChartData("1")), "1||S0:0.5;1,8;2,");
    }
    document.fill("1", makeData({"2026-01-01", "2026-01-03"}, {{"S0", {1, 2}}}));
    EXPECT_EQ(print(document.getChartData("1")), "1||S0:46023;1,46025;2,");
    EXPECT_EQ(document.fill("1", makeData({"a", "b"}, {{"S0", {1, 2}}})).warnings,
              Texts{"series \"S0\": its categories are not numbers; the points stand at 1, 2, 3."});
    EXPECT_EQ(print(document.getChartData("1")), "1||S0:1;1,2;2,");

    auto bubbles = makeData({}, {{"S0", {1, 2, 3}}, {"S1", {1, 2, 3}}});
    const std::string noX =
        ": the data has no x values; points behind those of the chart have none, and do not show.";
    const std::string noSizes = ": the data has no sizes; new points have none, and do not show.";
    EXPECT_EQ(document.fill("2", bubbles).warnings,
              (Texts{"series \"S0\"" + noX, "series \"S0\"" + noSizes, "series \"S1\"" + noX,
                     "series \"S1\"" + noSizes}));
    EXPECT_EQ(print(document.getChartData("2")),
              "1||S0:1;1,2.5;2,NaN;3,|S1:1;1,2.5;2,NaN;3,+10+20+NaN+NaN+NaN+NaN");
    bubbles.series = {{.sizes = {1, 2, 3}}, {.sizes = {4, 5, 6}}};
    EXPECT_TRUE(document.fill("2", bubbles).warnings.empty());
    EXPECT_EQ(document.getChartData("2").series[1].sizes, (std::vector<double>{4, 5, 6}));
}

TEST(Kinds, GetWhatTheyMissWhereTheSchemaWantsIt)
{
    auto document = makeTemplate({makePoints(
        "bubbleChart", makePointSeries(0, "", {"1", "2"}, "<c:bubble3D val=\"0\"/><c:extLst/>"))});
    auto data = makeData({}, {{"S0", {1, 2}}});
    data.dataSet->getSeries(0)->getPoint(0)->setX(5);
    data.series = {{.sizes = {3, 4}}};
    document.fill("1", data);
    auto part = getChartPart(document);
    for (const auto* name :
         {"<c:tx>", "<c:xVal>", "<c:yVal>", "<c:bubbleSize>", "<c:bubble3D", "<c:extLst/></c:ser>"}) {
        EXPECT_NE(part.find(name), std::string::npos) << name;
        part.erase(0, part.find(name));
    }
}

TEST(Kinds, WithErrorBarsTakeTheirAmounts)
{
    auto document = makeTemplate({makeAllParts()[12], makeAllParts()[2]});
    auto data = makeData({"a", "b", "c"}, {{"North", {1, 2, 3}}});
    data.series = {{.errorsPlus = {0.1, 0.2, 0.3}, .errorsMinus = {0.4, 0.5, 0.6}}};
    EXPECT_TRUE(document.fill("1", data).warnings.empty());
    const auto read = document.getChartData("1");
    EXPECT_EQ(read.series[0].errorsPlus, data.series[0].errorsPlus);
    EXPECT_EQ(read.series[0].errorsMinus, data.series[0].errorsMinus);
    // Those of a series that is new are none of its neighbour's.
    auto bars = makeErrorBars({"1", "2"});
    const auto color = makeAccent("<a:schemeClr val=\"accent1\"/>");
    bars.insert(bars.find("</c:errBars>"), color);
    auto colored =
        makeTemplate({makeColumns(makeTextReference('A', {"a", "b"}), {"1", "2"}, textAxes, color + bars)});
    colored.fill("1", makeData({"a", "b"}, {{"North", {1, 2}}, {"South", {3, 4}}}));
    const auto part = getChartPart(colored);
    EXPECT_EQ(part.find("<c:errBars>"), part.rfind("<c:errBars>"));
    EXPECT_EQ(
        document.fill("2", data).warnings.at(0),
        "series \"North\": the chart has no error bars of custom amounts; those of the data are left out.");
}

/// Data of any size, with gaps, whose names are partly those of other data.
ChartData makeRandomData(std::mt19937& random)
{
    const auto pick = [&](int least, int most) { return std::uniform_int_distribution(least, most)(random); };
    const auto count = static_cast<std::size_t>(pick(1, 9));
    Texts categories;
    for (std::size_t i = 0; i < count; ++i) categories.push_back("c" + std::to_string(pick(0, 12)));
    std::vector<NamedValues> series;
    for (int i = pick(1, 6); i > 0; --i) {
        std::vector<double> values;
        for (std::size_t k = 0; k < count; ++k)
            values.push_back(pick(0, 5) == 0 ? gap : pick(-1000, 1000) / 7.0);
        series.emplace_back("s" + std::to_string(pick(0, 8)), values);
    }
    return makeData(categories, series);
}

TEST(Kinds, GiveBackTheRandomDataThatTheyTook)
{
    std::mt19937 random(13);
    const Texts kinds = {"barChart",   "lineChart",     "areaChart", "radarChart",
                         "bar3DChart", "doughnutChart", "pieChart"};
    for (int i = 0; i < 200; ++i) {
        const auto& first = kinds[random() % kinds.size()];
        const auto& second = kinds[random() % kinds.size()];
        auto document = makeTemplate({makeChartPart(
            makeGroup(first, "", {{0, "s1", {"1", "2", "3"}}, {1, "s2", {"4", "5", ""}}}, "12") +
            makeGroup(second, "", {{2, "s3", {"1", "2", "3"}}}, "34") + textAxes +
            makeAxis("catAx", '3', '4') + makeAxis("valAx", '4', '3'))});
        for (int again = 0; again < 2; ++again) {
            const auto data = makeRandomData(random);
            document.fill("1", data);
            EXPECT_EQ(print(document.getChartData("1")), print(data).replace(0, 1, "1")) << i;
            const auto part = getChartPart(document);
            EXPECT_TRUE(document.fill("1", document.getChartData("1")).count(FillReport::Change::Matched) ==
                        data.dataSet->getSeriesCount());
            EXPECT_TRUE(getChartPart(document) == part) << i;
        }
    }
}

}  // namespace
}  // namespace quillon::report
