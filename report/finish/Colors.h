#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "report/finish/ChartContext.h"

namespace quillon::report {

/// A colour on its way into the markup: one that an author chose, or the automatic one of a position.
struct PaintColor {
    /// Six hexadecimal digits; empty for the automatic colour.
    std::u16string digits = {};
    /// Of the series or slice, 0-based.
    std::size_t position = 0;
};

enum class PaintStyle : std::uint8_t { Solid, Gradient, Pattern };

/// What the inside of a shape or a line is painted with.
struct Paint {
    PaintColor color;
    PaintStyle style = PaintStyle::Solid;
    /// Percent, 0 to 100.
    std::uint32_t transparency = 0;
};

/// Makes a:solidFill, a:gradFill or a:pattFill, not yet in the tree. A gradient runs from the colour to its
/// lighter tint, a pattern is a wide upward diagonal on white. Automatic colours are the accents of the
/// theme, in rounds of six, each round lighter or darker than the others; after nine they repeat.
xercesc::DOMElement* makeFill(xercesc::DOMDocument* doc, const Paint& paint);

/// Gives a fill of the writer's the paint, where that is a plain colour: a chart of thousands of slices has
/// most of its elements there. Returns whether it is one.
bool recolor(xercesc::DOMElement* fill, const Paint& paint);

/// The colours of the series, or of the slices of a pie, whose objects set none: those that the options
/// name, or automatic ones.
class StandardColors {
 public:
    /// Throws: ChartError for more colours than there are series or slices, and for a name that none has.
    explicit StandardColors(const ChartContext& context);

    /// By the 0-based position of the series or slice; `passed` of those before it take no turn.
    PaintColor get(std::size_t position, std::size_t passed = 0) const;

 private:
    void setOwn(const ChartContext& context);
    void setNamed(const ChartContext& context);

    /// By position; empty where the palette's turn is.
    std::vector<std::u16string> own_;
    std::vector<std::u16string> palette_;
};

}  // namespace quillon::report
