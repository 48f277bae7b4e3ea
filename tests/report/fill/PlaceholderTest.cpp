#include "report/fill/Placeholders.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>

#include "chart/model/ColumnChart.h"
#include "report/fill/DocumentTexts.h"
#include "report/fill/Template.h"
#include "tests/ThrownText.h"
#include "tests/report/TestDocuments.h"
#include "tests/report/package/RawZip.h"

namespace quillon::report {
namespace {

const std::string relationshipNs = "http://schemas.openxmlformats.org/officeDocument/2006/relationships";
const std::string namespaces =
    " xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" xmlns:r=\"" + relationshipNs +
    "\" xmlns:wp=\"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing\" "
    "xmlns:a=\"http://schemas.openxmlformats.org/drawingml/2006/main\" "
    "xmlns:pic=\"http://schemas.openxmlformats.org/drawingml/2006/picture\" "
    "xmlns:mc=\"http://schemas.openxmlformats.org/markup-compatibility/2006\" "
    "xmlns:v=\"urn:schemas-microsoft-com:vml\"";

constexpr auto page =
    "<w:sectPr><w:pgSz w:w=\"11906\" w:h=\"16838\"/><w:pgMar w:left=\"1440\" w:right=\"1440\"/></w:sectPr>";

std::string makeRow(const std::string& id, const std::string& kind, const std::string& target)
{
    return "<Relationship Id=\"" + id + "\" Type=\"" + relationshipNs + "/" + kind + "\" Target=\"" + target +
           "\"/>";
}

std::string makeRelationships(const std::string& rows)
{
    return "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\">" + rows +
           "</Relationships>";
}

std::string toStrict(std::string text)
{
    const std::pair<std::string, std::string> uris[] = {
        {"http://schemas.openxmlformats.org/officeDocument/2006/relationships",
         "http://purl.oclc.org/ooxml/officeDocument/relationships"},
        {"http://schemas.openxmlformats.org/wordprocessingml/2006/main",
         "http://purl.oclc.org/ooxml/wordprocessingml/main"}};
    for (const auto& [from, to] : uris)
        for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos;)
            text.replace(at, from.size(), to);
    return text;
}

/// With its own options alone.
std::vector<Placeholder> findPlaceholders(const Package& document)
{
    return DocumentTexts().findPlaceholders(document);
}

std::size_t replaceText(Package& document, const std::string& name, const std::string& text)
{
    DocumentTexts texts;
    const auto count = texts.replace(document, name, text);
    texts.save(document);
    return count;
}

void insertChart(Package& document, const std::string& name, const chart::Chart& chart,
                 const ChartOptions& options = {})
{
    insertChart(document, name, NewChart{chart, options, {}, {}});
}

Package makeDocument(const std::string& body, const std::string& header = "", bool isStrict = false)
{
    std::vector<RawEntry> entries = {
        {"[Content_Types].xml",
         "<Types xmlns=\"http://schemas.openxmlformats.org/package/2006/content-types\"><Override "
         "PartName=\"/word/document.xml\" ContentType=\"application/"
         "vnd.openxmlformats-officedocument.wordprocessingml.document.main+xml\"/></Types>"},
        {"_rels/.rels", makeRelationships(makeRow("rId1", "officeDocument", "word/document.xml"))},
        {"word/document.xml",
         "<w:document" + namespaces + "><w:body>" + body + page + "</w:body></w:document>"},
        {"word/_rels/document.xml.rels", makeRelationships(makeRow("rId1", "header", "header1.xml") +
                                                           makeRow("rId2", "header", "header1.xml"))},
        {"word/header1.xml", "<w:hdr" + namespaces + ">" + header + "</w:hdr>"}};
    if (isStrict)
        for (auto& entry : entries) entry.content = toStrict(entry.content);
    return Package(RawZip(entries).getBytes());
}

std::string run(const std::string& text, const std::string& look = "")
{
    return "<w:r>" + look + "<w:t>" + text + "</w:t></w:r>";
}

std::string paragraph(const std::string& content)
{
    return "<w:p>" + content + "</w:p>";
}

/// What the body holds before the properties of the page.
std::string readBody(const Package& document)
{
    const auto& part = document.getPart("word/document.xml");
    const auto start = part.find("<w:body>") + 8;
    return part.substr(start, part.find(page) - start);
}

std::string kept(const std::string& text)
{
    return "<w:t xml:space=\"preserve\">" + text + "</w:t>";
}

std::size_t count(const std::string& text, const std::string& part)
{
    std::size_t number = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string::npos; at += part.size()) ++number;
    return number;
}

