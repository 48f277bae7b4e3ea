#include "report/options/OptionChecks.h"

#include <algorithm>
#include <array>
#include <string>
#include <utility>
#include <vector>

#include "report/options/ChartError.h"
#include "report/options/Enumerations.h"
#include "report/options/ListText.h"
#include "report/options/ScaleOptions.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

[[noreturn]] void refuse(const std::string& sentence)
{
    throw ChartError("", sentence);
}

std::string toText(double number)
{
    return toUtf8(num2str(number));
}

void checkRange(const ChartOptions& options, const ScaleOptions& axis)
{
    const auto& low = options.*axis.minimum;
    const auto& high = options.*axis.maximum;
    const auto& step = options.*axis.step;
    const std::string prefix = axis.prefix;
    if (low && high && *low >= *high)
        refuse(prefix + "min must be below " + prefix + "max; got " + toText(*low) + " and " + toText(*high) +
               ".");
    constexpr double mostSteps = 1000;
    if (low && high && step && (*high - *low) / *step > mostSteps)
        refuse(prefix + "step is " + toText(*step) + "; from " + toText(*low) + " to " + toText(*high) +
               " there can be at most 1000 steps.");
}

void checkLog(const ChartOptions& options, const ScaleOptions& axis)
{
    if (!(options.*axis.log)) return;
    const std::string prefix = axis.prefix;
    for (const auto& [name, member] : {std::pair("min", axis.minimum), std::pair("max", axis.maximum)})
        if (const auto& end = options.*member; end && *end <= 0)
            refuse(prefix + name + " is " + toText(*end) + "; a logarithmic axis (" + axis.logName +
                   ") shows numbers above 0.");
    if (options.*axis.step)
        refuse(prefix + "step is for a linear axis; the gridlines of a logarithmic one (" + axis.logName +
               ") stand at the powers of its base.");
}

void checkAxes(const ChartOptions& options, ChartKind /*kind*/)
{
    for (const auto& axis : scaleOptions) {
        checkRange(options, axis);
        checkLog(options, axis);
    }
}

void checkSecond(const ChartOptions& o, ChartKind /*kind*/)
{
    const bool isUsed = !o.secondTitle.empty() || !o.secondFormat.empty() || o.secondMin || o.secondMax ||
                        o.secondStep || o.secondLog;
    if (isUsed && o.second.empty())
        refuse(
            "second-title, second-format, second-min, second-max, second-step and second-log are for a "
            "second axis; name the series on it (second).");
}

void checkStacking(const ChartOptions& o, ChartKind /*kind*/)
{
    if (!o.stacking) return;
    if (o.overlap && *o.overlap != 100) refuse("overlap is 100 where bars are stacked; leave it out.");
    if (o.stacking == Stacking::Percent && o.log)
        refuse("stacking percent shows shares from 0 to 100 %; a logarithmic axis (log) has no 0.");
}

void checkHidden(const ChartOptions& o, ChartKind /*kind*/)
{
    if (!o.hidden.empty() && o.stacking != Stacking::Normal)
        refuse("hidden is for series that carry others; stack them (stacking normal).");
}

void checkDashed(const ChartOptions& o, ChartKind kind)
{
    const bool hasPoints =
        kind == ChartKind::Scatter && o.scatterStyle.value_or(ScatterStyle::Points) == ScatterStyle::Points;
    if (!o.dashed.empty() && hasPoints)
        refuse("dashed is for lines; draw some between the points (scatter-style lines or both).");
}

/// Options of lines suit a column or area chart only where it shows lines.
void checkLines(const ChartOptions& options, ChartKind kind)
{
    constexpr ChartKinds withoutLines{ChartKind::Column, ChartKind::Area};
    if (!withoutLines.contains(kind) || !options.line.empty()) return;
    for (const auto& [name, isGiven] :
         {std::pair("markers", options.markers), std::pair("smooth", options.smooth)})
        if (isGiven)
            refuse(std::string(name) + " is for lines; name the series that are drawn as lines (line).");
}

void checkMarkers(const ChartOptions& options, ChartKind kind)
{
    if (kind == ChartKind::Radar && options.markers && options.filled)
        refuse("markers are for the lines of a radar chart; filled draws areas.");
}

