#include <gtest/gtest.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <functional>
#include <tuple>

#include "chart/model/ColumnChart.h"
#include "report/document/Document.h"
#include "report/package/Package.h"
#include "report/package/XmlSpans.h"
#include "tests/ThrownText.h"
#include "tests/report/MarkupReader.h"
#include "tests/report/TestDocuments.h"
#include "tests/report/TestFolder.h"

namespace quillon::report {
namespace {

constexpr auto body = "word/document.xml";

std::shared_ptr<chart::Chart> makeColumns()
{
    return makeChart<chart::ColumnChart>();
}

std::string write(const std::function<void(Document&)>& add)
{
    Document document;
    add(document);
    return document.toBytes();
}

/// A picture of 192 by 96 dots and, when `perMetre` is given, its resolution.
std::string makePng(std::uint32_t perMetre = 0)
{
    const auto number = [](std::uint32_t value) {
        std::string bytes;
        for (int shift = 24; shift >= 0; shift -= 8) bytes += static_cast<char>(value >> shift & 0xFF);
        return bytes;
    };
    auto png = "\x89PNG\r\n\x1A\n" + number(13) + "IHDR" + number(192) + number(96) +
               std::string("\x08\x02\0\0\0", 5) + "crc.";
    if (perMetre > 0) png += number(9) + "pHYs" + number(perMetre) + number(perMetre) + "\x01" + "crc.";
    return png + number(0) + "IDAT" + "crc.";
}

std::string makeJpeg()
{
    return std::string("\xFF\xD8\xFF\xE0\x00\x10JFIF\x00\x01\x02\x01\x00\xC0\x00\xC0\x00\x00", 20) +
           std::string("\xFF\xC4\x00\x0B\x08\x00\x01\x00\x01\x01\x01\x11\x00", 13) +
           std::string("\xFF\xC0\x00\x0B\x08\x00\x60\x00\xC0\x01\x01\x11\x00", 13);
}

/// The values of the attribute in all elements of that name, in order.
void collect(const XmlElement& element, std::string_view name, std::string_view attribute, std::string& found)
{
    if (element.getName() == name)
        found += (found.empty() ? "" : "|") + element.getAttribute(attribute).value_or(
                                                  element.getAttribute(Ns::Word, attribute).value_or("-"));
    for (const auto child : element.getChildren()) collect(child, name, attribute, found);
}

std::string findValues(const std::string& part, std::string_view name, std::string_view attribute)
{
    const XmlSpans xml(part, "part");
    std::string found;
    collect(xml.getRoot(), name, attribute, found);
    return found;
}

std::string readTexts(const std::string& part)
{
    return XmlSpans(part, "part").getRoot().getText();
}

/// The rows of the tables of a document, with "|" between the cells.
std::string readRows(const std::string& bytes)
{
    const MarkupReader markup(readPart(bytes, body));
    std::string rows;
    for (std::size_t i = 1; i <= markup.list("//w:tr").size(); ++i)
        rows += MarkupReader::join(markup.list("//w:tr[" + std::to_string(i) + "]/w:tc"), "|") + "\n";
    return rows;
}

/// Those of the table of chart data, in a document of that language.
std::string readRows(const ChartData& data, const std::string& language = {},
                     const ChartOptions& options = {})
{
    return readRows(write([&](Document& document) {
        document.addTable(makeTable(data, "When", options));
        document.setProperties({.language = language});
    }));
}

TEST(Blocks, AreWrittenAsTheMarkupHasThem)
{
    struct Case {
        const char* what;
        std::function<void(Document&)> add;
        const char* element;
        const char* attribute;
        const char* values;
    };
    const Case cases[] = {
        {"style of a paragraph", [](auto& d) { d.addParagraph("a", "title"); }, "pStyle", "val", "Title"},
        {"heading", [](auto& d) { d.addHeading("a", 3); }, "pStyle", "val", "Heading3"},
        {"bold",
         [](auto& d) {
             d.addParagraph({{.text = "a", .bold = true}, {.text = "b"}});
         },
         "b", "val", "-"},
        {"italic",
         [](auto& d) {
             d.addParagraph({{.text = "a", .italic = true}, {.text = "b"}});
         },
         "i", "val", "-"},
        {"levels",
         [](auto& d) {
             d.addList({{{{.text = "a"}}, 0}, {{{.text = "b"}}, 8}});
         },
         "ilvl", "val", "0|8"},
        {"numbers start anew",
         [](auto& d) {
             d.addList({{{{.text = "a"}}}, {{{.text = "b"}}}}, ListKind::Numbers);
             d.addList({{{{.text = "c"}}}}, ListKind::Numbers);
         },
         "numId", "val", "3|3|4"},
        {"page break", [](auto& d) { d.addPageBreak(); }, "br", "type", "page"},
        {"width of a page", [](auto& d) { d.startSection({.paper = "letter"}); }, "pgSz", "w", "12240"},
        {"landscape",
         [](auto& d) {
             d.addParagraph("a");
             d.startSection({.landscape = true});
             d.addParagraph("b");
         },
         "pgSz", "w", "11906|16838"},
        {"a page turned for the printer", [](auto& d) { d.startSection({.landscape = true}); }, "pgSz",
         "orient", "landscape"},
        {"margins", [](auto& d) { d.startSection({.left = "2cm"}); }, "pgMar", "left", "1133"},
        {"caption of a chart keeps it",
         [](auto& d) {
             d.addChart(makeColumns());
             d.addCaption({.text = "x", .name = "fig"});
             d.addChart(makeColumns());
         },
         "keepNext", "val", "-"},
        {"caption above a table is kept",
         [](auto& d) {
             d.addCaption({.text = "x", .label = "Table"});
             d.addTable({{"a"}, {{"1"}}});
         },
         "keepNext", "val", "-"},
        {"caption above a table behind a floating chart",
         [](auto& d) {
             d.addChart(makeColumns(), {.floating = Float::Left});
             d.addCaption({.text = "x", .label = "Table"});
             d.addTable({{"a"}, {{"1"}}});
         },
         "keepNext", "val", "-|-"},
        {"names of captions", [](auto& d) { d.addCaption({.text = "x", .name = "fig"}); }, "bookmarkStart",
         "name", "fig"},
        {"links to headings",
         [](auto& d) {
             d.addTableOfContents(1);
             d.addHeading("a");
             d.addHeading("b", 2);
             d.addHeading("c");
         },
         "hyperlink", "anchor", "_Toc1|_Toc3"},
        {"header row",
         [](auto& d) {
             d.addTable({{"a", "b"}, {{"1", "2"}}});
         },
         "tblHeader", "val", "-"},
        {"widths of columns",
         [](auto& d) {
             d.addTable({{"a", "b"}, {}, {"1in", "2in"}});
         },
         "gridCol", "w", "1440|2880"},
        {"numbers stand right",
         [](auto& d) {
             d.addTable({{"a", "b", "c"}, {{"Q1", "1.5", "x"}, {"Q2", "", "2"}}});
         },
         "jc", "val", "right|right|right"},
        {"size of a picture", [](auto& d) { d.addImage(makePng()); }, "extent", "cx", "1828800"},
        {"resolution of a picture", [](auto& d) { d.addImage(makePng(7'559)); }, "extent", "cx", "914407"},
        {"JPEG", [](auto& d) { d.addImage(makeJpeg(), {.height = "1in"}); }, "extent", "cx", "1828800"},
        {"alternative text", [](auto& d) { d.addImage(makePng(), {.altText = "a \"b\""}); }, "docPr", "descr",
         "a \"b\""},
        {"numbers of drawings",
         [](auto& d) {
             d.addImage(makePng());
             d.addChart(makeColumns());
             d.addImage(makePng());
         },
         "docPr", "id", "2|1|3"},
        {"charts share the line",
         [](auto& d) {
             d.addCharts({{makeColumns()}, {makeColumns()}});
         },
         "extent", "cx", "2840355|2840355"},
    };
    for (const auto& [what, add, element, attribute, values] : cases)
        EXPECT_EQ(findValues(readPart(write(add), body), element, attribute), values) << what;
}

TEST(Blocks, CountCaptionsByLabelAndReferToThem)
{
    const auto part = readPart(write([](Document& document) {
                                   document.addParagraph({{.text = "see "}, {.reference = "second"}});
                                   document.addCaption({.text = "one"});
                                   document.addCaption({.text = "rows", .label = "Table"});
                                   document.addCaption({.text = "two", .name = "second"});
                               }),
                               body);
    EXPECT_EQ(readTexts(part),
              "see  REF second \\h Figure 2Figure  SEQ Figure \\* ARABIC 1: oneTable  SEQ Table \\* ARABIC "
              "1: rowsFigure "
              " SEQ Figure \\* ARABIC 2: two");
}

/// The texts of a caption between a chart and a table, one above a table, and one that says what it counts.
std::string labelCaptions(const std::string& language)
{
    return readTexts(readPart(write([&](Document& document) {
                                  document.setProperties({.language = language});
                                  document.addChart(makeColumns());
                                  document.addCaption({.name = "shown"});
                                  document.addTable({{"a"}, {{"b"}}});
                                  for (const auto* label : {"", "Table"}) {
                                      document.addCaption({.label = label});
                                      document.addTable({{"a"}, {{"b"}}});
                                  }
                                  document.addParagraph({{.reference = "shown"}});
                              }),
                              body));
}

TEST(Blocks, NameCaptionsInTheLanguageUnlessTheirAuthorDoes)
{
    EXPECT_EQ(
        labelCaptions("de-AT"),
        "Abbildung  SEQ Abbildung \\* ARABIC 1abTabelle  SEQ Tabelle \\* ARABIC 1abTable  SEQ Table \\* "
        "ARABIC 1ab REF shown \\h Abbildung 1");
    EXPECT_EQ(
        labelCaptions("ja"),
        "Figure  SEQ Figure \\* ARABIC 1abTable  SEQ Table \\* ARABIC 1abTable  SEQ Table \\* ARABIC 2ab "
        "REF shown \\h Figure 1");
}

TEST(Blocks, CountALabelOfTwoWordsAsOne)
{
    const auto part = readPart(
        write([](Document& document) { document.addCaption({.text = "one", .label = "Data \\table"}); }),
        body);
    EXPECT_EQ(readTexts(part), "Data \\table  SEQ Data__table \\* ARABIC 1: one");
}

TEST(Blocks, PutHeaderAndFooterOnAllPages)
{
    const auto bytes = write([](Document& document) {
        document.setHeader({{{.text = "Left\tMiddle"}}});
        document.setFooter({{{.text = "Page {page} of {pages}", .italic = true}}});
        for (const bool landscape : {true, false, false}) {
            document.addParagraph("a");
            document.startSection({.landscape = landscape});
        }
    });
    // Tabs lead to the margins of wide and narrow pages alike.
    const auto part = readPart(bytes, body);
    EXPECT_EQ(findValues(part, "headerReference", "type"), "default|default|default");
    EXPECT_EQ(findValues(part, "footerReference", "type"), "default");
    EXPECT_EQ(findValues(readPart(bytes, "word/header1.xml"), "tab", "pos"), "-");
    EXPECT_EQ(findValues(readPart(bytes, "word/header2.xml"), "tab", "pos"), "4513|9026|6979|13958|-");
    EXPECT_EQ(findValues(readPart(bytes, "word/header2.xml"), "tab", "val"), "clear|clear|center|right|-");
    EXPECT_EQ(readTexts(readPart(bytes, "word/header1.xml")), "LeftMiddle");
    EXPECT_EQ(readTexts(readPart(bytes, "word/footer1.xml")), "Page  PAGE 1 of  NUMPAGES 1");
}

TEST(Blocks, ContentsAreBroughtUpToDateWhenOpened)
{
    const auto part = readPart(write([](Document& document) {
                                   document.addHeading("One");
                                   document.addTableOfContents(2);
                                   document.addHeading("Two", 2);
                                   document.addHeading("Three", 3);
                               }),
                               body);
    EXPECT_EQ(findValues(part, "fldChar", "dirty"), "true|-|-|-|-|-|-|-|-");
    EXPECT_EQ(readXPath(part, "//w:instrText[contains(., 'PAGEREF')]"),
              " PAGEREF _Toc1 \\h | PAGEREF _Toc2 \\h ");
    EXPECT_EQ(findValues(part, "tab", "pos"), "-|-");
    const auto wide = readPart(write([](Document& document) {
                                   document.startSection({.landscape = true});
                                   document.addTableOfContents();
                                   document.addHeading("One");
                               }),
                               body);
    EXPECT_EQ(readXPath(wide, "//w:tabs/w:tab/@w:pos"), "9026|13958");
    EXPECT_EQ(readXPath(wide, "//w:tabs/w:tab/@w:leader"), "dot");
    EXPECT_EQ(findValues(part, "hyperlink", "anchor"), "_Toc1|_Toc2");
    EXPECT_EQ(findValues(part, "bookmarkStart", "name"), "_Toc1|_Toc2|_Toc3");
    Document document;
    document.addHeading("Deep", 3);
    document.addTableOfContents(2);
    std::string warnings;
    document.toBytes({nullptr, [&warnings](const std::string& sentence) { warnings += sentence; }});
    EXPECT_EQ(warnings, "The table of contents is left out: the document has no heading of level 1 to 2.");
}

TEST(Blocks, SayWhatTheDocumentIs)
{
    const auto bytes = write([](Document& document) {
        document.setProperties({.title = "T & t", .author = "A", .keywords = "k", .language = "de-DE"});
    });
    EXPECT_EQ(readTexts(readPart(bytes, "docProps/core.xml")), "T & tAkde-DE");
    EXPECT_EQ(findValues(readPart(bytes, "word/styles.xml"), "lang", "val"), "de-DE");
}

TEST(Blocks, BringWhatTheyNeed)
{
    const auto bytes = write([](Document& document) {
        document.addParagraph({{.text = "here", .link = "https://example.com/ü b?a&b|c"}}, "Title");
        document.addTable({{"a"}, {{"1"}}});
    });
    const auto styles = findValues(readPart(bytes, "word/styles.xml"), "style", "styleId");
    for (const auto* style : {"Title", "Hyperlink", "ReportTable"})
        EXPECT_NE(styles.find(style), std::string::npos) << style;
    EXPECT_EQ(styles.find("Footer"), std::string::npos);
    const Package package(bytes);
    const auto links = package.getRelationships(package.getMainPart());
    const auto link = std::ranges::find(links, "hyperlink", &Relationship::getKind);
    ASSERT_NE(link, links.end());
    EXPECT_TRUE(link->isExternal);
    EXPECT_EQ(link->target, "https://example.com/ü%20b?a&b%7Cc");
}

TEST(Blocks, MakeTablesOfData)
{
    const auto chart = makeChart<chart::ColumnChart>(2, {1234.5, std::numeric_limits<double>::quiet_NaN()});
    ChartData data(chart->getDataSet());
    data.series = {{.numberFormat = "#,##0.00"}};
    data.levels = {{u"2024", u""}};
    data.series[0].sizes = {1.5, 2};
    data.categoryNames = {u"Year", u"Month"};
    EXPECT_EQ(makeTable(data).columns[1], "Month");
    EXPECT_EQ(readRows(data), "Year|When|North||North\n2024|c|1,234.50|1.5|1234.5\n|c||2|\n");
    EXPECT_EQ(readRows(data, "de-DE", {.numberFormat = "#,##0"}),
              "Year|When|North||North\n2024|c|1.235|1,5|1.235\n|c||2|\n");
}

TEST(Blocks, WriteNumbersAndDatesOfTablesInTheLanguageOfTheDocument)
{
    const auto chart = makeChart<chart::ColumnChart>(1, {0.5, 1234});
    ChartData data(chart->getDataSet());
    data.categoryKind = CategoryKind::Date;
    data.categoryValues = {45'351, 45'352.75};
    EXPECT_EQ(readRows(data), "When|North\n2024-02-29|0.5\n2024-03-01 18:00|1234.0\n");
    EXPECT_EQ(readRows(data, "de"), "When|North\n29.02.2024|0,5\n01.03.2024 18:00|1234,0\n");
    EXPECT_EQ(readRows(data, "fr-FR", {.categoryFormat = "mmmm"}), "When|North\nfévrier|0,5\nmars|1234,0\n");
    data.categoryKind = CategoryKind::Number;
    EXPECT_EQ(readRows(data, "de"), "When|North\n45351|0,5\n45352,75|1234,0\n");
    chart->getDataSet()->setCategories({});
    EXPECT_EQ(readRows(data, "sv"), "When|North\n0|0,5\n0|1234,0\n");
    // A document that looks like one in another language is in that one.
    const TestFolder folder;
    Document look;
    look.setProperties({.language = "nl"});
    look.save(folder / "look.docx");
    Document document(folder / "look.docx");
    const double infinity = std::numeric_limits<double>::infinity();
    document.addTable(
        {{"a", "b"}, {{"1.5", 1.5}, {TableCell(1.5, "0.00"), infinity}, {"x", 123'456'789'012.25}}});
    EXPECT_EQ(readRows(document.toBytes()), "a|b\n1.5|1,5\n1,50|\nx|123456789012,25\n");
}

TEST(Blocks, NumbersOfATableHaveTheDecimalsOfTheirColumn)
{
    using Column = std::vector<double>;
    const std::pair<Column, std::vector<std::string>> cases[] = {
        {{1337.5, 1260, 0.25}, {"1337.50", "1260.00", "0.25"}},
        {{1998, 2024}, {"1998", "2024"}},
        {{0.125, 3}, {"0.125", "3"}},
        {{-1.2e6, 950}, {"-1,200,000", "950"}},
        {{10'000, 0.5}, {"10,000.0", "0.5"}},
        {{12'345.678, 9}, {"12345.678", "9"}},
    };
    for (const auto& [values, texts] : cases) {
        const auto rows = readRows(ChartData(makeChart<chart::ColumnChart>(1, values)->getDataSet()));
        for (const auto& text : texts) EXPECT_NE(rows.find("|" + text + "\n"), std::string::npos) << rows;
    }
}

TEST(Blocks, AreRefusedWithASentence)
{
    ChartOptions floating;
    floating.floating = Float::Left;
    const std::pair<std::function<void(Document&)>, const char*> cases[] = {
        {[](auto& d) { d.addParagraph("a", "Fancy"); },
         "There is no paragraph style \"Fancy\"; the styles are"},
        {[](auto& d) {
             d.addTable({{"a"}, {}, {}, "Fancy"});
         },
         "There is no table style \"Fancy\"; the styles are"},
        {[](auto& d) {
             d.addList({{{}, 9}});
         },
         "List level: expected 0 to 8, got 9."},
        {[](auto& d) { d.addTable({}); }, "Table: expected at least one column."},
        {[](auto& d) {
             d.addTable({{"a"}, {{"1"}, {"1", "2"}}});
         },
         "Table: expected 1 cell in row 2, got 2."},
        {[](auto& d) {
             d.addTable({{"a"}, {}, {"1in", "1in"}});
         },
         "Table: expected a width for each of the 1 columns"},
        {[](auto& d) { d.addImage(makePng(), {.width = "3"}); },
         "width: expected one of the units cm, mm, in, pt after the number, as in 15cm, got \"3\"."},
        {[](auto& d) { d.addImage("GIF89a"); }, "Image: expected the bytes of a PNG or JPEG file."},
        {[](auto& d) { d.addImage(makePng().substr(0, 20)); }, "Image: the PNG file is damaged."},
        {[](auto& d) { d.addImage(makeJpeg().substr(0, 36)); }, "Image: the JPEG file is damaged."},
        {[](auto& d) { d.startSection({.paper = "B9"}); },
         "paper: expected one of A4, A3, A5, letter, legal, got \"B9\"."},
        {[](auto& d) { d.startSection({.right = "7in"}); }, "The margins leave less than an inch"},
        {[](auto& d) { d.addTableOfContents(0); }, "Table of contents: expected 1 to 9 levels, got 0."},
        {[](auto& d) { d.addCaption({.text = "x", .name = "1st"}); },
         "Caption name \"1st\": expected at most 40"},
        {[](auto& d) { d.addCaption({.text = "x", .name = "_Toc1"}); },
         "Caption name \"_Toc1\": expected at most 40"},
        {[](auto& d) {
             d.addCaption({.name = "a"});
             d.addCaption({.name = "a"});
         },
         "Caption name \"a\": there is one of that name."},
        {[&](auto& d) {
             d.addChart(makeColumns(), floating);
             d.addCaption({.text = "x"});
             d.addParagraph("y");
         },
         "A chart that floats has no caption"},
        {[](auto& d) {
             d.addCaption({.name = "a"});
             d.addParagraph({{.reference = "b"}});
             d.toBytes();
         },
         "Reference \"b\": there is no caption of that name; the captions are a."},
        {[](auto& d) { d.setHeader({{{.text = "\x01"}}}); }, "Header: character 1 (U+0001)"},
    };
    for (const auto& [add, sentence] : cases) {
        const auto text = thrownText([&a = add] { write(a); });
        EXPECT_EQ(text.substr(0, std::string(sentence).size()), sentence);
    }
}

TEST(Blocks, WarnOfAChartWiderThanTheText)
{
    Document document;
    document.addChart(makeColumns(), {.width = "7in"});
    std::vector<std::string> warnings;
    document.toBytes({.warning = [&](const std::string& sentence) { warnings.push_back(sentence); }});
    EXPECT_EQ(warnings, std::vector<std::string>{"chart 1: the chart is wider than the text of its page."});
}

/// A file of its own below the folder for temporary files.
class TemplateFile {
 public:
    explicit TemplateFile(const std::string& bytes)
        : path_(std::filesystem::temp_directory_path() /
                ("quillon-template-" + std::to_string(getpid()) + ".docx"))
    {
        std::ofstream(path_, std::ios::binary) << bytes;
    }
    ~TemplateFile() { std::filesystem::remove(path_); }
    TemplateFile(const TemplateFile&) = delete;
    TemplateFile& operator=(const TemplateFile&) = delete;
    std::string getPath() const { return path_.string(); }

 private:
    std::filesystem::path path_;
};

TEST(Blocks, LookLikeATemplate)
{
    const TemplateFile file(write([](Document& document) {
        document.setHeader({{{.text = "Letterhead"}}});
        document.setProperties({.language = "fr-FR"});
        document.addParagraph("text of the template");
        document.addList({{{{.text = "its list"}}}}, ListKind::Numbers);
        document.addChart(makeColumns());
        document.startSection({.paper = "A5", .right = "1cm"});
        document.addParagraph("more");
    }));
    Document document(file.getPath());
    document.addHeading("New");
    document.addList({{{{.text = "item"}}}}, ListKind::Numbers);
    document.addChart(makeColumns());
    const auto bytes = document.toBytes();
    const auto main = readPart(bytes, body);
    EXPECT_EQ(readTexts(main), "Newitem");
    EXPECT_EQ(findValues(main, "pgSz", "w"), "8391");
    EXPECT_EQ(findValues(main, "numId", "val"), "6");
    EXPECT_EQ(findValues(main, "extent", "cx"), "4054475");
    EXPECT_EQ(findValues(readPart(bytes, "word/styles.xml"), "lang", "val"), "fr-FR");
    EXPECT_EQ(readTexts(readPart(bytes, "word/header1.xml")), "Letterhead");
    EXPECT_EQ(findValues(main, "headerReference", "type"), "default");
}

/// A document with a chart, notes, a comment and the picture of its first page, and what it was made of.
std::string makeUsedTemplate()
{
    constexpr auto word = " xmlns:w='http://schemas.openxmlformats.org/wordprocessingml/2006/main'>";
    const std::string notes = std::string("<w:notes") + word +
                              "<w:note w:type='separator' w:id='-1'/>"
                              "<w:note w:id='1'><w:t>secret</w:t></w:note></w:notes>";
    const auto main = "word/document.xml";
    Package package(write([](Document& document) { document.addChart(makeColumns()); }));
    for (const std::string kind : {"footnotes", "endnotes"}) {
        package.addPart("word/" + kind + ".xml", notes, "application/notes+xml");
        package.addRelationship(main, kind, "word/" + kind + ".xml");
    }
    package.addPart("word/comments.xml", std::string("<w:comments") + word + "secret</w:comments>",
                    "text/xml");
    package.addRelationship(main, "comments", "word/comments.xml");
    package.addExternalRelationship(main, "hyperlink", "https://secret.example/");
    package.addPart("docProps/thumbnail.png", "secret", "image/png");
    package.addRelationship("", "thumbnail", "docProps/thumbnail.png");
    return package.toBytes();
}

TEST(Blocks, LeaveNothingOfTheTextOfATemplate)
{
    const TemplateFile file(makeUsedTemplate());
    Document document(file.getPath());
    document.addParagraph("new");
    const Package package(document.toBytes());
    for (const auto& name : package.getPartNames()) {
        EXPECT_EQ(name.find("chart"), std::string::npos) << name;
        EXPECT_EQ(name.find("embeddings"), std::string::npos) << name;
        EXPECT_EQ(package.getPart(name).find("secret"), std::string::npos) << name;
        EXPECT_EQ(package.getPart(name).find("/word/charts"), std::string::npos) << name;
    }
    EXPECT_EQ(findValues(package.getPart("word/footnotes.xml"), "note", "id"), "-1");
    EXPECT_FALSE(package.hasPart("word/comments.xml"));
}

TEST(Blocks, TabsLeadToTheMarginsOfATemplate)
{
    const TemplateFile file(write(
        [](Document& document) { document.startSection({.paper = "A4", .right = "1cm", .left = "1cm"}); }));
    Document document(file.getPath());
    document.setFooter({{{.text = "Left\t\tRight"}}});
    document.addParagraph("wide");
    EXPECT_EQ(findValues(readPart(document.toBytes(), "word/footer1.xml"), "tab", "pos"),
              "4513|9026|5387|10774|-|-");
}

TEST(Blocks, HavePagesOfTheirOwnInATemplate)
{
    const TemplateFile file(write([](Document& document) {
        document.setHeader({{{.text = "Letterhead"}}});
        document.startSection({.paper = "A5"});
    }));
    Document document(file.getPath());
    document.addParagraph("small");
    document.startSection({.paper = "A3"});
    document.addParagraph("large");
    const auto main = readPart(document.toBytes(), body);
    EXPECT_EQ(findValues(main, "pgSz", "w"), "8391|16838");
    EXPECT_EQ(findValues(main, "headerReference", "type"), "default");
}

TEST(Blocks, RefuseATemplateThatIsNone)
{
    const TemplateFile file("no document");
    EXPECT_NE(thrownText([&] { Document document(file.getPath()); }).find(file.getPath()), std::string::npos);
    EXPECT_NE(thrownText([] { Document document("/nowhere.docx"); }).find("/nowhere.docx"),
              std::string::npos);
}

}  // namespace
}  // namespace quillon::report
