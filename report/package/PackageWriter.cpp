#include "report/package/PackageWriter.h"

#include <array>
#include <set>

#include "report/package/PartNames.h"
#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

constexpr std::string_view relationshipTypes =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

/// Files whose extension tells what they are; they are compressed themselves.
struct FileType {
    std::string_view extension;
    std::string_view contentType;
};
constexpr std::array fileTypes = {FileType{"xlsx", content_type::workbook},
                                  FileType{"png", content_type::png}, FileType{"jpeg", content_type::jpeg}};

bool isFile(std::string_view contentType)
{
    for (const auto& type : fileTypes)
        if (type.contentType == contentType) return true;
    return false;
}

void setText(DOMElement* element, const char16_t* name, std::string_view value)
{
    element->setAttribute(name, toUtf16(value).c_str());
}

DocumentPointer createDocumentOf(const char16_t* rootName, const char16_t* nameSpace)
{
    auto doc = createDocument();
    doc->setXmlStandalone(true);
    auto* root = doc->createElement(rootName);
    root->setAttribute(u"xmlns", nameSpace);
    doc->appendChild(root);
    return doc;
}

std::string makeRelationships(const std::string& from, const std::vector<Relationship>& relationships)
{
    const auto doc =
        createDocumentOf(u"Relationships", u"http://schemas.openxmlformats.org/package/2006/relationships");
    for (const auto& [id, type, target, isExternal] : relationships) {
        auto* row = appendElement(doc->getDocumentElement(), u"Relationship");
        setText(row, u"Id", id);
        setText(row, u"Type", type);
        setText(row, u"Target", isExternal ? target : writeTarget(from, target));
        if (isExternal) row->setAttribute(u"TargetMode", u"External");
    }
    return serialise(doc.get());
}

/// Adds to `relationships`, and returns the new id.
std::string addTo(std::vector<Relationship>& relationships, const char* kind, const std::string& target,
                  bool isExternal)
{
    auto id = "rId" + std::to_string(relationships.size() + 1);
    const std::string_view word = kind;
    const bool isFull = word.find("://") != std::string_view::npos;
    auto type = isFull ? std::string(word) : std::string(relationshipTypes).append(word);
    relationships.push_back({id, std::move(type), target, isExternal});
    return id;
}

}  // namespace

std::string PackageWriter::findFreeName(const std::string& prefix, const std::string& suffix)
{
    return prefix + std::to_string(++freeNumbers_[prefix]) + suffix;
}

void PackageWriter::addPart(const std::string& name, std::string bytes, const char* contentType)
{
    parts_.push_back({{name, std::move(bytes), !isFile(contentType)}, contentType});
}

std::string PackageWriter::relate(const std::string& from, const char* kind, const std::string& to)
{
    return addTo(relationships_[from], kind, to, false);
}

std::string PackageWriter::relateOutside(const std::string& from, const char* kind,
                                         const std::string& address)
{
    return addTo(relationships_[from], kind, address, true);
}

std::string PackageWriter::makeContentTypes() const
{
    const auto doc =
        createDocumentOf(u"Types", u"http://schemas.openxmlformats.org/package/2006/content-types");
    auto* types = doc->getDocumentElement();
    const auto addDefault = [types](std::string_view extension, std::string_view type) {
        auto* row = appendElement(types, u"Default");
        setText(row, u"Extension", extension);
        setText(row, u"ContentType", type);
    };
    addDefault("rels", "application/vnd.openxmlformats-package.relationships+xml");
    addDefault("xml", "application/xml");
    for (const auto& type : fileTypes) addDefault(type.extension, type.contentType);
    for (const auto& [part, type] : parts_) {
        if (isFile(type)) continue;
        auto* row = appendElement(types, u"Override");
        setText(row, u"PartName", "/" + part.name);
        setText(row, u"ContentType", type);
    }
    return serialise(doc.get());
}

std::string PackageWriter::toBytes()
{
    std::vector<Part> parts;
    parts.push_back({"[Content_Types].xml", makeContentTypes()});
    for (const auto& [from, relationships] : relationships_)
        parts.push_back({nameRelationships(from), makeRelationships(from, relationships)});
    for (auto& typed : parts_) parts.push_back(std::move(typed.part));
    return zipParts(parts);
}

std::string PackageExtender::findFreeName(const std::string& prefix, const std::string& suffix)
{
    return package_.findFreeName(prefix, suffix);
}

void PackageExtender::addPart(const std::string& name, std::string bytes, const char* contentType)
{
    if (!package_.hasPart(name)) return package_.addPart(name, std::move(bytes), contentType);
    package_.setPart(name, std::move(bytes));
    package_.setContentType(name, contentType);
}

std::string PackageExtender::relate(const std::string& from, const char* kind, const std::string& to)
{
    return package_.addRelationship(from, kind, to);
}

std::string PackageExtender::relateOutside(const std::string& from, const char* kind,
                                           const std::string& address)
{
    return package_.addExternalRelationship(from, kind, address);
}

}  // namespace quillon::report
