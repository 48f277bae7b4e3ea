#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>
#include <xercesc/dom/DOM.hpp>
#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/parsers/XercesDOMParser.hpp>

#include "support/Text.h"

namespace quillon::report {

/// A part of a package, to be asked for places in it: "c:ser[2]/c:spPr/a:ln/@w". A path starts at all
/// elements of its first name, wherever they are; "[2]" keeps the second of a step.
class Markup {
 public:
    explicit Markup(const std::string& bytes)
    {
        const xercesc::MemBufInputSource source(reinterpret_cast<const XMLByte*>(bytes.data()), bytes.size(),
                                                u"part", false);
        parser_->parse(source);
    }

    /// The attributes, or the texts of the elements, that the path leads to, with " " between; an element
    /// without text gives its name, and a path that leads nowhere "-".
    std::string find(std::string_view path) const
    {
        std::vector<const xercesc::DOMElement*> found = {nullptr};
        std::string result;
        while (!path.empty()) {
            const auto step = path.substr(0, path.find('/'));
            path.remove_prefix(std::min(path.size(), step.size() + 1));
            if (step[0] == '@') return join(found, step.substr(1));
            found = take(found, step);
        }
        return join(found, {});
    }

 private:
    using Elements = std::vector<const xercesc::DOMElement*>;

    static void collect(const xercesc::DOMElement* parent, const std::u16string& name, bool deep,
                        Elements& found)
    {
        for (auto* child = parent->getFirstElementChild(); child != nullptr;
             child = child->getNextElementSibling()) {
            if (name == child->getTagName()) found.push_back(child);
            if (deep) collect(child, name, deep, found);
        }
    }

    /// From null, all elements of the name; from an element, its children.
    Elements take(const Elements& from, std::string_view step) const
    {
        const auto bracket = step.find('[');
        const auto name = toUtf16(step.substr(0, bracket));
        Elements found;
        for (const auto* element : from)
            collect(element == nullptr ? parser_->getDocument()->getDocumentElement() : element, name,
                    element == nullptr, found);
        if (bracket == std::string_view::npos) return found;
        const auto number = std::stoul(std::string(step.substr(bracket + 1)));
        return number <= found.size() ? Elements{found[number - 1]} : Elements{};
    }

    static std::u16string getText(const xercesc::DOMElement& element)
    {
        const std::u16string text = element.getTextContent();
        return text.empty() ? element.getTagName() : text;
    }

    static std::string join(const Elements& found, std::string_view attribute)
    {
        std::string joined;
        for (const auto* element : found) {
            if (!attribute.empty() && !element->hasAttribute(toUtf16(attribute).c_str())) continue;
            if (!joined.empty()) joined += ' ';
            joined += toUtf8(attribute.empty() ? getText(*element)
                                               : element->getAttribute(toUtf16(attribute).c_str()));
        }
        return joined.empty() ? "-" : joined;
    }

    std::unique_ptr<xercesc::XercesDOMParser> parser_ = std::make_unique<xercesc::XercesDOMParser>();
};

}  // namespace quillon::report
