#include "fuzz/RandomChart.h"

#include <array>
#include <cmath>

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
#include "fuzz/Check.h"
#include "report/options/Options.h"
#include "support/Text.h"

namespace quillon::fuzz {
namespace {

using namespace std::string_literals;

std::u16string takeColor(Input& input)
{
    static const std::array colors = {u"red"s,      u"#00ff00"s, u"rgb(1,2,3)"s, u"#"s,     u""s,
                                      u"nonsense"s, u"#GGGGGG"s, u"00FF00"s,     u"#\x01"s, u"rgb(1,2,300)"s};
    return input.takeChance(4) ? input.takeText() : input.pick(colors);
}

void setFormat(Input& input, chart::Format& format)
{
    format.setColor(takeColor(input));
    format.setTransparency(static_cast<std::uint32_t>(input.takeNumber(0, 101)));
    if (format.getColor() && input.takeChance(8))
        format.getColor()->setFromTriplet(input.takeDouble(), input.takeDouble(), input.takeDouble());
}

std::shared_ptr<chart::FillFormat> makeFill(Input& input)
{
    const std::array<std::shared_ptr<chart::FillFormat>, 5> kinds = {
        nullptr, chart::SolidFillFormat::create(), chart::GradientFillFormat::create(),
        chart::PatternFillFormat::create(), chart::PictureFillFormat::create()};
    const auto& fill = input.pick(kinds);
    if (fill) setFormat(input, *fill);
    return fill;
}

std::shared_ptr<chart::BorderFormat> makeBorder(Input& input)
{
    const auto solid = chart::SolidBorderFormat::create();
    solid->setCapType(static_cast<chart::SolidBorderCapType>(input.takeIndex(3)));
    solid->setCompoundType(static_cast<chart::SolidBorderCompoundType>(input.takeIndex(5)));
    solid->setDashType(static_cast<chart::SolidBorderDashType>(input.takeIndex(8)));
    solid->setJoinType(static_cast<chart::SolidBorderJoinType>(input.takeIndex(3)));
    const std::array<std::shared_ptr<chart::BorderFormat>, 4> kinds = {
        nullptr, solid, chart::GradientBorderFormat::create(), chart::BorderFormat::create()};
    const auto& border = input.pick(kinds);
    if (border) setFormat(input, *border);
    if (border) border->setWidth(input.takeDouble());
    return border;
}

template <typename Format>
std::shared_ptr<Format> makeShapeFormat(Input& input)
{
    if (!input.takeChance(3)) return nullptr;
    auto format = Format::create(takeColor(input), takeColor(input));
    if (input.takeChance(3)) format->setFill(makeFill(input));
    if (input.takeChance(3)) format->setBorder(makeBorder(input));
    return format;
}

std::shared_ptr<chart::DataLabelFormat> makeLabelFormat(Input& input)
{
    if (!input.takeChance(4)) return nullptr;
    auto format = chart::DataLabelFormat::create();
    const auto content = format->getOptions()->getContentOptions();
    content->setContainsValue(input.takeChance(2));
    content->setContainsCategoryName(input.takeChance(2));
    content->setContainsSeriesName(input.takeChance(2));
    content->setContainsLegendKey(input.takeChance(2));
    content->setShowLeaderLines(input.takeChance(2));
    content->setSeparator(static_cast<chart::DataLabelContentSeparator>(input.takeIndex(5)));
    if (input.takeChance(3)) format->getShapeFormat()->setFill(makeFill(input));
    if (input.takeChance(3)) format->getShapeFormat()->setBorder(makeBorder(input));
    return format;
}

std::shared_ptr<chart::DataPoint> makePoint(Input& input)
{
    auto point = chart::DataPoint::create(input.takeDouble());
    point->setFormat(makeShapeFormat<chart::DataPointShapeFormat>(input));
    point->setLabelFormat(makeLabelFormat(input));
    return point;
}

std::shared_ptr<chart::DataSeriesFormatOptions> makePieOptions(Input& input)
{
    const auto explosion = static_cast<std::uint32_t>(input.takeNumber(0, 100));
    const auto angle = static_cast<std::uint32_t>(input.takeNumber(0, 360));
    return chart::PieChartDataSeriesFormatOptions::create(explosion, angle);
}

std::shared_ptr<chart::DataSeries> makeSeries(Input& input, std::size_t pointCount)
{
    auto series = chart::DataSeries::create(input.takeText());
    series->setFormat(makeShapeFormat<chart::DataSeriesShapeFormat>(input));
    series->setLabelFormat(makeLabelFormat(input));
    if (input.takeChance(8)) series->setFormatOptions(makePieOptions(input));
    for (std::size_t i = 0; i < pointCount; ++i)
        series->appendPoint(i > 0 && input.takeChance(8) ? series->getPoint(0) : makePoint(input));
    return series;
}

std::shared_ptr<chart::Title> makeTitle(Input& input)
{
    switch (input.takeIndex(6)) {
        case 0:
            return nullptr;
        case 1:
            return chart::Title::create(std::shared_ptr<chart::Paragraph>());
        case 2:
            return chart::Title::create(std::shared_ptr<chart::Text>());
        default:
            break;
    }
    auto title = chart::Title::create(input.takeText());
    title->getText()->setColor(input.takeChance(3) ? nullptr : chart::Color::create(takeColor(input)));
    for (auto i = input.takeIndex(3); i > 0; --i)
        title->getText()
            ->appendText(chart::Text::create(input.takeText()))
            ->setColor(chart::Color::create(takeColor(input)));
    return title;
}

std::shared_ptr<chart::PlotArea> makePlotArea(Input& input)
{
    static const std::array lengths = {u""s, u"0in"s, u"0.5pt"s, u"1mm"s, u"-1in"s, u"1e99in"s};
    const auto takeLength = [&] { return input.takeChance(8) ? input.takeText() : input.pick(lengths); };
    auto area = chart::PlotArea::create(takeLength(), takeLength(), takeLength(), takeLength());
    area->getFormat()->setFill(makeFill(input));
    area->getFormat()->setBorder(makeBorder(input));
    return area;
}

std::string takeOptionText(Input& input)
{
    static const std::array texts = {
        "15cm"s, "0.1in"s, "#,##0.00"s, "0%"s, "yyyy-mm-dd"s, "[Red]-0;0;\"none\""s, "red"s, "Arial"s};
    return input.takeChance(2) ? input.takeUtf8() : input.pick(texts);
}

double takeOptionNumber(Input& input, const report::Option& option)
{
    if (input.takeChance(3)) return input.takeDouble();
    const double low = std::isfinite(option.minimum) ? option.minimum : -2000;
    const double high = std::isfinite(option.maximum) ? option.maximum : low + 5000;
    return std::floor(low + (high - low) * static_cast<double>(input.takeByte()) / 255);
}

/// The names that options call series and categories by.
std::vector<std::string> getNames(const chart::Chart& chart)
{
    std::vector<std::string> names = {""};
    const auto dataSet = chart.getDataSet();
    if (!dataSet) return names;
    const auto add = [&](const std::u16string& name) { isAccepted([&] { names.push_back(toUtf8(name)); }); };
    for (std::size_t i = 0; i < dataSet->getSeriesCount(); ++i) add(dataSet->getSeries(i)->getName());
    for (const auto& category : dataSet->getCategories()) add(category);
    return names;
}

template <typename TakeItem>
auto takeList(Input& input, const TakeItem& takeItem)
{
    std::vector<decltype(takeItem())> items;
    for (auto left = input.takeNumber(1, 3); left > 0; --left) items.push_back(takeItem());
    return items;
}

/// Makes values of options for a chart.
class OptionValues {
 public:
    OptionValues(Input& input, const chart::Chart& chart) : input_(input), names_(getNames(chart)) {}

