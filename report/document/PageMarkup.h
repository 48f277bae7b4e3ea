#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "report/document/Blocks.h"

/// Pages: their size, margins, headers and footers.
namespace quillon::report {

/// A reference from a section to a header or footer part.
struct PageLineReference {
    /// "w:headerReference" or "w:footerReference".
    std::u16string element;
    /// "default", "first" or "even".
    std::u16string type;
    std::u16string relationshipId;
};

/// Throws: std::runtime_error for another paper, and margins that are not lengths or leave no room for text.
void checkPageSetup(const PageSetup& setup);

/// The width of the text, in English Metric Units.
std::int64_t getTextWidth(const PageSetup& setup);

/// Appends a w:sectPr to `parent`.
void appendSection(xercesc::DOMElement* parent, const PageSetup& setup,
                   const std::vector<PageLineReference>& references);

}  // namespace quillon::report
