#include <array>
#include <cmath>

#include "report/finish/NumberCaches.h"
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
#include "report/workbook/CellNames.h"
#include "report/workbook/Workbook.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

std::u16string toText(double number)
{
    return num2str(number);
}

void drawGreyLine(DOMElement* parent)
{
    auto* color = drawThinLine(appendElement(appendElement(parent, u"c:spPr"), u"a:ln"));
    appendElement(color, u"a:lumMod", u"65000");
    appendElement(color, u"a:lumOff", u"35000");
}

// --- Trendlines ---

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

// --- Error bars ---

DOMElement* startErrorBars(const ChartPart& part, const SeriesPart& series, const char16_t* directions,
                           const char16_t* type)
{
    auto* bars = insertInOrder(series.element, u"c:errBars");
    if (pointKinds.contains(part.context.kind)) appendElement(bars, u"c:errDir", u"y");
    appendElement(bars, u"c:errBarType", directions);
    appendElement(bars, u"c:errValType", type);
    appendElement(bars, u"c:noEndCap", u"0");
    return bars;
}

void addComputedErrorBars(const ChartPart& part, const SeriesPart& series)
{
    constexpr double standardPercent = 5;
    const auto kind = *part.context.options.errorBars;
    auto* bars = startErrorBars(part, series, u"both", findRow(errorBarsRows, kind).token);
    const double standard = kind == ErrorAmount::Percent ? standardPercent : 1;
    if (kind != ErrorAmount::Error)
        appendElement(bars, u"c:val", toText(part.context.options.errorValue.value_or(standard)).c_str());
    drawGreyLine(bars);
}

/// The columns of error bars stand behind all others, those of each series together.
std::size_t findErrorColumn(const ChartPart& part, std::size_t wanted)
{
    const auto& data = part.context.data;
    std::size_t column = part.context.workbook.furtherColumns.size();
    for (std::size_t i = data.dataSet->getSeriesCount(); i-- > wanted;) {
        const auto& details = data.getDetails(i);
        for (const auto* amounts : {&details.errorsPlus, &details.errorsMinus})
            if (!amounts->empty()) --column;
    }
    return column;
}

void addOwnErrorBars(const ChartPart& part, const SeriesPart& series)
{
    const auto& details = part.context.data.getDetails(series.index);
    const bool hasPlus = !details.errorsPlus.empty();
    const bool hasMinus = !details.errorsMinus.empty();
    if (!hasPlus && !hasMinus) return;
    const auto* directions = !hasMinus ? u"plus" : !hasPlus ? u"minus" : u"both";
    auto* bars = startErrorBars(part, series, directions, u"cust");
    auto column = findErrorColumn(part, series.index);
    const auto append = [&](const char16_t* name, const std::vector<double>& amounts) {
        if (amounts.empty()) return;
        const auto cells = getFurtherColumn(part.context.data, column++, part.context.workbook);
        appendNumbers(appendElement(bars, name), getCellRange(cells, amounts.size()), u"General", amounts);
    };
    append(u"c:plus", details.errorsPlus);
    append(u"c:minus", details.errorsMinus);
    drawGreyLine(bars);
}

void addErrorBars(ChartPart& part)
{
    for (const auto& series : part.series)
        if (part.context.options.errorBars)
            addComputedErrorBars(part, series);
        else
            addOwnErrorBars(part, series);
}

// --- Lines between points ---

void addBars(DOMElement* upDownBars, const char16_t* name, const char16_t* color)
{
    auto* properties = appendElement(appendElement(upDownBars, name), u"c:spPr");
    appendElement(appendElement(properties, u"a:solidFill"), u"a:schemeClr", color);
    drawThinLine(appendElement(properties, u"a:ln"));
}

void addUpDownBars(DOMElement* group)
{
    auto* bars = insertInOrder(group, u"c:upDownBars");
    appendElement(bars, u"c:gapWidth", u"150");
    addBars(bars, u"c:upBars", u"bg1");
    addBars(bars, u"c:downBars", u"tx1");
}

void joinPoints(ChartPart& part)
{
    const auto& options = part.context.options;
    for (auto* group : part.groups) {
        const std::u16string_view name = group->getTagName();
        const bool isLine = name == u"c:lineChart";
        if (options.dropLines && (isLine || name == u"c:areaChart"))
            drawGreyLine(insertInOrder(group, u"c:dropLines"));
        if (options.highLowLines && isLine) drawGreyLine(insertInOrder(group, u"c:hiLowLines"));
        if (options.upDownBars && isLine) addUpDownBars(group);
    }
}

/// From low to high; with an open series, bars from open to close.
void joinPrices(ChartPart& part)
{
    constexpr std::size_t withOpen = 4;
    auto* group = part.groups.front();
    drawGreyLine(insertInOrder(group, u"c:hiLowLines"));
    if (part.series.size() == withOpen) addUpDownBars(group);
}

constexpr ChartKinds errorKinds{ChartKind::Bar,  ChartKind::Column,  ChartKind::Line,
                                ChartKind::Area, ChartKind::Scatter, ChartKind::Bubble};

constexpr std::array rules = {
    Rule{axisKinds, addTrendlines},
    Rule{errorKinds, addErrorBars},
    Rule{ChartKinds(ChartKind::Line, ChartKind::Area), joinPoints},
    Rule{ChartKinds(ChartKind::Stock), joinPrices},
};

}  // namespace

const std::span<const Rule> trendRules = rules;

}  // namespace quillon::report
