#include "report/finish/NumberFormats.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "report/options/NumberFormat.h"

namespace quillon::report {
namespace {

constexpr auto percentFormat = "0%";

struct Range {
    double low = std::numeric_limits<double>::infinity();
    double high = -std::numeric_limits<double>::infinity();

    void add(double value)
    {
        low = std::fmin(low, value);
        high = std::fmax(high, value);
    }
};

double getUnit(const ChartOptions& options)
{
    if (!options.units) return 1;
    switch (*options.units) {
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

/// The decimals of the values, counted in the units of the axis; at most maximumDecimals.
int countValueDecimals(const ChartPart& part)
{
    const double unit = getUnit(part.context.options);
    int decimals = 0;
    for (const auto& series : part.series)
        for (const auto& point : series.series.getPoints()) {
            decimals = std::max(decimals, countDecimals(point->getValue() / unit));
            if (decimals >= maximumDecimals) return maximumDecimals;
        }
    return decimals;
}

Range findRange(const ChartPart& part)
{
    Range range;
    for (const auto& series : part.series)
        for (const auto& point : series.series.getPoints()) range.add(point->getValue());
    return range;
}

/// From the lowest to the highest end of the stacks.
Range findStackedRange(const ChartPart& part)
{
    std::vector<double> ups;
    std::vector<double> downs;
    for (const auto& series : part.series) {
        std::size_t index = 0;
        ups.resize(std::max<std::size_t>(ups.size(), series.series.getSize()));
        downs.resize(ups.size());
        for (const auto& point : series.series.getPoints()) {
            if (point->getValue() > 0) ups[index] += point->getValue();
            if (point->getValue() < 0) downs[index] += point->getValue();
            ++index;
        }
    }
    Range range;
    for (const double up : ups) range.add(up);
    for (const double down : downs) range.add(down);
    return range;
}

/// A power of ten that the distance of the gridlines is a multiple of, as word processors choose it: a span
/// that begins with a digit below 5 has steps in fractions of its power.
double findStepUnit(const ChartPart& part)
{
    const auto& options = part.context.options;
    if (options.valueStep) return *options.valueStep;
    if (options.log) {
        const double low = findRange(part).low;
        return low > 0 && low < 1 ? std::pow(*options.log, std::floor(std::log(low) / std::log(*options.log)))
                                  : 1;
    }
    const double span = findValueSpan(part);
    if (!(span > 0) || !std::isfinite(span)) return 1;
    const double power = std::pow(10, std::floor(std::log10(span)));
    return span / power < 5 ? power / 10 : power;
}

}  // namespace

double findValueSpan(const ChartPart& part)
{
    const auto& options = part.context.options;
    if (options.stacking == Stacking::Percent) return 1;
    const auto range = options.stacking ? findStackedRange(part) : findRange(part);
    if (!(range.low <= range.high)) return 0;
    double low = std::fmin(range.low, 0);
    double high = std::fmax(range.high, 0);
    // The axis starts at 0, but where all values lie close together and far from it.
    constexpr double close = 6;
    if (range.high > range.low && (range.high - range.low) * close < high - low) {
        low = range.low;
        high = range.high;
    }
    return options.valueMax.value_or(high) - options.valueMin.value_or(low);
}

std::string chooseAxisFormat(const ChartPart& part)
{
    const auto& options = part.context.options;
    if (options.stacking == Stacking::Percent)
        return options.numberFormat.find('%') != std::string::npos ? options.numberFormat : percentFormat;
    for (const auto& series : part.series)
        if (const auto& own = part.context.data.getDetails(series.index).numberFormat; !own.empty())
            return own;
    const int stepDecimals = countDecimals(findStepUnit(part) / getUnit(options));
    if (stepDecimals > maximumDecimals) return "General";
    return makeNumberFormat(std::max(countValueDecimals(part), stepDecimals));
}

std::string chooseLabelFormat(const ChartPart& part, const SeriesPart& series, bool isShare)
{
    if (!part.context.options.labelFormat.empty()) return part.context.options.labelFormat;
    if (isShare) return percentFormat;
    const auto& own = part.context.data.getDetails(series.index).numberFormat;
    return own.empty() ? makeNumberFormat(countValueDecimals(part)) : own;
}

}  // namespace quillon::report