    report::OptionValue take(const report::Option& option)
    {
        using report::OptionForm;
        switch (option.form) {
            case OptionForm::Flag:
                return !input_.takeChance(4);
            case OptionForm::Number:
            case OptionForm::Integer:
                return takeOptionNumber(input_, option);
            case OptionForm::Text:
                return takeOptionText(input_);
            case OptionForm::Choice:
                return takeChoice(option);
            case OptionForm::Choices:
                return takeList(input_, [&] { return takeChoice(option); });
            case OptionForm::Texts:
                return takeList(input_, [&] { return takeListed(); });
            case OptionForm::TextPairs:
                break;
        }
        return takeList(input_, [&] { return std::pair(takeListed(), takeOptionText(input_)); });
    }

 private:
    std::string takeChoice(const report::Option& option)
    {
        return input_.takeChance(32) ? input_.takeUtf8() : std::string(input_.pick(option.choices));
    }

    /// A colour or a name, as lists of options hold them.
    std::string takeListed() { return input_.takeChance(4) ? takeOptionText(input_) : input_.pick(names_); }

    Input& input_;
    std::vector<std::string> names_;
};

std::vector<double> takeDoubles(Input& input, std::size_t count)
{
    std::vector<double> numbers(count);
    for (auto& number : numbers) number = input.takeDouble();
    return numbers;
}

}  // namespace

std::shared_ptr<chart::DataSet> makeDataSet(Input& input)
{
    std::vector<std::u16string> categories(input.takeIndex(8));
    for (auto& category : categories) category = input.takeText();
    auto dataSet = chart::DataSet::create(categories);
    const auto pointCount = input.takeChance(16) ? input.takeIndex(8) : categories.size();
    std::shared_ptr<chart::DataSeries> series;
    // The 27th column of a worksheet is AA.
    for (auto left = input.takeChance(128) ? 30 : input.takeIndex(4); left > 0; --left) {
        if (!series || !input.takeChance(8)) series = makeSeries(input, pointCount);
        dataSet->appendSeries(series);
    }
    if (series && input.takeChance(16)) series->appendPoint(input.takeDouble());
    return dataSet;
}

std::shared_ptr<chart::Chart> makeChart(Input& input)
{
    const std::array<std::shared_ptr<chart::Chart>, 4> kinds = {
        chart::BarChart::create(), chart::ColumnChart::create(), chart::LineChart::create(),
        chart::PieChart::create()};
    auto chart = input.pick(kinds);
    if (!input.takeChance(32)) chart->setDataSet(makeDataSet(input));
    chart->setTitle(makeTitle(input));
    if (input.takeChance(4)) chart->setPlotArea(makePlotArea(input));
    return chart;
}

report::ChartOptions makeOptions(Input& input, const chart::Chart& chart)
{
    report::ChartOptions options;
    OptionValues values(input, chart);
    const auto set = [&](const report::Option& option) {
        isAccepted([&] { report::setOption(options, option, values.take(option), option.name); });
    };
    if (input.takeChance(2)) set(*report::findOption("type"));
    std::vector<report::Option> suitable;
    for (const auto& option : report::getOptions())
        if (option.kinds.contains(report::getKind(chart, options))) suitable.push_back(option);
    for (auto count = input.takeIndex(6); count > 0; --count)
        set(input.takeChance(16) ? input.pick(report::getOptions()) : input.pick(suitable));
    if (input.takeChance(16)) options.formatOptions = makePieOptions(input);
    return options;
}

report::ChartData makeData(Input& input, std::shared_ptr<chart::DataSet> dataSet)
{
    report::ChartData data(std::move(dataSet));
    if (!data.dataSet || !input.takeChance(3)) return data;
    const auto count = data.dataSet->getCategories().size() + (input.takeChance(16) ? 1 : 0);
    data.categoryKind = static_cast<report::CategoryKind>(input.takeIndex(4));
    if (input.takeChance(2)) data.categoryValues = takeDoubles(input, count);
    if (input.takeChance(2)) data.categoryFormat = takeOptionText(input);
    for (auto i = input.takeIndex(3); i > 0; --i) {
        auto& level = data.levels.emplace_back(count);
        for (auto& text : level) text = input.takeChance(2) ? u"" : input.takeText();
    }
    for (auto i = input.takeIndex(3); i > 0; --i)
        data.series.push_back({takeOptionText(input), takeDoubles(input, input.takeChance(2) ? count : 0),
                               takeDoubles(input, input.takeChance(2) ? count : 0),
                               takeDoubles(input, input.takeChance(2) ? count : 0)});
    const auto& categories = data.dataSet->getCategories();
    if (!categories.empty() && input.takeChance(4)) data.totals = {input.pick(categories)};
    return data;
}

}  // namespace quillon::fuzz
