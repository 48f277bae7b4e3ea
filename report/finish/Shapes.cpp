#include "report/finish/Shapes.h"

#include <array>
#include <cmath>

#include "chart/model/GradientBorderFormat.h"
#include "chart/model/GradientFillFormat.h"
#include "chart/model/PatternFillFormat.h"
#include "chart/model/PictureFillFormat.h"
#include "chart/model/SolidBorderFormat.h"
#include "report/finish/SchemaOrder.h"
#include "report/options/ColorText.h"
#include "report/options/Length.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using chart::SolidBorderCapType;
using chart::SolidBorderCompoundType;
using chart::SolidBorderDashType;
using chart::SolidBorderJoinType;
using xercesc::DOMElement;

namespace {

constexpr std::u16string_view defaultColor = u"white";
constexpr double defaultWidth = 0.5;
/// Points: the widest line that word processors take.
constexpr double maximumWidth = 1584;

template <typename Value>
struct TokenRow {
    Value value;
    const char16_t* token;
};

// The defaults have no row: they are not set.
constexpr std::array capRows = {TokenRow<SolidBorderCapType>{SolidBorderCapType::Round, u"rnd"},
                                TokenRow<SolidBorderCapType>{SolidBorderCapType::Square, u"sq"}};
constexpr std::array compoundRows = {
    TokenRow<SolidBorderCompoundType>{SolidBorderCompoundType::Double, u"dbl"},
    TokenRow<SolidBorderCompoundType>{SolidBorderCompoundType::ThinThick, u"thinThick"},
    TokenRow<SolidBorderCompoundType>{SolidBorderCompoundType::ThickThin, u"thickThin"},
    TokenRow<SolidBorderCompoundType>{SolidBorderCompoundType::Triple, u"tri"},
};
constexpr std::array dashRows = {
    TokenRow<SolidBorderDashType>{SolidBorderDashType::RoundDot, u"sysDot"},
    TokenRow<SolidBorderDashType>{SolidBorderDashType::SquareDot, u"sysDash"},
    TokenRow<SolidBorderDashType>{SolidBorderDashType::Dash, u"dash"},
    TokenRow<SolidBorderDashType>{SolidBorderDashType::DashDot, u"dashDot"},
    TokenRow<SolidBorderDashType>{SolidBorderDashType::LongDash, u"lgDash"},
    TokenRow<SolidBorderDashType>{SolidBorderDashType::LongDashDot, u"lgDashDot"},
    TokenRow<SolidBorderDashType>{SolidBorderDashType::LongDashDotDot, u"lgDashDotDot"},
};
constexpr std::array joinRows = {TokenRow<SolidBorderJoinType>{SolidBorderJoinType::Bevel, u"a:bevel"},
                                 TokenRow<SolidBorderJoinType>{SolidBorderJoinType::Miter, u"a:miter"}};

template <typename Rows, typename Value>
const char16_t* findToken(const Rows& rows, Value value)
{
    for (const auto& row : rows)
        if (row.value == value) return row.token;
    return nullptr;
}

void setColor(ChartPart& part, const chart::Format& format, const Place& place, FillSettings& settings)
{
    if (!format.getColor() || format.getColor()->getText() == defaultColor) return;
    const auto& text = format.getColor()->getText();
    if (const auto digits = findColorDigits(text))
        settings.digits = *digits;
    else
        part.warnNoColor(place, text);
}

void setTransparency(ChartPart& part, const chart::Format& format, const Place& place, FillSettings& settings)
{
    const auto percent = format.getTransparency();
    if (percent <= 100)
        settings.transparency = percent;
    else
        part.warn(place, "the transparency is " + std::to_string(percent) +
                             "; expected 0 to 100 percent. It is left out.");
}

PaintStyle findStyle(const chart::Format& format)
{
    if (dynamic_cast<const chart::GradientFillFormat*>(&format) != nullptr ||
        dynamic_cast<const chart::GradientBorderFormat*>(&format) != nullptr)
        return PaintStyle::Gradient;
    if (dynamic_cast<const chart::PatternFillFormat*>(&format) != nullptr) return PaintStyle::Pattern;
    return PaintStyle::Solid;
}

FillSettings readFill(ChartPart& part, const chart::Format* format, const Place& place)
{
    FillSettings settings;
    if (format == nullptr) return settings;
    setColor(part, *format, place, settings);
    setTransparency(part, *format, place, settings);
    settings.style = findStyle(*format);
    if (dynamic_cast<const chart::PictureFillFormat*>(format) != nullptr)
        part.warn(place, "a picture fill holds no picture; its colour is shown.");
    return settings;
}

std::optional<double> readWidth(ChartPart& part, double width, const Place& place)
{
    if (width == defaultWidth) return {};
    if (width >= 0 && width <= maximumWidth) return width;
    part.warn(place,
              "the width is " + toUtf8(num2str(width)) + "; expected 0 to 1584 points. It is left out.");
    return {};
}

BorderSettings readBorder(ChartPart& part, const chart::BorderFormat* format, const Place& place)
{
    BorderSettings settings;
    if (format == nullptr) return settings;
    settings.fill = readFill(part, format, place);
    settings.width = readWidth(part, format->getWidth(), place);
    const auto* solid = dynamic_cast<const chart::SolidBorderFormat*>(format);
    if (solid == nullptr) return settings;
    settings.cap = findToken(capRows, solid->getCapType());
    settings.compound = findToken(compoundRows, solid->getCompoundType());
    settings.dash = findToken(dashRows, solid->getDashType());
    settings.join = findToken(joinRows, solid->getJoinType());
    return settings;
}

/// Round dots need round ends.
const char16_t* findCap(const BorderSettings& border)
{
    const bool isDotted = border.dash != nullptr && std::u16string_view(border.dash) == u"sysDot";
    return border.cap == nullptr && isDotted ? u"rnd" : border.cap;
}

Paint resolveLine(const ShapeSettings& settings, const Paint& standard)
{
    const auto& [fill, border, hasBorder] = settings;
    FillSettings line;
    line.digits = fill.digits.empty() ? border.fill.digits : fill.digits;
    line.style = fill.style != PaintStyle::Solid ? fill.style : border.fill.style;
    line.transparency = border.fill.transparency != 0 ? border.fill.transparency : fill.transparency;
    return resolve(line, standard);
}

bool isFill(const DOMElement& element)
{
    const std::u16string_view name = element.getTagName();
    return name == u"a:solidFill" || name == u"a:noFill";
}

unsigned long getPosition(const DOMElement* point)
{
    return str2uint(findChild(point, u"c:idx")->getAttribute(u"val"));
}

}  // namespace

