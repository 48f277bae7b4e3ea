#pragma once

#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

namespace quillon::report {

/// A part of a package, to be asked by XPath for what is in it.
class MarkupReader {
 public:
    explicit MarkupReader(const std::string& markup)
        : doc_(
              xmlReadMemory(markup.data(), static_cast<int>(markup.size()), nullptr, nullptr, XML_PARSE_HUGE),
              xmlFreeDoc),
          context_(xmlXPathNewContext(doc_.get()), xmlXPathFreeContext)
    {
        for (const auto& [prefix, uri] :
             {std::pair("c", "http://schemas.openxmlformats.org/drawingml/2006/chart"),
              std::pair("c15", "http://schemas.microsoft.com/office/drawing/2012/chart"),
              std::pair("a", "http://schemas.openxmlformats.org/drawingml/2006/main"),
              std::pair("w", "http://schemas.openxmlformats.org/wordprocessingml/2006/main"),
              std::pair("wp", "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing")})
            xmlXPathRegisterNs(context_.get(), toXml(prefix), toXml(uri));
    }

    /// The texts of all nodes that the path leads to; the one text of a number, as that of count().
    std::vector<std::string> list(const std::string& path) const
    {
        const std::unique_ptr<xmlXPathObject, decltype(&xmlXPathFreeObject)> found(
            xmlXPathEvalExpression(toXml(path.c_str()), context_.get()), xmlXPathFreeObject);
        if (!found) throw std::runtime_error("No XPath: " + path);
        if (found->type != XPATH_NODESET) return {take(xmlXPathCastToString(found.get()))};
        std::vector<std::string> texts;
        for (int i = 0; found->nodesetval != nullptr && i < found->nodesetval->nodeNr; ++i)
            texts.push_back(take(xmlXPathCastNodeToString(found->nodesetval->nodeTab[i])));
        return texts;
    }

    /// The same for a path that starts anywhere, as "c:ser[2]/c:spPr/a:ln/@w": the texts with " " between,
    /// and
    /// "-" where it leads nowhere.
    std::string find(const std::string& path) const
    {
        const auto texts = list("//" + path);
        return texts.empty() ? "-" : join(texts, " ");
    }

    static std::string join(const std::vector<std::string>& texts, const char* separator)
    {
        std::string joined;
        for (std::size_t i = 0; i < texts.size(); ++i) joined += (i > 0 ? separator : "") + texts[i];
        return joined;
    }

 private:
    static const xmlChar* toXml(const char* text) { return reinterpret_cast<const xmlChar*>(text); }

    static std::string take(xmlChar* text)
    {
        const std::unique_ptr<xmlChar, decltype(xmlFree)> owner(text, xmlFree);
        return reinterpret_cast<const char*>(text);
    }

    std::unique_ptr<xmlDoc, decltype(&xmlFreeDoc)> doc_;
    std::unique_ptr<xmlXPathContext, decltype(&xmlXPathFreeContext)> context_;
};

/// What an XPath finds in the markup of a part, with "|" between the texts.
inline std::string readXPath(const std::string& markup, const std::string& path)
{
    return MarkupReader::join(MarkupReader(markup).list(path), "|");
}

}  // namespace quillon::report