TEST(Placeholder, TextIsReplacedHoweverItIsSplit)
{
    const std::string bold = "<w:rPr><w:b/></w:rPr>";
    const std::tuple<std::string, std::string> paragraphs[] = {
        {run("In {{month}}, {{ month }}!"), "<w:r>" + kept("In May &amp; on, May &amp; on!") + "</w:r>"},
        {run("{{mo", bold) + "<w:proofErr w:type=\"spellStart\"/>" + run("nt") +
             "<w:bookmarkStart w:id=\"1\"/>" + run("h}", "<w:rPr><w:lang w:val=\"de\"/></w:rPr>") +
             run("} x"),
         "<w:r>" + bold + kept("May &amp; on") + "</w:r><w:proofErr w:type=\"spellStart\"/><w:r>" + kept("") +
             "</w:r><w:bookmarkStart w:id=\"1\"/><w:r><w:rPr><w:lang w:val=\"de\"/></w:rPr>" + kept("") +
             "</w:r><w:r>" + kept(" x") + "</w:r>"},
        {"<w:hyperlink r:id=\"x\">" + run("{{month}}") + "</w:hyperlink>",
         "<w:hyperlink r:id=\"x\"><w:r>" + kept("May &amp; on") + "</w:r></w:hyperlink>"},
        {"<w:sdt><w:sdtPr/><w:sdtContent>" + run("{{") + "</w:sdtContent></w:sdt><w:ins w:id=\"2\">" +
             run("month") + "</w:ins><w:fldSimple w:instr=\"X\">" + run("}}") + "</w:fldSimple>",
         "<w:sdt><w:sdtPr/><w:sdtContent><w:r>" + kept("May &amp; on") +
             "</w:r></w:sdtContent></w:sdt><w:ins w:id=\"2\"><w:r>" + kept("") +
             "</w:r></w:ins><w:fldSimple w:instr=\"X\"><w:r>" + kept("") + "</w:r></w:fldSimple>"},
    };
    for (const auto& [before, after] : paragraphs) {
        auto document = makeDocument(paragraph(before) + paragraph(run("{{month}}, no: {{months}}")));
        EXPECT_EQ(replaceText(document, "month", "May & on"), 1 + count(before, "month}}, {{") + 1);
        EXPECT_EQ(readBody(document),
                  paragraph(after) + paragraph("<w:r>" + kept("May &amp; on, no: {{months}}") + "</w:r>"));
    }
}

TEST(Placeholder, IsNoneWhereTextIsBrokenOrDeleted)
{
    const std::string paragraphs[] = {
        run("{{mon") + "<w:r><w:drawing/></w:r>" + run("th}}"),
        "<w:r><w:t>{{mon</w:t><w:br/><w:t>th}}</w:t></w:r>",
        "<w:del><w:r><w:delText>{{month}}</w:delText></w:r></w:del>",
        "<w:moveFrom>" + run("{{month}}") + "</w:moveFrom>",
        "<w:r><w:instrText>{{month}}</w:instrText></w:r>",
        run("{{}} {month} {{ }} {{a{b}} }}month{{"),
    };
    for (const auto& text : paragraphs) {
        auto document = makeDocument(paragraph(text));
        EXPECT_EQ(findPlaceholders(document).size(), 0U) << text;
        EXPECT_EQ(thrownText([&] { replaceText(document, "month", "May"); }),
                  "There is no placeholder {{month}}; the document has none.");
    }
}