ShapeSettings readShape(ChartPart& part, const chart::ShapeFormat* format, const Place& place)
{
    if (format == nullptr) return {};
    const auto fill = format->getFill();
    const auto border = format->getBorder();
    return {readFill(part, fill.get(), place.of("fill")), readBorder(part, border.get(), place.of("border")),
            border != nullptr};
}

Paint resolve(const FillSettings& settings, const Paint& standard)
{
    if (!settings.digits.empty()) return {{settings.digits}, settings.style, settings.transparency};
    Paint paint = standard;
    if (settings.style != PaintStyle::Solid) paint.style = settings.style;
    if (settings.transparency != 0) paint.transparency = settings.transparency;
    return paint;
}

Paint resolve(const SeriesPart& series, const ShapeSettings& settings, const Paint& standard)
{
    return isLine(series) ? resolveLine(settings, standard) : resolve(settings.fill, standard);
}

bool isOutlineHidden(const ShapeSettings& settings)
{
    const auto& [fill, border, hasBorder] = settings;
    return !border.isSet() || (!border.isStyled() && border.fill.digits == fill.digits);
}

void setPaint(DOMElement* properties, const Paint& paint)
{
    auto* old = properties->getFirstElementChild();
    while (old != nullptr && !isFill(*old)) old = old->getNextElementSibling();
    if (old != nullptr && recolor(old, paint)) return;
    auto* fill = makeFill(properties->getOwnerDocument(), paint);
    if (old == nullptr)
        insertInOrder(properties, fill);
    else
        properties->replaceChild(fill, old)->release();
}

