#pragma once

#include <string>
#include <xercesc/dom/DOM.hpp>

namespace quillon::chart {

/// Appends a new element to `parent` and returns it.
inline xercesc::DOMElement* appendElement(xercesc::DOMDocument* doc, xercesc::DOMNode* parent,
                                          const XMLCh* name)
{
    auto* element = doc->createElement(name);
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

}  // namespace quillon::chart
