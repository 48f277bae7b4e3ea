#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "report/options/ChartOptions.h"

namespace quillon::report {

/// The colour of a text: the grey of all texts, or black or white on a fill.
enum class TextColor : std::uint8_t { Grey, Black, White };
inline constexpr std::array allTextColors = {TextColor::White, TextColor::Black, TextColor::Grey};

/// The size of all texts of a chart but its title, in points.
double getTextSize(const ChartOptions& options);

/// The lines of a text, without their ends.
std::vector<std::u16string> splitLines(std::u16string_view text);

/// About how wide a text of one line is in the typefaces of office documents, as a multiple of its size.
double getTextWidth(std::u16string_view text);

/// Fills a c:txPr with the size that all texts but the title have, 9 points, and the colour.
void fillTextProperties(xercesc::DOMElement* body, TextColor color = TextColor::Grey);

/// Fills a c:rich with a paragraph for each line of `text`, in the size and grey of the numbers of an axis.
/// Rotation: degrees, clockwise.
void fillAxisText(xercesc::DOMElement* body, const std::u16string& text, int rotation);
/// The same for a label, upright.
void fillLabelText(xercesc::DOMElement* body, const std::u16string& text, TextColor color);

}  // namespace quillon::report