void setLine(DOMElement* line, const BorderSettings& border, const Paint& paint)
{
    setPaint(line, paint);
    if (border.width) {
        const auto emu = static_cast<unsigned long>(std::lround(*border.width * emuPerPoint));
        line->setAttribute(u"w", num2str(emu).c_str());
    }
    if (const auto* cap = findCap(border)) line->setAttribute(u"cap", cap);
    if (border.compound != nullptr) line->setAttribute(u"cmpd", border.compound);
    if (border.dash != nullptr) insertInOrder(line, u"a:prstDash", border.dash);
    if (border.join == nullptr) return;
    auto* join = insertInOrder(line, border.join);
    if (std::u16string_view(border.join) == u"a:miter") join->setAttribute(u"lim", u"800000");
}

void hide(DOMElement* properties)
{
    for (const auto* name : {u"a:noFill", u"a:solidFill", u"a:gradFill", u"a:pattFill"})
        removeChildren(properties, name);
    insertInOrder(properties, u"a:noFill");
}

void setShape(DOMElement* properties, const ShapeSettings& settings)
{
    const Paint white{{u"FFFFFF"}};
    if (settings.fill.isSet()) setPaint(properties, resolve(settings.fill, white));
    if (settings.border.isSet())
        setLine(insertInOrder(properties, u"a:ln"), settings.border, resolve(settings.border.fill, white));
}

Paint getStandardPaint(const ChartPart& part, const SeriesPart& series)
{
    constexpr std::uint32_t seeThrough = 30;
    const auto name = getGroupName(series);
    const bool isArea = name == u"c:areaChart" && !part.context.options.stacking;
    const bool coversOthers = isArea || (name == u"c:radarChart" && !isLine(series));
    // Bubbles cover those of their own series too.
    const bool isCovering = name == u"c:bubbleChart" || (coversOthers && part.series.size() > 1);
    Paint paint{part.getStandardColor(series)};
    if (isCovering) paint.transparency = seeThrough;
    return paint;
}

Paint findPaint(ChartPart& part, const SeriesPart& series)
{
    const auto settings = readShape(part, series.series.getFormat().get(), {&series});
    return resolve(series, settings, getStandardPaint(part, series));
}

DOMElement* getPoint(DOMElement* series, unsigned long position)
{
    const auto points = findChildren(series, u"c:dPt");
    for (auto* point : points)
        if (getPosition(point) == position) return point;
    auto* made = insertInOrder(series, u"c:dPt");
    for (auto* point : points)
        if (getPosition(point) > position) {
            series->insertBefore(made, point);
            break;
        }
    appendElement(made, u"c:idx", num2str(position).c_str());
    if (findChild(series, u"c:invertIfNegative") != nullptr) appendElement(made, u"c:invertIfNegative", u"0");
    appendElement(made, u"c:bubble3D", u"0");
    return made;
}

DOMElement* drawThinLine(DOMElement* line)
{
    line->setAttribute(u"w", u"9525");
    return appendElement(appendElement(line, u"a:solidFill"), u"a:schemeClr", u"tx1");
}

void drawGreyLine(DOMElement* parent)
{
    auto* color = drawThinLine(appendElement(appendElement(parent, u"c:spPr"), u"a:ln"));
    appendElement(color, u"a:lumMod", u"65000");
    appendElement(color, u"a:lumOff", u"35000");
}

const DOMElement* findFill(const DOMElement* properties)
{
    for (const auto* name : {u"a:solidFill", u"a:gradFill", u"a:pattFill"})
        if (const auto* fill = properties == nullptr ? nullptr : findChild(properties, name)) return fill;
    return nullptr;
}

bool isLine(const SeriesPart& series)
{
    for (const auto* name : {u"c:lineChart", u"c:scatterChart", u"c:stockChart"})
        if (getGroupName(series) == name) return true;
    if (getGroupName(series) != u"c:radarChart") return false;
    const auto* style =
        findChild(static_cast<const DOMElement*>(series.element->getParentNode()), u"c:radarStyle");
    return std::u16string_view(style->getAttribute(u"val")) != u"filled";
}

bool hasSlices(const SeriesPart& series)
{
    const auto group = getGroupName(series);
    return group == u"c:pieChart" || group == u"c:doughnutChart";
}

}  // namespace quillon::report
