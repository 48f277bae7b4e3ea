#include "report/document/Preview.h"

#include <gtest/gtest.h>

#include <stdexcept>

#include "chart/model/ColumnChart.h"
#include "report/document/ChartParts.h"
#include "tests/report/TestDocuments.h"

namespace quillon::report {
namespace {

std::string flatten(std::string xml)
{
    std::erase(xml, '\n');
    return xml;
}

TEST(Preview, IsAPageThatBeginsWithTheChart)
{
    const auto chart = makeChart<chart::ColumnChart>();
    const auto preview = makePreview(*chart, {.width = "2in", .height = "1in", .legend = Legend::Left});
    EXPECT_EQ(preview.width, 1828800);
    EXPECT_EQ(preview.height, 914400);
    const auto parts = makeChartParts(*chart, {.legend = Legend::Left, .workbook = false}, 1, "chart");
    EXPECT_EQ(readPart(preview.document, "chart.xml"), parts.chart);
    const auto main = flatten(readPart(preview.document, "document.xml"));
    const std::string page =
        "<w:sectPr><w:pgSz w:h=\"2880\" w:w=\"2880\"/>"
        "<w:pgMar w:bottom=\"0\" w:footer=\"0\" w:gutter=\"0\" w:header=\"0\" w:left=\"0\" w:right=\"0\" "
        "w:top=\"0\"/></w:sectPr></w:body></w:document>";
    EXPECT_TRUE(main.ends_with(page)) << main;
    EXPECT_NE(main.find("<w:body><w:p><w:r><w:drawing>"), std::string::npos) << main;
    EXPECT_NE(main.find("cx=\"1828800\" cy=\"914400\""), std::string::npos) << main;
    EXPECT_NE(main.find("r:id=\"rId1\""), std::string::npos) << main;
}

TEST(Preview, NamesItsParts)
{
    const auto preview = makePreview(*makeChart<chart::ColumnChart>());
    const auto relationships = readPart(preview.document, "_rels/document.xml.rels");
    EXPECT_NE(relationships.find(
                  "<Relationship Id=\"rId1\" Target=\"chart.xml\" "
                  "Type=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships/chart\"/>"),
              std::string::npos)
        << relationships;
    EXPECT_NE(readPart(preview.document, "_rels/.rels").find("Target=\"document.xml\""), std::string::npos);
    const auto types = readPart(preview.document, "[Content_Types].xml");
    for (const auto* text : {"Extension=\"rels\"", "drawingml.chart+xml\" PartName=\"/chart.xml\"",
                             "document.main+xml\" PartName=\"/document.xml\""})
        EXPECT_NE(types.find(text), std::string::npos) << types;
}

TEST(Preview, RefusesWhatADocumentRefuses)
{
    const auto chart = makeChart<chart::ColumnChart>();
    EXPECT_THROW(makePreview(*chart, {.width = "2"}), std::runtime_error);
    chart->setDataSet(nullptr);
    EXPECT_THROW(makePreview(*chart), std::runtime_error);
}

}  // namespace
}  // namespace quillon::report