TEST(Placeholder, OneAfterTheOtherIsReplacedAsItStandsThen)
{
    const auto document = makeDocument(paragraph(run("{{a}}, {{") + run("b}}.")) + paragraph(run("{{c}}")));
    DocumentTexts texts;
    auto changed = document;
    EXPECT_EQ(texts.replace(document, "a", "1\t{{b}}{{d}}"), 1U);
    EXPECT_EQ(texts.replace(document, "b", "2"), 2U);
    texts.save(changed);
    texts.replace(document, "c", "3");
    EXPECT_EQ(texts.findPlaceholders(document),
              (std::vector<Placeholder>{{"d", PlaceholderKind::Text, "word/document.xml"}}));
    texts.save(changed);
    EXPECT_EQ(readBody(changed), paragraph("<w:r>" + kept("1") + "<w:tab/>" + kept("2{{d}}, 2") +
                                           "</w:r><w:r>" + kept(".") + "</w:r>") +
                                     paragraph("<w:r>" + kept("3") + "</w:r>"));
}

TEST(Placeholder, TabsAndLinesAreThoseOfTheDocument)
{
    auto document = makeDocument(paragraph(run("{{a}}.")));
    replaceText(document, "a", "1\t2\r\n3\n");
    EXPECT_EQ(readBody(document), paragraph("<w:r>" + kept("1") + "<w:tab/>" + kept("2") + "<w:br/>" +
                                            kept("3") + "<w:br/>" + kept(".") + "</w:r>"));
    EXPECT_EQ(thrownText([&] { replaceText(document, "a", "\x01"); }).substr(0, 31),
              "{{a}}: character 1 (U+0001) can");
    EXPECT_NE(thrownText([&] { replaceText(document, "a", "\xFF"); }), "nothing was thrown");
}

std::string makePicture(const std::string& text, const std::string& kind)
{
    return "<w:r><w:drawing><wp:" + kind +
           " distT=\"7\"><wp:extent cx=\"1828800\" cy=\"914400\"/><wp:docPr id=\"4\" "
           "name=\"Picture 1\" descr=\"" +
           text +
           "\"/><wp:cNvGraphicFramePr/><a:graphic><a:graphicData "
           "uri=\"http://schemas.openxmlformats.org/drawingml/2006/picture\"><pic:pic><pic:nvPicPr/></"
           "pic:pic>"
           "</a:graphicData></a:graphic></wp:" +
           kind + "></w:drawing></w:r>";
}

/// Both copies of a text box.
std::string makeBox(const std::string& content)
{
    return "<w:r><mc:AlternateContent><mc:Choice Requires=\"wps\"><w:drawing><wp:inline><wp:extent "
           "cx=\"2743200\" "
           "cy=\"1828800\"/><wp:docPr id=\"1\" name=\"Box\"/><w:txbxContent>" +
           content +
           "</w:txbxContent></wp:inline></w:drawing></mc:Choice><mc:Fallback><w:pict><v:rect><v:textbox>"
           "<w:txbxContent>" +
           content +
           "</w:txbxContent></v:textbox></v:rect></w:pict></mc:Fallback>"
           "</mc:AlternateContent></w:r>";
}

