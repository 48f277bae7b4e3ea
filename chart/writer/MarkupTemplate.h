#pragma once

#include <initializer_list>
#include <string>
#include <utility>
#include <vector>
#include <xercesc/dom/DOM.hpp>

namespace quillon::chart {

/// A fixed block of elements, taken once from a parsed document and then built in place wherever it is
/// needed, with the same result as importing the parsed document and far faster.
///
/// Some places of the block take another value in each use: the `val` attribute of an element, or the text of
/// an element that has no `val`. Unchanging after construction, so threads may share it.
class MarkupTemplate {
 public:
    /// A place for a value: the n-th element of that name in document order, counting from 0.
    struct Slot {
        const char16_t* elementName;
        std::size_t n;
    };

    /// Requires: every slot names an element of `document`, in document order.
    MarkupTemplate(const xercesc::DOMDocument& document, std::initializer_list<Slot> slots);

    /// Appends the block to `parent`, with one value per slot in the order of the slots, and returns its
    /// root.
    xercesc::DOMElement* appendTo(xercesc::DOMDocument* doc, xercesc::DOMElement* parent,
                                  std::initializer_list<const char16_t*> values) const;

 private:
    struct Element {
        std::u16string name;
        std::size_t depth;
        std::vector<std::pair<std::u16string, std::u16string>> attributes;
        std::u16string text;
        bool isSlot = false;
    };

    void record(const xercesc::DOMElement& element, std::size_t depth);
    void markSlot(const Slot& slot);

    std::vector<Element> elements_;
};

}  // namespace quillon::chart
