#include "report/document/TemplateParts.h"

#include <charconv>
#include <stdexcept>

#include "report/options/Length.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

std::int64_t readTwips(const XmlElement& element, std::string_view attribute, std::int64_t otherwise)
{
    const auto text = element ? element.getAttribute(Ns::Word, attribute).value_or("") : std::string();
    std::int64_t number = otherwise;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number * emuPerTwip;
}

}  // namespace

void requireTemplate(const Package& package, const std::string& path)
{
    package.requireDocument();
    if (package.isStrict())
        throw std::runtime_error(path +
                                 ": a template in the strict format; save a copy as an ordinary document.");
    if (package.getContentType(package.getMainPart()).find("macroEnabled") != std::string::npos)
        throw std::runtime_error(path + ": the template holds macros; save a copy without them.");
}

std::string findRelated(const Package& package, std::string_view kind)
{
    for (const auto& relationship : package.getRelationships(package.getMainPart()))
        if (relationship.getKind() == kind && !relationship.isExternal) return relationship.target;
    return {};
}

std::string readRelated(const std::optional<Package>& package, std::string_view kind)
{
    const auto name = package ? findRelated(*package, kind) : std::string();
    return name.empty() ? std::string() : package->getPart(name);
}

std::int64_t readTextWidth(const XmlElement& section)
{
    const auto size = section.findChild("pgSz");
    const auto margins = section.findChild("pgMar");
    return readTwips(size, "w", 11'906) - readTwips(margins, "left", 1'440) -
           readTwips(margins, "right", 1'440);
}

std::vector<PageLineReference> readPageLines(const XmlElement& section)
{
    std::vector<PageLineReference> references;
    for (const auto child : section.getChildren())
        for (const auto* name : {"headerReference", "footerReference"})
            if (child.is(Ns::Word, name))
                references.push_back(
                    {u"w:" + toUtf16(name), toUtf16(child.getAttribute(Ns::Word, "type").value_or("default")),
                     toUtf16(child.getAttribute(Ns::OfficeRelationships, "id").value_or(""))});
    return references;
}

}  // namespace quillon::report
