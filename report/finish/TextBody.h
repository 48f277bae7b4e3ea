#pragma once

#include <string>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOM.hpp>

namespace quillon::report {

/// The lines of a text, without their ends.
std::vector<std::u16string> splitLines(std::u16string_view text);

/// Fills a c:txPr with the size that all texts but the title have, 9 points.
void fillTextProperties(xercesc::DOMElement* body);

/// Fills a c:rich with a paragraph for each line of `text`, in the size and grey of the numbers of an axis.
/// Rotation: degrees, clockwise.
void fillAxisText(xercesc::DOMElement* body, const std::u16string& text, int rotation);
/// The same in the colour of labels, and upright.
void fillLabelText(xercesc::DOMElement* body, const std::u16string& text);

}  // namespace quillon::report
