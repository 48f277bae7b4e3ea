#include "report/document/TemplateParts.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include "report/document/Styles.h"
#include "report/options/Length.h"
#include "report/options/PlainNumber.h"
#include "report/package/Edits.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

std::int64_t readTwips(const XmlElement& element, std::string_view attribute, std::int64_t otherwise)
{
    const auto text = element ? element.getAttribute(Ns::Word, attribute).value_or("") : std::string();
    return readPlainNumber<std::int64_t>(text).value_or(otherwise) * emuPerTwip;
}

void readReference(const XmlElement& child, const char* name, std::vector<PageLineReference>& references)
{
    if (!child.is(Ns::Word, name)) return;
    const auto element = u"w:" + toUtf16(name);
    const auto type = toUtf16(child.getAttribute(Ns::Word, "type").value_or("default"));
    std::erase_if(references,
                  [&](const auto& other) { return other.element == element && other.type == type; });
    references.push_back(
        {element, type, toUtf16(child.getAttribute(Ns::OfficeRelationships, "id").value_or(""))});
}

void readSection(const XmlElement& section, std::vector<PageLineReference>& references)
{
    for (const auto child : section.getChildren())
        for (const auto* name : {"headerReference", "footerReference"})
            readReference(child, name, references);
}

/// A section's properties stand in its last paragraph, those of the last section at the end of the body.
void readSections(const XmlElement& blocks, std::vector<PageLineReference>& references)
{
    for (const auto block : blocks.getChildren())
        if (block.is(Ns::Word, "p")) {
            if (const auto section = block.findPath({"pPr", "sectPr"})) readSection(section, references);
        } else if (block.is(Ns::Word, "sectPr")) {
            readSection(block, references);
        } else if (block.is(Ns::Word, "sdt")) {
            if (const auto content = block.findChild("sdtContent")) readSections(content, references);
        }
}

/// The kinds of parts that the look of a document is made of, and that its text does not name one by one.
constexpr std::array<std::string_view, 11> lookKinds = {
    "styles",    "stylesWithEffects", "theme",    "settings",  "webSettings",     "fontTable",
    "numbering", "footnotes",         "endnotes", "customXml", "glossaryDocument"};

void removeRelationshipsWithout(Package& package, std::string_view part, const std::string& markup)
{
    package.removeRelationships(part, [&markup](const Relationship& row) {
        return std::ranges::find(lookKinds, row.getKind()) == lookKinds.end() &&
               markup.find('"' + row.id + '"') == std::string::npos &&
               markup.find('\'' + row.id + '\'') == std::string::npos;
    });
}

/// Lines above notes stay, which have a type.
void removeNotes(Package& package, std::string_view kind)
{
    const auto name = findRelated(package, kind);
    if (name.empty()) return;
    const XmlSpans xml(package.getPart(name), name);
    Edits edits;
    for (const auto& note : xml.getRoot().getChildren())
        if (note.getAttribute(Ns::Word, "type").value_or("normal") == "normal") edits.remove(note.getOuter());
    package.setPart(name, edits.apply(xml));
    removeRelationshipsWithout(package, name, package.getPart(name));
}

}  // namespace

void removeText(Package& package)
{
    const auto main = package.getMainPart();
    const XmlSpans xml(package.getPart(main), main);
    const auto body = xml.getRoot().findChild("body");
    if (!body) return;
    const auto section = body.findChild("sectPr");
    auto kept = std::string(xml.getText().substr(0, body.getInner().begin));
    if (section) kept += xml.getText(section.getOuter());
    for (const auto& line : readPageLines(body)) kept += '"' + toUtf8(line.relationshipId) + '"';
    removeRelationshipsWithout(package, main, kept);
    for (const auto* kind : {"footnotes", "endnotes"}) removeNotes(package, kind);
    package.removeRelationships("", [](const Relationship& row) { return row.getKind() == "thumbnail"; });
    package.removeLooseParts();
}

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

ThemeColors readTheme(const Package& package)
try {
    const auto name = findRelated(package, "theme");
    return name.empty() ? ThemeColors() : readThemeColors(package.getPart(name));
} catch (const std::runtime_error&) {
    return {};
}

std::string readLanguage(const Package& package)
{
    const auto name = findRelated(package, "styles");
    return package.hasPart(name) ? Styles(package.getPart(name)).getLanguage() : std::string();
}

std::int64_t readTextWidth(const XmlElement& section)
{
    const auto size = section.findChild("pgSz");
    const auto margins = section.findChild("pgMar");
    return readTwips(size, "w", 11'906) - readTwips(margins, "left", 1'440) -
           readTwips(margins, "right", 1'440);
}

std::vector<PageLineReference> readPageLines(const XmlElement& body)
{
    std::vector<PageLineReference> references;
    readSections(body, references);
    return references;
}

}  // namespace quillon::report
