#include "report/workbook/Workbook.h"

#include <gtest/gtest.h>

#include <clocale>
#include <cmath>
#include <regex>

#include "tests/ThrownText.h"
#include "tests/report/TestDocuments.h"

namespace quillon::report {
namespace {

std::shared_ptr<chart::DataSet> makeDataSet(const std::vector<std::u16string>& categories,
                                            const std::vector<std::vector<double>>& columns)
{
    auto dataSet = chart::DataSet::create(categories);
    for (const auto& values : columns) appendSeries(*dataSet, u"<North>", values);
    return dataSet;
}

/// The cells as "A1=3 B1=3/1 ...", a text by its number, a style behind a slash.
std::string readCells(const std::string& workbook)
{
    const std::regex cell(R"re(<c r="([A-Z0-9]+)"(?: s="([0-9]+)")?( t="s")?><v>([^<]*)</v></c>)re");
    const auto sheet = readPart(workbook, "xl/worksheets/sheet1.xml");
    std::string cells;
    for (std::sregex_iterator it(sheet.begin(), sheet.end(), cell); it != std::sregex_iterator(); ++it)
        cells += (*it)[1].str() + ((*it)[3].matched ? "=#" : "=") + (*it)[4].str() +
                 ((*it)[2].matched ? "/" + (*it)[2].str() : "") + " ";
    return cells;
}

std::string readList(const std::string& part, const std::string& pattern)
{
    const std::regex item(pattern);
    std::string list;
    for (std::sregex_iterator it(part.begin(), part.end(), item); it != std::sregex_iterator(); ++it)
        list += (*it)[1].str() + "|";
    return list;
}

TEST(Workbook, HoldsCategoriesNamesAndValues)
{
    const auto workbook = makeWorkbook(
        makeDataSet({u"a & b", u"", u" a", u"a\r"}, {{1.5, NAN, -1e-300, 0.1}, {2, 3, NAN, NAN}}));
    EXPECT_EQ(readCells(workbook), "B1=#0 C1=#0 A2=#1 B2=1.5 C2=2 C3=3 A4=#2 B4=-1e-300 A5=#3 B5=0.1 ");
    EXPECT_EQ(readList(readPart(workbook, "xl/sharedStrings.xml"), "<si>(.*?)</si>"),
              "<t>&lt;North&gt;</t>|<t>a &amp; b</t>|<t xml:space=\"preserve\"> a</t>|"
              "<t xml:space=\"preserve\">a&#13;</t>|");
    EXPECT_EQ(readList(readPart(workbook, "xl/worksheets/sheet1.xml"), "<dimension ref=\"(.*?)\"/>"),
              "A1:C5|");
    EXPECT_EQ(readCells(makeWorkbook(makeDataSet({}, {}))), "");
}

TEST(Workbook, HoldsWhatADataSetCannotSay)
{
    ChartData data(makeDataSet({u"x", u"y"}, {{1, 2}, {3, 4}}));
    data.levels = {{u"2024", u""}, {u"Q1", u"Q2"}};
    data.categoryNames = {u"Year", u"", u"Month"};
    data.series = {{.numberFormat = "0.00 \"%\"", .sizes = {7, 8}}, {.numberFormat = "0%", .sizes = {9}}};
    const WorkbookOptions options{.sizes = true, .furtherColumns = {{u"plus", {5, 6}, "0%"}}};
    const auto workbook = makeWorkbook(data, options);
    EXPECT_EQ(readCells(workbook),
              "A1=#0 C1=#1 D1=#2 E1=#3 F1=#2 G1=#3 H1=#4 A2=#5 B2=#6 C2=#7 D2=1/1 E2=7 F2=3/2 G2=9 H2=5/2 "
              "B3=#8 C3=#9 D3=2/1 E3=8 F3=4/2 H3=6/2 ");
    const auto styles = readPart(workbook, "xl/styles.xml");
    EXPECT_EQ(readList(styles, "formatCode=\"(.*?)\""), "0.00 &quot;%&quot;|0%|");
    EXPECT_EQ(readList(styles, "<xf numFmtId=\"([0-9]+)\"[^>]* xfId"), "0|164|165|");
    EXPECT_EQ(getCategoryColumn(data), 2U);
    EXPECT_EQ(getValueColumn(data, 1, options), 5U);
    EXPECT_EQ(getFurtherColumn(data, 0, options), 7U);
    EXPECT_EQ(getFurtherColumn(data, 0, {}), 5U);
    data.dropLevels();
    EXPECT_EQ(data.getCategoryName(getCategoryColumn(data)), u"Month");
}

TEST(Workbook, HoldsDatesAndNumbersOfCategories)
{
    const std::tuple<CategoryKind, std::string, std::string> cases[] = {
        {CategoryKind::Automatic, "", "A2=45292/1 yyyy-mm-dd|"},
        {CategoryKind::Date, "mmm yy", "A2=45292/1 mmm yy|"},
        {CategoryKind::Number, "", "A2=45292 "},
        {CategoryKind::Number, "0.0", "A2=45292/1 0.0|"},
        {CategoryKind::Text, "", "A2=#0 A3=#1 "},
    };
    for (const auto& [kind, format, expected] : cases) {
        ChartData data(makeDataSet({u"1 January", u"none"}, {}));
        data.categoryKind = kind;
        data.categoryValues = {45292, NAN};
        data.categoryFormat = format;
        const auto workbook = makeWorkbook(data);
        const auto formats = readList(readPart(workbook, "xl/styles.xml"), "formatCode=\"(.*?)\"");
        EXPECT_EQ(readCells(workbook) + formats, expected);
    }
}

TEST(Workbook, WritesNumbersInAnyLocale)
{
    const std::string previous = std::setlocale(LC_ALL, nullptr);
    const auto expected = makeWorkbook(makeDataSet({}, {{1234567.5}}));
    for (const auto* locale : {"de_DE.UTF-8", "de_DE.utf8", "fr_FR.UTF-8"}) std::setlocale(LC_ALL, locale);
    EXPECT_EQ(makeWorkbook(makeDataSet({}, {{1234567.5}})), expected);
    std::setlocale(LC_ALL, previous.c_str());
}

TEST(Workbook, SaysWhatDoesNotFit)
{
    const std::u16string longest(32'767, u'x');
    EXPECT_NO_THROW(makeWorkbook(makeDataSet({longest}, {})));
    const std::u16string tooLong(32'768, u'x');
    EXPECT_EQ(
        thrownText([&] {
            makeWorkbook(makeDataSet({u"a", tooLong}, {}));
        }),
        "The embedded workbook could not be made: cell A3: the text has 32768 characters; a cell holds up "
        "to 32767.");

    ChartData wide(makeDataSet({}, {{1}}));
    wide.levels.resize(16'382);
    EXPECT_EQ(readCells(makeWorkbook(wide)), "XFD1=#0 XFD2=1 ");
    wide.levels.resize(16'383);
    EXPECT_EQ(thrownText([&] { makeWorkbook(wide); }),
              "The embedded workbook could not be made: a sheet takes 16384 columns, got 16385.");

    ChartData deep(makeDataSet({}, {}));
    deep.levels.emplace_back(1'048'576);
    EXPECT_EQ(thrownText([&] { makeWorkbook(deep); }),
              "The embedded workbook could not be made: a sheet takes 1048575 rows of data, got 1048576.");

    ChartData odd(makeDataSet({}, {{1}}));
    for (const auto& [format, sentence] :
         {std::pair(std::string(256, '0'), "expected up to 255 characters."),
          std::pair(std::string("\x01"), "character 1 (U+0001) cannot stand")}) {
        odd.series = {{.numberFormat = format}};
        const auto text = thrownText([&] { makeWorkbook(odd); });
        EXPECT_EQ(text.find("Number format of series 1: " + std::string(sentence)), 0U) << text;
    }
}

}  // namespace
}  // namespace quillon::report
