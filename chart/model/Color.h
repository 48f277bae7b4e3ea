#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>

#include "chart/model/Object.h"

namespace quillon::chart {

/// A colour, kept in the form in which it was given.
///
/// As text it is one of the 147 colour names ("red", any case), an rgb expression ("rgb(255,128,0)") or
/// hexadecimal digits after "#" ("#ff8000"). As numbers it is red, green and blue between 0 and 1. No form
/// is refused: what cannot be read is written as white.
class QUILLON_EXPORT Color : public Object {
 public:
    Color() = default;
    explicit Color(const std::u16string& text);
    Color(const Color& other) = default;

    /// Makes a host-bindable colour from the arguments of any constructor.
    template <typename... Args>
    static std::shared_ptr<Color> create(Args&&... args)
    {
        struct ColorCreator final : Retracting<Color> {
            using Retracting<Color>::Retracting;
        };
        return std::make_shared<ColorCreator>(std::forward<Args>(args)...);
    }

    /// The colour as given; after a triplet, its six upper-case hexadecimal digits. Default: "white".
    const std::u16string& getText() const { return text_; }
    /// Replaces the text alone: a colour that came from a triplet still says so.
    void setText(const std::u16string& text) { text_ = text; }

    /// Whether the value was assigned as a triplet. Default: false.
    bool isFromTriplet() const { return fromTriplet_; }

    /// Assigns a text; it is kept as it stands, without a check.
    void setFromText(const std::u16string& text);
    /// Assigns red, green and blue, each meant to lie in 0 to 1. A component outside is taken modulo 256 once
    /// scaled to bytes: 1.2 becomes 306 and is kept as 50; what is not finite is kept as 0.
    void setFromTriplet(double red, double green, double blue);

    /// The colour for the markup: a text that begins with "#" as it stands, otherwise six upper-case
    /// hexadecimal digits, "FFFFFF" for whatever cannot be read. A colour assigned as a triplet, digits
    /// without "#", is among these.
    std::u16string toHexString() const;

    /// Red, green and blue in 0 to 1. The first of the six digits is dropped before they are read in pairs,
    /// so that the values are shifted by one digit. Throws: std::runtime_error "Invalid color" when the text
    /// is not an rgb expression.
    std::array<double, 3> toTriplet() const;

    const char* getFullyQualifiedOrcaTypeName() const override;

 private:
    std::u16string text_ = u"white";
    bool fromTriplet_ = false;
};

/// Whether `text` is an rgb expression: "rgb" or "RGB", then three whole numbers up to 255 in parentheses
/// with commas between. White space may stand around the commas and nowhere else.
QUILLON_EXPORT bool isRgbColorString(const std::u16string& text);

/// Red, green and blue of an rgb expression. Requires: isRgbColorString(text), apart from the range of the
/// numbers. Throws: std::out_of_range when `text` has fewer than four characters.
QUILLON_EXPORT std::array<std::uint32_t, 3> parseRgbComponents(const std::u16string& text);

/// The six hexadecimal digits of a colour name in lower case, or null for an unknown name.
QUILLON_EXPORT const std::u16string* findNamedColor(const std::u16string& lowerCaseName);

/// The default colour, six hexadecimal digits, of the series or point at a 0-based position; six colours take
/// turns.
QUILLON_EXPORT const std::u16string& getPaletteColor(unsigned long position);

/// The name under which the host knows the class.
constexpr const char* hostNameOf(std::type_identity<Color> /*type*/)
{
    return "quillon.chart.Color";
}

}  // namespace quillon::chart
