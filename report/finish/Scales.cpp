#include "report/finish/Scales.h"

#include <algorithm>

#include "report/options/ChartError.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// A waterfall stands upon an invisible base.
bool isStacked(const ChartContext& context)
{
    return context.options.stacking || context.kind == ChartKind::Waterfall;
}

}  // namespace

Scale getScale(const ChartPart& part, ScaleKind kind)
{
    const auto& o = part.context.options;
    switch (kind) {
        case ScaleKind::Second:
            return {kind,        "second-", "second-log", o.secondMin, o.secondMax,    o.secondStep,
                    o.secondLog, {},        false,        false,       o.secondFormat, o.secondTitle};
        case ScaleKind::X:
            return {kind,   "x-", "x-log", o.xMin, o.xMax,    o.xStep,
                    o.xLog, {},   false,   false,  o.xFormat, o.xTitle};
        case ScaleKind::Value:
            break;
    }
    return {kind,
            "value-",
            "log",
            o.valueMin,
            o.valueMax,
            o.valueStep,
            o.log,
            o.units,
            o.stacking == Stacking::Percent,
            isStacked(part.context),
            "",
            o.valueTitle};
}

xercesc::DOMElement* findAxis(const ChartPart& part, ScaleKind kind)
{
    if (kind == ScaleKind::Value) return part.axes.value;
    if (kind == ScaleKind::Second) return part.secondAxes.value;
    return pointKinds.contains(part.context.kind) ? part.axes.category : nullptr;
}

double getNumber(const chart::DataPoint& point, ScaleKind kind)
{
    return kind == ScaleKind::X ? point.getX() : point.getValue();
}

void requirePositiveNumbers(const SeriesPart& series, ScaleKind kind, const std::string& reason)
{
    std::size_t index = 0;
    for (const auto& point : series.series.getPoints()) {
        ++index;
        const double number = getNumber(*point, kind);
        if (number <= 0)
            throw ChartError(ChartPart::describe(series) + ", point " + std::to_string(index),
                             std::string(kind == ScaleKind::X ? "X" : "the value") + " is " +
                                 toUtf8(num2str(number)) + "; " + reason);
    }
}

bool standsOn(const ChartPart& part, const SeriesPart& series, ScaleKind kind)
{
    const auto* group = static_cast<const xercesc::DOMElement*>(series.element->getParentNode());
    const bool isSecond =
        std::find(part.secondGroups.begin(), part.secondGroups.end(), group) != part.secondGroups.end();
    return isSecond == (kind == ScaleKind::Second);
}

}  // namespace quillon::report