TEST(Placeholder, AllAreListedInOrder)
{
    const auto document =
        makeDocument(paragraph(makePicture(" {{logo}} ", "inline")) +
                         paragraph(run("{{margin}}") + "<w:r><w:commentReference w:id=\"1\"/></w:r>") +
                         paragraph(run("{{month}} and {{table:x}}")) + "<w:tbl><w:tr><w:tc>" +
                         paragraph(run("{{table:sales}}")) + "</w:tc></w:tr></w:tbl>" +
                         paragraph(makeBox(paragraph(run("{{boxed}}")))) + paragraph(run("{{month}}.")),
                     paragraph(run("{{month}}: ")));
    const std::vector<Placeholder> expected = {{"logo", PlaceholderKind::Picture, "word/document.xml"},
                                               {"margin", PlaceholderKind::Paragraph, "word/document.xml"},
                                               {"month", PlaceholderKind::Text, "word/document.xml"},
                                               {"table:x", PlaceholderKind::Text, "word/document.xml"},
                                               {"sales", PlaceholderKind::Table, "word/document.xml"},
                                               {"boxed", PlaceholderKind::Paragraph, "word/document.xml"},
                                               {"month", PlaceholderKind::Text, "word/header1.xml"}};
    EXPECT_EQ(findPlaceholders(document), expected);

    // Of the two copies of a text box a reader sees one.
    auto boxes = makeDocument(paragraph(makeBox(paragraph(run("in {{month}}")))));
    EXPECT_EQ(replaceText(boxes, "month", "July"), 1U);
    EXPECT_EQ(readBody(boxes).find("{{month}}"), std::string::npos);
}

// What takes a copy of the paragraph, or a look at all others, for each of them does not come to its end.
TEST(Placeholder, AParagraphMayHoldManyThousands)
{
    std::string text;
    constexpr std::size_t number = 50'000;
    for (std::size_t i = 0; i < number; ++i) text += run("{{p" + std::to_string(i) + "}} {{x}}{{");
    auto document = makeDocument(paragraph(text + run(std::string(number, '{') + "}} {{")));
    EXPECT_EQ(findPlaceholders(document).size(), number + 1);
    EXPECT_EQ(replaceText(document, "x", "y"), number);
    const auto sentence = thrownText([&] { replaceText(document, "\x1B", ""); });
    EXPECT_TRUE(sentence.starts_with("There is no placeholder {{\\x1B}}; the document has {{p0}}, {{p1}}, "));
    EXPECT_TRUE(sentence.ends_with(", {{p18}}, {{p19}} and 49980 more.")) << sentence;
}

TEST(Placeholder, AChartIsAsWideAsItsPlace)
{
    const auto place = paragraph("<w:pPr><w:ind w:left=\"567\"/></w:pPr>" + run("{{mar") + run("gin}}"));
    const std::string gridColumns =
        "<w:tblGrid><w:gridCol w:w=\"1000\"/><w:gridCol w:w=\"3000\"/><w:gridCol w:w=\"2000\"/></w:tblGrid>";
    const auto cell = "<w:tc><w:tcPr><w:gridSpan w:val=\"2\"/></w:tcPr>" + place + "</w:tc>";
    const std::tuple<std::string, std::int64_t> bodies[] = {
        {place, 9026 - 567},
        {place +
             paragraph("<w:pPr><w:sectPr><w:pgSz w:w=\"12000\"/><w:pgMar w:left=\"1000\" w:right=\"1000\" "
                       "w:gutter=\"200\"/><w:cols w:num=\"2\" w:space=\"800\"/></w:sectPr></w:pPr>"),
         (9800 - 800) / 2 - 567},
        {"<w:tbl>" + gridColumns + "<w:tr><w:tc>" + paragraph("") + "</w:tc>" + cell + "</w:tr></w:tbl>",
         5000 - 216 - 567},
        {"<w:tbl><w:tblPr><w:tblCellMar><w:left "
         "w:w=\"0\"/></w:tblCellMar></w:tblPr><w:tr><w:tc><w:tcPr><w:tcW "
         "w:w=\"4000\" w:type=\"dxa\"/></w:tcPr>" +
             place + "</w:tc></w:tr></w:tbl>",
         4000 - 108 - 567},
        {paragraph(makeBox(place)), 2743200 / 635 - 288 - 567},
    };
    for (const auto& [body, twips] : bodies) {
        auto document = makeDocument(body);
        insertChart(document, "margin", *makeChart<chart::ColumnChart>());
        const auto after = readBody(document);
        EXPECT_NE(after.find("<wp:extent cx=\"" + std::to_string(twips * 635) + "\""), std::string::npos)
            << twips * 635 << "\n"
            << after;
        EXPECT_EQ(after.find("gin}}"), std::string::npos);
        EXPECT_NE(after.find("<w:p><w:pPr><w:ind w:left=\"567\"/></w:pPr><w:r xmlns"), std::string::npos);
    }
    auto document = makeDocument(place);
    insertChart(document, "margin", *makeChart<chart::ColumnChart>(), {.width = "5cm"});
    EXPECT_NE(readBody(document).find("<wp:extent cx=\"1800000\" cy=\"3200400\""), std::string::npos);
    document = makeDocument(place);
    insertChart(document, "margin", *makeChart<chart::ColumnChart>(), {.width = "6in"});
    EXPECT_NE(readBody(document).find("<wp:extent cx=\"5486400\" cy=\"3200400\""), std::string::npos);
}

