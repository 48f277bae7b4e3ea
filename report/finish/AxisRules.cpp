#include <array>
#include <cmath>

#include "report/finish/NumberFormats.h"
#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
#include "report/finish/ShownChart.h"
#include "report/finish/TextBody.h"
#include "report/options/ChartError.h"
#include "report/options/Enumerations.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

std::u16string toText(double number)
{
    return num2str(number);
}

/// The value axis stays where it would stand without.
void reverseCategories(ChartPart& part)
{
    const auto turn = [](const Axes& axes, const char16_t* end) {
        replaceInOrder(findChild(axes.category, u"c:scaling"), u"c:orientation", u"maxMin");
        replaceInOrder(axes.value, u"c:crosses", end);
    };
    turn(part.axes, u"max");
    if (part.secondAxes.value != nullptr) turn(part.secondAxes, u"autoZero");
}

/// A table of words reads from top to bottom, and so do its bars, which would start at the bottom.
void orderBars(ChartPart& part)
{
    if (!part.context.options.reverse) reverseCategories(part);
}

void orderCategories(ChartPart& part)
{
    if (part.context.options.reverse) reverseCategories(part);
}

void tellOfEmptyPlot(ChartPart& part, const Scale& scale)
{
    const auto range = findRange(part, scale);
    const auto tell = [&](const char* end, double limit, const std::string& values) {
        part.warn("", std::string(scale.prefix) + end + " is " + toUtf8(toText(limit)) + ", and " + values +
                          "; the plot shows none of them.");
    };
    if (!(range.low <= range.high)) return;
    if (scale.minimum && *scale.minimum > range.high)
        tell("min", *scale.minimum, "the numbers end at " + toUtf8(toText(range.high)));
    if (scale.maximum && *scale.maximum < range.low)
        tell("max", *scale.maximum, "the numbers start at " + toUtf8(toText(range.low)));
}

void limit(ChartPart& part, const Scale& scale)
{
    if (scale.minimum || scale.maximum) tellOfEmptyPlot(part, scale);
    auto* scaling = findChild(findAxis(part, scale.kind), u"c:scaling");
    if (scale.minimum) replaceInOrder(scaling, u"c:min", toText(*scale.minimum).c_str());
    if (scale.maximum) replaceInOrder(scaling, u"c:max", toText(*scale.maximum).c_str());
}

/// A bar twice as long is twice the value, in every word processor. Elsewhere they start there on their own,
/// and go on below it when the data is changed to negative values.
void startAtZero(ChartPart& part, const Scale& scale)
{
    if (!scale.startsAtZero || scale.isShare) return;
    const auto range = findRange(part, scale);
    if (!isFarFromZero(range)) return;
    auto* scaling = findChild(findAxis(part, scale.kind), u"c:scaling");
    if (range.low > 0 && !scale.minimum && scale.maximum.value_or(1) > 0)
        replaceInOrder(scaling, u"c:min", u"0");
    if (range.high < 0 && !scale.maximum && scale.minimum.value_or(-1) < 0)
        replaceInOrder(scaling, u"c:max", u"0");
}

/// A word processor that draws very many gridlines takes no more commands.
void spaceGridlines(ChartPart& part, const Scale& scale)
{
    if (!scale.step) return;
    constexpr double mostSteps = 1000;
    if (findSpan(part, scale) / *scale.step > mostSteps)
        return part.warn("", std::string(scale.prefix) + "step is " + toUtf8(toText(*scale.step)) +
                                 ", which gives more than 1000 gridlines for these values. It is left out.");
    replaceInOrder(findAxis(part, scale.kind), u"c:majorUnit", toText(*scale.step).c_str());
}

/// The other axis stands at the lower end: bars that start at 1 would hang down from it.
void makeLogarithmic(ChartPart& part, const Scale& scale)
{
    if (!scale.log) return;
    const auto reason = std::string("a logarithmic axis (") + scale.logName + ") shows numbers above 0.";
    for (const auto& series : part.series)
        if (standsOn(part, series, scale.kind)) requirePositiveNumbers(series, scale.kind, reason);
    auto* axis = findAxis(part, scale.kind);
    replaceInOrder(findChild(axis, u"c:scaling"), u"c:logBase", toText(*scale.log).c_str());
    const auto& axes = scale.kind == ScaleKind::Second ? part.secondAxes : part.axes;
    replaceInOrder(axis == axes.value ? axes.category : axes.value, u"c:crosses", u"min");
}

