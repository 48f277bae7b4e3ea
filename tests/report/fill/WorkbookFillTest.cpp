#include "report/fill/WorkbookFill.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <set>
#include <tuple>

#include "report/fill/AreaSet.h"
#include "report/fill/CellRange.h"
#include "report/fill/WorkbookMarkup.h"
#include "tests/ThrownText.h"
#include "tests/report/TestDocuments.h"
#include "tests/report/package/RawZip.h"

namespace quillon::report {
namespace {

const std::string declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n";
const std::string sheetNs = " xmlns=\"http://schemas.openxmlformats.org/spreadsheetml/2006/main\"";
const std::string relationshipNs = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";

/// What differs between the workbooks of the tests.
struct BookText {
    std::string rows =
        "<row r=\"1\" spans=\"1:3\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"s\"><v>1</v></c>"
        "<c r=\"C1\" t=\"s\"><v>2</v></c></row>"
        "<row r=\"2\" spans=\"1:3\" ht=\"20\"><c r=\"A2\" s=\"1\"><v>45000</v></c><c r=\"B2\" "
        "s=\"2\"><v>1.50</v></c>"
        "<c r=\"C2\"><v>2</v></c></row>"
        "<row r=\"3\" spans=\"1:3\"><c r=\"A3\" s=\"1\"><v>45031</v></c><c r=\"B3\" s=\"2\"><v>3</v></c>"
        "<c r=\"C3\"><v>4</v></c></row>";
    std::string names = {};
    /// Behind the rows of the sheet.
    std::string more = {};
    std::string otherRows = "<row r=\"1\"><c r=\"A1\"><v>7</v></c></row>";
    std::string dimension = "A1:C3";
    std::string tableHead = "ref=\"A1:C3\"";
    std::string workbookType = "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet.main+xml";
};

std::string makeRelationships(const std::vector<std::pair<std::string, std::string>>& rows)
{
    std::string text =
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">";
    int number = 0;
    for (const auto& [kind, target] : rows)
        text += "<Relationship Id=\"rId" + std::to_string(++number) + "\" Type=\"" + relationshipNs + "/" +
                kind + "\" Target=\"" + target + "\"/>";
    return text + "</Relationships>";
}

std::string makeBook(const BookText& text = {})
{
    return RawZip(
               std::vector<RawEntry>{
                   {"[Content_Types].xml",
                    "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Default "
                    "Extension=\"xml\" ContentType=\"" +
                        text.workbookType + "\"/></Types>"},
                   {"_rels/.rels", makeRelationships({{"officeDocument", "xl/workbook.xml"}})},
                   {"xl/workbook.xml",
                    "<workbook" + sheetNs + " xmlns:r=\"" + relationshipNs +
                        "\"><sheets><sheet name=\"Other\" sheetId=\"1\" r:id=\"rId1\"/><sheet "
                        "name=\"It's\" sheetId=\"2\" r:id=\"rId2\"/></sheets>" +
                        text.names + "<calcPr calcId=\"1\"/></workbook>"},
                   {"xl/_rels/workbook.xml.rels",
                    makeRelationships({{"worksheet", "worksheets/sheet1.xml"},
                                       {"worksheet", "/xl/worksheets/sheet2.xml"},
                                       {"sharedStrings", "sharedStrings.xml"},
                                       {"styles", "styles.xml"}})},
                   {"xl/worksheets/sheet1.xml",
                    "<worksheet" + sheetNs + "><sheetData>" + text.otherRows + "</sheetData></worksheet>"},
                   {"xl/worksheets/sheet2.xml", "<worksheet" + sheetNs + "><dimension ref=\"" +
                                                    text.dimension + "\"/><sheetData>" + text.rows +
                                                    "</sheetData>" + text.more + "</worksheet>"},
                   {"xl/worksheets/_rels/sheet2.xml.rels",
                    makeRelationships({{"table", "../tables/table1.xml"}})},
                   {"xl/tables/table1.xml",
                    "<table" + sheetNs + " id=\"1\" name=\"Sales\" displayName=\"Sales\" " + text.tableHead +
                        "><autoFilter ref=\"A1:C3\"/><tableColumns count=\"3\"><tableColumn id=\"1\" name=\" "
                        "\"/><tableColumn "
                        "id=\"2\" name=\"North\"/><tableColumn id=\"5\" "
                        "name=\"South\"/></tableColumns></table>"},
                   {"xl/sharedStrings.xml",
                    "<sst" + sheetNs +
                        "><si><t xml:space=\"preserve\"> </t></si><si><r><t>Nor</t></r><r><t>th</t>"
                        "</r><rPh sb=\"0\" eb=\"1\"><t>x</t></rPh></si><si><t>South</t></si></sst>"},
                   {"xl/styles.xml", "<styleSheet" + sheetNs +
                                         "><cellXfs count=\"3\"><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/><xf "
                                         "numFmtId=\"10\"/></cellXfs></styleSheet>"}})
        .getBytes();
}

FilledWorkbook fillWorkbook(const std::string& bytes, std::vector<SeriesCells> series,
                            const std::vector<SeriesCells>& removed = {})
{
    return fillWorkbook([&] { return std::make_shared<const WorkbookMarkup>(bytes); }, std::move(series),
                        removed);
}

CellLine toCells(const std::vector<double>& numbers)
{
    return CellLine(std::make_shared<Points>(Points{.numbers = numbers}));
}

CellLine toCells(const std::vector<std::string>& texts)
{
    return CellLine(std::make_shared<Points>(Points{.areText = true, .texts = texts}));
}

const std::string sheet = "'It''s'!";

SeriesCells makeSeries(const std::string& name, const std::string& column, const std::vector<double>& dates,
                       const std::vector<double>& values, const std::string& lastRow = "3")
{
    SeriesCells series;
    const auto absolute = "$" + column + "$";
    series.name = {sheet + absolute + "1", {CellLine(name)}};
    series.categories = {sheet + "$A$2:$A$" + lastRow, {toCells(dates)}};
    series.values = {sheet + absolute + "2:" + absolute + lastRow, {toCells(values)}};
    if (!column.empty()) return series;
    for (auto* block : {&series.name, &series.categories, &series.values}) (*block)->reference.clear();
    return series;
}

const std::vector<double> twoDates = {45000, 45031};
const std::vector<double> threeDates = {45000, 45031, 45061};

/// What stands between the start and end tag of the only element of that name.
std::string readElement(const std::string& markup, const std::string& name)
{
    const auto start = markup.find(">", markup.find("<" + name)) + 1;
    return markup.substr(start, markup.find("</" + name + ">") - start);
}

std::string readRows(const FilledWorkbook& book)
{
    return readElement(readPart(book.bytes, "xl/worksheets/sheet2.xml"), "sheetData");
}

std::vector<std::string> getReferences(const FilledWorkbook& book)
{
    std::vector<std::string> references;
    for (const auto& series : book.series)
        for (const auto* block : {&series.name, &series.categories, &series.values})
            references.push_back(*block ? (*block)->reference : "none");
    return references;
}

TEST(CellRange, IsReadResizedAndWritten)
{
    const std::tuple<std::string, std::size_t, std::string> ranges[] = {
        {"Sheet1!$B$2:$B$7", 3, "Sheet1!$B$2:$B$4"},
        {"'It''s'!B2", 2, "'It''s'!$B$2:$B$3"},
        {"Sheet1!$AA$10:$AA$9", 40, "Sheet1!$AA$9:$AA$48"},
        {"(Sheet1!$A$2,Sheet1!$A$4:$A$5)", 4, "(Sheet1!$A$2,Sheet1!$A$4:$A$6)"},
        {"(Sheet1!$A$2,Sheet1!$A$4)", 1, "Sheet1!$A$2"},
        {"'a,b!'!$XFD$1", 0, "'a,b!'!$XFD$1"},
        {"Sheet1!$A$2:$B$3", 5, "Sheet1!$A$2:$B$6"},
    };
    for (const auto& [text, length, resized] : ranges) {
        const auto range = parseRange(text);
        ASSERT_TRUE(range) << text;
        EXPECT_EQ(range->resize(length).format(), resized);
    }
    EXPECT_EQ(parseRange("'It''s'!A1")->getSheet(), "It's");
    for (const auto* text :
         {"", "Sales", "Sheet1!", "Sheet1!$XFE$1", "Sheet1!$A$0", "Sheet1!$A$1048577", "A1",
          "Sheet1!A1,Sheet2!A1", "Sales[North]", "Sheet1!A1:", "'Sheet1!A1", "S!OFFSET(A1,1,1)"})
        EXPECT_FALSE(parseRange(text)) << text;
}

TEST(AreaSet, FindsTheCellsOfItsAreas)
{
    std::mt19937 random(3);
    const auto pick = [&](std::uint32_t count) { return static_cast<std::uint32_t>(random() % count); };
    for (int round = 0; round < 50; ++round) {
        AreaSet set;
        std::vector<Area> areas;
        for (int i = 0; i < 12; ++i) {
            const auto top = pick(20);
            const auto left = pick(20);
            areas.push_back({top, left, top + pick(i % 2 == 0 ? 8 : 2), left + pick(i % 2 == 0 ? 2 : 8)});
            set.add(areas.back());
            set.add(areas.front());
        }
        EXPECT_EQ(set.getAreas().size(), std::set<Area>(areas.begin(), areas.end()).size());
        for (int i = 0; i < 200; ++i) {
            const auto top = pick(30);
            const auto left = pick(30);
            const Area wanted{top, left, top + pick(3), left + pick(3)};
            EXPECT_EQ(set.overlaps(wanted),
                      std::ranges::any_of(areas, [&](const Area& area) { return area.overlaps(wanted); }));
        }
    }
}

TEST(WorkbookFill, TheSameNumbersLeaveEveryByte)
{
    const auto book = makeBook({.otherRows = "<row r=\"1\"><c r=\"A1\"><f>1+1</f><v>2</v></c></row>"});
    const auto filled = fillWorkbook(
        book, {makeSeries("North", "B", twoDates, {1.5, 3}), makeSeries("South", "C", twoDates, {2, 4})});
    EXPECT_EQ(filled.reason, "");
    EXPECT_TRUE(filled.bytes == book);
    // A sheet that announces more cells than it has stays so.
    const auto rough = makeBook({.dimension = "A1:D8"});
    EXPECT_TRUE(fillWorkbook(rough, {makeSeries("North", "B", twoDates, {1.5, 3}),
                                     makeSeries("South", "C", twoDates, {2, 4})})
                    .bytes == rough);
}

TEST(WorkbookFill, ChangesCellsWhereTheyStand)
{
    const auto book = makeBook(
        {.names = "<definedNames><definedName name=\"All\">'It''s'!$A$1:$C$3</definedName><definedName "
                  "name=\"First\">'It''s'!$B$2</definedName><definedName name=\"Else\">Other!$A$1:$A$3"
                  "</definedName></definedNames>",
         .more = "<conditionalFormatting sqref=\"B2:C3 E1:E3\"/>",
         .otherRows = "<row r=\"1\"><c r=\"A1\"><f>SUM('It''s'!B2:B3)</f><v>4.5</v></c></row>"});
    const auto filled = fillWorkbook(book, {makeSeries("North", "B", threeDates, {1.5, NAN, -2}),
                                            makeSeries("East <&>", "C", threeDates, {2, 4, 1e21})});
    ASSERT_EQ(filled.reason, "");
    EXPECT_EQ(
        readRows(filled),
        "<row r=\"1\" spans=\"1:3\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"s\"><v>1</v></c>"
        "<c r=\"C1\" t=\"inlineStr\"><is><t xml:space=\"preserve\">East &lt;&amp;&gt;</t></is></c></row>"
        "<row r=\"2\" spans=\"1:3\" ht=\"20\"><c r=\"A2\" s=\"1\"><v>45000</v></c><c r=\"B2\" s=\"2\"><v>1.50"
        "</v></c><c r=\"C2\"><v>2</v></c></row>"
        "<row r=\"3\" spans=\"1:3\"><c r=\"A3\" s=\"1\"><v>45031</v></c><c r=\"B3\" s=\"2\"/>"
        "<c r=\"C3\"><v>4</v></c></row>"
        "<row r=\"4\"><c r=\"A4\" s=\"1\"><v>45061</v></c><c r=\"B4\" s=\"2\"><v>-2</v></c>"
        "<c r=\"C4\"><v>1e+21</v></c></row>");
    const auto part = readPart(filled.bytes, "xl/worksheets/sheet2.xml");
    EXPECT_NE(part.find("<dimension ref=\"A1:C4\"/>"), std::string::npos);
    EXPECT_NE(part.find("sqref=\"B2:C4 E1:E3\""), std::string::npos);
    const auto main = readPart(filled.bytes, "xl/workbook.xml");
    EXPECT_EQ(
        readElement(main, "definedNames"),
        "<definedName name=\"All\">'It''s'!$A$1:$C$4</definedName><definedName name=\"First\">'It''s'!$B$2"
        "</definedName><definedName name=\"Else\">Other!$A$1:$A$3</definedName>");
    const auto table = readPart(filled.bytes, "xl/tables/table1.xml");
    EXPECT_NE(table.find("displayName=\"Sales\" ref=\"A1:C4\"><autoFilter ref=\"A1:C4\"/>"),
              std::string::npos);
    EXPECT_NE(table.find("id=\"5\" name=\"East &lt;&amp;&gt;\"/>"), std::string::npos);
    const auto strings = readPart(filled.bytes, "xl/sharedStrings.xml");
    EXPECT_TRUE(strings.ends_with("</rPh></si><si><t/></si></sst>")) << strings;
    for (const auto* same : {"xl/worksheets/sheet1.xml", "xl/styles.xml"})
        EXPECT_EQ(readPart(filled.bytes, same), readPart(book, same));
    EXPECT_EQ(getReferences(filled)[5], sheet + "$C$2:$C$4");
}

TEST(WorkbookFill, TextsThatOtherCellsHoldStay)
{
    const auto book = makeBook({.otherRows = "<row r=\"1\"><c r=\"A1\" t=\"s\"><v>2</v></c></row>"});
    const auto filled = fillWorkbook(book, {makeSeries("West", "C", twoDates, {2, 4})});
    ASSERT_EQ(filled.reason, "");
    EXPECT_EQ(readPart(filled.bytes, "xl/sharedStrings.xml"), readPart(book, "xl/sharedStrings.xml"));
}

TEST(WorkbookFill, FormulasElsewhereAreComputedAnew)
{
    for (const bool hasFormula : {false, true}) {
        const std::string formula = hasFormula ? "<f>SUM(B2:B3)</f>" : "";
        BookText text;
        text.rows += "<row r=\"9\"><c r=\"B9\">" + formula + "<v>4</v></c></row>";
        const auto filled = fillWorkbook(makeBook(text), {makeSeries("North", "B", twoDates, {1, 2})});
        ASSERT_EQ(filled.reason, "");
        const auto main = readPart(filled.bytes, "xl/workbook.xml");
        EXPECT_EQ(main.find("fullCalcOnLoad=\"1\"") != std::string::npos, hasFormula);
    }
}

TEST(WorkbookFill, RemovedSeriesLeaveNoGap)
{
    const auto filled =
        fillWorkbook(makeBook(), {makeSeries("South", "C", {45000}, {9})}, {makeSeries("", "B", {}, {})});
    ASSERT_EQ(filled.reason, "");
    EXPECT_EQ(getReferences(filled),
              (std::vector<std::string>{sheet + "$B$1", sheet + "$A$2", sheet + "$B$2"}));
    EXPECT_EQ(readRows(filled),
              "<row r=\"1\" spans=\"1:3\"><c r=\"A1\" t=\"s\"><v>0</v></c><c r=\"B1\" t=\"inlineStr\"><is>"
              "<t xml:space=\"preserve\">South</t></is></c></row>"
              "<row r=\"2\" spans=\"1:3\" ht=\"20\"><c r=\"A2\" s=\"1\"><v>45000</v></c><c r=\"B2\"><v>9</v>"
              "</c></row><row r=\"3\" spans=\"1:3\"><c r=\"A3\" s=\"1\"/><c r=\"B3\" s=\"2\"/></row>");
    EXPECT_NE(
        readPart(filled.bytes, "xl/tables/table1.xml")
            .find("ref=\"A1:B2\"><autoFilter ref=\"A1:B2\"/><tableColumns count=\"2\"><tableColumn id=\"1\" "
                  "name=\" \"/><tableColumn id=\"2\" name=\"South\"/></tableColumns>"),
        std::string::npos);
    // Cells keep their order where the chart has another.
    const auto turned = fillWorkbook(
        makeBook(), {makeSeries("East", "D", twoDates, {5, 6}), makeSeries("South", "C", twoDates, {2, 4})},
        {makeSeries("", "B", {}, {})});
    ASSERT_EQ(turned.reason, "");
    EXPECT_EQ(getReferences(turned)[2], sheet + "$C$2:$C$3");
    EXPECT_EQ(getReferences(turned)[5], sheet + "$B$2:$B$3");
}

TEST(WorkbookFill, ARemovedSeriesLeavesAnotherSheet)
{
    SeriesCells elsewhere;
    elsewhere.values = {"Other!$A$1"};
    const auto filled = fillWorkbook(makeBook(), {makeSeries("North", "B", twoDates, {1, 2})}, {elsewhere});
    ASSERT_EQ(filled.reason, "");
    EXPECT_EQ(readElement(readPart(filled.bytes, "xl/worksheets/sheet1.xml"), "sheetData"),
              "<row r=\"1\"></row>");
}

TEST(WorkbookFill, NewSeriesStandBesideTheLastWithNamesOfTheirOwn)
{
    auto series =
        std::vector{makeSeries("North", "B", twoDates, {1.5, 3}), makeSeries("South", "C", twoDates, {2, 4}),
                    makeSeries("north", "", twoDates, {5, 6}), makeSeries("", "", {1, 2}, {7, 8})};
    series[2].categories.reset();
    const auto filled = fillWorkbook(makeBook(), series);
    ASSERT_EQ(filled.reason, "");
    EXPECT_EQ(getReferences(filled)[8], sheet + "$D$2:$D$3");
    // Categories of its own stand before the values, as far as those of the last.
    EXPECT_EQ(getReferences(filled)[10], sheet + "$E$2:$E$3");
    EXPECT_EQ(getReferences(filled)[11], sheet + "$G$2:$G$3");
    const auto table = readPart(filled.bytes, "xl/tables/table1.xml");
    EXPECT_NE(table.find("ref=\"A1:E3\""), std::string::npos);
    EXPECT_NE(table.find("<tableColumn id=\"6\" name=\"north2\"/><tableColumn id=\"7\" name=\"Column5\"/>"),
              std::string::npos);
    const auto rows = readRows(filled);
    EXPECT_NE(rows.find("<t xml:space=\"preserve\">north2</t></is></c><c r=\"E1\" t=\"inlineStr\"><is>"
                        "<t xml:space=\"preserve\">Column5</t>"),
              std::string::npos);
    EXPECT_EQ(rows.find("<row r=\"1\" spans"), std::string::npos);

    BookText text;
    text.rows.replace(text.rows.find("</row>"), 0, "<c r=\"D1\"><v>1</v></c>");
    series.pop_back();
    const auto beside = fillWorkbook(makeBook(text), series);
    EXPECT_EQ(getReferences(beside)[8], sheet + "$E$2:$E$3");
}

TEST(WorkbookFill, NewSeriesWithMoreBlocksThanTheLastKeepThemApart)
{
    auto north = makeSeries("North", "B", twoDates, {1.5, 3});
    north.more = {{sheet + "$C$2:$C$3", {toCells({0.1, 0.2})}}, {}};
    auto east = makeSeries("East", "", twoDates, {5, 6});
    east.categories.reset();
    east.more = {{"", {toCells({0.3, 0.4})}}, {"", {toCells({0.5, 0.6})}}};
    const auto filled = fillWorkbook(makeBook(), {north, east});
    ASSERT_EQ(filled.reason, "");
    EXPECT_EQ(filled.series[1].values->reference, sheet + "$D$2:$D$3");
    EXPECT_EQ(filled.series[1].more[0].reference, sheet + "$E$2:$E$3");
    EXPECT_EQ(filled.series[1].more[1].reference, sheet + "$F$2:$F$3");
}

TEST(WorkbookFill, TablesKeepTheRowsThatAreNotOfTheChart)
{
    const std::pair<std::string, std::string> tables[] = {
        // Empty rows that the author added.
        {"ref=\"A1:C5\"", "ref=\"A1:C5\"><autoFilter ref=\"A1:C5\"/>"},
        // A row of totals, which nobody filters.
        {"ref=\"A1:C4\" totalsRowCount=\"1\"",
         "ref=\"A1:C4\" totalsRowCount=\"1\"><autoFilter ref=\"A1:C3\"/>"},
    };
    for (const auto& [head, expected] : tables) {
        const auto filled =
            fillWorkbook(makeBook({.tableHead = head}), {makeSeries("East", "B", twoDates, {7, 8})});
        ASSERT_EQ(filled.reason, "");
        const auto table = readPart(filled.bytes, "xl/tables/table1.xml");
        EXPECT_NE(table.find(expected), std::string::npos) << table;
        EXPECT_NE(table.find("name=\"East\""), std::string::npos) << table;
    }
}

TEST(WorkbookFill, RemarksBelowMoveDown)
{
    BookText text;
    text.rows += "<row r=\"5\" ht=\"9\"><c r=\"B5\" t=\"s\"><v>2</v></c></row>";
    std::vector<double> dates;
    for (int i = 0; i < 6; ++i) dates.push_back(45000 + i);
    const auto series = makeSeries("North", "B", dates, dates);
    // A sheet among several may be referred to from elsewhere.
    EXPECT_EQ(fillWorkbook(makeBook(text), {series}).reason,
              "cell B5, into which the data would grow, is taken");
    auto alone = Package(makeBook(text));
    auto main = alone.getPart("xl/workbook.xml");
    const std::string other = "<sheet name=\"Other\" sheetId=\"1\" r:id=\"rId1\"/>";
    main.erase(main.find(other), other.size());
    alone.setPart("xl/workbook.xml", main);
    const auto filled = fillWorkbook(alone.toBytes(), {series});
    ASSERT_EQ(filled.reason, "");
    EXPECT_NE(readRows(filled).find("<row r=\"9\" ht=\"9\"><c r=\"B9\" t=\"s\"><v>2</v></c></row>"),
              std::string::npos);
}

TEST(WorkbookFill, FollowsEveryKindOfReference)
{
    const std::string names =
        "<definedNames><definedName name=\"Values\" localSheetId=\"1\">'It''s'!$B$2:$B$3</definedName>"
        // The one that is for a sheet is meant.
        "<definedName name=\"VALUES\">Other!$A$1</definedName><definedName "
        "name=\"Growing\">OFFSET('It''s'!$B$1,1,0,COUNTA('It''s'!$B:$B)-1,1)</definedName><definedName "
        "name=\"Beside\">OFFSET(Growing,,1)</definedName></definedNames>";
    const std::tuple<std::string, std::string, std::string> references[] = {
        {sheet + "$B:$B", sheet + "$B$2:$B$4", "B4"},
        {"[0]!Values", "[0]!Values", "B4"},
        {"Growing", "Growing", "B4"},
        {"Other!Beside", "Other!Beside", "C4"},
        {"Sales[north]", sheet + "$B$2:$B$4", "B4"},
        {"(" + sheet + "$B$2," + sheet + "$B$3)", "(" + sheet + "$B$2," + sheet + "$B$3:$B$4)", "B4"},
        {sheet + "$B$2:$C$2", sheet + "$B$2:$D$2", "D2"},
        {sheet + "AB2:AB3", sheet + "$AB$2:$AB$4", "AB4"},
    };
    for (const auto& [reference, expected, lastCell] : references) {
        SeriesCells series;
        series.values = {reference, {toCells({10, 20, 30})}};
        if (reference.find(":$B") != std::string::npos) series.name = {sheet + "$B$1", {CellLine("North")}};
        BookText text{.names = names};
        text.tableHead = reference.starts_with("Sales") ? "ref=\"A1:C3\"" : "ref=\"A11:C13\"";
        const auto filled = fillWorkbook(makeBook(text), {series});
        ASSERT_EQ(filled.reason, "") << reference;
        EXPECT_EQ(filled.series[0].values->reference, expected);
        EXPECT_NE(readRows(filled).find("<c r=\"" + lastCell + "\""), std::string::npos) << readRows(filled);
        EXPECT_EQ(readPart(filled.bytes, "xl/workbook.xml").find("$B$2:$B$4") != std::string::npos,
                  lastCell == "B4")
            << reference;
    }
}

TEST(WorkbookFill, LevelsOfCategoriesHaveColumns)
{
    SeriesCells series;
    series.categories = {sheet + "$A$2:$B$3", {toCells({"2024", "", "2025"}), toCells({"Q1", "Q2", "Q1"})}};
    series.values = {sheet + "$C$2:$C$3", {toCells({1, 2, 3})}};
    auto filled = fillWorkbook(makeBook(), {series});
    ASSERT_EQ(filled.reason, "");
    EXPECT_EQ(filled.series[0].categories->reference, sheet + "$A$2:$B$4");
    EXPECT_NE(readRows(filled).find(
                  "<row r=\"3\" spans=\"1:3\"><c r=\"A3\" s=\"1\"/><c r=\"B3\" s=\"2\" t=\"inlineStr\">"),
              std::string::npos);
    series.categories->lines.erase(series.categories->lines.begin());
    filled = fillWorkbook(makeBook(), {series});
    EXPECT_EQ(filled.series[0].categories->reference, sheet + "$B$2:$B$4");
    series.categories->lines.resize(3, series.categories->lines[0]);
    filled = fillWorkbook(makeBook(), {series});
    EXPECT_EQ(filled.series[0].categories->reference, sheet + "$D$2:$F$4");
}

TEST(WorkbookFill, DatesGetAFormatWhereThereIsNone)
{
    auto series = makeSeries("North", "B", twoDates, {1, 2});
    series.values->reference = sheet + "$C$2:$C$3";
    series.values->numberFormat = "mmm yy";
    series.categories->numberFormat = "mmm yy";
    const auto filled = fillWorkbook(makeBook(), {series});
    ASSERT_EQ(filled.reason, "");
    EXPECT_NE(readRows(filled).find("<c r=\"C2\" s=\"3\"><v>1</v>"), std::string::npos);
    EXPECT_NE(readRows(filled).find("<c r=\"A2\" s=\"1\"><v>45000</v>"), std::string::npos);
    EXPECT_NE(
        readPart(filled.bytes, "xl/styles.xml")
            .find("<numFmts count=\"1\"><numFmt numFmtId=\"164\" formatCode=\"mmm yy\"/></numFmts><cellXfs "
                  "count=\"4\"><xf numFmtId=\"0\"/><xf numFmtId=\"14\"/><xf numFmtId=\"10\"/><xf "
                  "applyNumberFormat=\"1\" numFmtId=\"164\"/></cellXfs>"),
        std::string::npos);
}

TEST(WorkbookFill, FormatsThatDifferAreStylesThatDiffer)
{
    auto north = makeSeries("North", "D", twoDates, {1, 2});
    auto south = makeSeries("South", "C", twoDates, {3, 4});
    north.values->numberFormat = "0.0";
    south.values->numberFormat = "0.00";
    const auto filled = fillWorkbook(makeBook(), {south, north});
    ASSERT_EQ(filled.reason, "");
    const auto rows = readRows(filled);
    for (const auto* cell : {"<c r=\"C2\" s=\"3\"><v>3</v>", "<c r=\"D2\" s=\"4\"><v>1</v>"})
        EXPECT_NE(rows.find(cell), std::string::npos) << rows;
    EXPECT_NE(readPart(filled.bytes, "xl/styles.xml")
                  .find("<numFmts count=\"2\"><numFmt numFmtId=\"164\" formatCode=\"0.00\"/><numFmt "
                        "numFmtId=\"165\" formatCode=\"0.0\"/></numFmts><cellXfs count=\"5\">"),
              std::string::npos);
    // Formats of the author keep their numbers, and are used again.
    Package own(makeBook());
    auto styles = own.getPart("xl/styles.xml");
    const std::string before = "<numFmt numFmtId=\"170\" formatCode=\"0.0\"/>";
    styles.insert(styles.find("<cellXfs"), "<numFmts count=\"1\">" + before + "</numFmts>");
    own.setPart("xl/styles.xml", styles);
    EXPECT_NE(readPart(fillWorkbook(own.toBytes(), {south, north}).bytes, "xl/styles.xml")
                  .find("<numFmts count=\"2\">" + before + "<numFmt numFmtId=\"171\" formatCode=\"0.00\"/>"),
              std::string::npos);
}

TEST(WorkbookFill, SaysWhatCannotBeUpdated)
{
    const auto north = makeSeries("North", "B", twoDates, {1, 2});
    auto more = makeSeries("North", "B", threeDates, {1, 2, 3});
    auto elsewhere = north;
    elsewhere.values->reference = "Gone!$B$2:$B$3";
    auto computed = north;
    computed.values->reference = "Computed";
    auto unknown = north;
    unknown.values->reference = "Nothing";
    auto vast = north;
    vast.values->reference = sheet + "$B$2:$XFD$1048576";
    auto conflicting = makeSeries("South", "C", {1, 2}, {1, 2});
    auto underneath = north;
    underneath.name->reference = sheet + "$C$3";
    underneath.values->reference = sheet + "$A$1:$C$3";
    BookText formula;
    formula.rows.replace(formula.rows.find("<v>3</v>"), 0, "<f>1+2</f>");
    BookText taken;
    taken.rows += "<row r=\"4\"><c r=\"B4\"><f>SUM(B2:B3)</f><v>4.5</v></c></row>";
    BookText unnumbered;
    unnumbered.rows = "<row><c><v>1</v></c></row>";
    const std::tuple<std::string, std::vector<SeriesCells>, std::string> cases[] = {
        {makeBook(formula), {north}, "cell B3 holds a formula"},
        {makeBook(taken), {more}, "cell B4, into which the data would grow, is taken"},
        {makeBook({.tableHead = "ref=\"A1:C3\" totalsRowCount=\"1\""}),
         {more},
         "the table \"Sales\" has a row of totals"},
        {makeBook(), {elsewhere}, "it has no sheet \"Gone\""},
        {makeBook({.names =
                       "<definedNames><definedName name=\"Computed\">OFFSET(Other!$A$1,0,0,2,2)</definedName>"
                       "</definedNames>"}),
         {computed},
         "the name \"Computed\" is computed"},
        {makeBook(), {unknown}, "\"Nothing\" names no cells"},
        {makeBook(), {vast}, "the chart names more cells than a chart can show"},
        {makeBook({.tableHead = "ref=\"A1:XFD1048576\""}), {north}, "a table of the workbook is too large"},
        {makeBook(), {north, conflicting}, "cell A2 serves several series that now differ"},
        {makeBook(), {underneath}, "cell A3 serves several series that now differ"},
        {makeBook(unnumbered), {north}, "the rows of the sheet have no numbers in order"},
        {makeBook(),
         {makeSeries("New", "", twoDates, {1, 2})},
         "no series has cells beside which a new one could stand"},
        {"\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1 Workbook",
         {north},
         "The file is in an old binary format; save it in a format of today first."},
        {"", {north}, "The file is empty."},
    };
    for (const auto& [book, series, reason] : cases) {
        const auto filled = fillWorkbook(book, series);
        EXPECT_EQ(filled.reason, reason);
        EXPECT_TRUE(filled.bytes.empty());
        EXPECT_EQ(filled.series.size(), series.size());
    }
}

TEST(WorkbookFill, ANewWorkbookHoldsAllThatTheChartHas)
{
    auto first = makeSeries("North", "", twoDates, {1, 2});
    first.more.push_back({"", {toCells({3, 4})}});
    auto second = makeSeries("South", "", {1, 2, 3}, {5, 6, 7});
    second.more = first.more;
    first.categories->numberFormat = "yyyy";
    const auto made = makeFilledWorkbook({first, second});
    ASSERT_EQ(made.reason, "");
    EXPECT_EQ(getReferences(made),
              (std::vector<std::string>{"Sheet1!$B$1", "Sheet1!$A$2:$A$3", "Sheet1!$B$2:$B$3", "Sheet1!$E$1",
                                        "Sheet1!$D$2:$D$4", "Sheet1!$E$2:$E$4"}));
    EXPECT_EQ(made.series[1].more[0].reference, "Sheet1!$F$2:$F$3");
    const auto again = fillWorkbook(made.bytes, made.series);
    EXPECT_EQ(again.reason, "");
    EXPECT_TRUE(again.bytes == made.bytes);
}

/// A document with a chart part that has a workbook, or a link to one.
Package makeDocument(const std::string& target, const std::string& mode, const std::string& workbook)
{
    std::vector<RawEntry> parts = {
        {"[Content_Types].xml",
         "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"/>"},
        {"_rels/.rels", makeRelationships({{"officeDocument", "word/document.xml"}})},
        {"word/document.xml", "<w/>"},
        {"word/charts/chart1.xml", "<c/>"}};
    auto row = makeRelationships({{"oleObject", target}});
    if (!mode.empty()) row.insert(row.find("/></R"), " TargetMode=\"" + mode + "\"");
    if (!target.empty()) parts.push_back({"word/charts/_rels/chart1.xml.rels", row});
    if (!workbook.empty()) parts.push_back({"word/embeddings/old.bin", workbook});
    return Package(RawZip(parts).getBytes());
}

TEST(WorkbookFill, EveryChartEndsWithAWorkbookInItsDocument)
{
    struct Case {
        std::string target;
        std::string mode;
        std::string workbook;
        WorkbookState state;
        std::string warning;
    };
    const Case cases[] = {
        {"../embeddings/old.bin", "", makeBook(), WorkbookState::Updated, ""},
        {"../embeddings/old.bin", "", "\xD0\xCF\x11\xE0\xA1\xB1\x1A\xE1", WorkbookState::Replaced,
         "its workbook could not be updated (The file is in an old binary format; save it in a format of "
         "today "
         "first.); a new one takes its place."},
        {"file:///D:/sales.xlsx", "External", "", WorkbookState::Replaced,
         "its workbook was a link to \"file:///D:/sales.xlsx\"; the document now carries a new one."},
        {"../embeddings/gone.xlsx", "", "", WorkbookState::Made, ""},
        {"", "", "", WorkbookState::Made, ""},
    };
    for (const auto& one : cases) {
        auto document = makeDocument(one.target, one.mode, one.workbook);
        const auto change =
            updateWorkbook(document, "word/charts/chart1.xml", one.target.empty() ? "" : "rId1",
                           {makeSeries("North", "B", twoDates, {8, 9})}, {}, [&](const std::string& part) {
                               return std::make_shared<const WorkbookMarkup>(document.getPart(part));
                           });
        EXPECT_EQ(change.state, one.state);
        EXPECT_EQ(change.warning, one.warning);
        const Package saved(document.toBytes());
        const auto rows = saved.getRelationships("word/charts/chart1.xml");
        ASSERT_EQ(rows.size(), 1U);
        EXPECT_EQ(rows[0].id, change.relationshipId);
        EXPECT_FALSE(rows[0].isExternal);
        const bool isUpdated = one.state == WorkbookState::Updated;
        EXPECT_EQ(rows[0].target, isUpdated ? "word/embeddings/old.bin" : "word/embeddings/data1.xlsx");
        EXPECT_EQ(saved.hasPart("word/embeddings/old.bin"), isUpdated);
        const auto again = fillWorkbook(saved.getPart(rows[0].target), change.series);
        EXPECT_TRUE(again.bytes == saved.getPart(rows[0].target)) << again.reason;
    }
}

}  // namespace
}  // namespace quillon::report