TEST(Placeholder, AChartBringsItsPartsAndANameOfItsOwn)
{
    auto document = makeDocument(paragraph("<w:hyperlink>" + run("{{a b}}") + "</w:hyperlink>") +
                                     paragraph(makeBox(paragraph(run("{{a b}}")))),
                                 paragraph(run("{{a b}}")));
    insertChart(document, "a b", *makeChart<chart::ColumnChart>());
    const Package saved(document.toBytes());
    const auto body = readBody(saved);
    EXPECT_EQ(body.find("<w:p><w:hyperlink><w:r xmlns"), 0U);
    EXPECT_NE(body.find("</w:drawing></w:r></w:hyperlink>"), std::string::npos);
    // The box has number 1 already; its second copy shows the chart of the first.
    for (const auto* id : {"id=\"2\" name=\"a b\"", "id=\"3\" name=\"a b 2\"", "id=\"4\" name=\"a b 2\""})
        EXPECT_EQ(count(body, id), 1U) << id;
    EXPECT_EQ(count(body, "r:id=\"rId3\""), 1U);
    EXPECT_EQ(count(body, "r:id=\"rId4\""), 2U);
    EXPECT_EQ(count(saved.getPart("word/header1.xml"), "name=\"a b 3\""), 1U);
    const auto header = saved.getRelationships("word/header1.xml");
    ASSERT_EQ(header.size(), 1U);
    EXPECT_EQ(header[0].target, "word/charts/chart3.xml");
    for (const auto* number : {"1", "2", "3"}) {
        const auto part = std::string("word/charts/chart") + number + ".xml";
        EXPECT_EQ(saved.getContentType(part),
                  "application/vnd.openxmlformats-officedocument.drawingml.chart+xml");
        const auto rows = saved.getRelationships(part);
        ASSERT_EQ(rows.size(), 1U);
        EXPECT_EQ(rows[0].id, "rId1");
        EXPECT_EQ(saved.getContentType(rows[0].target),
                  "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet");
    }
    EXPECT_FALSE(saved.hasPart("word/charts/chart4.xml"));
    // The second copy is the same chart, and a header that two relationships lead to is one.
    EXPECT_EQ(Template(saved.toBytes()).getCharts().size(), 3U);
}

TEST(Placeholder, APictureGivesWayToAChart)
{
    for (const auto* kind : {"inline", "anchor"}) {
        auto document = makeDocument(paragraph(run("Before ") + makePicture("{{margin}}", kind)));
        insertChart(document, "margin", *makeChart<chart::ColumnChart>(), {.altText = "Margin"});
        const auto body = readBody(document);
        EXPECT_EQ(body.find("<w:p><w:r><w:t>Before </w:t></w:r><w:r><w:drawing><wp:" + std::string(kind) +
                            " distT=\"7\"><wp:extent cx=\"1828800\" cy=\"914400\"/><wp:docPr id=\"4\" "
                            "name=\"margin\" descr=\"Margin\"/><wp:cNvGraphicFramePr/><a:graphic "),
                  0U)
            << body;
        EXPECT_EQ(body.find("pic:"), std::string::npos);
        EXPECT_EQ(count(body, "<c:chart "), 1U);
    }
}

