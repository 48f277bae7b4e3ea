#pragma once

#include <cstdint>
#include <string>
#include <vector>
#include <xercesc/dom/DOM.hpp>

#include "report/document/DocumentContent.h"
#include "report/document/PageMarkup.h"
#include "report/document/TextMarkup.h"

namespace quillon::report {

/// The sections of a document as it is written: their pages, headers and footers.
class Pages {
 public:
    /// The place is the main part.
    Pages(const DocumentContent& content, TextPlace& place);

    /// The width of the text on the pages of now, in English Metric Units.
    std::int64_t getTextWidth() const { return textWidth_; }
    /// The pages from here on.
    void setUp(const PageSetup& setup);
    /// Appends the properties of the section that ends here.
    void endSection(xercesc::DOMElement* parent);

 private:
    void readLook();
    std::string addPageLine(const PageLine& line, bool isHeader);
    void addPageLines();
    void appendSectionOfLook(xercesc::DOMElement* parent) const;

    const DocumentContent& content_;
    TextPlace& place_;
    PageSetup setup_;
    /// Whether the pages are those of the look.
    bool hasPagesOfLook_ = false;
    std::int64_t textWidth_ = 0;
    std::vector<PageLineReference> pageLines_;
    /// The width of the text that the header and footer suit; 0: there are none yet.
    std::int64_t pageLineWidth_ = 0;
};

}  // namespace quillon::report
