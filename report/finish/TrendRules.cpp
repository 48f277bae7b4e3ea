#include <array>
#include <cmath>

#include "report/finish/NumberFormats.h"
#include "report/finish/Rules.h"
#include "report/finish/Scales.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/SeriesNames.h"
#include "report/finish/Shapes.h"
#include "report/finish/ShownChart.h"
#include "report/options/ChartError.h"
#include "report/options/Enumerations.h"
#include "report/options/NumberFormat.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

std::u16string toText(double number)
{
    return num2str(number);
}

std::size_t countPoints(const SeriesPart& series)
{
    std::size_t count = 0;
    for (const auto& point : series.series.getPoints())
        if (!std::isnan(point->getValue())) ++count;
    return count;
}

/// Curves that have no place for other numbers.
void requireNumbers(const ChartPart& part, const SeriesPart& series, Trendline trendline)
{
    const auto reason =
        std::string("trendline ") + findRow(trendlineRows, trendline).name + " is for numbers above 0.";
    if (trendline == Trendline::Exponential || trendline == Trendline::Power)
        requirePositiveNumbers(series, ScaleKind::Value, reason);
    const bool hasX = pointKinds.contains(part.context.kind);
    if (hasX && (trendline == Trendline::Logarithmic || trendline == Trendline::Power))
        requirePositiveNumbers(series, ScaleKind::X, reason);
}

/// A line through two points, a curve of degree 3 through four.
std::size_t countNeededPoints(const ChartOptions& options)
{
    if (options.trendline == Trendline::Polynomial) return options.order.value_or(2) + 1;
    return options.trendline == Trendline::MovingAverage ? options.period.value_or(2) : 2;
}

void drawTrendline(ChartPart& part, const SeriesPart& series, DOMElement* element)
{
    auto* line = appendElement(appendElement(element, u"c:spPr"), u"a:ln");
    line->setAttribute(u"w", u"19050");
    line->setAttribute(u"cap", u"rnd");
    line->appendChild(makeFill(part.doc, findPaint(part, series)));
    appendElement(line, u"a:prstDash", u"sysDot");
}

void setCourse(DOMElement* element, const ChartOptions& options)
{
    const auto trendline = *options.trendline;
    const auto append = [element](const char16_t* name, unsigned long count) {
        appendElement(element, name, num2str(count).c_str());
    };
    appendElement(element, u"c:trendlineType", findRow(trendlineRows, trendline).token);
    if (trendline == Trendline::Polynomial) append(u"c:order", options.order.value_or(2));
    if (trendline == Trendline::MovingAverage) append(u"c:period", options.period.value_or(2));
    if (options.forecast) appendElement(element, u"c:forward", toText(*options.forecast).c_str());
    if (options.backcast) appendElement(element, u"c:backward", toText(*options.backcast).c_str());
    appendElement(element, u"c:dispRSqr", options.rSquared ? u"1" : u"0");
    appendElement(element, u"c:dispEq", options.equation ? u"1" : u"0");
}

/// Along the category axis points stand at 1, 2, 3, or at their dates.
NumberRange findXRange(const ChartPart& part, const SeriesPart& series)
{
    NumberRange range;
    if (hasDateAxis(part.context)) {
        for (const double date : part.context.data.categoryValues) range.add(date);
        return range;
    }
    const bool hasX = pointKinds.contains(part.context.kind);
    double place = 0;
    for (const auto& point : series.series.getPoints()) range.add(hasX ? point->getX() : ++place);
    return range;
}

/// About the smallest number of the equation: how steep the curve is, or how fast that grows.
double estimateFactor(const ChartPart& part, const SeriesPart& series)
{
    const auto& options = part.context.options;
    const auto x = findXRange(part, series);
    NumberRange y;
    for (const auto& point : series.series.getPoints()) y.add(point->getValue());
    switch (*options.trendline) {
        case Trendline::Exponential:
            return std::log(y.high / y.low) / (x.high - x.low);
        case Trendline::Logarithmic:
            return (y.high - y.low) / std::log(x.high / x.low);
        case Trendline::Power:
            return std::log(y.high / y.low) / std::log(x.high / x.low);
        case Trendline::Polynomial:
            return (y.high - y.low) / std::pow(x.high - x.low, options.order.value_or(2));
        default:
            return (y.high - y.low) / (x.high - x.low);
    }
}

/// Three digits of the smallest number; R-squared is told apart by two decimals.
std::string chooseEquationFormat(const ChartPart& part, const SeriesPart& series)
{
    const auto& options = part.context.options;
    constexpr double mostDecimals = 6;
    const double factor = options.equation ? estimateFactor(part, series) : 1;
    const double digits = factor > 0 && std::isfinite(factor) ? 2 - std::floor(std::log10(factor)) : 2;
    if (digits > mostDecimals) return "0.00E+00";
    return makeNumberFormat(static_cast<int>(std::fmax(digits, options.rSquared ? 2 : 0)));
}

/// Some readers show fifteen digits of a label that says no format.
void formatEquation(const ChartPart& part, const SeriesPart& series, DOMElement* element)
{
    if (!part.context.options.equation && !part.context.options.rSquared) return;
    auto* label = appendElement(element, u"c:trendlineLbl");
    auto* format = appendElement(label, u"c:numFmt");
    format->setAttribute(u"formatCode", toUtf16(chooseEquationFormat(part, series)).c_str());
    format->setAttribute(u"sourceLinked", u"0");
}

void addTrendline(ChartPart& part, const SeriesPart& series)
{
    const auto& options = part.context.options;
    requireNumbers(part, series, *options.trendline);
    const auto needed = countNeededPoints(options);
    const auto count = countPoints(series);
    if (count < needed)
        return part.warn(Place{&series}, "the trendline needs " + std::to_string(needed) +
                                             " points, and there are " + std::to_string(count) +
                                             ". It is left out.");
    auto* element = insertInOrder(series.element, u"c:trendline");
    drawTrendline(part, series, element);
    setCourse(element, options);
    formatEquation(part, series, element);
}

/// Of a combination, areas have no trendline.
bool takesTrendline(const SeriesPart& series)
{
    return getGroupName(series) != u"c:areaChart";
}

void addTrendlines(ChartPart& part)
{
    const auto& options = part.context.options;
    if (!options.trendline) return;
    std::vector<bool> isNamed(part.series.size(), options.trendlineSeries.empty());
    for (const auto index :
         findSeries(*part.context.chart.getDataSet(), options.trendlineSeries, "trendline-series")) {
        isNamed[index] = true;
        if (!takesTrendline(part.series[index]))
            throw ChartError(ChartPart::describe(part.series[index]),
                             "it is drawn as an area, and trendlines are for columns, lines and points.");
    }
    for (const auto& series : part.series)
        if (isNamed[series.index] && takesTrendline(series)) addTrendline(part, series);
}

constexpr std::array rules = {Rule{axisKinds, addTrendlines}};

}  // namespace

const std::span<const Rule> trendRules = rules;

}  // namespace quillon::report
