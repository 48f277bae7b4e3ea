#include <charconv>
#include <cmath>
#include <string>
#include <vector>

#include "chart/model/PieChart.h"
#include "fuzz/Check.h"
#include "fuzz/Escapes.h"
#include "fuzz/PackageReader.h"
#include "fuzz/RandomChart.h"
#include "report/document/Document.h"
#include "support/Text.h"

// From charts to the bytes of a document, with all options. What the caches of the charts and their workbooks
// hold is read back.

namespace quillon::fuzz {
namespace {

struct PlacedChart {
    std::shared_ptr<chart::Chart> chart;
    bool hasWorkbook;
    /// Whether it is drawn as its class says, with the texts and numbers of the data set alone.
    bool isPlain;
};

std::size_t readCount(const XmlTree& cache)
{
    return std::stoul(cache.get({"ptCount"}).attributes.at("val"));
}

void checkTexts(const XmlTree& cache, const std::vector<std::u16string>& texts)
{
    const auto points = cache.findAll("pt");
    require(readCount(cache) == texts.size() && points.size() == texts.size(),
            "a cache with another number of texts");
    for (std::size_t i = 0; i < points.size(); ++i) {
        require(points[i]->attributes.at("idx") == std::to_string(i), "a text at another place");
        const auto read = readEscapes(toUtf16(points[i]->get({"v"}).text));
        require(read == texts[i], "another text in a cache", show(read) + " for " + show(texts[i]));
    }
}

void checkNumbers(const XmlTree& cache, const chart::DataSeries& series)
{
    require(readCount(cache) == series.getSize(), "a cache with another number of values");
    std::map<std::size_t, std::string> read;
    for (const auto* point : cache.findAll("pt"))
        require(read.emplace(std::stoul(point->attributes.at("idx")), point->get({"v"}).text).second,
                "a value that comes twice");
    for (std::size_t i = 0; i < series.getSize(); ++i) {
        const double value = series.getPoint(i)->getValue();
        require(read.contains(i) != std::isnan(value), "a gap with a value, or a value lost");
        require(std::isnan(value) || std::strtod(read[i].c_str(), nullptr) == value,
                "another value in a cache", read[i]);
    }
}

void checkColors(const XmlTree& tree)
{
    tree.visit([](const XmlTree& element) {
        if (element.name != "srgbClr") return;
        const auto& digits = element.attributes.at("val");
        require(digits.size() == 6 && digits.find_first_not_of("0123456789ABCDEF") == std::string::npos,
                "no colour", digits);
    });
}

std::vector<const XmlTree*> findSeries(const XmlTree& part)
{
    std::vector<const XmlTree*> series;
    part.visit([&](const XmlTree& element) {
        if (element.name == "ser") series.push_back(&element);
    });
    return series;
}

void checkChart(const XmlTree& part, const PlacedChart& placed)
{
    const auto& dataSet = *placed.chart->getDataSet();
    const bool isPie = dynamic_cast<const chart::PieChart*>(placed.chart.get()) != nullptr;
    const auto elements = findSeries(part);
    require(elements.size() ==
                (isPie ? std::min<std::size_t>(dataSet.getSeriesCount(), 1) : dataSet.getSeriesCount()),
            "another number of series");
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const auto series = dataSet.getSeries(i);
        checkTexts(elements[i]->get({"tx", "strRef", "strCache"}), {series->getName()});
        checkTexts(elements[i]->get({"cat", "strRef", "strCache"}), dataSet.getCategories());
        checkNumbers(elements[i]->get({"val", "numRef", "numCache"}), *series);
    }
    checkColors(part);
    require((part.find("externalData") != nullptr) == placed.hasWorkbook, "a workbook too many, or none");
}

/// The cells of a workbook's sheet by their names, with texts as readers see them and numbers as they stand.
class SheetCells {
 public:
    explicit SheetCells(const std::string& workbook) : parts_(readSoundPackage(workbook))
    {
        const auto shared = readXml("sharedStrings", parts_.at("xl/sharedStrings.xml"));
        for (const auto* item : shared.findAll("si"))
            texts_.push_back(readEscapes(toUtf16(item->get({"t"}).text)));
        readXml("sheet1", parts_.at("xl/worksheets/sheet1.xml")).visit([this](const XmlTree& element) {
            require(element.name != "f", "a formula in a workbook");
            if (element.name == "c" && element.find("v") != nullptr) addCell(element);
        });
    }

    void checkText(std::size_t column, std::size_t row, const std::u16string& expected) const
    {
        const auto found = texts_.empty() ? cells_.end() : cells_.find(nameCell(column, row));
        const auto read = found == cells_.end() ? u"" : texts_.at(std::stoul(found->second.value));
        require(read == expected, "another text in a workbook", show(read) + " for " + show(expected));
        require(found == cells_.end() || found->second.isText, "a number for a text");
    }

