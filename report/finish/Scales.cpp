#include "report/finish/Scales.h"

#include <algorithm>

#include "report/options/ChartError.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

using xercesc::DOMElement;

bool isSecond(const ChartPart& part, const DOMElement* group)
{
    return std::find(part.secondGroups.begin(), part.secondGroups.end(), group) != part.secondGroups.end();
}

bool hasFilledShapes(const ChartPart& part, ScaleKind kind)
{
    return part.context.options.hidden.empty() &&
           std::any_of(part.groups.begin(), part.groups.end(), [&](const DOMElement* group) {
               const std::u16string_view name = group->getTagName();
               return isSecond(part, group) == (kind == ScaleKind::Second) &&
                      (name == u"c:barChart" || name == u"c:areaChart");
           });
}

/// Whether a group on that value axis stacks its series in that way.
bool hasGrouping(const ChartPart& part, ScaleKind kind, std::u16string_view wanted)
{
    return std::any_of(part.groups.begin(), part.groups.end(), [&](const DOMElement* group) {
        const auto* grouping = findChild(group, u"c:grouping");
        return isSecond(part, group) == (kind == ScaleKind::Second) && grouping != nullptr &&
               grouping->getAttribute(u"val") == wanted;
    });
}

}  // namespace

Scale getScale(const ChartPart& part, ScaleKind kind)
{
    const auto& o = part.context.options;
    const bool isShare = hasGrouping(part, kind, u"percentStacked");
    const bool isStacked = isShare || hasGrouping(part, kind, u"stacked");
    if (kind == ScaleKind::X)
        return {.kind = kind,
                .prefix = "x-",
                .logName = "x-log",
                .minimum = o.xMin,
                .maximum = o.xMax,
                .step = o.xStep,
                .log = o.xLog,
                .format = o.xFormat,
                .title = o.xTitle};
    Scale scale{.kind = kind,
                .prefix = "value-",
                .logName = "log",
                .minimum = o.valueMin,
                .maximum = o.valueMax,
                .step = o.valueStep,
                .log = o.log,
                .units = o.units,
                .isShare = isShare,
                .isStacked = isStacked,
                .title = o.valueTitle};
    if (kind == ScaleKind::Second)
        scale = {.kind = kind,
                 .prefix = "second-",
                 .logName = "second-log",
                 .minimum = o.secondMin,
                 .maximum = o.secondMax,
                 .step = o.secondStep,
                 .log = o.secondLog,
                 .isShare = isShare,
                 .isStacked = isStacked,
                 .format = o.secondFormat,
                 .title = o.secondTitle};
    scale.startsAtZero = hasFilledShapes(part, kind) && !scale.log;
    return scale;
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
    const auto* group = static_cast<const DOMElement*>(series.element->getParentNode());
    return isSecond(part, group) == (kind == ScaleKind::Second);
}

}  // namespace quillon::report
