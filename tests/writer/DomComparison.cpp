#include "tests/writer/DomComparison.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <map>
#include <stdexcept>
#include <vector>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>
#include <xercesc/sax/HandlerBase.hpp>
#include <xercesc/util/XMLString.hpp>

#include "support/Text.h"

namespace quillon::chart {

using xercesc::DOMElement;
using xercesc::DOMNode;

namespace {

struct Release {
    template <typename Object>
    void operator()(Object* object) const
    {
        object->release();
    }
};

xercesc::DOMImplementation* getImplementation()
{
    return xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS");
}

std::string getName(const DOMElement& element)
{
    return toUtf8(element.getTagName());
}

std::vector<DOMElement*> getChildren(const DOMElement& element)
{
    std::vector<DOMElement*> children;
    for (auto* child = element.getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        children.push_back(child);
    return children;
}

/// The attributes in the order of their names: `a="1" b="2"`. An element made in a namespace declares it, as
/// it does in a file.
std::u16string getAttributes(const DOMElement& element)
{
    std::map<std::u16string, std::u16string> attributes;
    if (const auto* uri = element.getNamespaceURI())
        attributes[std::u16string(u"xmlns:") + element.getPrefix()] = uri;
    const auto* list = element.getAttributes();
    for (XMLSize_t i = 0; i < list->getLength(); ++i)
        attributes[list->item(i)->getNodeName()] = list->item(i)->getNodeValue();
    std::u16string text;
    for (const auto& [name, value] : attributes)
        text.append(text.empty() ? u"" : u" ").append(name).append(u"=\"").append(value).append(u"\"");
    return text;
}

/// The text that stands in the element itself.
std::u16string getText(const DOMElement& element)
{
    std::u16string text;
    for (const auto* node = element.getFirstChild(); node != nullptr; node = node->getNextSibling())
        if (node->getNodeType() != DOMNode::ELEMENT_NODE) text += node->getNodeValue();
    return text;
}

/// A text as it is printed; characters that UTF-8 cannot hold as the number of their unit.
std::string quote(const std::u16string& text)
{
    return testing::PrintToString(text);
}

std::string describe(const std::string& what, const std::string& expected, const std::string& actual)
{
    return ": " + what + ": expected " + expected + ", got " + actual;
}

/// "/c:ser[2]": the second of its name among its siblings.
std::string getStep(const std::vector<DOMElement*>& siblings, std::size_t index)
{
    const auto name = getName(*siblings[index]);
    std::size_t position = 0;
    for (std::size_t i = 0; i <= index; ++i) position += getName(*siblings[i]) == name ? 1 : 0;
    return "/" + name + "[" + std::to_string(position) + "]";
}

/// The difference with its path below the two elements.
std::string findDifferenceBelow(const DOMElement& expected, const DOMElement& actual)
{
    if (getName(expected) != getName(actual)) return describe("element", getName(expected), getName(actual));
    if (getAttributes(expected) != getAttributes(actual))
        return describe("attributes", quote(getAttributes(expected)), quote(getAttributes(actual)));
    if (getText(expected) != getText(actual))
        return describe("text", quote(getText(expected)), quote(getText(actual)));
    const auto wanted = getChildren(expected);
    const auto present = getChildren(actual);
    for (std::size_t i = 0; i < std::min(wanted.size(), present.size()); ++i)
        if (const auto below = findDifferenceBelow(*wanted[i], *present[i]); !below.empty())
            return getStep(wanted, i) + below;
    if (wanted.size() == present.size()) return {};
    return describe("number of elements", std::to_string(wanted.size()), std::to_string(present.size()));
}

/// White space in an element that holds other elements is layout.
void removeLayout(DOMElement& element)
{
    const auto children = getChildren(element);
    if (children.empty()) return;
    for (auto* node = element.getFirstChild(); node != nullptr;) {
        auto* next = node->getNextSibling();
        const bool isText = node->getNodeType() == DOMNode::TEXT_NODE;
        if (isText &&
            std::u16string_view(node->getNodeValue()).find_first_not_of(u" \t\n") == std::u16string::npos)
            element.removeChild(node)->release();
        node = next;
    }
    for (auto* child : children) removeLayout(*child);
}

std::string toMarkup(const DOMNode& node)
{
    const std::unique_ptr<xercesc::DOMLSSerializer, Release> serializer(
        getImplementation()->createLSSerializer());
    auto* text = serializer->writeToString(&node);
    auto markup = toUtf8(text);
    xercesc::XMLString::release(&text);
    return markup;
}

/// Writes the element on one line where it fits, otherwise each of its children on lines of their own.
void layOut(std::ostream& file, const DOMElement& element, const std::string& indent)
{
    constexpr std::size_t width = 120;
    const auto line = indent + toMarkup(element);
    const auto children = getChildren(element);
    if (line.size() <= width || children.empty()) {
        file << line << '\n';
        return;
    }
    const auto emptyTag = toMarkup(*element.cloneNode(false));
    file << indent << emptyTag.substr(0, emptyTag.size() - 2) << ">\n";
    for (const auto* child : children) layOut(file, *child, indent + "  ");
    file << indent << "</" << getName(element) << ">\n";
}

std::string readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error(path + " cannot be read; UPDATE_GOLDENS=1 writes it.");
    return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

Document makeDocument()
{
    return {getImplementation()->createDocument(), Release()};
}

Document makeDocument(const char16_t* rootName)
{
    auto document = makeDocument();
    document->appendChild(document->createElement(rootName));
    return document;
}

Document parseMarkup(const std::string& markup)
{
    const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(markup.data()), markup.size(),
                                            "markup");
    xercesc::HandlerBase errors;
    xercesc::XercesDOMParser parser;
    parser.setErrorHandler(&errors);
    try {
        parser.parse(source);
    } catch (const xercesc::SAXException& failure) {
        throw std::runtime_error(toUtf8(failure.getMessage()));
    }
    Document document(parser.adoptDocument(), Release());
    removeLayout(*document->getDocumentElement());
    return document;
}

std::string findDifference(const DOMElement& expected, const DOMElement& actual)
{
    const auto below = findDifferenceBelow(expected, actual);
    return below.empty() ? below : getName(expected) + below;
}

testing::AssertionResult isSameTree(const DOMElement& expected, const DOMElement& actual)
{
    const auto difference = findDifference(expected, actual);
    if (difference.empty()) return testing::AssertionSuccess();
    return testing::AssertionFailure() << difference;
}

testing::AssertionResult matchesGolden(const std::string& name, const DOMElement& actual)
{
    const auto path = QUILLON_GOLDEN_FOLDER "/" + name + ".xml";
    const char* update = std::getenv("UPDATE_GOLDENS");
    if (update != nullptr && std::string(update) == "1") {
        std::ofstream file(path);
        layOut(file, actual, "");
    }
    return isSameTree(*parseMarkup(readFile(path))->getDocumentElement(), actual);
}

}  // namespace quillon::chart
