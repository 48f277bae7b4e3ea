#include <array>
#include <limits>
#include <random>
#include <string>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/LineChart.h"
#include "chart/model/PieChart.h"
#include "report/document/Document.h"

// Writes documents with random charts, the same in every run, for the validators: random_charts FOLDER.

namespace quillon {
namespace {

using namespace std::string_literals;

constexpr unsigned documentCount = 8;
constexpr unsigned chartsInDocument = 25;
constexpr unsigned maximumSeries = 60;
constexpr unsigned maximumPoints = 50;

const std::array texts = {u"North"s,
                          u""s,
                          u" "s,
                          u"a & b <c> \"d\" 'e' ]]> <!-- _x0041_ and _x005F_"s,
                          u"control \x01\x1F\x7F line\r\nbreak\ttab"s,
                          u"nothing\0behind"s,
                          u"\u00E9\u6F22\u5B57 \U0001F389 \u202Eright to left"s,
                          u"half \xD83C of a pair \xDC00\uFFFE\uFFFF"s,
                          u"=1+1"s,
                          u"http://example.com/"s,
                          std::u16string(300, u'w')};

/// Of `texts`, those that fields without a notation for other characters take.
const std::array plainTexts = {""s, "Title"s, R"(a & b <c> "d" 'e' ]]>)"s, "line\r\nbreak\ttab"s,
                               "\u00E9\u6F22\u5B57 \U0001F389"s};

const std::array colors = {
    u"red"s,  u"CornflowerBlue"s, u"#00ff00"s, u"#ABCDEF"s,      u"rgb(0,128,255)"s, u"nonsense"s, u""s,
    u"#"s,    u"#12345"s,         u"#12345G"s, u"rgb(300,0,0)"s, u"00FF00"s,         u"\"<&>"s,    u"\xD800"s,
    u"#\x01"s};

const std::array values = {
    std::numeric_limits<double>::quiet_NaN(), 0.0, -0.0, 1.0 / 3.0, -1234.5, 1e21, 9.99999999999999e307,
    std::numeric_limits<double>::min()};

const std::array lengths = {"0.1in"s, "22in"s, "15cm"s, "80mm"s, "300pt"s, "6in"s};

/// From 0 to `count` - 1. Takes one number of the engine, whose sequence the standard fixes.
unsigned pick(unsigned count)
{
    static std::seed_seq seed{20'240'501};
    static std::mt19937 engine(seed);
    return static_cast<unsigned>(engine() % count);
}

template <typename Choices>
const auto& pickOf(const Choices& choices)
{
    return choices[pick(static_cast<unsigned>(choices.size()))];
}

/// From 0 to `maximum`; mostly small numbers, which are validated faster.
unsigned pickCount(unsigned maximum)
{
    return pick(pick(6) == 0 ? maximum + 1 : 6);
}

template <typename Format>
std::shared_ptr<Format> makeFormat()
{
    if (pick(3) == 0) return nullptr;
    auto format = Format::create(pickOf(colors), pickOf(colors));
    if (pick(8) == 0) format->getFill()->getColor()->setFromTriplet(0.1, 0.5, 1);
    if (pick(8) == 0) format->setFill(nullptr);
    if (pick(8) == 0) format->setBorder(nullptr);
    return format;
}

std::shared_ptr<chart::DataSeries> makeSeries(unsigned pointCount)
{
    auto series = chart::DataSeries::create(pickOf(texts));
    series->setFormat(makeFormat<chart::DataSeriesShapeFormat>());
    for (unsigned i = 0; i < pointCount; ++i) {
        const auto point = series->appendPoint(pick(3) == 0 ? pickOf(values) : pick(1000) / 7.0);
        if (pick(5) == 0) point->setFormat(makeFormat<chart::DataPointShapeFormat>());
    }
    return series;
}

std::shared_ptr<chart::DataSet> makeDataSet()
{
    const auto pointCount = pickCount(maximumPoints);
    std::vector<std::u16string> categories(pointCount);
    for (auto& category : categories) category = pickOf(texts);
    auto dataSet = chart::DataSet::create(categories);
    const auto seriesCount = pickCount(maximumSeries);
    for (unsigned i = 0; i < seriesCount; ++i) dataSet->appendSeries(makeSeries(pointCount));
    if (seriesCount > 0 && pick(4) == 0) dataSet->getSeries(pick(seriesCount))->appendPoint(1.5);
    return dataSet;
}

std::shared_ptr<chart::Chart> makeChart()
{
    const std::array<std::shared_ptr<chart::Chart>, 4> types = {
        chart::BarChart::create(), chart::ColumnChart::create(), chart::LineChart::create(),
        chart::PieChart::create()};
    auto chart = pickOf(types);
    chart->setDataSet(makeDataSet());
    if (pick(3) > 0) chart->setTitle(chart::Title::create(u"T <&> \"\U0001F389\"\n\t"s));
    return chart;
}

report::Document makeDocument()
{
    report::Document document;
    for (unsigned i = 0; i < chartsInDocument; ++i) {
        document.addHeading(pickOf(plainTexts), static_cast<int>(1 + pick(9)));
        document.addParagraph(pickOf(plainTexts));
        const auto chart = makeChart();
        // Braces take their numbers in order.
        document.addChart(chart, {pickOf(lengths), pickOf(lengths), static_cast<report::Legend>(pick(6)),
                                  pickOf(plainTexts), pick(4) > 0});
    }
    return document;
}

}  // namespace
}  // namespace quillon

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : ".";
    for (unsigned i = 1; i <= quillon::documentCount; ++i)
        quillon::makeDocument().save(folder + "/random-" + std::to_string(i) + ".docx");
}
