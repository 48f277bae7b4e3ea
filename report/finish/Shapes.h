#pragma once

#include <optional>
#include <string>
#include <xercesc/dom/DOM.hpp>

#include "chart/model/ShapeFormat.h"
#include "report/finish/ChartPart.h"
#include "report/finish/Colors.h"

/// Shape formats of the chart tree as the markup has them. A value equal to its default counts as not set.
namespace quillon::report {

/// What an author set of a fill.
struct FillSettings {
    /// Six hexadecimal digits; empty where no colour is set.
    std::u16string digits = {};
    PaintStyle style = PaintStyle::Solid;
    /// Percent, 0 to 100; 0 is not set.
    std::uint32_t transparency = 0;

    bool isSet() const { return !digits.empty() || isStyled(); }
    /// Whether anything but a colour is set.
    bool isStyled() const { return style != PaintStyle::Solid || transparency != 0; }
};

/// What an author set of a border; null and nothing are not set.
struct BorderSettings {
    FillSettings fill = {};
    /// Points, 0 to 1584.
    std::optional<double> width = {};
    /// As the markup has them: values of cap, cmpd and prstDash, and the name of the element of the join.
    const char16_t* cap = nullptr;
    const char16_t* compound = nullptr;
    const char16_t* dash = nullptr;
    const char16_t* join = nullptr;

    bool isSet() const { return !fill.digits.empty() || isStyled(); }
    /// Whether anything but a colour is set.
    bool isStyled() const { return fill.isStyled() || width || cap || compound || dash || join; }
};

struct ShapeSettings {
    FillSettings fill = {};
    BorderSettings border = {};
    /// Whether there is a border object at all.
    bool hasBorder = false;
};

/// What cannot be shown is left out with a warning. `format` may be null, and so may what it holds.
ShapeSettings readShape(ChartPart& part, const chart::ShapeFormat* format, const Place& place);

/// The paint of what is drawn with `settings`; what they leave open is that of `standard`.
Paint resolve(const FillSettings& settings, const Paint& standard);
/// The same for a series, or a point in it. A line has the colour of the fill where that is set, else of the
/// border, and the transparency of the border where that is set, else of the fill.
Paint resolve(const SeriesPart& series, const ShapeSettings& settings, const Paint& standard);

/// Whether the border is not an outline of its own: nothing is set of it, or nothing but the colour of the
/// fill, as a format made of one colour has it.
bool isOutlineHidden(const ShapeSettings& settings);

/// Gives a c:spPr, or an a:ln, the paint in place of its own.
void setPaint(xercesc::DOMElement* properties, const Paint& paint);
/// Gives an a:ln the paint, and what else is set of the border.
void setLine(xercesc::DOMElement* line, const BorderSettings& border, const Paint& paint);
/// Leaves a c:spPr, or an a:ln, without paint.
void hide(xercesc::DOMElement* properties);
/// Gives an a:ln the width of gridlines and the colour of texts; returns the element of the colour, which may
/// be made lighter.
xercesc::DOMElement* drawThinLine(xercesc::DOMElement* line);
/// Gives a new element, of error bars or lines between points, such a line in the grey of texts.
void drawGreyLine(xercesc::DOMElement* parent);
/// The fill of a c:spPr or an a:ln; null where it has none, or is null itself.
const xercesc::DOMElement* findFill(const xercesc::DOMElement* properties);
/// Fills a new c:spPr of a label or plot area, whose colours are white where none is set.
void setShape(xercesc::DOMElement* properties, const ShapeSettings& settings);

/// What a series without a format is painted with. Shapes that may cover each other let them shine through.
Paint getStandardPaint(const ChartPart& part, const SeriesPart& series);

/// What a series is painted with: its bars, its slices where they have none of their own, or its line.
Paint findPaint(ChartPart& part, const SeriesPart& series);

/// The c:dPt of a series at a 0-based position, which is made where there is none; they stand in the order of
/// their positions.
xercesc::DOMElement* getPoint(xercesc::DOMElement* series, unsigned long position);

/// Whether the series is drawn as a line, rather than as filled shapes.
bool isLine(const SeriesPart& series);
/// Whether each point of the series has a colour of its own.
bool hasSlices(const SeriesPart& series);

}  // namespace quillon::report
