#pragma once

#include <memory>
#include <new>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>

#include "chart/writer/DomElements.h"
#include "support/Export.h"

namespace quillon::report {

using chart::appendElement;
using chart::appendTextElement;
using chart::Release;

using DocumentPointer = std::unique_ptr<xercesc::DOMDocument, Release>;

/// Runs `work`, what a caller asked for. Callers expect std::bad_alloc where memory runs out; what Xerces
/// throws is not a std::exception.
template <typename Work>
auto translateXercesErrors(const Work& work)
{
    try {
        return work();
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    }
}

DocumentPointer createDocument();
/// Declares the namespaces w, r and wp, those of the elements of a main document.
void declareNamespaces(xercesc::DOMElement* element);

/// The first child element of that name, or null.
xercesc::DOMElement* findChild(const xercesc::DOMElement* parent, const char16_t* name);
/// All child elements of that name, in order.
std::vector<xercesc::DOMElement*> findChildren(const xercesc::DOMElement* parent, const char16_t* name);
/// The element at the end of a path of child names; null when a step is missing.
xercesc::DOMElement* findPath(xercesc::DOMElement* from, std::initializer_list<const char16_t*> names);

/// Removes the children of that name.
void removeChildren(xercesc::DOMElement* parent, const char16_t* name);
/// Makes `<name val="value"/>`, not yet in the tree.
xercesc::DOMElement* makeElement(xercesc::DOMDocument* doc, const char16_t* name, const std::u16string& val);
/// Gives an attribute another value. One that the element has keeps its text node: setAttribute would make a
/// new one, which takes ten times as long.
void replaceAttribute(xercesc::DOMElement* element, const char16_t* name, const char16_t* value);
/// Inserts `child` behind `previous`, or first when that is null.
void insertAfter(xercesc::DOMElement* parent, xercesc::DOMNode* child, xercesc::DOMNode* previous);

/// Throws: std::runtime_error that names `field` when XML cannot hold `text`.
void requireXmlText(std::u16string_view text, const std::string& field);
/// The same for UTF-8, which it returns as UTF-16; text that is not well-formed is refused as well.
std::u16string readXmlText(const std::string& text, const std::string& field);
/// `text` in the notation that chart caches and worksheets have for characters that XML cannot hold: _x0001_.
/// What reads like it in the text itself, "_x0041_", becomes "_x005F_x0041_": every text reads back as it
/// was.
QUILLON_EXPORT std::u16string escapeCharacters(std::u16string_view text);

/// Appends the element that `markup`, in UTF-8, holds, with the prefixes that it is written with.
/// Throws: std::runtime_error for markup that is not well-formed.
xercesc::DOMElement* appendMarkup(xercesc::DOMElement* parent, const std::string& markup);

/// The bytes of a document in UTF-8, with its declaration, or of an element.
std::string serialise(const xercesc::DOMNode* node);

}  // namespace quillon::report
