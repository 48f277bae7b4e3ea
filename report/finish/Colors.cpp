#include "report/finish/Colors.h"

#include <array>

#include "report/finish/Rules.h"
#include "report/finish/SeriesNames.h"
#include "report/options/ChartError.h"
#include "report/options/ColorText.h"
#include "report/options/QuotedText.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMDocument;
using xercesc::DOMElement;

namespace {

constexpr std::array accents = {u"accent1", u"accent2", u"accent3", u"accent4", u"accent5", u"accent6"};

/// How a round of the accents differs from the theme's; null for what it has not.
struct Round {
    const char16_t* luminanceFactor;
    const char16_t* luminanceOffset;
};
constexpr std::array rounds = {
    Round{nullptr, nullptr},   Round{u"60000", nullptr},  Round{u"80000", u"20000"},
    Round{u"80000", nullptr},  Round{u"60000", u"40000"}, Round{u"50000", nullptr},
    Round{u"70000", u"30000"}, Round{u"70000", nullptr},  Round{u"50000", u"50000"},
};

void setAutomatic(DOMElement* element, std::size_t position)
{
    element->getOwnerDocument()->renameNode(element, nullptr, u"a:schemeClr");
    replaceAttribute(element, u"val", accents[position % accents.size()]);
    const auto& [factor, offset] = rounds[position / accents.size() % rounds.size()];
    if (factor != nullptr) appendElement(element, u"a:lumMod", factor);
    if (offset != nullptr) appendElement(element, u"a:lumOff", offset);
}

void setColor(DOMElement* element, const PaintColor& color)
{
    if (color.digits.empty()) return setAutomatic(element, color.position);
    replaceAttribute(element, u"val", color.digits.c_str());
}

DOMElement* appendColor(DOMElement* parent, const PaintColor& color)
{
    auto* element = appendElement(parent, u"a:srgbClr");
    setColor(element, color);
    return element;
}

void appendAlpha(DOMElement* color, std::uint32_t transparency)
{
    if (transparency == 0) return;
    const auto opacity = num2str(1000UL * (100 - transparency));
    appendElement(color, u"a:alpha", opacity.c_str());
}

DOMElement* makeSolid(DOMDocument* doc, const Paint& paint)
{
    auto* fill = doc->createElement(u"a:solidFill");
    appendAlpha(appendColor(fill, paint.color), paint.transparency);
    return fill;
}

void appendStop(DOMElement* stops, const char16_t* place, const Paint& paint, const char16_t* tint)
{
    auto* stop = appendElement(stops, u"a:gs");
    stop->setAttribute(u"pos", place);
    auto* color = appendColor(stop, paint.color);
    if (tint != nullptr) appendElement(color, u"a:tint", tint);
    appendAlpha(color, paint.transparency);
}

DOMElement* makeGradient(DOMDocument* doc, const Paint& paint)
{
    auto* fill = doc->createElement(u"a:gradFill");
    fill->setAttribute(u"rotWithShape", u"1");
    auto* stops = appendElement(fill, u"a:gsLst");
    appendStop(stops, u"0", paint, nullptr);
    appendStop(stops, u"100000", paint, u"40000");
    auto* direction = appendElement(fill, u"a:lin");
    direction->setAttribute(u"ang", u"5400000");
    direction->setAttribute(u"scaled", u"0");
    return fill;
}

DOMElement* makePattern(DOMDocument* doc, const Paint& paint)
{
    auto* fill = doc->createElement(u"a:pattFill");
    fill->setAttribute(u"prst", u"wdUpDiag");
    appendAlpha(appendColor(appendElement(fill, u"a:fgClr"), paint.color), paint.transparency);
    appendAlpha(appendColor(appendElement(fill, u"a:bgClr"), {u"FFFFFF"}), paint.transparency);
    return fill;
}

/// What the colours of the options are for, by its names: slices are named by their categories.
struct Targets {
    std::vector<std::u16string> names;
    const char* one;
    const char* many;
};

/// Of the longest ring; a pie shows its first series alone.
std::size_t countSlices(const ChartContext& context)
{
    std::size_t count = 0;
    const auto rings = *context.chart.getDataSet()->getSeriesList();
    for (const auto& ring : rings) {
        count = std::max<std::size_t>(count, ring->getSize());
        if (context.kind == ChartKind::Pie) break;
    }
    return count;
}

Targets findTargets(const ChartContext& context)
{
    const auto& dataSet = *context.chart.getDataSet();
    std::vector<std::u16string> names;
    if (sliceKinds.contains(context.kind)) {
        names = dataSet.getCategories();
        names.resize(countSlices(context));
        return {names, "slice", "slices"};
    }
    for (unsigned long i = 0; i < dataSet.getSeriesCount(); ++i)
        names.push_back(dataSet.getSeries(i)->getName());
    // Increases, decreases and totals.
    if (context.kind == ChartKind::Waterfall) names.resize(std::min<std::size_t>(names.size(), 3));
    return {names, "series", "series"};
}

[[noreturn]] void refuseName(const std::string& name, const Targets& targets)
{
    const auto& names = targets.names;
    throw ChartError("", std::string("series-colors: there is no ") + targets.one + " " + quoteText(name) +
                             (names.empty() ? std::string("; there are no ") + targets.many
                                            : std::string("; the ") + targets.many + " are") +
                             listNames(names, name));
}

std::u16string readDigits(const std::string& text)
{
    return *findColorDigits(toUtf16(text));
}

}  // namespace

bool recolor(DOMElement* fill, const Paint& paint)
{
    auto* color = findChild(fill, u"a:srgbClr");
    const bool isPlain = paint.style == PaintStyle::Solid && paint.transparency == 0;
    if (color == nullptr || !isPlain) return false;
    setColor(color, paint.color);
    return true;
}

DOMElement* makeFill(DOMDocument* doc, const Paint& paint)
{
    switch (paint.style) {
        case PaintStyle::Gradient:
            return makeGradient(doc, paint);
        case PaintStyle::Pattern:
            return makePattern(doc, paint);
        case PaintStyle::Solid:
            break;
    }
    return makeSolid(doc, paint);
}

StandardColors::StandardColors(const ChartContext& context)
{
    for (const auto& text : context.options.palette) palette_.push_back(readDigits(text));
    if (!context.options.colors.empty()) setOwn(context);
    if (!context.options.seriesColors.empty()) setNamed(context);
}

void StandardColors::setOwn(const ChartContext& context)
{
    const auto& colors = context.options.colors;
    const auto targets = findTargets(context);
    if (colors.size() > targets.names.size())
        throw ChartError("", std::string("colors: expected at most one for each ") + targets.one + ", " +
                                 std::to_string(targets.names.size()) + " in all; got " +
                                 std::to_string(colors.size()) + ".");
    for (const auto& text : colors) own_.push_back(readDigits(text));
}

void StandardColors::setNamed(const ChartContext& context)
{
    const auto targets = findTargets(context);
    own_.resize(targets.names.size());
    for (const auto& [name, color] : context.options.seriesColors) {
        bool isFound = false;
        for (std::size_t i = 0; i < targets.names.size(); ++i) {
            if (targets.names[i] != toUtf16(name)) continue;
            own_[i] = readDigits(color);
            isFound = true;
        }
        if (!isFound) refuseName(name, targets);
    }
}

PaintColor StandardColors::get(std::size_t position, std::size_t passed) const
{
    const auto turn = position - passed;
    if (position < own_.size() && !own_[position].empty()) return {own_[position], turn};
    if (!palette_.empty()) return {palette_[turn % palette_.size()], turn};
    return {{}, turn};
}

}  // namespace quillon::report
