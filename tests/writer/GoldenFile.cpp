#include "tests/writer/GoldenFile.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <xercesc/util/XMLString.hpp>

#include "support/Text.h"

namespace quillon::chart {

using xercesc::DOMElement;

namespace {

/// Writes the element on one line where it fits or holds text, otherwise each of its children on lines of
/// their own.
std::string layOut(const DOMElement& element, const std::string& indent = "")
{
    constexpr std::size_t width = 120;
    auto line = indent + toMarkup(element) + "\n";
    const auto count = element.getChildElementCount();
    if (line.size() <= width + 1 || count == 0 || count != element.getChildNodes()->getLength()) return line;
    const auto emptyTag = toMarkup(dynamic_cast<const DOMElement&>(*element.cloneNode(false)));
    auto lines = indent + emptyTag.substr(0, emptyTag.size() - 2) + ">\n";
    for (const auto* child = element.getFirstElementChild(); child != nullptr;
         child = child->getNextElementSibling())
        lines += layOut(*child, indent + "  ");
    return lines + indent + "</" + toUtf8(element.getTagName()) + ">\n";
}

std::string getLine(const std::string& text, std::size_t position)
{
    const auto start = position == 0 ? 0 : text.rfind('\n', position - 1) + 1;
    return text.substr(start, text.find('\n', position) - start);
}

}  // namespace

std::string toMarkup(const DOMElement& element)
{
    auto* serializer = xercesc::DOMImplementationRegistry::getDOMImplementation(u"LS")->createLSSerializer();
    auto* text = serializer->writeToString(&element);
    auto markup = toUtf8(text);
    xercesc::XMLString::release(&text);
    serializer->release();
    return markup;
}

testing::AssertionResult matchesGolden(const std::string& name, const DOMElement& element)
{
    const auto path = QUILLON_GOLDEN_FOLDER "/" + name + ".xml";
    const auto written = layOut(element);
    const char* update = std::getenv("UPDATE_GOLDENS");
    if (update != nullptr && std::string(update) == "1") std::ofstream(path) << written;
    std::ifstream file(path, std::ios::binary);
    const std::string golden(std::istreambuf_iterator<char>(file), {});
    if (written == golden) return testing::AssertionSuccess();
    const auto at = std::mismatch(written.begin(), written.end(), golden.begin(), golden.end()).first;
    const auto position = static_cast<std::size_t>(at - written.begin());
    return testing::AssertionFailure()
           << path << ": expected " << getLine(golden, position) << ", got " << getLine(written, position);
}

}  // namespace quillon::chart
