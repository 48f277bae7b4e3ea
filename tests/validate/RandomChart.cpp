#include "tests/validate/RandomChart.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>
#include <string>

#include "chart/model/BarChart.h"
#include "chart/model/ColumnChart.h"
#include "chart/model/GradientBorderFormat.h"
#include "chart/model/GradientFillFormat.h"
#include "chart/model/LineChart.h"
#include "chart/model/PatternFillFormat.h"
#include "chart/model/PictureFillFormat.h"
#include "chart/model/PieChart.h"
#include "chart/model/PieChartDataSeriesFormatOptions.h"
#include "chart/model/SolidBorderFormat.h"
#include "chart/model/SolidFillFormat.h"
#include "report/document/ChartParts.h"
#include "report/options/Enumerations.h"
#include "report/options/Options.h"
#include "support/Text.h"

namespace quillon {

unsigned pick(unsigned count)
{
    static std::seed_seq seed{20'240'501};
    static std::mt19937 engine(seed);
    return static_cast<unsigned>(engine() % count);
}

namespace {

using namespace std::string_literals;

constexpr unsigned maximumSeries = 40;
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

const std::array formats = {"0.00"s, "#,##0 \"<&> kg\""s, "0%"s, "[Red]-0;0;\"none\""s, "General"s};

const std::array lengths = {"0.1in"s, "22in"s, "15cm"s, "80mm"s, "300pt"s, "6in"s};

template <typename Choices>
const auto& pickOf(const Choices& choices)
{
    return choices[pick(static_cast<unsigned>(choices.size()))];
}

/// From 0 to `maximum`; mostly small numbers, which are validated faster.
unsigned pickCount(unsigned maximum)
{
    return pick(pick(12) == 0 ? maximum + 1 : 6);
}

const std::array transparencies = {0U, 1U, 50U, 100U, 101U};
const std::array widths = {0.5,    0.0,    0.25, 3.0,
                           1584.0, 1584.5, -1.0, std::numeric_limits<double>::infinity()};

void setFormat(chart::Format& format)
{
    format.setColor(pickOf(colors));
    format.setTransparency(pickOf(transparencies));
}

std::shared_ptr<chart::FillFormat> makeFill()
{
    const std::array<std::shared_ptr<chart::FillFormat>, 5> kinds = {
        nullptr, chart::SolidFillFormat::create(), chart::GradientFillFormat::create(),
        chart::PatternFillFormat::create(), chart::PictureFillFormat::create()};
    const auto& fill = pickOf(kinds);
    if (fill && pick(3) > 0) setFormat(*fill);
    return fill;
}

std::shared_ptr<chart::BorderFormat> makeBorder()
{
    const auto solid = chart::SolidBorderFormat::create();
    solid->setCapType(static_cast<chart::SolidBorderCapType>(pick(3)));
    solid->setCompoundType(static_cast<chart::SolidBorderCompoundType>(pick(5)));
    solid->setDashType(static_cast<chart::SolidBorderDashType>(pick(8)));
    solid->setJoinType(static_cast<chart::SolidBorderJoinType>(pick(3)));
    const std::array<std::shared_ptr<chart::BorderFormat>, 5> kinds = {
        nullptr, solid, solid, chart::GradientBorderFormat::create(), chart::BorderFormat::create()};
    const auto& border = pickOf(kinds);
    if (border && pick(3) > 0) setFormat(*border);
    if (border) border->setWidth(pickOf(widths));
    return border;
}

template <typename Format>
std::shared_ptr<Format> makeFormat()
{
    if (pick(3) == 0) return nullptr;
    auto format = Format::create(pickOf(colors), pickOf(colors));
    if (pick(8) == 0) format->getFill()->getColor()->setFromTriplet(0.1, 0.5, 1);
    if (pick(4) == 0) format->setFill(makeFill());
    if (pick(4) == 0) format->setBorder(makeBorder());
    return format;
}

std::shared_ptr<chart::DataLabelFormat> makeLabelFormat()
{
    auto format = chart::DataLabelFormat::create();
    const auto content = format->getOptions()->getContentOptions();
    content->setContainsValue(pick(2) == 0);
    content->setContainsCategoryName(pick(2) == 0);
    content->setContainsSeriesName(pick(3) == 0);
    content->setContainsLegendKey(pick(4) == 0);
    content->setShowLeaderLines(pick(3) == 0);
    content->setSeparator(static_cast<chart::DataLabelContentSeparator>(pick(5)));
    if (pick(3) == 0) format->getShapeFormat()->setFill(makeFill());
    if (pick(3) == 0) format->getShapeFormat()->setBorder(makeBorder());
    return format;
}

std::shared_ptr<chart::PlotArea> makePlotArea()
{
    const auto pickLength = [](const auto& length) { return pick(3) == 0 ? u""s : length; };
    auto area = chart::PlotArea::create(pickLength(u"0in"s), pickLength(u"0.5pt"s), pickLength(u"0.05in"s),
                                        pickLength(u"1mm"s));
    if (pick(2) == 0) area->getFormat()->setFill(makeFill());
    if (pick(2) == 0) area->getFormat()->setBorder(makeBorder());
    return area;
}

std::shared_ptr<chart::Title> makeTitle()
{
    auto title = chart::Title::create(u"T <&> \"\U0001F389\"\n\t"s);
    if (pick(2) == 0) title->getText()->setColor(chart::Color::create(pickOf(colors)));
    for (unsigned i = pick(3); i > 0; --i) {
        const auto run = title->getText()->appendText(chart::Text::create(u" run & more "s));
        run->setColor(pick(2) == 0 ? nullptr : chart::Color::create(pickOf(colors)));
    }
    return title;
}

/// What a random chart needs of its data.
struct DataNeeds {
    unsigned seriesCount;
    /// Whether points have places of their own.
    bool hasX;
};

DataNeeds pickNeeds(report::ChartKind kind)
{
    using enum report::ChartKind;
    if (kind == Stock) return {3 + pick(2), false};
    if (kind == Waterfall) return {1, false};
    return {pickCount(maximumSeries), kind == Scatter || kind == Bubble};
}

std::shared_ptr<chart::DataSeries> makeSeries(unsigned pointCount, bool hasX)
{
    auto series = chart::DataSeries::create(pickOf(texts));
    series->setFormat(makeFormat<chart::DataSeriesShapeFormat>());
    if (pick(4) == 0) series->setLabelFormat(makeLabelFormat());
    if (pick(8) == 0)
        series->setFormatOptions(chart::PieChartDataSeriesFormatOptions::create(pick(101), pick(361)));
    const bool isPositive = pick(3) == 0;
    for (unsigned i = 0; i < pointCount; ++i) {
        const double value = pick(3) == 0 && !isPositive ? pickOf(values) : 1 + pick(1000) / 7.0;
        const auto point = series->appendPoint(value);
        if (hasX) point->setX(1 + pick(100) / 3.0);
        if (pick(5) == 0) point->setFormat(makeFormat<chart::DataPointShapeFormat>());
        if (pick(8) == 0) point->setLabelFormat(makeLabelFormat());
    }
    return series;
}

std::shared_ptr<chart::DataSet> makeDataSet(const DataNeeds& needs)
{
    const auto pointCount = pickCount(maximumPoints);
    std::vector<std::u16string> categories(pointCount);
    for (auto& category : categories) category = pickOf(texts);
    auto dataSet = chart::DataSet::create(categories);
    for (unsigned i = 0; i < needs.seriesCount; ++i)
        dataSet->appendSeries(makeSeries(pointCount, needs.hasX));
    if (needs.seriesCount > 0 && pick(4) == 0)
        dataSet->getSeries(pick(needs.seriesCount))->appendPoint(1.5, 1.5);
    return dataSet;
}

std::vector<double> makeAmounts(std::size_t count)
{
    std::vector<double> amounts(count);
    for (auto& amount : amounts)
        amount = pick(9) == 0 ? std::numeric_limits<double>::quiet_NaN() : pick(50) / 3.0;
    return amounts;
}

/// Dates, months, years or numbers, which may descend, and may repeat.
std::vector<double> makeCategoryValues(std::size_t count)
{
    std::vector<double> made(count);
    double value = pick(5) == 0 ? 1.0 : 36'526.0 + pick(9000);
    const std::array steps = {1.0, 7.0, 31.0, 366.0, 0.5, -1.0};
    const double step = pickOf(steps);
    for (auto& one : made) {
        one = value;
        if (pick(9) > 0) value += step;
    }
    return made;
}

report::ChartData makeData(const std::shared_ptr<chart::DataSet>& dataSet, report::ChartKind kind)
{
    report::ChartData data(dataSet);
    const auto count = dataSet->getCategories().size();
    if (pick(4) == 0) {
        data.categoryKind = static_cast<report::CategoryKind>(pick(4));
        data.categoryValues = makeCategoryValues(count);
    } else if (pick(5) == 0) {
        data.levels.assign(1 + pick(2), std::vector<std::u16string>(count));
        for (auto& level : data.levels)
            for (auto& text : level) text = pickOf(texts);
    }
    data.series.resize(dataSet->getSeriesCount());
    for (std::size_t i = 0; i < data.series.size(); ++i) {
        const auto size = dataSet->getSeries(i)->getSize();
        if (kind == report::ChartKind::Bubble) data.series[i].sizes = makeAmounts(size);
        if (pick(6) == 0) data.series[i].errorsPlus = makeAmounts(size);
        if (pick(6) == 0) data.series[i].errorsMinus = makeAmounts(size);
    }
    if (kind == report::ChartKind::Waterfall && count > 0) data.totals = {dataSet->getCategories().back()};
    return data;
}

std::shared_ptr<chart::Chart> makeChart(const std::shared_ptr<chart::DataSet>& dataSet)
{
    const std::array<std::shared_ptr<chart::Chart>, 4> types = {
        chart::BarChart::create(), chart::ColumnChart::create(), chart::LineChart::create(),
        chart::PieChart::create()};
    auto chart = pickOf(types);
    chart->setDataSet(dataSet);
    if (pick(3) > 0) chart->setTitle(makeTitle());
    if (pick(3) == 0) chart->setPlotArea(makePlotArea());
    return chart;
}

std::string makeText(const std::string& option)
{
    if (option == "width" || option == "height") return pickOf(lengths);
    return option.ends_with("-format") ? pickOf(formats) : pickOf(plainTexts);
}

double makeNumber(const report::Option& option)
{
    const double low = std::isfinite(option.minimum) ? option.minimum : -2000;
    const double high = std::isfinite(option.maximum) ? option.maximum : low + 5000;
    const double number = low + (high - low) * pick(101) / 100;
    return option.form == report::OptionForm::Integer ? std::floor(number) : number;
}

/// Colours, or names of series or categories that text in UTF-8 can name.
std::vector<std::string> makeTexts(const std::string& option, const chart::DataSet& data)
{
    if (option == "colors" || option == "palette") return {"teal"};
    if (option == "totals") return {"North"};
    const auto count = static_cast<unsigned>(data.getSeriesCount());
    if (count == 0) return {};
    return {pick(3) == 0 ? "North" : toUtf8(data.getSeries(pick(count))->getName())};
}

/// A value that the option takes, if not together with every other.
report::OptionValue makeValue(const report::Option& option, const chart::DataSet& data)
{
    using report::OptionForm;
    switch (option.form) {
        case OptionForm::Flag:
            return true;
        case OptionForm::Number:
        case OptionForm::Integer:
            return makeNumber(option);
        case OptionForm::Text:
            return makeText(option.name);
        case OptionForm::Choice:
            return std::string(pickOf(option.choices));
        case OptionForm::Choices:
            return std::vector<std::string>{pickOf(option.choices), pickOf(option.choices)};
        case OptionForm::Texts:
            return makeTexts(option.name, data);
        case OptionForm::TextPairs:
            break;
    }
    std::vector<std::pair<std::string, std::string>> pairs;
    for (const auto& name : makeTexts(option.name, data)) pairs.emplace_back(name, "teal");
    return pairs;
}

bool canWrite(const chart::Chart& chart, const report::ChartOptions& options, const report::ChartData& data)
{
    try {
        report::checkOptions(options, report::getKind(chart, options));
        report::makeChartParts(chart, options, 1, "rId1", {}, data);
        return true;
    } catch (const std::runtime_error&) {
        return false;
    }
}

/// Sets some of all options that the kind of chart takes; what does not go together with the others, or with
/// the data, is dropped.
void addOptions(RandomChart& random)
{
    for (const auto& option : report::getOptions()) {
        if (pick(4) > 0 || !option.kinds.contains(random.kind) || std::string(option.name) == "type")
            continue;
        auto tried = random.options;
        try {
            report::setOption(tried, option, makeValue(option, *random.data.dataSet), option.name);
        } catch (const std::runtime_error&) {
            continue;
        }
        if (!canWrite(*random.chart, tried, random.data)) continue;
        random.options = tried;
        random.optionNames.insert(option.name);
    }
}

}  // namespace

std::string pickPlainText()
{
    return pickOf(plainTexts);
}

RandomChart makeRandomChart(std::optional<report::ChartKind> wanted)
{
    while (true) {
        const auto kind = wanted ? *wanted : pickOf(report::kindRows).value;
        const auto chart = makeChart(makeDataSet(pickNeeds(kind)));
        const auto data = makeData(chart->getDataSet(), kind);
        // X values of points, say, cannot come from categories that are texts.
        RandomChart random{kind, chart, data, {.kind = kind}, {"type"}};
        if (!canWrite(*chart, random.options, data)) continue;
        addOptions(random);
        return random;
    }
}

}  // namespace quillon