TEST(Placeholder, AStrictDocumentIsFilledInKind)
{
    auto document = makeDocument(paragraph(run("{{margin}}")) + paragraph(run("{{table:margin}}")), "", true);
    insertChart(document, "margin", *makeChart<chart::ColumnChart>());
    insertTable(document, "margin", makeChart<chart::ColumnChart>()->getDataSet());
    EXPECT_EQ(readBody(document).find("schemas.openxmlformats.org/wordprocessingml"), std::string::npos);
    EXPECT_EQ(document.getPart("word/charts/chart1.xml").find("schemas.openxmlformats.org"),
              std::string::npos);
    EXPECT_EQ(document.getRelationships("word/document.xml").back().type,
              "http://purl.oclc.org/ooxml/officeDocument/relationships/chart");
}

ChartData makeData()
{
    auto set = chart::DataSet::create(std::vector<std::u16string>{u"Jan", u"Feb <1>"});
    for (const auto* name : {u"North", u"South"}) {
        auto series = chart::DataSeries::create(name);
        series->appendPoint(1234.5);
        series->appendPoint(NAN);
        set->appendSeries(series);
    }
    ChartData data(set);
    data.series = {{.numberFormat = "#,##0.00"}};
    return data;
}

/// The texts of the cells, with a bar before each and a slash before each row.
std::string readTable(const std::string& markup)
{
    std::string texts;
    for (std::size_t at = 0; (at = markup.find("<w:t", at)) != std::string::npos; ++at) {
        if (markup.compare(at, 6, "<w:tr>") == 0) texts += "/";
        if (markup.compare(at, 5, "<w:t ") != 0) continue;
        const auto start = markup.find(">", at) + 1;
        texts += "|" + markup.substr(start, markup.find("<", start) - start);
    }
    return texts;
}

TEST(Placeholder, BecomesATableOfTheData)
{
    const std::string look = "<w:rPr><w:rFonts w:ascii=\"Arial\"/><w:sz w:val=\"16\"/></w:rPr>";
    auto document = makeDocument(paragraph(run("{{table:sales}}", look)) + paragraph(""));
    insertTable(document, "sales", makeData());
    const auto body = readBody(document);
    EXPECT_EQ(readTable(body), "/||North|South/|Jan|1,234.50|1234.5/|Feb &lt;1&gt;||");
    auto other = makeDocument(paragraph(run("{{table:sales}}")));
    insertTable(other, "sales", makeData(), {.numberFormat = "0%"});
    EXPECT_EQ(readTable(readBody(other)), "/||North|South/|Jan|123450%|123450%/|Feb &lt;1&gt;||");
    other = makeDocument(paragraph(run("{{table:sales}}", "<w:rPr><w:lang w:val=\"de-DE\"/></w:rPr>")));
    insertTable(other, "sales", makeData());
    EXPECT_EQ(readTable(readBody(other)), "/||North|South/|Jan|1.234,50|1234,5/|Feb &lt;1&gt;||");
    EXPECT_EQ(body.find("<w:tbl "), 0U);
    EXPECT_TRUE(body.ends_with("</w:tbl><w:p></w:p>"));
    EXPECT_EQ(count(body, "<w:tblHeader/>"), 1U);
    EXPECT_EQ(count(body, "<w:jc w:val=\"right\"/>"), 6U);
    EXPECT_EQ(count(body, "<w:rFonts w:ascii=\"Arial\"/><w:b/><w:sz"), 3U);
    EXPECT_EQ(count(body, look), 6U);

    auto data = makeData();
    data.categoryKind = CategoryKind::Date;
    data.categoryValues = {45292, 45323};
    data.categoryFormat = "mmm yy";
    data.levels = {{u"2024", u""}};
    data.categoryNames = {u"Year", u"Month"};
    document = makeDocument(paragraph(run("{{table:sales}}")));
    insertTable(document, "sales", data);
    EXPECT_EQ(readTable(readBody(document)),
              "/|Year|Month|North|South/|2024|Jan 24|1,234.50|1234.5/||Feb 24||");
}

