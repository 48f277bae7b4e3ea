#include "report/options/OptionChecks.h"

#include <algorithm>
#include <array>
#include <string>
#include <vector>

#include "report/options/ChartError.h"
#include "report/options/Enumerations.h"
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

void checkRange(const ChartOptions& options, ChartKind /*kind*/)
{
    const auto& low = options.valueMin;
    const auto& high = options.valueMax;
    if (low && high && *low >= *high)
        refuse("value-min must be below value-max; got " + toText(*low) + " and " + toText(*high) + ".");
    constexpr double mostSteps = 1000;
    if (low && high && options.valueStep && (*high - *low) / *options.valueStep > mostSteps)
        refuse("value-step is " + toText(*options.valueStep) + "; from " + toText(*low) + " to " +
               toText(*high) + " there can be at most 1000 steps.");
}

void checkLog(const ChartOptions& options, ChartKind /*kind*/)
{
    if (!options.log) return;
    for (const auto& [name, end] :
         {std::pair("value-min", options.valueMin), std::pair("value-max", options.valueMax)})
        if (end && *end <= 0)
            refuse(std::string(name) + " is " + toText(*end) +
                   "; a logarithmic value axis (log) shows numbers above 0.");
    if (options.valueStep)
        refuse(
            "value-step is for a linear value axis; the gridlines of a logarithmic one (log) stand at the "
            "powers of its base.");
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
    constexpr ChartKinds lines{ChartKind::Line};
    static const std::array<LabelPlaces, 5> rows = {{
        {bars, false, {Center, InsideEnd, InsideBase, OutsideEnd}},
        {bars, true, {Center, InsideEnd, InsideBase}},
        {lines, false, {Top, Bottom, Left, Right, Center}},
        {lines, true, {Top, Bottom, Left, Right, Center}},
        {ChartKinds{ChartKind::Pie}, false, {BestFit, Center, InsideEnd, OutsideEnd}},
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
    const bool isStacked = options.stacking.has_value();
    const auto& places = findLabelPlaces(kind, isStacked);
    if (std::find(places.begin(), places.end(), *options.labelPosition) != places.end()) return;
    const auto chart = std::string(isStacked ? "stacked " : "") + nameKind(kind);
    if (places.empty()) refuse("label-position: the labels of a " + chart + " stand where they are.");
    std::vector<const char*> names;
    for (const auto place : places) names.push_back(findRow(labelPositionRows, place).name);
    refuse("label-position: the labels of a " + chart + " stand at " + joinNames(names) + ", not at " +
           findRow(labelPositionRows, *options.labelPosition).name + ".");
}

void checkLabels(const ChartOptions& options, ChartKind kind)
{
    constexpr ChartKinds withShares{ChartKind::Pie, ChartKind::Doughnut};
    const auto& labels = options.labels;
    if (!withShares.contains(kind) && std::find(labels.begin(), labels.end(), Label::Percent) != labels.end())
        refuse("labels: percent is for pie charts; the labels of a " + nameKind(kind) +
               " say value, category or series.");
}

constexpr std::array checks = {checkRange, checkLog, checkLabelPosition, checkLabels};

}  // namespace

void checkTogether(const ChartOptions& options, ChartKind kind)
{
    for (const auto check : checks) check(options, kind);
}

}  // namespace quillon::report