    void checkNumber(std::size_t column, std::size_t row, double expected) const
    {
        const auto found = cells_.find(nameCell(column, row));
        require((found == cells_.end()) == std::isnan(expected), "a gap with a number, or a number lost");
        if (found == cells_.end()) return;
        require(!found->second.isText, "a text for a number");
        // Sixteen digits, as worksheets have them.
        const double read = std::strtod(found->second.value.c_str(), nullptr);
        require(std::abs(read - expected) <= std::abs(expected) * 1e-14 || std::abs(expected) < 1e-307,
                "another number in a workbook", found->second.value);
    }

 private:
    struct Cell {
        bool isText;
        std::string value;
    };

    void addCell(const XmlTree& element)
    {
        const auto type = element.attributes.find("t");
        cells_[element.attributes.at("r")] = {type != element.attributes.end() && type->second == "s",
                                              element.get({"v"}).text};
    }
    static std::string nameCell(std::size_t column, std::size_t row)
    {
        const auto letter = [](std::size_t number) { return static_cast<char>('A' + number); };
        const std::string first = column < 26 ? "" : std::string(1, letter(column / 26 - 1));
        return first + letter(column % 26) + std::to_string(row + 1);
    }

    Parts parts_;
    std::vector<std::u16string> texts_;
    std::map<std::string, Cell> cells_;
};

void checkWorkbook(const std::string& bytes, const chart::DataSet& dataSet)
{
    const SheetCells cells(bytes);
    const auto& categories = dataSet.getCategories();
    for (std::size_t i = 0; i < categories.size(); ++i) cells.checkText(0, i + 1, categories[i]);
    for (std::size_t i = 0; i < dataSet.getSeriesCount(); ++i) {
        const auto series = dataSet.getSeries(i);
        cells.checkText(i + 1, 0, series->getName());
        for (std::size_t k = 0; k < series->getSize(); ++k)
            cells.checkNumber(i + 1, k + 1, series->getPoint(k)->getValue());
    }
}

void addChart(Input& input, report::Document& document, std::vector<PlacedChart>& placed)
{
    isAccepted([&] {
        const auto chart = makeChart(input);
        const auto options = makeOptions(input, *chart);
        const auto data = makeData(input, chart->getDataSet());
        document.addChart(chart, options, data);
        const bool isDrawnAnew = options.kind || options.categoryType || !options.line.empty() ||
                                 !options.area.empty() || !options.column.empty() ||
                                 !options.second.empty() || !options.errorPlus.empty() ||
                                 !options.errorMinus.empty();
        const bool isPlain = !isDrawnAnew && data.categoryKind == report::CategoryKind::Automatic &&
                             data.categoryValues.empty() && data.levels.empty() && data.series.empty() &&
                             data.totals.empty();
        placed.push_back({chart, options.workbook, isPlain});
    });
}

void addText(Input& input, report::Document& document)
{
    isAccepted([&] { document.addHeading(input.takeUtf8(), static_cast<int>(input.takeNumber(0, 10))); });
    isAccepted([&] { document.addParagraph(input.takeUtf8()); });
    isAccepted([&] { document.addCaption({input.takeUtf8(), input.takeUtf8(), input.takeUtf8()}); });
}

/// The workbook that a chart part leads to.
const std::string& findWorkbook(const Parts& parts, const std::string& number)
{
    const auto links = readXml("links", parts.at("word/charts/_rels/chart" + number + ".xml.rels"));
    const auto& target = links.get({"Relationship"}).attributes.at("Target");
    return parts.at("word/" + target.substr(target.find("embeddings/")));
}

void checkDocument(const report::Document& document, const std::vector<PlacedChart>& placed)
{
    const report::Listener listener{.warning = requireWords};
    const auto bytes = document.toBytes(listener);
    const auto parts = readSoundPackage(bytes);
    for (std::size_t i = 0; i < placed.size(); ++i) {
        const auto number = std::to_string(i + 1);
        const auto part = readXml("chart", parts.at("word/charts/chart" + number + ".xml"));
        if (!placed[i].isPlain) continue;
        checkChart(part, placed[i]);
        if (placed[i].hasWorkbook) checkWorkbook(findWorkbook(parts, number), *placed[i].chart->getDataSet());
    }
    require(document.toBytes() == bytes, "other bytes the second time");
}

}  // namespace
}  // namespace quillon::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    using namespace quillon::fuzz;
    Input input(data, size);
    quillon::report::Document document;
    std::vector<PlacedChart> placed;
    for (auto left = input.takeNumber(1, 3); left > 0; --left) {
        if (input.takeChance(4)) addText(input, document);
        addChart(input, document, placed);
    }
    isAccepted([&] { checkDocument(document, placed); });
    return 0;
}
