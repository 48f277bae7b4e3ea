#pragma once

#include <string>
#include <xercesc/dom/DOM.hpp>

namespace quillon::report {

/// Of all texts but the title, in hundredths of a point.
inline constexpr int plainSize = 900;

/// Fills a c:txPr or c:rich: a paragraph for each line of `text`, in the grey and size of the axes' numbers.
/// Rotation: degrees, clockwise. An empty text leaves the properties alone.
void fillTextBody(xercesc::DOMElement* body, int rotation, const std::u16string& text = {});

}  // namespace quillon::report