TEST(Placeholder, ATableLeavesAParagraphWhereOneIsNeeded)
{
    const std::string table = "<w:tbl><w:tblPr><w:tblStyle w:val=\"Mine\"/></w:tblPr></w:tbl>";
    const auto place = paragraph("<w:pPr><w:keepNext/></w:pPr>" + run("{{table:x}}"));
    const std::string empty = paragraph("<w:pPr><w:keepNext/></w:pPr>");
    const std::tuple<std::string, std::string, std::string> bodies[] = {
        {place, "", empty},
        {place + paragraph(""), "", paragraph("")},
        {table + place + table, table + empty, empty + table},
        {"<w:tc>" + place + "</w:tc>", "<w:tc>", empty + "</w:tc>"},
        {paragraph("<w:bookmarkStart w:id=\"0\"/>" + run("{{table:x}}")) + paragraph(""),
         paragraph("<w:bookmarkStart w:id=\"0\"/><w:r>" + kept("") + "</w:r>"), paragraph("")},
    };
    for (const auto& [body, before, after] : bodies) {
        auto document = makeDocument(body);
        insertTable(document, "x", makeData());
        const auto filled = readBody(document);
        EXPECT_EQ(filled.find(before + "<w:tbl xmlns"), 0U) << filled;
        EXPECT_TRUE(filled.ends_with("</w:tbl>" + after)) << filled;
        EXPECT_EQ(count(filled, "Mine"), body.find("Mine") == std::string::npos ? 0U : 3U);
    }
}

TEST(Placeholder, WhatIsMissingIsRefusedWithWhatThereIs)
{
    auto document =
        makeDocument(paragraph(run("{{margin}}")) + paragraph(run("In {{month}}")) +
                     paragraph(run("{{table:sales}}")) + paragraph(makePicture("{{logo}}", "inline")));
    const auto before = document.toBytes();
    const auto chart = makeChart<chart::ColumnChart>();
    const std::string all = "{{margin}}, {{month}}, {{table:sales}}, {{logo}}.";
    const std::string place =
        "a chart takes the place of a picture, or of a paragraph that holds nothing else.";
    EXPECT_EQ(thrownText([&] { replaceText(document, "moon", ""); }),
              "There is no placeholder {{moon}}; the document has " + all);
    EXPECT_EQ(thrownText([&] { insertTable(document, "margins", makeData()); }),
              "There is no placeholder {{table:margins}}; the document has " + all);
    EXPECT_EQ(
        thrownText([&] { insertTable(document, "sale", makeData()); }),
        "There is no placeholder {{table:sale}}; did you mean {{table:sales}}? The document has " + all);
    EXPECT_EQ(thrownText([&] { insertChart(document, "month", *chart); }), "Placeholder {{month}}: " + place);
    EXPECT_EQ(thrownText([&] { insertChart(document, "sales", *chart); }), "Placeholder {{sales}}: " + place);
    EXPECT_EQ(thrownText([&] { replaceText(document, "logo", "x"); }),
              "Placeholder {{logo}}: it is a picture or a table; expected one in running text.");
    EXPECT_NE(thrownText([&] { insertChart(document, "margin", *chart, {.height = "1"}); }),
              "nothing was thrown");
    EXPECT_TRUE(document.toBytes() == before);
}

}  // namespace
}  // namespace quillon::report
