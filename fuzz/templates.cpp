#include <cmath>
#include <string>
#include <vector>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "fuzz/Check.h"
#include "fuzz/PackageReader.h"
#include "fuzz/RandomChart.h"
#include "report/document/Document.h"
#include "report/fill/Template.h"
#include "support/Text.h"

// Documents whose parts were changed: charts are found, read and filled, placeholders are replaced. What is
// filled is read back, and what is refused leaves the document as it was.

namespace quillon::fuzz {
namespace {

constexpr auto chartPart = "word/charts/chart1.xml";
constexpr auto workbookPart = "word/embeddings/data1.xlsx";

std::shared_ptr<chart::DataSet> makeSales()
{
    auto sales = chart::DataSet::create(std::vector<std::u16string>{u"Jan", u"Feb", u"Mar"});
    for (const auto* name : {u"North", u"South"}) {
        appendSeries(*sales, name, {1.5, 2.0, 4.0});
    }
    return sales;
}

/// A document with charts and placeholders, made once: its parts, and those of a chart's workbook.
struct FixedDocument {
    Parts parts;
    Parts workbook;

    FixedDocument()
    {
        report::Document document;
        document.addHeading("Sales of {{year}}");
        for (const std::shared_ptr<chart::Chart>& chart :
             {std::shared_ptr<chart::Chart>(chart::ColumnChart::create()),
              std::shared_ptr<chart::Chart>(chart::LineChart::create())}) {
            chart->setDataSet(makeSales());
            chart->setTitle(chart::Title::create(std::u16string(u"Sales")));
            document.addChart(chart);
        }
        document.addParagraph("{{chart}}");
        document.addTable({.columns = {"A", "{{cell}}"}, .rows = {{"1", "{{year}}"}}});
        parts = readParts(document.toBytes());
        workbook = readParts(parts.at(workbookPart));
    }
};

/// Pieces of markup that mean something in one of the parts.
std::string takePiece(Input& input)
{
    static const std::string pieces[] = {"<c:ser>",
                                         "</c:ser>",
                                         "<c:pt idx=\"1\"><c:v>5</c:v></c:pt>",
                                         "<c:ptCount val=\"9\"/>",
                                         "<c:ptCount val=\"4000000000\"/>",
                                         "<c:f>Sheet1!$B$2:$C$4</c:f>",
                                         "<c:f>Sheet1!$A$1:$XFD$1048576</c:f>",
                                         "<c:f>(Sheet1!$B$2,Sheet1!$B$4)</c:f>",
                                         "<c:f>#REF!</c:f>",
                                         "<c:f>Sheet1!$B:$B</c:f>",
                                         "<c:f>Other!$B$2</c:f>",
                                         "<c:numLit>",
                                         "<c:strLit>",
                                         "<c:multiLvlStrRef>",
                                         "<c:dPt><c:idx val=\"7\"/></c:dPt>",
                                         "<c:dLbl><c:idx val=\"1\"/></c:dLbl>",
                                         "<c:order val=\"3\"/>",
                                         "<c:idx val=\"-1\"/>",
                                         "<c:pieChart>",
                                         "<c:areaChart>",
                                         "<c:scatterChart>",
                                         "<c:dateAx>",
                                         "<c:date1904 val=\"1\"/>",
                                         "<c:externalData r:id=\"rId9\"/>",
                                         "<c r=\"B2\"><f>A1</f><v>1</v></c>",
                                         "<row r=\"1048576\"/>",
                                         "<row r=\"2\"/>",
                                         "<mergeCell ref=\"A1:B2\"/>",
                                         "<w:p>",
                                         "</w:p>",
                                         "<w:r><w:t>{{year}}</w:t></w:r>",
                                         "{{table:year}}",
                                         "{{",
                                         "}}",
                                         "<w:sdt><w:sdtContent>",
                                         "<w:txbxContent>",
                                         "<w:tbl>",
                                         "<mc:AlternateContent>",
                                         "<w:fldSimple>",
                                         "NaN",
                                         "INF",
                                         "1e400",
                                         "-1",
                                         "99999999999",
                                         "&#x1;",
                                         "]]>",
                                         "<![CDATA[",
                                         "<!--",
                                         "\""};
    return input.takeChance(2) ? input.takeBytes(16) : input.pick(pieces);
}

/// Some places of a part are changed: a stretch is replaced by a piece of markup, or by another stretch of
/// the part.
void changePlaces(Input& input, std::string& part)
{
    for (auto left = input.takeNumber(1, 4); left > 0; --left) {
        const auto at = input.takeNumber(0, part.size());
        const auto removed = input.takeByte();
        const auto from = input.takeNumber(0, part.size());
        const auto piece =
            input.takeChance(3) ? part.substr(from, input.takeNumber(0, 600)) : takePiece(input);
        part.replace(at, removed, piece);
    }
}

std::string makeDocument(Input& input)
{
    static const FixedDocument fixed;
    static const std::string parts[] = {chartPart,
                                        chartPart,
                                        "word/document.xml",
                                        "word/_rels/document.xml.rels",
                                        "word/charts/_rels/chart1.xml.rels",
                                        "[Content_Types].xml"};
    static const std::string sheets[] = {"xl/worksheets/sheet1.xml", "xl/sharedStrings.xml",
                                         "xl/workbook.xml", "xl/styles.xml", "xl/_rels/workbook.xml.rels"};
    auto document = fixed.parts;
    auto workbook = fixed.workbook;
    changePlaces(input, input.takeChance(3) ? workbook[input.pick(sheets)] : document[input.pick(parts)]);
    document[workbookPart] = writeParts(workbook);
    return writeParts(document);
}

bool isSame(double left, double right)
{
    return left == right || (std::isnan(left) && std::isnan(right));
}

/// Whether every series has a value for each category, in numbers that a chart takes.
bool isWhole(const chart::DataSet& data)
{
    const auto list = data.getSeriesList();
    for (const auto& series : *list) {
        if (series->getSize() != data.getCategories().size()) return false;
        for (const auto& point : series->getPoints())
            if (std::isinf(point->getValue())) return false;
    }
    return data.getSeriesCount() > 0 && !data.getCategories().empty();
}

void compare(const chart::DataSet& filled, const chart::DataSet& read)
{
    require(read.getSeriesCount() == filled.getSeriesCount(), "another number of series after a fill");
    for (std::size_t i = 0; i < filled.getSeriesCount(); ++i) {
        const auto before = filled.getSeries(i);
        const auto after = read.getSeries(i);
        require(after->getName() == before->getName(), "another name after a fill",
                show(after->getName()) + " for " + show(before->getName()));
        require(after->getSize() == before->getSize(), "another number of points after a fill");
        for (std::size_t k = 0; k < before->getSize(); ++k)
            require(isSame(after->getPoint(k)->getValue(), before->getPoint(k)->getValue()),
                    "another value after a fill");
    }
}

/// Parts that are not as they were are well-formed.
void requireSoundChanges(const Parts& before, const report::Template& document)
{
    for (const auto& [name, bytes] : readParts(document.toBytes())) {
        const auto old = before.find(name);
        if (old != before.end() && old->second == bytes) continue;
        if (name.ends_with(".xml") || name.ends_with(".rels")) readXml(name, bytes);
        if (name.ends_with(".xlsx")) readParts(bytes);
    }
}

void fill(report::Template& document, const std::string& name, const report::ChartData& data)
{
    const auto before = document.toBytes();
    if (!isAccepted([&] { document.fill(name, data); }))
        return require(document.toBytes() == before, "a refused fill leaves a trace");
    requireSoundChanges(readParts(before), document);
    isAccepted([&] {
        const auto read = document.getChartData(name);
        if (isWhole(*data.dataSet)) compare(*data.dataSet, *read.dataSet);
    });
}

void fillAll(Input& input, report::Template& document)
{
    for (const auto& chart : document.getCharts()) {
        const auto name = std::to_string(chart.number);
        isAccepted([&] { fill(document, name, document.getChartData(name)); });
        if (chart.number > 4 || input.takeChance(3)) continue;
        fill(document, name,
             input.takeChance(2) ? makeData(input, makeDataSet(input)) : report::ChartData(makeSales()));
    }
}

void replaceAll(Input& input, report::Template& document)
{
    const auto before = readParts(document.toBytes());
    for (const auto& placeholder : document.getPlaceholders()) {
        toUtf16(placeholder.name);
        isAccepted([&] {
            const auto bar = chart::BarChart::create();
            bar->setDataSet(makeSales());
            if (input.takeChance(2))
                document.insert(placeholder.name, *bar);
            else
                document.replace(placeholder.name, input.takeUtf8());
        });
    }
    requireSoundChanges(before, document);
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillon::fuzz;
    Input input(data, size);
    const auto bytes = makeDocument(input);
    isAccepted([&] {
        quillon::report::Template document(bytes);
        require(document.toBytes() == bytes, "other bytes without a change");
        fillAll(input, document);
        replaceAll(input, document);
    });
    return 0;
}
