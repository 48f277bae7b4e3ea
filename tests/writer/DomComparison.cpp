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

std::vector<DOMElement*> getChildren(const DOMElement& element)
{
    std::vector<DOMElement*> children;
    for (auto* child = element.getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        children.push_back(child);
    return children;
}

/// The attributes by name. An element made in a namespace declares it, as it does in a file.
std::map<std::u16string, std::u16string> getAttributes(const DOMElement& element)
{
    std::map<std::u16string, std::u16string> attributes;
    if (const auto* uri = element.getNamespaceURI())
        attributes[std::u16string(u"xmlns:") + element.getPrefix()] = uri;
    const auto* list = element.getAttributes();
    for (XMLSize_t i = 0; i < list->getLength(); ++i)
        attributes[list->item(i)->getNodeName()] = list->item(i)->getNodeValue();
    return attributes;
}

/// The text that stands in the element itself.
std::u16string getText(const DOMElement& element)
{
    std::u16string text;
    for (const auto* node = element.getFirstChild(); node != nullptr; node = node->getNextSibling())
        if (node->getNodeType() != DOMNode::ELEMENT_NODE) text += node->getNodeValue();
    return text;
}

/// One line for each element: its path, attributes in the order of their names, and text. Characters that
/// UTF-8 cannot hold stand as the number of their unit.
void printLines(const DOMElement& element, const std::string& parent, std::vector<std::string>& lines)
{
    const auto path = parent + "/" + toUtf8(element.getTagName());
    lines.push_back(path + " " + testing::PrintToString(getAttributes(element)) + " " +
                    testing::PrintToString(getText(element)));
    for (const auto* child : getChildren(element)) printLines(*child, path, lines);
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
    file << indent << "</" << toUtf8(element.getTagName()) << ">\n";
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

testing::AssertionResult isSameTree(const DOMElement& expected, const DOMElement& actual)
{
    std::vector<std::string> wanted;
    std::vector<std::string> present;
    printLines(expected, "", wanted);
    printLines(actual, "", present);
    const auto [want, got] = std::mismatch(wanted.begin(), wanted.end(), present.begin(), present.end());
    if (want == wanted.end() && got == present.end()) return testing::AssertionSuccess();
    return testing::AssertionFailure() << "expected " << (want == wanted.end() ? "no more" : *want)
                                       << ", got " << (got == present.end() ? "no more" : *got);
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
