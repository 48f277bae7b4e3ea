#pragma once

#include <xercesc/dom/DOM.hpp>

namespace quillon::report {

/// Puts `child` among the children of `parent` where the schema has its place, behind those of its name, and
/// returns it. Requires: an element of a chart part whose children have an order. A c:ser stands in its
/// group.
xercesc::DOMElement* insertInOrder(xercesc::DOMElement* parent, xercesc::DOMElement* child);
/// The same for a new element of that name, without or with the attribute `val`.
xercesc::DOMElement* insertInOrder(xercesc::DOMElement* parent, const char16_t* name);
xercesc::DOMElement* insertInOrder(xercesc::DOMElement* parent, const char16_t* name, const char16_t* val);

/// Sets the attribute `val` of the first child of that name, which is made where there is none.
xercesc::DOMElement* replaceInOrder(xercesc::DOMElement* parent, const char16_t* name, const char16_t* val);

/// Puts the children of `parent` in the order of the schema and drops those that it does not have: what stood
/// in another kind of group fits its new one.
void putInOrder(xercesc::DOMElement* parent);

}  // namespace quillon::report
