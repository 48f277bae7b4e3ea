#include "report/package/PackageWriter.h"

#include <array>
#include <stdexcept>

#include "report/package/Xml.h"
#include "support/Text.h"

namespace quillon::report {

using xercesc::DOMElement;

namespace {

/// The content types of files that are known by their extension.
constexpr std::array<std::pair<std::string_view, const char*>, 4> fileTypes = {{
    {"xlsx", "application/vnd.openxmlformats-officedocument.spreadsheetml.sheet"},
    {"png", "image/png"},
    {"jpeg", "image/jpeg"},
    {"jpg", "image/jpeg"},
}};

const char* findFileType(std::string_view extension)
{
    for (const auto& [known, type] : fileTypes)
        if (known == extension) return type;
    throw std::logic_error("There is no content type for files named *." + std::string(extension) + ".");
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

/// "word/_rels/document.xml.rels" for "word/document.xml".
std::string nameRelationships(const std::string& part)
{
    const auto slash = part.rfind('/');
    const auto folder = slash == std::string::npos ? "" : part.substr(0, slash + 1);
    return folder + "_rels/" + part.substr(folder.size()) + ".rels";
}

}  // namespace

std::string makeRelationshipType(std::string_view lastWord)
{
    return "http://schemas.openxmlformats.org/officeDocument/2006/relationships/" + std::string(lastWord);
}

void PackageWriter::addPart(std::string name, std::string bytes, const char* contentType)
{
    overrides_.push_back({name, contentType});
    parts_.push_back({std::move(name), std::move(bytes)});
}

void PackageWriter::addFile(std::string name, std::string bytes)
{
    const auto extension = name.substr(name.rfind('.') + 1);
    defaults_[extension] = findFileType(extension);
    parts_.push_back({std::move(name), std::move(bytes), false});
}

void PackageWriter::relate(const std::string& from, const std::string& id, const std::string& type,
                           const std::string& target)
{
    relationships_[from].push_back({id, type, target, false});
}

void PackageWriter::relateOutside(const std::string& from, const std::string& id, const std::string& type,
                                  const std::string& target)
{
    relationships_[from].push_back({id, type, target, true});
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
    for (const auto& [extension, type] : defaults_) addDefault(extension, type);
    for (const auto& [name, type] : overrides_) {
        auto* row = appendElement(types, u"Override");
        setText(row, u"PartName", "/" + name);
        setText(row, u"ContentType", "application/vnd.openxmlformats-" + std::string(type) + "+xml");
    }
    return serialise(doc.get());
}

std::string PackageWriter::makeRelationships(const std::vector<Relationship>& relationships)
{
    const auto doc =
        createDocumentOf(u"Relationships", u"http://schemas.openxmlformats.org/package/2006/relationships");
    for (const auto& [id, type, target, isOutside] : relationships) {
        auto* row = appendElement(doc->getDocumentElement(), u"Relationship");
        setText(row, u"Id", id);
        setText(row, u"Type", type);
        setText(row, u"Target", target);
        if (isOutside) row->setAttribute(u"TargetMode", u"External");
    }
    return serialise(doc.get());
}

std::string PackageWriter::toBytes()
{
    std::vector<Part> parts;
    parts.push_back({"[Content_Types].xml", makeContentTypes()});
    for (const auto& [from, relationships] : relationships_)
        parts.push_back({nameRelationships(from), makeRelationships(relationships)});
    for (auto& part : parts_) parts.push_back(std::move(part));
    return zipParts(parts);
}

}  // namespace quillon::report
