#pragma once

#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace quillon::report {

/// What an XPath finds in the markup of a part: the texts of all nodes with "|" between, or the text of a
/// number, as that of count().
inline std::string readXPath(const std::string& markup, const std::string& path)
{
    const std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> doc(
        xmlReadMemory(markup.data(), static_cast<int>(markup.size()), nullptr, nullptr, XML_PARSE_HUGE),
        xmlFreeDoc);
    const std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)> context(
        xmlXPathNewContext(doc.get()), xmlXPathFreeContext);
    const auto toXml = [](const char* text) { return reinterpret_cast<const xmlChar*>(text); };
    for (const auto& [prefix, uri] :
         {std::pair("c", "http://schemas.openxmlformats.org/drawingml/2006/chart"),
          std::pair("a", "http://schemas.openxmlformats.org/drawingml/2006/main"),
          std::pair("w", "http://schemas.openxmlformats.org/wordprocessingml/2006/main"),
          std::pair("wp", "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing")})
        xmlXPathRegisterNs(context.get(), toXml(prefix), toXml(uri));
    const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> found(
        xmlXPathEvalExpression(toXml(path.c_str()), context.get()), xmlXPathFreeObject);
    if (!found) throw std::runtime_error("No XPath: " + path);
    const auto toText = [](xmlChar* text) {
        const std::unique_ptr<xmlChar, decltype(xmlFree)> owner(text, xmlFree);
        return std::string(reinterpret_cast<const char*>(text));
    };
    if (found->type != XPATH_NODESET) return toText(xmlXPathCastToString(found.get()));
    std::string texts;
    for (int i = 0; found->nodesetval != nullptr && i < found->nodesetval->nodeNr; ++i)
        texts += (i > 0 ? "|" : "") + toText(xmlXPathCastNodeToString(found->nodesetval->nodeTab[i]));
    return texts;
}

}  // namespace quillon::report