void scaleAxes(ChartPart& part)
{
    for (const auto kind : {ScaleKind::Value, ScaleKind::Second, ScaleKind::X}) {
        if (findAxis(part, kind) == nullptr) continue;
        const auto scale = getScale(part, kind);
        limit(part, scale);
        startAtZero(part, scale);
        spaceGridlines(part, scale);
        makeLogarithmic(part, scale);
    }
}

void countInUnits(ChartPart& part)
{
    if (!part.context.options.units) return;
    auto* units = insertInOrder(part.axes.value, u"c:dispUnits");
    appendElement(units, u"c:builtInUnit", findRow(unitsRows, *part.context.options.units).token);
    appendElement(appendElement(units, u"c:dispUnitsLbl"), u"c:layout");
}

void drawGridlines(ChartPart& part)
{
    // A radar is drawn with its whole web.
    const auto standard = part.context.kind == ChartKind::Radar ? Gridlines::Both : Gridlines::Value;
    const auto wanted = part.context.options.gridlines.value_or(standard);
    const auto& axes = part.axes;
    auto* lines = findChild(axes.value, u"c:majorGridlines");
    if (wanted == Gridlines::Category || wanted == Gridlines::Both)
        insertInOrder(axes.category, static_cast<DOMElement*>(lines->cloneNode(true)));
    if (wanted == Gridlines::Category || wanted == Gridlines::None) axes.value->removeChild(lines)->release();
}

void hideNumbers(ChartPart& part)
{
    if (part.context.options.noValueAxis) replaceInOrder(part.axes.value, u"c:tickLblPos", u"none");
}

/// Below all values, negative ones too, where no bar covers them.
void placeCategoryLabels(ChartPart& part)
{
    const auto place = part.context.options.tickLabels.value_or(TickLabels::Low);
    replaceInOrder(part.axes.category, u"c:tickLblPos", findRow(tickLabelsRows, place).token);
}

void turnCategoryLabels(ChartPart& part)
{
    const auto& rotation = part.context.options.tickRotation;
    if (!rotation) return;
    constexpr double degree = 60'000;
    const auto turn = std::to_string(std::lround(-*rotation * degree));
    findPath(part.axes.category, {u"c:txPr", u"a:bodyPr"})->setAttribute(u"rot", toUtf16(turn).c_str());
}

void thinOutCategoryLabels(ChartPart& part)
{
    const auto& interval = part.context.options.tickInterval;
    if (!interval) return;
    if (hasDateAxis(part.context))
        return part.warn("", "tick-interval is for categories other than dates. It is left out.");
    const auto count = num2str(static_cast<unsigned long>(*interval));
    replaceInOrder(part.axes.category, u"c:tickLblSkip", count.c_str());
}

void addTitle(DOMElement* axis, const std::u16string& text, bool isVertical)
{
    if (text.empty()) return;
    constexpr int upwards = -90;
    auto* title = insertInOrder(axis, u"c:title");
    fillAxisText(appendElement(appendElement(title, u"c:tx"), u"c:rich"), text, isVertical ? upwards : 0);
    appendElement(title, u"c:overlay", u"0");
}

/// One of the two crossing axes is vertical, and its title with it.
template <bool isCategoryVertical>
void nameAxes(ChartPart& part)
{
    const auto& options = part.context.options;
    addTitle(part.axes.category, readXmlText(options.categoryTitle, "category-title"), isCategoryVertical);
    addTitle(part.axes.value, readXmlText(options.valueTitle, "value-title"), !isCategoryVertical);
}

void nameSecondAxis(ChartPart& part)
{
    if (auto* second = findAxis(part, ScaleKind::Second))
        addTitle(second, readXmlText(part.context.options.secondTitle, "second-title"), true);
}

void nameXAxis(ChartPart& part)
{
    addTitle(part.axes.category, readXmlText(part.context.options.xTitle, "x-title"), false);
}

constexpr ChartKinds barKind{ChartKind::Bar};

constexpr std::array rules = {
    Rule{barKind, orderBars},
    Rule{categoryKinds.without(barKind), orderCategories},
    Rule{axisKinds, scaleAxes},
    Rule{axisKinds, countInUnits},
    Rule{axisKinds, drawGridlines},
    Rule{axisKinds, hideNumbers},
    Rule{categoryKinds, placeCategoryLabels},
    Rule{categoryKinds, turnCategoryLabels},
    Rule{categoryKinds, thinOutCategoryLabels},
    Rule{barKind, nameAxes<true>},
    Rule{axisKinds.without(barKind), nameAxes<false>},
    Rule{combinedKinds, nameSecondAxis},
    Rule{pointKinds, nameXAxis},
};

}  // namespace

const std::span<const Rule> axisRules = rules;

}  // namespace quillon::report
