#include "report/package/Xml.h"

#include <algorithm>
#include <array>
#include <stdexcept>
#include <utility>
#include <xercesc/framework/MemBufFormatTarget.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/Wrapper4InputSource.hpp>

#include "report/options/ChartError.h"
#include "support/ForkLock.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

bool isHighSurrogate(char16_t c)
{
    return c >= 0xD800 && c < 0xDC00;
}

bool isLowSurrogate(char16_t c)
{
    return c >= 0xDC00 && c < 0xE000;
}

/// Whether XML can hold a UTF-16 unit that is not part of a pair.
bool isXmlCharacter(char16_t character)
{
    if (character < 0x20) return character == u'\t' || character == u'\n' || character == u'\r';
    return character < 0xD800 || (character >= 0xE000 && character < 0xFFFE);
}

/// The number of units, 1 or 2, of the character at `at` that XML can hold; 0 when it cannot hold it.
std::size_t getXmlCharacterLength(std::u16string_view text, std::size_t at)
{
    if (isHighSurrogate(text[at])) return at + 1 < text.size() && isLowSurrogate(text[at + 1]) ? 2 : 0;
    return isXmlCharacter(text[at]) ? 1 : 0;
}

bool isHexDigit(char16_t c)
{
    return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f') || (c >= u'A' && c <= u'F');
}

/// Whether an underscore begins what reads like the notation, as in "_x0041_". The underscore at its end may
/// be the one that begins the notation of the character behind.
bool looksEscaped(std::u16string_view text, std::size_t at)
{
    constexpr std::size_t length = 7;
    if (at + length > text.size() || text.substr(at, 2) != u"_x") return false;
    for (std::size_t i = at + 2; i < at + 6; ++i)
        if (!isHexDigit(text[i])) return false;
    return text[at + 6] == u'_' || getXmlCharacterLength(text, at + 6) == 0;
}

std::u16string escapeUnit(char16_t unit)
{
    return u"_x" +
           toUpperString(num2HexStr(static_cast<unsigned char>(unit >> 8)) +
                         num2HexStr(static_cast<unsigned char>(unit))) +
           u"_";
}

/// Asked for once: the registry has a lock, which a process that is forked off meanwhile would never get.
xercesc::DOMImplementation& getImplementation()
{
    static auto& implementation = *xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
    return implementation;
}

}  // namespace

DocumentPointer createDocument()
{
    return DocumentPointer(getImplementation().createDocument());
}

void declareNamespaces(DOMElement* element)
{
    constexpr std::array<std::pair<const char16_t*, const char16_t*>, 3> namespaces = {{
        {u"xmlns:w", u"http://schemas.openxmlformats.org/wordprocessingml/2006/main"},
        {u"xmlns:r", u"http://schemas.openxmlformats.org/officeDocument/2006/relationships"},
        {u"xmlns:wp", u"http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing"},
    }};
    for (const auto& [name, uri] : namespaces) element->setAttribute(name, uri);
}

void requireXmlText(std::u16string_view text, const std::string& field)
{
    for (std::size_t at = 0; at < text.size();) {
        const auto length = getXmlCharacterLength(text, at);
        if (length == 0)
            throw ChartError(
                field,
                "character " + std::to_string(at + 1) + " (U+" + toUtf8(escapeUnit(text[at])).substr(2, 4) +
                    ") cannot stand in a document; only tab and line break of the control characters can.");
        at += length;
    }
}

std::u16string readXmlText(const std::string& text, const std::string& field)
{
    std::u16string wide;
    try {
        wide = toUtf16(text);
    } catch (const std::runtime_error& error) {
        throw ChartError(field, error.what());
    }
    requireXmlText(wide, field);
    return wide;
}

std::u16string escapeCharacters(std::u16string_view text)
{
    std::u16string escaped;
    for (std::size_t at = 0; at < text.size();) {
        const auto length = getXmlCharacterLength(text, at);
        if (length == 0 || looksEscaped(text, at))
            escaped += escapeUnit(text[at]);
        else
            escaped += text.substr(at, length);
        at += std::max<std::size_t>(length, 1);
    }
    return escaped;
}

DOMElement* findChild(const DOMElement* parent, const char16_t* name)
{
    for (auto* child = parent->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        if (std::u16string_view(child->getTagName()) == name) return child;
    return nullptr;
}

std::vector<DOMElement*> findChildren(const DOMElement* parent, const char16_t* name)
{
    std::vector<DOMElement*> found;
    for (auto* child = parent->getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        if (std::u16string_view(child->getTagName()) == name) found.push_back(child);
    return found;
}

DOMElement* findPath(DOMElement* from, std::initializer_list<const char16_t*> names)
{
    for (const auto* name : names)
        if (from != nullptr) from = findChild(from, name);
    return from;
}

void removeChildren(DOMElement* parent, const char16_t* name)
{
    for (auto* child : findChildren(parent, name)) parent->removeChild(child)->release();
}

DOMElement* makeElement(xercesc::DOMDocument* doc, const char16_t* name, const std::u16string& val)
{
    auto* element = doc->createElement(name);
    element->setAttribute(u"val", val.c_str());
    return element;
}

void replaceAttribute(DOMElement* element, const char16_t* name, const char16_t* value)
{
    auto* attribute = element->getAttributeNode(name);
    auto* text = attribute == nullptr ? nullptr : attribute->getFirstChild();
    if (text == nullptr)
        element->setAttribute(name, value);
    else
        text->setNodeValue(value);
}

void insertAfter(DOMElement* parent, xercesc::DOMNode* child, xercesc::DOMNode* previous)
{
    parent->insertBefore(child, previous == nullptr ? parent->getFirstChild() : previous->getNextSibling());
}

std::unique_ptr<xercesc::DOMLSParser, Release> makeParser()
{
    const ForkLock lock;
    return std::unique_ptr<xercesc::DOMLSParser, Release>(
        getImplementation().createLSParser(xercesc::DOMImplementationLS::MODE_SYNCHRONOUS, nullptr));
}

DOMElement* appendMarkup(DOMElement* parent, const std::string& markup)
{
    const auto parser = makeParser();
    parser->getDomConfig()->setParameter(xercesc::XMLUni::fgDOMNamespaces, false);
    parser->getDomConfig()->setParameter(xercesc::XMLUni::fgDOMDisallowDoctype, true);
    xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(markup.data()), markup.size(),
                                      u"markup", false);
    const xercesc::Wrapper4InputSource input(&source, false);
    auto* parsed = parser->parse(&input);
    if (parsed == nullptr || parsed->getDocumentElement() == nullptr)
        throw std::runtime_error("A part of the document is not well-formed.");
    auto* imported = parent->getOwnerDocument()->importNode(parsed->getDocumentElement(), true);
    return static_cast<DOMElement*>(parent->appendChild(imported));
}

std::string serialise(const xercesc::DOMNode* node)
{
    const std::unique_ptr<xercesc::DOMLSSerializer, Release> serializer(
        getImplementation().createLSSerializer());
    const std::unique_ptr<xercesc::DOMLSOutput, Release> output(getImplementation().createLSOutput());
    xercesc::MemBufFormatTarget target(0x10000);
    output->setByteStream(&target);
    output->setEncoding(u"UTF-8");
    try {
        if (serializer->write(node, output.get()))
            return {reinterpret_cast<const char*>(target.getRawBuffer()), target.getLen()};
    } catch (const xercesc::DOMException&) {
        // Falls through: its message names a character, not the place.
    }
    throw std::runtime_error("A part of the document could not be serialised.");
}

}  // namespace quillon::report