void checkTrendline(const ChartOptions& o, ChartKind /*kind*/)
{
    if (!o.trendline) {
        const std::pair<const char*, bool> uses[] = {{"trendline-series", !o.trendlineSeries.empty()},
                                                     {"order", o.order.has_value()},
                                                     {"period", o.period.has_value()},
                                                     {"forecast", o.forecast.has_value()},
                                                     {"backcast", o.backcast.has_value()},
                                                     {"equation", o.equation},
                                                     {"r-squared", o.rSquared}};
        for (const auto& [name, isUsed] : uses)
            if (isUsed) refuse(std::string(name) + " is for trendlines; say which (trendline).");
        return;
    }
    if (o.stacking) refuse("trendline is for series that are not stacked.");
    if (o.order && o.trendline != Trendline::Polynomial) refuse("order is for trendline polynomial.");
    const bool isAverage = o.trendline == Trendline::MovingAverage;
    if (o.period && !isAverage) refuse("period is for trendline moving-average.");
    if (isAverage && (o.forecast || o.backcast || o.equation || o.rSquared))
        refuse("forecast, backcast, equation and r-squared are for trendlines other than moving-average.");
}

void checkErrorBars(const ChartOptions& o, ChartKind /*kind*/)
{
    const bool isOwn = !o.errorPlus.empty() || !o.errorMinus.empty();
    if (o.errorBars && isOwn)
        refuse(
            "error-bars computes the lengths of error bars, and plus-series and minus-series name series "
            "that hold them; give one or the other.");
    if (o.errorValue && (!o.errorBars || o.errorBars == ErrorAmount::Error))
        refuse("error-value is for error-bars fixed, percent and deviation.");
}

/// Where the labels of a kind can stand. Word processors take a file with another place for damaged.
struct LabelPlaces {
    ChartKinds kinds;
    bool isStacked;
    std::vector<LabelPosition> places;
};

const std::vector<LabelPosition>& findLabelPlaces(ChartKind kind, bool isStacked)
{
    using enum LabelPosition;
    constexpr ChartKinds bars{ChartKind::Bar, ChartKind::Column};
    constexpr ChartKinds stackedBars{ChartKind::Bar, ChartKind::Column, ChartKind::Waterfall};
    constexpr ChartKinds lines{ChartKind::Line, ChartKind::Scatter, ChartKind::Bubble, ChartKind::Stock};
    static const std::array<LabelPlaces, 6> rows = {{
        {bars, false, {Center, InsideEnd, InsideBase, OutsideEnd}},
        {stackedBars, true, {Center, InsideEnd, InsideBase}},
        {lines, false, {Top, Bottom, Left, Right, Center}},
        {lines, true, {Top, Bottom, Left, Right, Center}},
        {ChartKinds{ChartKind::Pie}, false, {BestFit, Center, InsideEnd, OutsideEnd}},
        {ChartKinds{ChartKind::Radar}, false, {OutsideEnd}},
    }};
    static const std::vector<LabelPosition> none;
    for (const auto& row : rows)
        if (row.kinds.contains(kind) && row.isStacked == isStacked) return row.places;
    return none;
}

std::string nameKind(ChartKind kind)
{
    return std::string(findRow(kindRows, kind).name) + " chart";
}

void checkLabelPosition(const ChartOptions& options, ChartKind kind)
{
    if (!options.labelPosition) return;
    const bool isStacked = options.stacking.has_value() || kind == ChartKind::Waterfall;
    const auto& places = findLabelPlaces(kind, isStacked);
    if (std::find(places.begin(), places.end(), *options.labelPosition) != places.end()) return;
    const auto chart = std::string(options.stacking ? "stacked " : "") + nameKind(kind);
    if (places.empty()) refuse("label-position: the labels of a " + chart + " stand where they are.");
    std::vector<const char*> names;
    names.reserve(places.size());
    for (const auto place : places) names.push_back(findRow(labelPositionRows, place).name);
    refuse("label-position: the labels of a " + chart + " stand at " + joinNames(names) + ", not at " +
           findRow(labelPositionRows, *options.labelPosition).name + ".");
}

void checkLabels(const ChartOptions& options, ChartKind kind)
{
    const auto& labels = options.labels;
    if (!sliceKinds.contains(kind) && std::find(labels.begin(), labels.end(), Label::Percent) != labels.end())
        refuse("labels: percent is for pie and doughnut charts; the labels of a " + nameKind(kind) +
               " say value, category or series.");
    if (options.labelSeparator && labels.size() < 2)
        refuse(
            "label-separator stands between what labels say; name two things or more (labels "
            "category,value).");
}

constexpr std::array checks = {checkAxes,      checkSecond,        checkStacking, checkHidden,
                               checkDashed,    checkLines,         checkMarkers,  checkTrendline,
                               checkErrorBars, checkLabelPosition, checkLabels};

}  // namespace

bool canLabelsStandAt(LabelPosition position, ChartKind kind, bool isStacked)
{
    const auto& places = findLabelPlaces(kind, isStacked);
    return std::find(places.begin(), places.end(), position) != places.end();
}

void checkTogether(const ChartOptions& options, ChartKind kind)
{
    for (const auto check : checks) check(options, kind);
}

}  // namespace quillon::report
