#pragma once

#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>

namespace quillon::report {

/// Appends a c:numRef to cells and their values. What is not a finite number is left out. Format: as in a
/// cell.
xercesc::DOMElement* appendNumbers(xercesc::DOMElement* parent, const std::u16string& cells,
                                   const std::u16string& format, const std::vector<double>& values);

}  // namespace quillon::report
