#include "chart/writer/MarkupTemplate.h"

#include <array>
#include <stdexcept>

#include "chart/writer/DomElements.h"

namespace quillon::chart {
namespace {

constexpr std::size_t maximumDepth = 16;
constexpr std::u16string_view valueAttribute = u"val";

/// Sets the attributes, the one of a slot to `value`. Returns whether `value` found its attribute.
template <typename Attributes>
bool setAttributes(xercesc::DOMElement* element, const Attributes& attributes, const char16_t* value)
{
    bool used = false;
    for (const auto& [name, fixed] : attributes) {
        const bool isPlace = value != nullptr && name == valueAttribute;
        element->setAttribute(name.c_str(), isPlace ? value : fixed.c_str());
        used = used || isPlace;
    }
    return used;
}

}  // namespace

MarkupTemplate::MarkupTemplate(const xercesc::DOMDocument& document, std::initializer_list<Slot> slots)
    : slotCount_(slots.size())
{
    record(*document.getDocumentElement(), 0);
    std::size_t next = 0;
    for (const auto& slot : slots) next = markSlot(slot, next);
}

void MarkupTemplate::record(const xercesc::DOMElement& element, std::size_t depth)
{
    if (depth + 1 >= maximumDepth) throw std::logic_error("MarkupTemplate: the block is nested too deeply.");
    auto& recorded = elements_.emplace_back(Element{element.getTagName(), depth, {}, {}});
    const auto* attributes = element.getAttributes();
    for (XMLSize_t i = 0; i < attributes->getLength(); ++i)
        recorded.attributes.emplace_back(attributes->item(i)->getNodeName(),
                                         attributes->item(i)->getNodeValue());
    if (element.getFirstElementChild() == nullptr) recorded.text = element.getTextContent();
    for (const auto* child = element.getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        record(*child, depth + 1);
}

std::size_t MarkupTemplate::markSlot(const Slot& slot, std::size_t from)
{
    std::size_t n = 0;
    for (std::size_t i = 0; i < elements_.size(); ++i) {
        if (elements_[i].name != slot.elementName || n++ != slot.n) continue;
        if (i < from) throw std::logic_error("MarkupTemplate: the slots are not in document order.");
        elements_[i].isSlot = true;
        return i + 1;
    }
    throw std::logic_error("MarkupTemplate: a slot names no element of the block.");
}

void MarkupTemplate::requireUse(const xercesc::DOMDocument* doc, const xercesc::DOMElement* parent,
                                std::size_t valueCount) const
{
    if (valueCount != slotCount_)
        throw std::logic_error("MarkupTemplate: expected one value for each slot of the block.");
    requireParent(doc, parent);
}

xercesc::DOMElement* MarkupTemplate::appendTo(xercesc::DOMDocument* doc, xercesc::DOMElement* parent,
                                              std::initializer_list<const char16_t*> values) const
{
    requireUse(doc, parent, values.size());
    std::array<xercesc::DOMElement*, maximumDepth> open{};
    const auto* nextValue = values.begin();
    for (const auto& element : elements_) {
        auto* made = doc->createElement(element.name.c_str());
        const auto* value = element.isSlot ? *nextValue++ : nullptr;
        const bool used = setAttributes(made, element.attributes, value);
        const auto* text = value != nullptr && !used ? value : element.text.c_str();
        if (*text != 0) made->appendChild(doc->createTextNode(text));
        open[element.depth] = made;
        if (element.depth > 0) open[element.depth - 1]->appendChild(made);
    }
    parent->appendChild(open[0]);
    return open[0];
}

}  // namespace quillon::chart
