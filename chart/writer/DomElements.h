#pragma once

#include <stdexcept>
#include <string>
#include <xercesc/dom/DOM.hpp>

/// How elements are made, by the writer and by whoever works on its documents.
namespace quillon::chart {

/// Gives what Xerces made back to it.
struct Release {
    template <typename T>
    void operator()(T* object) const
    {
        object->release();
    }
};

/// What is said when markup cannot become a part of a document.
inline constexpr auto importFailure = "DOCXChartWriter could not import parsed markup.";

/// Throws: std::runtime_error with the text importFailure when `doc` or `parent` is null, or `parent` is of
/// another document.
inline void requireParent(const xercesc::DOMDocument* doc, const xercesc::DOMNode* parent)
{
    if (doc == nullptr || parent == nullptr || (parent != doc && parent->getOwnerDocument() != doc))
        throw std::runtime_error(importFailure);
}

/// Appends a new element to `parent` and returns it. Throws: as requireParent.
inline xercesc::DOMElement* appendElement(xercesc::DOMDocument* doc, xercesc::DOMNode* parent,
                                          const XMLCh* name)
{
    requireParent(doc, parent);
    auto* element = doc->createElement(name);
    parent->appendChild(element);
    return element;
}

/// Appends a new element of a namespace to `parent` and returns it. Throws: as requireParent.
inline xercesc::DOMElement* appendElementNS(xercesc::DOMDocument* doc, xercesc::DOMNode* parent,
                                            const XMLCh* namespaceUri, const XMLCh* name)
{
    requireParent(doc, parent);
    auto* element = doc->createElementNS(namespaceUri, name);
    parent->appendChild(element);
    return element;
}

/// Appends a new element with the attribute `val` to `parent` and returns it.
inline xercesc::DOMElement* appendElement(xercesc::DOMDocument* doc, xercesc::DOMNode* parent,
                                          const XMLCh* name, const XMLCh* val)
{
    auto* element = appendElement(doc, parent, name);
    element->setAttribute(u"val", val);
    return element;
}

/// Appends a new element that holds `text` to `parent` and returns it; an empty text leaves the element
/// empty.
inline xercesc::DOMElement* appendTextElement(xercesc::DOMDocument* doc, xercesc::DOMNode* parent,
                                              const XMLCh* name, const std::u16string& text)
{
    auto* element = appendElement(doc, parent, name);
    if (!text.empty()) element->appendChild(doc->createTextNode(text.c_str()));
    return element;
}

/// The same for a parent that stands in its document.
inline xercesc::DOMElement* appendElement(xercesc::DOMElement* parent, const XMLCh* name)
{
    return appendElement(parent->getOwnerDocument(), parent, name);
}

inline xercesc::DOMElement* appendElement(xercesc::DOMElement* parent, const XMLCh* name, const XMLCh* val)
{
    return appendElement(parent->getOwnerDocument(), parent, name, val);
}

inline xercesc::DOMElement* appendTextElement(xercesc::DOMElement* parent, const XMLCh* name,
                                              const std::u16string& text)
{
    return appendTextElement(parent->getOwnerDocument(), parent, name, text);
}

}  // namespace quillon::chart
