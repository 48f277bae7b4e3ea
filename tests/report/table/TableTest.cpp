#include <fcntl.h>
#include <fmt/format.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cmath>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <thread>

#include "report/table/CellText.h"
#include "report/table/ChartTable.h"
#include "report/table/DateText.h"
#include "report/table/InputFile.h"
#include "support/Text.h"
#include "tests/ThrownText.h"
#include "tests/report/package/RawZip.h"
#include "tests/report/table/TableReading.h"

namespace quillon::report {
namespace {

const std::string corpus = QUILLON_TABLES_FOLDER "/";

std::string refuse(const std::string& path, const TableOptions& options = {})
{
    return thrownText([&] { readChartData(path, options); });
}

std::string readBytes(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(Table, KeepsNumbersDatesAndTextOfTheRowsThatAreWanted)
{
    const auto path = writeTable("Day,Region,Share\n2024-01-01,N,5 %\n2024-01-02,S,NA\n2024-01-03,N,7.5 %\n");
    EXPECT_EQ(
        describeReading(path, parseOptions("--gaps --where Region=N --columns Share")),
        "categories: 2024-01-01 | 2024-01-03\ndates: 2024-01-01 | 2024-01-03\nShare (0.0%): 0.05 | 0.075\n");
}

TEST(Table, RefusesFilesThatCannotBeRead)
{
    EXPECT_EQ(refuse("/no such"), "Cannot read \"/no such\": No such file or directory.");
    EXPECT_EQ(refuse("/"), "Cannot read \"/\": it is a folder.");
    EXPECT_EQ(refuse(std::string("a\0b", 3)), "Cannot read \"a\\x00b\": the path holds a null character.");
    // Its first byte cannot be read, though it can be opened.
    EXPECT_EQ(refuse("/proc/self/mem"), "Cannot read \"/proc/self/mem\": Input/output error.");
}

TEST(Table, AFileThatFailsHalfWayIsRefused)
{
    const int next = dup(STDIN_FILENO);
    close(next);
    InputFile file(writeTable("A,B\nx,1\n"));
    const int unreadable = open("/dev/null", O_WRONLY);
    dup2(unreadable, next);
    close(unreadable);
    std::string block(16, ' ');
    EXPECT_NE(thrownText([&] { file.read(block); }).find("Bad file descriptor"), std::string::npos);
}

TEST(Table, CharactersMayEndInAnotherBlock)
{
    std::string text = "\xFF\xFE" + std::string("A\0,\0B\0\n\0", 8);
    std::size_t rows = 0;
    for (; text.size() < 300'000; ++rows) {
        text += std::string("\x3D\xD8\x00\xDE", 4) + std::string("\x3D\xD8\x00\xDE", 4);
        text += std::string(",\0001\0\n\0", 6);
    }
    const auto data = readChartData(writeTable(text), parseOptions("--aggregate count"));
    EXPECT_EQ(data.dataSet->getCategories(), (std::vector<std::u16string>{u"\U0001F600\U0001F600"}));
    EXPECT_EQ(data.dataSet->getSeries(0)->getPoint(0)->getValue(), static_cast<double>(rows));
}

TEST(Table, ReadsPipesAndStandardInput)
{
    const auto pipe = writeTable("") + ".pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    std::thread writer([&pipe] { std::ofstream(pipe) << "A,B\nx,1\n"; });
    EXPECT_EQ(describeReading(pipe, {}), "categories: x\nB: 1\n");
    writer.join();

    const int kept = dup(STDIN_FILENO);
    ASSERT_NE(std::freopen(writeTable("A;B\nx;1,5\n").c_str(), "r", stdin), nullptr);
    EXPECT_EQ(readChartData("-", {}).dataSet->getSeries(0)->getPoint(0)->getValue(), 1.5);
    ASSERT_NE(std::freopen((corpus + "base.sqlite").c_str(), "r", stdin), nullptr);
    EXPECT_EQ(refuse("-"), "standard input: a database is read from a file of its own; give its path.");
    dup2(kept, STDIN_FILENO);
    close(kept);
}

TEST(Table, RefusesEarlyWhatAChartCannotShow)
{
    std::string rows = "A,B\n";
    for (int i = 0; i < 1'048'576; ++i) rows += "x,1\n";
    const auto tall = writeTable(rows);
    const auto start = std::clock();
    EXPECT_NE(refuse(tall).find("1048576 categories, and a chart shows at most 1048575;"), std::string::npos);
    EXPECT_EQ(describeReading(tall, parseOptions("--aggregate sum")), "categories: x\nB: 1048576\n");

    std::string pairs = "category,series,value\n";
    for (int i = 0; i < 2000; ++i) pairs += fmt::format("c{0},s{0},1\n", i);
    EXPECT_NE(
        refuse(writeTable(pairs), parseOptions("--series series --value value --gaps"))
            .find("2000 series with 2000 categories make 4000000 points, and a chart shows at most 2000000;"),
        std::string::npos);
    EXPECT_LT(std::clock() - start, 20 * CLOCKS_PER_SEC);

    EXPECT_NE(refuse(writeTable("A,B\nx,\"" + std::string(2'000'000, 'y')))
                  .find(":2: a field that begins here has a quote that is not closed"),
              std::string::npos);
    EXPECT_NE(refuse(writeTable(std::string(20'000, ','))).find("more than 16384 cells in a row"),
              std::string::npos);
    EXPECT_NE(refuse(writeTable("A,B\n" + std::string(32'768, 'y') + ",1\n"))
                  .find("(32,768 characters) is too long"),
              std::string::npos);
}

TEST(Table, SparseLongTablesShareOneGap)
{
    std::string pairs = "category,series,value\n";
    for (int i = 0; i < 300; ++i) pairs += fmt::format("c{0},s{0},1\n", i);
    const auto data = readChartData(writeTable(pairs), parseOptions("--series series --value value --gaps"));
    EXPECT_EQ(data.dataSet->getSeries(0)->getPoint(1), data.dataSet->getSeries(299)->getPoint(0));
    EXPECT_TRUE(std::isnan(data.dataSet->getSeries(0)->getPoint(1)->getValue()));
    EXPECT_EQ(data.dataSet->getSeries(299)->getPoint(299)->getValue(), 1);
}

TEST(Table, ReportsBytesOfBothPasses)
{
    std::string rows = "A,B\n";
    while (rows.size() < 300'000) rows += "category,12345\n";
    Listener listener;
    std::vector<std::size_t> heard;
    std::size_t all = 0;
    listener.progress = [&](std::size_t done, std::size_t total) {
        heard.push_back(done);
        all = total;
    };
    readChartData(writeTable(rows), {}, listener);
    EXPECT_TRUE(std::is_sorted(heard.begin(), heard.end()));
    EXPECT_GT(heard.size(), 8U);
    EXPECT_EQ(heard.back(), all);
    EXPECT_EQ(all, 2 * rows.size());
}

/// The parser is written in C: what a listener throws goes around it, and its memory is released.
TEST(Table, PassesOnWhatAListenerThrows)
{
    Listener listener;
    listener.warning = [](const std::string& sentence) { throw std::logic_error(sentence); };
    EXPECT_EQ(thrownText<std::logic_error>([&] { readChartData(corpus + "text-column.csv", {}, listener); }),
              corpus + "text-column.csv: column \"Kind\" holds no numbers, as in -1.5, and is left out.");
    listener = {};
    listener.progress = [](std::size_t, std::size_t) { throw std::logic_error("enough"); };
    EXPECT_EQ(thrownText<std::logic_error>([&] { readChartData(corpus + "plain.csv", {}, listener); }),
              "enough");
    // A row beyond the bounds is refused in the middle of a block.
    EXPECT_NE(
        refuse(writeTable("A,B\nx,\"1\n2\"\n" + std::string(20'000, ',') + "\nx,1\n")).find(":4: more than"),
        std::string::npos);
}

TEST(Table, DamagedFilesAreRefusedWithASentence)
{
    for (const auto* name :
         {"book.xlsx", "sheet.ods", "base.sqlite", "rows.json", "utf16le.csv", "title.csv"}) {
        const auto whole = readBytes(corpus + name);
        const auto ending = std::string(name).substr(std::string(name).find('.'));
        const auto options = parseOptions(ending == ".sqlite" ? "--query 'SELECT * FROM sales'" : "");
        const auto step = std::max<std::size_t>(whole.size() / 150, 1);
        for (std::size_t at = 0; at < whole.size(); at += step) {
            auto flipped = whole;
            flipped[at] = static_cast<char>(flipped[at] ^ 0x55);
            EXPECT_NE(describeReading(writeTable(flipped, ending), options), "") << name << " " << at;
            EXPECT_NE(describeReading(writeTable(whole.substr(0, at), ending), options), "")
                << name << " " << at;
        }
    }
}

std::string writeOds(const std::string& rows)
{
    return writeTable(RawZip({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"},
                              {"content.xml", "<x><table name='T'>" + rows + "</table></x>"}})
                          .getBytes(),
                      ".ods");
}

std::string writeXlsx(const std::string& rows, const std::string& sharedText)
{
    return writeTable(
        RawZip({{"[Content_Types].xml", "<Types/>"},
                {"_rels/.rels", "<r><Relationship Id='1' Type='/officeDocument' Target='book.xml'/></r>"},
                {"book.xml", "<workbook><sheet name='S' id='s'/></workbook>"},
                {"_rels/book.xml.rels",
                 "<r><Relationship Id='s' Type='/worksheet' Target='sheet.xml'/>"
                 "<Relationship Id='t' Type='/sharedStrings' Target='texts.xml'/></r>"},
                {"texts.xml", "<sst><si><t>" + sharedText + "</t></si></sst>"},
                {"sheet.xml", "<sheet>" + rows + "</sheet>"}})
            .getBytes(),
        ".xlsx");
}

std::string repeat(std::size_t count, const std::string& text)
{
    std::string repeated;
    for (std::size_t i = 0; i < count; ++i) repeated += text;
    return repeated;
}

TEST(Table, FormulasWithoutResultsAreToldOf)
{
    const std::string text = "<c t='str'><v>a</v></c>";
    const auto row = [&](const std::string& cell) { return "<row>" + text + cell + "</row>"; };
    const auto odsRow = [](const std::string& cell) {
        return "<table-row><table-cell value-type='string'><p>a</p></table-cell>" + cell + "</table-row>";
    };
    const std::string files[] = {
        writeXlsx(row(text) + row("<c><v>1</v></c>") + row("<c t='str'><f>B1</f><v/></c>") +
                      row("<c><f>B2</f><v/></c>") + row("<c><f>B2</f><v>2</v></c>"),
                  ""),
        writeOds(odsRow("<table-cell value-type='string'><p>b</p></table-cell>") +
                 odsRow("<table-cell value-type='float' value='1'/>") +
                 odsRow("<table-cell formula='of:=[.B1]' value-type='string'/>") +
                 odsRow("<table-cell formula='of:=[.B2]'/>") +
                 odsRow("<table-cell formula='of:=[.B2]' value-type='float' value='2'/>"))};
    for (const auto& file : files)
        EXPECT_NE(describeReading(file, parseOptions("--gaps"))
                      .find("the file keeps no result of 1 formula; save it in a spreadsheet program"),
                  std::string::npos)
            << describeReading(file, parseOptions("--gaps"));
}

TEST(Table, StrictWorkbooksHoldDates)
{
    const std::string text = "<c t='str'><v>a</v></c>";
    EXPECT_EQ(
        describeReading(writeXlsx("<row>" + text + "<c t='str'><v>b</v></c></row>" +
                                      "<row><c t='d'><v>2024-03-31T00:00:00</v></c><c><v>1</v></c></row>",
                                  ""),
                        {}),
        "categories: 2024-03-31\ndates: 2024-03-31\nb: 1\n");
}

TEST(Table, TheColumnsOfCategoriesKeepTheirNames)
{
    using Names = std::vector<std::u16string>;
    const std::pair<const char*, Names> rows[] = {
        {"--columns net --aggregate sum", {u"region"}},
        {"--category year,region --columns net", {u"year", u"region"}},
        {"--x tax --columns net --where kind=tea", {u"tax"}},
        {"--columns net --aggregate sum --transpose", {}},
    };
    for (const auto& [words, names] : rows)
        EXPECT_EQ(readChartData(corpus + "sales.csv", parseOptions(words)).categoryNames, names) << words;
}

TEST(Table, WorkbooksSayLargeNumbersInFewBytes)
{
    const std::string emptyRows = "<table-row number-rows-repeated='1048576'/>";
    const std::string emptyCells = "<table-cell number-columns-repeated='1048576'/>";
    const std::string cell = "<table-cell value-type='string'><p>A</p></table-cell>";
    const auto text = repeat(300, "<s c='1048576'/>");
    const std::pair<std::string, std::string> refused[] = {
        {writeOds(repeat(3000, emptyRows) + "<table-row>" + cell + "</table-row>"),
         "it has more than 16777216 rows"},
        {writeOds("<table-row>" + repeat(3000, emptyCells) + cell + "</table-row>"),
         "it has more than 16384 columns"},
        {writeOds("<table-row><table-cell><p>" + text + "</p></table-cell></table-row>"),
         "a text is larger than 256 MB, the most"},
        {writeXlsx("<row r='2147483647'><c t='s'><v>0</v></c></row>", "A"), "it has more than 16777216 rows"},
        {writeXlsx("<row r='2147483647'/><row/><row><c t='s'><v>0</v></c></row>", "A"),
         "it has more than 16777216 rows"},
    };
    for (const auto& [path, sentence] : refused)
        EXPECT_NE(refuse(path).find(": the workbook cannot be read: " + sentence), std::string::npos)
            << refuse(path);

    const auto rows =
        "<row r='-2147483648'><c t='s'><v>0</v></c></row><row r='1'><c t='s'><v>0</v></c><c "
        "t='s'><v>0</v></c></row><row><c><v>1</v></c><c><v>2</v></c></row>";
    EXPECT_EQ(readChartData(writeXlsx(rows, "A"), {}).dataSet->getCategories(),
              (std::vector<std::u16string>{u"1"}));
}

std::int64_t getPeakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return std::int64_t{usage.ru_maxrss} * 1024;
}

TEST(Table, TextsThatCellsShareAreKeptOnce)
{
    const std::string longText(30'000, 'x');
    const auto path = writeXlsx("<row><c t='str'><v>A</v></c><c t='str'><v>B</v></c></row>" +
                                    repeat(20'000, "<row><c t='s'><v>0</v></c><c><v>1</v></c></row>"),
                                longText);
    const auto before = getPeakMemory();
    const auto data = readChartData(path, parseOptions("--aggregate sum"));
    EXPECT_EQ(data.dataSet->getCategories(), (std::vector<std::u16string>{toUtf16(longText)}));
    EXPECT_LT(getPeakMemory() - before, 200 << 20);
}

struct DateCase {
    const char* text;
    DateOrder order;
    /// 0: no date.
    double serial;
    DateStep unit;
};

TEST(DateText, ReadsTheFormsThatPeopleWrite)
{
    constexpr auto dmy = DateOrder::DayMonthYear;
    constexpr auto mdy = DateOrder::MonthDayYear;
    constexpr auto ymd = DateOrder::YearMonthDay;
    const DateCase cases[] = {
        {"2024-02-29", dmy, 45351, DateStep::Day},
        {"2023-02-29", dmy, 0, {}},
        {"2024/2/9", mdy, 45331, DateStep::Day},
        {"31/12/99", dmy, 36525, DateStep::Day},
        {"31/12/99", mdy, 0, {}},
        {"1/2/45", dmy, 52994, DateStep::Day},
        {"12/31/1999", mdy, 36525, DateStep::Day},
        {"24-02-29", ymd, 45351, DateStep::Day},
        {"29.2.2024", mdy, 45351, DateStep::Day},
        {"29-2.2024", dmy, 0, {}},
        {"2024-02-29T06:00:00+02:00", dmy, 45351.25, DateStep::Time},
        {"2024-02-29 06:00:00 UTC", dmy, 45351.25, DateStep::Time},
        {"2024-02-29 06:00-0330", dmy, 45351.25, DateStep::Time},
        {"2024-02-29 06:00+24:00", dmy, 0, {}},
        {"2024-02-29 06:00+2", dmy, 0, {}},
        {"20240229", mdy, 45351, DateStep::Day},
        {"20230229", dmy, 0, {}},
        {"18991231", dmy, 0, {}},
        {"21000101", dmy, 0, {}},
        {"29. 2. 2024", mdy, 45351, DateStep::Day},
        {"Q1 24", dmy, 45292, DateStep::Quarter},
        {"2/29/2024 6:00 PM", mdy, 45351.75, DateStep::Time},
        {"2/29/2024 12:00 am", mdy, 45351, DateStep::Time},
        {"2024-02-29 24:00", dmy, 0, {}},
        {"2024-02-29 6:00 CET", dmy, 0, {}},
        {"12:30", dmy, 0, {}},
        {"2024", dmy, 45292, DateStep::Year},
        {"999", dmy, 0, {}},
        {"2024-02", dmy, 45323, DateStep::Month},
        {"2/2024", dmy, 45323, DateStep::Month},
        {"2.2024", dmy, 0, {}},
        {"13/2024", dmy, 0, {}},
        {"Q3 2024", dmy, 45474, DateStep::Quarter},
        {"2024-Q3", dmy, 45474, DateStep::Quarter},
        {"3. Quartal 2024", dmy, 45474, DateStep::Quarter},
        {"Q5 2024", dmy, 0, {}},
        {"Feb-24", dmy, 45323, DateStep::Month},
        {"Feb 24", dmy, 0, {}},
        {"Fév 2024", dmy, 0, {}},
        {"FÉVRIER 2024", dmy, 45323, DateStep::Month},
        {"1. února 2024", dmy, 45323, DateStep::Day},
        {"Říjen 2024", dmy, 45566, DateStep::Month},
        {"5 PAŹDZIERNIKA 2024", dmy, 45570, DateStep::Day},
        {"1-Okt-2024", dmy, 45566, DateStep::Day},
        {"October 1, 2024", dmy, 45566, DateStep::Day},
        {"1 2 2024", dmy, 0, {}},
        {"1/2", dmy, 0, {}},
        {"1/2/3/2024", dmy, 0, {}},
    };
    for (const auto& [text, order, serial, unit] : cases) {
        const auto date = readDate(text, order);
        EXPECT_EQ(date ? date->serial : 0, serial) << text;
        EXPECT_EQ(date ? date->unit : unit, unit) << text;
    }
    EXPECT_EQ(writeIsoDate(45350.9999999), "2024-02-29");
    EXPECT_EQ(writeIsoDate(45351.75), "2024-02-29 18:00");
}

}  // namespace
}  // namespace quillon::report
