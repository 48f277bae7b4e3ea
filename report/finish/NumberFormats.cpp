#include "report/finish/NumberFormats.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "report/finish/CategoryValues.h"
#include "report/finish/Waterfall.h"
#include "report/options/NumberFormat.h"

namespace quillon::report {
namespace {

constexpr auto percentFormat = "0%";

/// Calls `visit` with each number on the axis, until it says that it has seen enough.
template <typename Visit>
void visitNumbers(const ChartPart& part, ScaleKind kind, const Visit& visit)
{
    for (const auto& series : part.series) {
        if (!standsOn(part, series, kind)) continue;
        for (const auto& point : series.series.getPoints())
            if (visit(getNumber(*point, kind))) return;
    }
}

/// The decimals of the values, counted in the units of the axis; at most maximumDecimals.
int countValueDecimals(const ChartPart& part, const Scale& scale)
{
    const double unit = getUnit(scale.units);
    int decimals = 0;
    visitNumbers(part, scale.kind, [&](double number) {
        decimals = std::max(decimals, countDecimals(number / unit));
        return decimals >= maximumDecimals;
    });
    return std::min(decimals, maximumDecimals);
}

NumberRange findPlainRange(const ChartPart& part, ScaleKind kind)
{
    NumberRange range;
    visitNumbers(part, kind, [&range](double number) {
        range.add(number);
        return false;
    });
    return range;
}

/// From the lowest to the highest end of the parts of the stacks.
NumberRange findStackedRange(const ChartPart& part, ScaleKind kind)
{
    NumberRange range;
    std::vector<double> ups;
    std::vector<double> downs;
    for (const auto& series : part.series) {
        if (!standsOn(part, series, kind)) continue;
        std::size_t index = 0;
        ups.resize(std::max<std::size_t>(ups.size(), series.series.getSize()));
        downs.resize(ups.size());
        for (const auto& point : series.series.getPoints()) {
            if (const double value = point->getValue(); !std::isnan(value))
                range.add((value < 0 ? downs : ups)[index] += value);
            ++index;
        }
    }
    return range;
}

/// A power of ten that the distance of the gridlines is a multiple of, as word processors choose it: a span
/// that begins with a digit below 5 has steps in fractions of its power.
double findStepUnit(const ChartPart& part, const Scale& scale)
{
    if (scale.step) return *scale.step;
    if (scale.log) {
        const double low = findPlainRange(part, scale.kind).low;
        return low > 0 && low < 1 ? std::pow(*scale.log, std::floor(std::log(low) / std::log(*scale.log)))
                                  : 1;
    }
    const double span = findSpan(part, scale);
    if (span == 0) return 0.1;
    if (!(span > 0) || !std::isfinite(span)) return 1;
    const double power = std::pow(10, std::floor(std::log10(span)));
    return span / power < 5 ? power / 10 : power;
}

int countStepDecimals(const ChartPart& part, const Scale& scale)
{
    return countDecimals(findStepUnit(part, scale) / getUnit(scale.units));
}

std::string chooseShareFormat(const ChartOptions& options)
{
    return options.numberFormat.find('%') != std::string::npos ? options.numberFormat : percentFormat;
}

}  // namespace

double getUnit(const std::optional<Units>& units)
{
    if (!units) return 1;
    switch (*units) {
        case Units::Hundreds:
            return 1e2;
        case Units::Thousands:
            return 1e3;
        case Units::Millions:
            return 1e6;
        case Units::Billions:
            break;
    }
    return 1e9;
}

NumberRange findRange(const ChartPart& part, const Scale& scale)
{
    if (scale.isShare) return {0, 1};
    return scale.isStacked ? findStackedRange(part, scale.kind) : findPlainRange(part, scale.kind);
}

bool isFarFromZero(const NumberRange& range)
{
    constexpr double close = 6;
    const double reach = std::fmax(range.high, 0) - std::fmin(range.low, 0);
    return range.high > range.low && (range.high - range.low) * close < reach;
}

double findSpan(const ChartPart& part, const Scale& scale)
{
    if (scale.isShare) return 1;
    const auto range = findRange(part, scale);
    if (!(range.low <= range.high)) return 0;
    double low = std::fmin(range.low, 0);
    double high = std::fmax(range.high, 0);
    if (!scale.startsAtZero && isFarFromZero(range)) {
        low = range.low;
        high = range.high;
    }
    return scale.maximum.value_or(high) - scale.minimum.value_or(low);
}

std::string chooseAxisFormat(const ChartPart& part, const Scale& scale)
{
    if (!scale.format.empty()) return scale.format;
    if (scale.isShare) return chooseShareFormat(part.context.options);
    // Beside thousands the decimals of the values say nothing.
    constexpr double large = 1000;
    const bool isWhole = findStepUnit(part, scale) / getUnit(scale.units) >= large;
    for (const auto& series : part.series)
        if (const auto& own = part.getDetails(series).numberFormat;
            standsOn(part, series, scale.kind) && !own.empty())
            return isWhole ? dropDecimals(own) : own;
    const int stepDecimals = countStepDecimals(part, scale);
    if (stepDecimals > maximumDecimals) return "General";
    return makeNumberFormat(isWhole ? 0 : std::max(countValueDecimals(part, scale), stepDecimals));
}

/// Years have no thousands; numbers of five digits are hard to read without.
const char* chooseXNumberFormat(const ChartPart& part)
{
    constexpr double fiveDigits = 10'000;
    const auto scale = getScale(part, ScaleKind::X);
    const auto range = findRange(part, scale);
    const bool isLarge = range.high >= fiveDigits || range.low <= -fiveDigits;
    return isLarge && countValueDecimals(part, scale) == 0 ? "#,##0" : "General";
}

std::string chooseXFormat(const ChartPart& part)
{
    const auto& format = part.context.options.xFormat;
    if (!format.empty()) return format;
    const auto& data = part.context.data;
    if (data.categoryKind != CategoryKind::Date) return chooseXNumberFormat(part);
    return data.categoryFormat.empty() ? chooseDateFormat(data.categoryValues) : data.categoryFormat;
}

namespace {

/// Bars have their size; the sign says which way they go. A format with parts of its own stays.
std::string addSign(const ChartPart& part, const SeriesPart& series, const std::string& format)
{
    constexpr auto increase = static_cast<std::size_t>(WaterfallPart::Increase);
    constexpr auto decrease = static_cast<std::size_t>(WaterfallPart::Decrease);
    if (part.context.kind != ChartKind::Waterfall || format.find(';') != std::string::npos) return format;
    if (series.index == increase) return format + ";" + format;
    return series.index == decrease ? "-" + format + ";-" + format : format;
}

std::string choosePlainLabelFormat(const ChartPart& part, const SeriesPart& series, bool isShare)
{
    if (!part.context.options.labelFormat.empty()) return part.context.options.labelFormat;
    if (isShare) return percentFormat;
    const auto& own = part.getDetails(series).numberFormat;
    const auto kind = standsOn(part, series, ScaleKind::Second) ? ScaleKind::Second : ScaleKind::Value;
    if (!own.empty()) return own;
    const auto scale = getScale(part, kind);
    // Where two decimals cannot tell the gridlines apart, they cannot tell the values apart either.
    if (countStepDecimals(part, scale) > maximumDecimals) return "General";
    return makeNumberFormat(countValueDecimals(part, scale));
}

}  // namespace

std::string chooseLabelFormat(const ChartPart& part, const SeriesPart& series, bool isShare)
{
    return addSign(part, series, choosePlainLabelFormat(part, series, isShare));
}

}  // namespace quillon::report
