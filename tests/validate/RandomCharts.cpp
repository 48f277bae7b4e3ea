#include <array>
#include <cstdio>
#include <exception>
#include <limits>
#include <random>
#include <string>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "report/Document.h"

// Writes documents with random charts, the same in every run, for the validators: random_charts FOLDER.

namespace quillon {
namespace {

using namespace std::string_literals;

constexpr std::size_t documentCount = 8;
constexpr std::size_t chartsInDocument = 25;
constexpr unsigned maximumSeries = 60;
constexpr unsigned maximumPoints = 50;

const std::array texts = {
    u"North"s,
    u""s,
    u" "s,
    u"a & b <c> \"d\" 'e' ]]> <!--"s,
    u"control \x01\x1F\x7F"s,
    u"nothing\0behind"s,
    u"_x0041_ and _x005F_"s,
    u"line\r\nbreak\ttab"s,
    u"\u00E9\u6F22\u5B57 \U0001F389"s,
    u"half \xD83C of a pair"s,
    u"\xDC00\uFFFE\uFFFF"s,
    u"\u202Eright to left"s,
    u"=1+1"s,
    u"http://example.com/"s,
    std::u16string(300, u'w'),
};

/// Of `texts`, those that fields without a notation for other characters take.
const std::array plainTexts = {""s, "Title"s, "a & b <c> \"d\" 'e' ]]>"s, "line\r\nbreak\ttab"s,
                               "\u00E9\u6F22\u5B57 \U0001F389"s};

const std::array colors = {
    u"red"s,  u"CornflowerBlue"s, u"#00ff00"s, u"#ABCDEF"s,      u"rgb(0,128,255)"s, u"nonsense"s, u""s,
    u"#"s,    u"#12345"s,         u"#12345G"s, u"rgb(300,0,0)"s, u"00FF00"s,         u"\"<&>"s,    u"\xD800"s,
    u"#\x01"s};

const std::array values = {
    std::numeric_limits<double>::quiet_NaN(), 0.0, -0.0, 1.0 / 3.0, -1234.5, 1e21, 9.99999999999999e307,
    std::numeric_limits<double>::min()};

constexpr std::array lengths = {"0.1in", "22in", "15cm", "80mm", "300pt", "6in"};

/// Makes charts; every draw takes one number of the engine, whose sequence the standard fixes.
class ChartMaker {
 public:
    unsigned pick(unsigned count) { return static_cast<unsigned>(engine_() % count); }

    template <typename Choices>
    const auto& pickOf(const Choices& choices)
    {
        return choices[pick(static_cast<unsigned>(choices.size()))];
    }

    /// From 0 to `maximum`; mostly small numbers, which are validated faster.
    unsigned pickCount(unsigned maximum) { return pick(pick(6) == 0 ? maximum + 1 : 6); }

    std::shared_ptr<chart::Chart> makeChart();
    report::ChartOptions makeOptions();

 private:
    template <typename Format>
    std::shared_ptr<Format> makeFormat();
    std::shared_ptr<chart::DataSeries> makeSeries(unsigned pointCount);
    std::shared_ptr<chart::DataSet> makeDataSet();

    std::mt19937 engine_{20'240'501};
};

template <typename Format>
std::shared_ptr<Format> ChartMaker::makeFormat()
{
    if (pick(3) == 0) return nullptr;
    auto format = Format::create(pickOf(colors), pickOf(colors));
    if (pick(8) == 0) format->getFill()->getColor()->setFromTriplet(0.1, 0.5, 1);
    if (pick(8) == 0) format->setFill(nullptr);
    if (pick(8) == 0) format->setBorder(nullptr);
    return format;
}

std::shared_ptr<chart::DataSeries> ChartMaker::makeSeries(unsigned pointCount)
{
    auto series = chart::DataSeries::create(pickOf(texts));
    series->setFormat(makeFormat<chart::DataSeriesShapeFormat>());
    for (unsigned i = 0; i < pointCount; ++i) {
        const auto point = series->appendPoint(pick(3) == 0 ? pickOf(values) : pick(1000) / 7.0);
        if (pick(5) == 0) point->setFormat(makeFormat<chart::DataPointShapeFormat>());
    }
    return series;
}

std::shared_ptr<chart::DataSet> ChartMaker::makeDataSet()
{
    const auto pointCount = pickCount(maximumPoints);
    std::vector<std::u16string> categories;
    for (unsigned i = 0; i < pointCount; ++i) categories.push_back(pickOf(texts));
    auto dataSet = chart::DataSet::create(categories);
    const auto seriesCount = pickCount(maximumSeries);
    for (unsigned i = 0; i < seriesCount; ++i) dataSet->appendSeries(makeSeries(pointCount));
    if (seriesCount > 0 && pick(4) == 0) dataSet->getSeries(pick(seriesCount))->appendPoint(1.5);
    return dataSet;
}

std::shared_ptr<chart::Chart> ChartMaker::makeChart()
{
    const std::array<std::shared_ptr<chart::Chart>, 4> types = {
        chart::BarChart::create(), chart::ColumnChart::create(), chart::LineChart::create(),
        chart::PieChart::create()};
    auto chart = pickOf(types);
    chart->setDataSet(makeDataSet());
    if (pick(3) > 0) chart->setTitle(chart::Title::create(u"T <&> \"\U0001F389\"\n\t"s));
    return chart;
}

report::ChartOptions ChartMaker::makeOptions()
{
    report::ChartOptions options;
    options.width = pickOf(lengths);
    options.height = pickOf(lengths);
    options.legend = static_cast<report::Legend>(pick(6));
    options.altText = pickOf(plainTexts);
    options.workbook = pick(4) > 0;
    return options;
}

void writeDocuments(const std::string& folder)
{
    ChartMaker maker;
    for (std::size_t i = 1; i <= documentCount; ++i) {
        report::Document document;
        for (std::size_t k = 0; k < chartsInDocument; ++k) {
            document.addHeading(maker.pickOf(plainTexts), static_cast<int>(1 + maker.pick(9)));
            document.addParagraph(maker.pickOf(plainTexts));
            document.addChart(maker.makeChart(), maker.makeOptions());
        }
        document.save(folder + "/random-" + std::to_string(i) + ".docx");
    }
}

}  // namespace
}  // namespace quillon

int main(int argc, char** argv)
try {
    if (argc != 2) throw std::runtime_error("expected a folder");
    quillon::writeDocuments(argv[1]);
    return 0;
} catch (const std::exception& error) {
    std::fprintf(stderr, "random_charts: %s\n", error.what());
    return 1;
}
