#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <xercesc/dom/DOM.hpp>

namespace quillon::chart {

/// A document that releases itself.
using Document = std::shared_ptr<xercesc::DOMDocument>;

/// A new document without a root.
Document makeDocument();
/// A new document whose root is an empty element.
Document makeDocument(const char16_t* rootName);
/// Parses UTF-8 `markup` without namespaces and drops the white space between its elements.
/// Throws: std::runtime_error with the parser's message.
Document parseMarkup(const std::string& markup);

/// Compares two trees, attributes in any order and texts exactly; a failure names the first element that
/// differs.
testing::AssertionResult isSameTree(const xercesc::DOMElement& expected, const xercesc::DOMElement& actual);

/// Compares a tree with `golden/<name>.xml`. With UPDATE_GOLDENS=1 in the environment the file is written
/// first.
testing::AssertionResult matchesGolden(const std::string& name, const xercesc::DOMElement& actual);

}  // namespace quillon::chart
