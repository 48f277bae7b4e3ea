#pragma once

#include <string>
#include <xercesc/dom/DOM.hpp>

namespace quillon::report {

/// Fills a c:txPr with the size that all texts but the title have, 9 points.
void fillTextProperties(xercesc::DOMElement* body);

/// Fills a c:rich with a paragraph for each line of `text`, in the size and grey of the numbers of an axis.
/// Rotation: degrees, clockwise.
void fillText(xercesc::DOMElement* body, const std::u16string& text, int rotation);

}  // namespace quillon::report
