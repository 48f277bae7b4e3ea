#pragma once

#include <gtest/gtest.h>

#include <string>
#include <xercesc/dom/DOM.hpp>

namespace quillon::chart {

/// The element as UTF-8 markup, on one line.
std::string toMarkup(const xercesc::DOMElement& element);

/// Compares an element, laid out in lines, with `golden/<name>.xml`; a failure shows the first line that
/// differs. With UPDATE_GOLDENS=1 in the environment the file is written first.
testing::AssertionResult matchesGolden(const std::string& name, const xercesc::DOMElement& element);

}  // namespace quillon::chart
