#include <array>
#include <cmath>

#include "report/finish/NumberFormats.h"
#include "report/finish/Rules.h"
#include "report/finish/SchemaOrder.h"
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

// --- Scale ---

/// A table of words reads from top to bottom, and so do its bars; other categories run from left to right.
/// The value axis stays where it would stand without.
void orderCategories(ChartPart& part)
{
    const bool isBar = part.context.kind == ChartKind::Bar;
    if (isBar == part.context.options.reverse) return;
    const auto& axes = part.axes;
    replaceInOrder(findChild(axes.category, u"c:scaling"), u"c:orientation", u"maxMin");
    replaceInOrder(axes.value, u"c:crosses", u"max");
}

void limitValues(ChartPart& part)
{
    const auto& options = part.context.options;
    auto* axis = part.axes.value;
    auto* scaling = findChild(axis, u"c:scaling");
    if (options.valueMin) replaceInOrder(scaling, u"c:min", toText(*options.valueMin).c_str());
    if (options.valueMax) replaceInOrder(scaling, u"c:max", toText(*options.valueMax).c_str());
}

/// A word processor that draws very many gridlines takes no more commands.
void spaceGridlines(ChartPart& part)
{
    const auto& step = part.context.options.valueStep;
    if (!step) return;
    constexpr double mostSteps = 1000;
    if (findValueSpan(part) / *step > mostSteps)
        return part.warn("", "value-step is " + toUtf8(toText(*step)) +
                                 ", which gives more than 1000 gridlines for these values. It is left out.");
    replaceInOrder(part.axes.value, u"c:majorUnit", toText(*step).c_str());
}

void requirePositiveValues(const SeriesPart& series)
{
    std::size_t number = 0;
    for (const auto& point : series.series.getPoints()) {
        ++number;
        if (point->getValue() <= 0)
            throw ChartError(ChartPart::describe(series) + ", point " + std::to_string(number),
                             "the value is " + toUtf8(toText(point->getValue())) +
                                 "; a logarithmic value axis (log) shows numbers above 0.");
    }
}

/// The categories stand at the lower end: bars that start at 1 would hang down from it.
void makeValuesLogarithmic(ChartPart& part)
{
    const auto& base = part.context.options.log;
    if (!base) return;
    for (const auto& series : part.series) requirePositiveValues(series);
    const auto& axes = part.axes;
    replaceInOrder(findChild(axes.value, u"c:scaling"), u"c:logBase", toText(*base).c_str());
    replaceInOrder(axes.category, u"c:crosses", u"min");
}

void countInUnits(ChartPart& part)
{
    if (!part.context.options.units) return;
    auto* units = insertInOrder(part.axes.value, u"c:dispUnits");
    appendElement(units, u"c:builtInUnit", findRow(unitsRows, *part.context.options.units).token);
    appendElement(appendElement(units, u"c:dispUnitsLbl"), u"c:layout");
}

// --- Lines ---

void drawGridlines(ChartPart& part)
{
    const auto wanted = part.context.options.gridlines.value_or(Gridlines::Value);
    const auto& axes = part.axes;
    auto* lines = findChild(axes.value, u"c:majorGridlines");
    if (wanted == Gridlines::Category || wanted == Gridlines::Both)
        insertInOrder(axes.category, static_cast<DOMElement*>(lines->cloneNode(true)));
    if (wanted == Gridlines::Category || wanted == Gridlines::None) axes.value->removeChild(lines)->release();
}

// --- Texts ---

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
    const auto count = num2str(static_cast<unsigned long>(*interval));
    replaceInOrder(part.axes.category, u"c:tickLblSkip", count.c_str());
}

void addTitle(DOMElement* axis, const std::u16string& text, bool isVertical)
{
    if (text.empty()) return;
    constexpr int upwards = -90;
    auto* title = insertInOrder(axis, u"c:title");
    fillText(appendElement(appendElement(title, u"c:tx"), u"c:rich"), text, isVertical ? upwards : 0);
    appendElement(title, u"c:overlay", u"0");
}

void nameAxes(ChartPart& part)
{
    const auto& options = part.context.options;
    const auto& axes = part.axes;
    const bool isBar = part.context.kind == ChartKind::Bar;
    addTitle(axes.category, readXmlText(options.categoryTitle, "category-title"), isBar);
    addTitle(axes.value, readXmlText(options.valueTitle, "value-title"), !isBar);
}

constexpr std::array rules = {
    Rule{axisKinds, orderCategories},       Rule{axisKinds, limitValues},
    Rule{axisKinds, spaceGridlines},        Rule{axisKinds, makeValuesLogarithmic},
    Rule{axisKinds, countInUnits},          Rule{axisKinds, drawGridlines},
    Rule{axisKinds, placeCategoryLabels},   Rule{axisKinds, turnCategoryLabels},
    Rule{axisKinds, thinOutCategoryLabels}, Rule{axisKinds, nameAxes},
};

}  // namespace

const std::span<const Rule> axisRules = rules;

}  // namespace quillon::report
