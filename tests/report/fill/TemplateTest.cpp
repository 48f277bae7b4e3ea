#include "report/fill/Template.h"

#include <gtest/gtest.h>
#include <zip.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <thread>

#include "chart/model/PieChart.h"
#include "report/fill/Kept.h"
#include "report/options/Enumerations.h"
#include "report/package/XmlSpans.h"
#include "tests/ThrownText.h"
#include "tests/report/TestFolder.h"
#include "tests/report/fill/TestTemplates.h"

namespace quillon::report {
namespace {

using Texts = std::vector<std::string>;

/// A document whose charts stand wherever a chart may, made once.
const Template& getPlaces()
{
    static const Template places = [] {
        const TestFolder folder;
        const std::string command = std::string("/usr/bin/python3 '") + QUILLON_MAKE_TEMPLATES + "' '" +
                                    QUILLON_REPORT + "' '" + folder / "" + "'";
        if (std::system(command.c_str()) != 0) throw std::runtime_error("The templates could not be made.");
        return Template::open(folder / "places.docx");
    }();
    return places;
}

ChartData makeNews()
{
    return makeData({"Jan", "Apr"}, {{"North", {7, 8}}, {"South", {9, gap}}});
}

std::size_t find(const std::string& key)
{
    auto document = getPlaces();
    return document.fill(key, makeNews()).number;
}

TEST(Template, FindsChartsWhereverTheyStand)
{
    Texts places;
    Texts names;
    for (const auto& chart : getPlaces().getCharts()) {
        places.push_back(chart.place);
        names.push_back(chart.name);
        EXPECT_EQ(chart.problem, "");
        EXPECT_EQ(chart.points, 3U);
    }
    EXPECT_EQ(names,
              (Texts{"Revenue", "Chart 2", "Chart 3", "Chart 6", "Chart 7", "In a box", "Member of a group",
                     "Twice A", "Twice B", "Same name", "Same name", "In a header", "In a footer"}));
    EXPECT_EQ(places, (Texts{"body", "body", "body, table", "body", "body", "body, text box", "body, group",
                             "body", "body", "body", "body", "header", "footer"}));
    EXPECT_EQ(getPlaces().getCharts()[1].types, Texts{"bar"});
    EXPECT_EQ(getPlaces().getCharts()[2].series, Texts{"North"});
}

TEST(Template, FindsAChartByAnythingThatNamesIt)
{
    const std::pair<std::string, std::size_t> keys[] = {
        {"Revenue", 1},
        {"costs", 2},
        {"{{costs}}", 2},
        {"Shares", 3},
        {"margin", 4},
        {"The margin", 4},
        {"marked", 5},
        {"Title of In a box", 6},
        {"Member of a group", 7},
        {"Twice B", 9},
        {"11", 11},
        {"In a footer", 13},
    };
    for (const auto& [key, number] : keys) EXPECT_EQ(find(key), number) << key;
    const auto list = thrownText([] { find("Cost"); });
    EXPECT_EQ(list.substr(0, 178),
              "There is no chart \"Cost\"; did you mean \"costs\"? The document has 1 \"Revenue\", title "
              "\"Title of Revenue\"; 2 "
              "\"Chart 2\", title \"Title of Chart 2\", alternative "
              "text \"{{costs}}\"; 3 \"Ch");
    EXPECT_EQ(thrownText([] { find("Same name"); }).substr(0, 34), "There are 2 charts \"Same name\"; th");
    for (const auto* key : {"0", "14", "", "-1", "1x"})
        EXPECT_EQ(thrownText([&] { find(key); }).substr(0, 17), "There is no chart") << key;
    EXPECT_EQ(thrownText([] { makeTemplate({}).getChartData("1"); }),
              "There is no chart \"1\": the document has none.");
}

/// The parts that differ.
std::set<std::string> getChanges(const Template& before, const Template& after)
{
    std::set<std::string> names;
    for (const auto& name : after.getPackage().getPartNames())
        if (!before.getPackage().hasPart(name) ||
            before.getPackage().getPart(name) != after.getPackage().getPart(name))
            names.insert(name);
    return names;
}

TEST(Template, TouchesTheChartAndItsWorkbookAlone)
{
    for (const auto* key : {"Revenue", "Shares", "In a box", "In a header"}) {
        auto document = getPlaces();
        document.fill(key, makeNews());
        const auto changes = getChanges(getPlaces(), document);
        EXPECT_EQ(changes.size(), 2U) << key;
        EXPECT_EQ(changes.begin()->substr(0, 17), "word/charts/chart") << key;
        EXPECT_EQ(changes.rbegin()->substr(0, 16), "word/embeddings/") << key;
        EXPECT_EQ(document.getChartData(key).dataSet->getCategories(), makeNews().dataSet->getCategories());
    }
}

TEST(Template, TellsDrawingsOfOnePartApart)
{
    auto document = getPlaces();
    document.fill("Twice B", makeNews(), {.title = "B"});
    EXPECT_EQ(document.getChartData("Twice A").dataSet->getCategories().size(), 3U);
    EXPECT_EQ(document.getChartData("Twice B").dataSet->getCategories().size(), 2U);
    EXPECT_EQ(document.getCharts()[7].title, "Title of Twice A");
    EXPECT_EQ(document.getCharts()[8].title, "B");
    EXPECT_EQ(getChanges(getPlaces(), document).size(), 6U);
    document = Template(document.toBytes());
    const auto before = document.getPackage().getPartNames().size();
    document.fill("Twice A", makeNews());
    EXPECT_EQ(document.getPackage().getPartNames().size(), before);
}

TEST(Template, TellsChartsOfOneWorkbookApart)
{
    Document document;
    for (int i = 0; i < 2; ++i) document.addChart(makeChart<chart::ColumnChart>());
    Package package(document.toBytes());
    const auto relationships = package.getPart("word/charts/_rels/chart1.xml.rels");
    package.setPart("word/charts/_rels/chart2.xml.rels", relationships);
    Template filled(package.toBytes());
    filled.fill("1", makeNews());
    EXPECT_NE(filled.getPackage().getPart("word/charts/_rels/chart1.xml.rels"), relationships);
    const auto workbook = filled.getPackage().getRelationships("word/charts/chart2.xml")[0].target;
    EXPECT_EQ(filled.getPackage().getPart(workbook), package.getPart(workbook));
    const auto count = filled.getPackage().getPartNames().size();
    filled.fill("1", makeNews());
    filled.fill("2", makeNews());
    EXPECT_EQ(filled.getPackage().getPartNames().size(), count);
}

TEST(Template, FillsBothCopiesOfATextBox)
{
    auto package = getPlaces().getPackage();
    auto main = package.getPart(package.getMainPart());
    const auto readId = [&](std::size_t at) {
        const auto begin = main.find("r:id=\"", at) + 6;
        return main.substr(begin, main.find('"', begin) - begin);
    };
    const auto getTarget = [&](const std::string& id) {
        for (const auto& row : package.getRelationships(package.getMainPart()))
            if (row.id == id) return row.target;
        return std::string();
    };
    // The second copy shows the chart "Revenue", which has a drawing of its own.
    const auto second = main.rfind("name=\"In a box\"");
    const auto box = readId(second);
    const auto revenue = readId(main.find("name=\"Revenue\""));
    main.replace(main.find("r:id=\"" + box, second) + 6, box.size(), revenue);
    package.setPart(package.getMainPart(), main);
    auto document = Template(package.toBytes());
    document.fill("In a box", makeNews());
    EXPECT_NE(document.getPackage().getPart(getTarget(box)).find("Apr"), std::string::npos);
    EXPECT_EQ(document.getPackage().getPart(getTarget(revenue)).find("Apr"), std::string::npos);
    main = document.getPackage().getPart(package.getMainPart());
    package = document.getPackage();
    const auto copy = readId(main.rfind("name=\"In a box\""));
    EXPECT_NE(copy, revenue);
    EXPECT_NE(package.getPart(getTarget(copy)).find("Apr"), std::string::npos);
}

TEST(Template, FillsChartsInNotesAndComments)
{
    const std::string namespaces =
        " xmlns:w=\"http://schemas.openxmlformats.org/wordprocessingml/2006/main\" "
        "xmlns:wp=\"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing\" "
        "xmlns:c=\"http://schemas.openxmlformats.org/drawingml/2006/chart\" "
        "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">";
    const std::string kinds[] = {"footnotes", "endnotes", "comments"};
    auto package = getPlaces().getPackage();
    for (const auto& kind : kinds) {
        const auto part = "word/" + kind + ".xml";
        package.addPart(part, "", "application/xml");
        package.addRelationship(package.getMainPart(), kind, part);
        // Also shown in the body.
        const auto id = package.addRelationship(part, "chart", "word/charts/chart1.xml");
        package.setPart(
            part, "<w:" + kind + namespaces + "<w:p><w:r><wp:inline><wp:docPr id=\"1\" name=\"In " + kind +
                      "\"/><c:chart r:id=\"" + id + "\"/></wp:inline></w:r></w:p></w:" + kind + ">");
    }
    auto document = Template(package.toBytes());
    for (const auto& kind : kinds) {
        document.fill("In " + kind, makeNews());
        EXPECT_EQ(document.getChartData("In " + kind).dataSet->getCategories().size(), 2U) << kind;
    }
    EXPECT_EQ(document.getChartData("Revenue").dataSet->getCategories().size(), 3U);
    EXPECT_EQ(document.getCharts()[14].place, "endnotes");
}

/// The same document in the strict dialect.
Template toStrict(const Template& document)
{
    auto package = document.getPackage();
    for (const auto& part : package.getPartNames()) {
        if (!part.ends_with(".xml") && !part.ends_with(".rels")) continue;
        auto text = package.getPart(part);
        for (const auto ns : {Ns::Word, Ns::WordDrawing, Ns::Drawing, Ns::Chart, Ns::OfficeRelationships})
            for (std::size_t at = 0; (at = text.find(getUri(ns), at)) != std::string::npos;)
                text.replace(at, getUri(ns).size(), getUri(ns, true));
        package.setPart(part, text);
    }
    return Template(package.toBytes());
}

TEST(Template, FillsAStrictDocumentInKind)
{
    auto document = toStrict(getPlaces());
    const auto original = document.toBytes();
    EXPECT_EQ(document.getCharts().size(), 13U);
    document.fill("Revenue", document.getChartData("Revenue"));
    EXPECT_TRUE(document.toBytes() == original);
    const auto data = makeData({"a", "b"}, {{"North", {1, 2}}, {"South", {3, 4}}, {"New", {5, 6}}});
    document.fill("Revenue", data, {.title = "Strict"});
    document.fill("Twice B", data);
    for (const auto& name : getChanges(Template(original), document)) {
        const auto& part = document.getPackage().getPart(name);
        EXPECT_TRUE(name.ends_with(".xlsx") || part.find("schemas.openxmlformats.org/d") == std::string::npos)
            << name;
    }
    for (const auto& row : document.getPackage().getRelationships("word/document.xml"))
        EXPECT_EQ(row.type.find("schemas.openxmlformats.org"), std::string::npos);
    EXPECT_EQ(document.getChartData("Revenue").dataSet->getSeriesCount(), 3U);
    EXPECT_EQ(document.getCharts()[0].title, "Strict");
}

/// What every kind of chart can show.
ChartData makeKindData(ChartKind kind, double factor)
{
    std::vector<NamedValues> series = {{"High", {3 * factor, 4 * factor}}};
    if (kind != ChartKind::Waterfall)
        series.insert(series.end(), {{"Low", {factor, 2}}, {"Close", {2 * factor, gap}}});
    auto data = makeData({"1", "2"}, series);
    for (std::size_t i = 0; i < series.size(); ++i) data.series.push_back({.sizes = {1, 2}});
    return data;
}

TEST(Template, RenewsAlternativeTextsThatWereGenerated)
{
    const auto make = [](double factor) {
        Document document;
        for (const auto& row : kindRows) {
            const auto data = makeKindData(row.value, factor);
            const auto chart = chart::ColumnChart::create();
            chart->setDataSet(data.dataSet);
            if (row.value != ChartKind::Bar) chart->setTitle(chart::Title::create(u"\"A\" &\n<b>"));
            document.addChart(chart, {.kind = row.value}, data);
            document.addChart(chart, {.kind = row.value, .altText = "Column chart of mine"}, data);
        }
        return Template(document.toBytes());
    };
    auto document = make(1);
    const auto expected = make(1000);
    for (std::size_t i = 0; i < kindRows.size(); ++i)
        for (const auto number : {2 * i + 1, 2 * i + 2})
            document.fill(std::to_string(number), makeKindData(kindRows[i].value, 1000));
    const Template saved(document.toBytes());
    for (std::size_t i = 0; i < 2 * kindRows.size(); ++i)
        EXPECT_EQ(saved.getCharts()[i].altText, expected.getCharts()[i].altText);
    document.fill("1", makeKindData(ChartKind::Column, 1), {.title = "New"});
    EXPECT_EQ(Template(document.toBytes()).getCharts()[0].altText,
              "Column chart: New; series High, Low, Close; values from 1 to 4");

    // A pie goes on showing the series that it showed, wherever the data has it.
    Document pies;
    const auto chart = chart::ColumnChart::create();
    const auto slices = makeData({"1", "2"}, {{"High", {3, 4}}, {"Low", {1, 2}}});
    chart->setDataSet(slices.dataSet);
    pies.addChart(chart, {.kind = ChartKind::Pie}, slices);
    Template pie(pies.toBytes());
    pie.fill("1", makeData({"1", "2"}, {{"Low", {1, 2}}, {"High", {5, 6}}}));
    EXPECT_EQ(pie.getCharts()[0].altText, "Pie chart; series High; values from 5 to 6");
}

TEST(Template, WhatIsKeptHasABoundedSize)
{
    KeptByName<int> kept(10);
    int count = 0;
    const auto read = [&] { return std::make_shared<const int>(++count); };
    for (const auto* name : {"a", "a", "b", "b", "c", "c"}) kept.get(name, read, *name == 'c' ? 4 : 6);
    // There is room for a and c; b is read each time.
    EXPECT_EQ(count, 4);
}

TEST(Template, NewSeriesHaveColorsWithoutATheme)
{
    const auto color = makeAccent("<a:srgbClr val=\"4472c4\"/>");
    const auto part = makeChartPart(
        makeGroup("barChart", columnSettings, {{0, "North", {"1", "2", "3"}, color}}, "12") + textAxes);
    const std::pair<const char*, const char*> cases[] = {{"theme", "<a:srgbClr val=\"ED7D31\">"},
                                                         {"", "<a:schemeClr val=\"accent2\">"}};
    for (const auto& [removed, expected] : cases) {
        Package package(makeTemplate({part}).toBytes());
        package.removeRelationships("word/document.xml",
                                    [kind = removed](const auto& row) { return row.getKind() == kind; });
        Template document(package.toBytes());
        document.fill("1", makeNews());
        EXPECT_NE(getChartPart(document).find(expected), std::string::npos) << getChartPart(document);
    }
}

TEST(Template, UsesAWorkbookThatTheChartDoesNotName)
{
    auto part = makeChartPart(makeGroup("barChart", columnSettings, {{0, "North", {"1", "2", "3"}}}, "12") +
                              textAxes);
    part.erase(part.find("<c:externalData"), part.find("</c:chartSpace>") - part.find("<c:externalData"));
    auto document = makeTemplate({part});
    const auto before = document.getPackage().getPartNames();
    EXPECT_EQ(document.fill("1", makeNews()).warnings, Texts());
    EXPECT_EQ(document.getPackage().getPartNames(), before);
    EXPECT_EQ(document.getPackage().getRelationships("word/charts/chart1.xml").size(), 1U);
    EXPECT_NE(getChartPart(document).find("<c:externalData r:id=\"rId1\""), std::string::npos);
}

TEST(Template, FillsAgainWhatWasFilled)
{
    auto june = getPlaces();
    june.fill("costs", makeNews());
    auto july = Template(june.toBytes());
    const auto report = july.fill("costs", getPlaces().getChartData("costs"));
    EXPECT_EQ(report.chart, "costs");
    EXPECT_EQ(report.pointsBefore, 2U);
    EXPECT_EQ(report.pointsAfter, 3U);
    // Our own charts write what a fill would.
    for (const auto& name : getChanges(getPlaces(), july)) EXPECT_TRUE(name.ends_with(".xlsx")) << name;
}

/// The bytes of an entry as the file holds them, packed.
std::string readPacked(const std::string& bytes, const std::string& name)
{
    auto* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, nullptr);
    const std::unique_ptr<zip_t, decltype(&zip_discard)> archive(
        zip_open_from_source(source, ZIP_RDONLY, nullptr), zip_discard);
    zip_stat_t status;
    zip_stat(archive.get(), name.c_str(), 0, &status);
    std::string packed(status.comp_size, '\0');
    const std::unique_ptr<zip_file_t, decltype(&zip_fclose)> file(
        zip_fopen(archive.get(), name.c_str(), ZIP_FL_COMPRESSED), zip_fclose);
    zip_fread(file.get(), packed.data(), packed.size());
    return packed + std::to_string(status.mtime) + std::to_string(status.crc);
}

TEST(Template, StaysWhatItIs)
{
    auto package = getPlaces().getPackage();
    package.setContentType(package.getMainPart(), "application/vnd.ms-word.document.macroEnabled.main+xml");
    package.addPart("word/vbaProject.bin", std::string("\0macro", 6), "application/vnd.ms-office.vbaProject");
    package.addPart("_xmlsignatures/sig1.xml", "<Signature/>",
                    "application/vnd.openxmlformats-package.digital-signature-xmlsignature+xml");
    const auto before = package.toBytes();
    auto document = Template(before);
    EXPECT_EQ(document.toBytes(), before);
    const auto report = document.fill("Revenue", makeNews());
    EXPECT_EQ(report.warnings, Texts{"The document is signed; its signature is no longer valid."});
    const auto after = document.toBytes();
    const auto changes = getChanges(Template(before), document);
    for (const auto& name : package.getPartNames())
        EXPECT_TRUE(changes.contains(name) || readPacked(after, name) == readPacked(before, name)) << name;
    EXPECT_EQ(document.getPackage().getPartNames(), package.getPartNames());
}

TEST(Template, GivesCopiesToThreads)
{
    const auto expected = [] {
        auto document = getPlaces();
        document.fill("costs", makeNews());
        return document.toBytes();
    }();
    const Template original(getPlaces().toBytes());
    std::vector<std::string> results(8);
    std::vector<std::thread> threads;
    for (auto& result : results)
        threads.emplace_back([&result, copy = original]() mutable {
            copy.fill("costs", makeNews());
            result = copy.toBytes();
        });
    for (auto& thread : threads) thread.join();
    for (const auto& result : results) EXPECT_EQ(result, expected);
}

TEST(Template, RefusesAllButAssignmentWhenItWasMovedFrom)
{
    auto document = getPlaces();
    const auto moved = std::move(document);
    const std::string refusal = "The document was moved elsewhere.";
    EXPECT_EQ(thrownText([&] { document.getCharts(); }), refusal);
    EXPECT_EQ(thrownText([&] { document.fill("1", makeNews()); }), refusal);
    EXPECT_EQ(thrownText([&] { Template(document).toBytes(); }), refusal);
    document = moved;
    EXPECT_EQ(document.getCharts().size(), moved.getCharts().size());
}

TEST(Template, NamesWhatItCannotFill)
{
    auto package = getPlaces().getPackage();
    auto main = package.getPart(package.getMainPart());
    const auto end = main.find("<w:sectPr");
    main.insert(end,
                "<w:p><w:r><w:object><o:OLEObject xmlns:o=\"urn:schemas-microsoft-com:office:office\" "
                "ProgID=\"MSGraph.Chart.8\"/></w:object>"
                "<w:drawing><wp:inline><wp:docPr id=\"900\" name=\"Falls\"/><cx:chart "
                "xmlns:cx=\"http://schemas.microsoft.com/office/drawing/2014/chartex\" "
                "r:id=\"rId999\"/></wp:inline></w:drawing></w:r></w:p>");
    package.setPart(package.getMainPart(), main);
    const std::pair<std::string, std::string> kinds[] = {
        {"treemap", "a treemap, a kind"}, {"clusteredColumn", "a histogram"}, {"regionMap", "a map"}};
    for (const auto& [layout, name] : kinds) {
        auto copy = package;
        copy.addPart("word/charts/chartEx1.xml",
                     "<cx:chartSpace xmlns:cx=\"http://schemas.microsoft.com/office/drawing/2014/chartex\">"
                     "<cx:series layoutId=\"" +
                         layout + "\"/></cx:chartSpace>",
                     "application/vnd.ms-office.chartex+xml");
        const auto id = copy.addRelationship(copy.getMainPart(), "chartEx", "word/charts/chartEx1.xml");
        auto text = main;
        copy.setPart(copy.getMainPart(), text.replace(text.find("rId999"), 6, id));
        EXPECT_NE(Template(copy.toBytes()).getCharts()[12].problem.find("it is " + name), std::string::npos);
    }
    auto document = Template(package.toBytes());
    EXPECT_EQ(document.getCharts().size(), 15U);
    EXPECT_EQ(document.getCharts()[11].problem,
              "it is an embedded object (MSGraph.Chart.8), a picture to a word processor");
    EXPECT_EQ(thrownText([&] { document.fill("Falls", makeNews()); }),
              "The chart cannot be filled: it is of a kind of 2016 (waterfall, histogram, treemap ...), "
              "whose markup is another.");
    EXPECT_EQ(thrownText([&] { static_cast<void>(Template::open("missing.docx")); }).substr(0, 13),
              "missing.docx:");
}

TEST(Template, ReplacesAnExternalWorkbookAndMakesAMissingOne)
{
    auto package = getPlaces().getPackage();
    const std::string part = "word/charts/chart1.xml";
    const std::string relationships = "word/charts/_rels/chart1.xml.rels";
    const auto id = package.getRelationships(part).at(0).id;
    package.setPart(
        relationships,
        "<Relationships xmlns=\"http://schemas.openxmlformats.org/package/2006/relationships\"><Relationship "
        "Id=\"" +
            id +
            "\" Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/oleObject\" "
            "Target=\"file:///C:/sales.xlsx\" TargetMode=\"External\"/></Relationships>");
    auto linked = Template(package.toBytes());
    const auto report = linked.fill("Revenue", makeNews());
    ASSERT_EQ(report.warnings.size(), 1U);
    EXPECT_NE(report.warnings[0].find("file:///C:/sales.xlsx"), std::string::npos);
    EXPECT_FALSE(linked.getPackage().getRelationships(part).at(0).isExternal);

    package.removePart(relationships);
    auto markup = package.getPart(part);
    const auto begin = markup.find("<c:externalData");
    markup.erase(begin, markup.find("</c:externalData>") + 17 - begin);
    package.setPart(part, markup);
    auto bare = Template(package.toBytes());
    bare.fill("Revenue", makeNews());
    const auto made = bare.getPackage().getRelationships(part).at(0);
    EXPECT_NE(bare.getPackage().getPart(part).find("<c:externalData r:id=\"" + made.id + "\""),
              std::string::npos);
    EXPECT_TRUE(bare.getPackage().hasPart(made.target));
}

TEST(Template, InsertsChartsAndTexts)
{
    Document made;
    made.addParagraph("{{margin}}");
    made.addParagraph("In {{month}}");
    Template document(made.toBytes());
    EXPECT_EQ(document.getPlaceholders().size(), 2U);
    EXPECT_EQ(document.replace("month", "July"), 1U);
    document.insert("margin", *makeChart<chart::PieChart>());
    EXPECT_EQ(document.getCharts().at(0).types, Texts{"pie"});
    document.fill("margin", makeData({"a", "b", "c"}, {{"Share", {1, 2, 3}}}));
    EXPECT_EQ(document.getCharts().at(0).points, 3U);
}

}  // namespace
}  // namespace quillon::report
