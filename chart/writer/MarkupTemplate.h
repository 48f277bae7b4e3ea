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
/// an element that has no `val`. It never changes once made, so threads may share it.
class MarkupTemplate {
 public:
    /// A place for a value: the n-th element of that name in document order, counting from 0.
    struct Slot {
        const char16_t* elementName;
        std::size_t n;
    };

    /// Throws: std::logic_error when a slot names no element of `document`, or the slots are not in document
    /// order.
    MarkupTemplate(const xercesc::DOMDocument& document, std::initializer_list<Slot> slots);

    /// Appends the block to `parent`, an element of `doc`, with one value per slot in the order of the slots,
    /// and returns its root. A null value leaves the place as the block has it.
    /// Throws, with nothing appended: std::logic_error when there are more or fewer values than slots;
    /// std::runtime_error with the text importFailure when `doc` or `parent` is null, or `parent` is of
    /// another document.
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

    void requireUse(const xercesc::DOMDocument* doc, const xercesc::DOMElement* parent,
                    std::size_t valueCount) const;
    void record(const xercesc::DOMElement& element, std::size_t depth);
    /// Marks the element of a slot, which must come after those before `from`; returns the position behind
    /// it.
    std::size_t markSlot(const Slot& slot, std::size_t from);

    std::vector<Element> elements_;
    std::size_t slotCount_;
};

}  // namespace quillon::chart
