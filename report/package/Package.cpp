#include "report/package/Package.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <functional>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <unordered_map>
#include <unordered_set>
#include <utility>

#include "report/options/QuotedText.h"
#include "report/package/Edits.h"
#include "report/package/FileKind.h"
#include "report/package/PartNames.h"
#include "report/package/XmlText.h"
#include "support/Text.h"

namespace quillon::report {

/// The new content of a part: as bytes, packed once, however often it is written, or packed, and then the
/// other way round.
struct Package::Content {
    explicit Content(std::string content) : bytes(std::move(content)) {}
    explicit Content(PackedBytes content) : isPacked(true), packed(std::move(content)) {}

    const std::string& getBytes() const
    {
        if (isPacked) std::call_once(once, [this] { bytes = unpack(packed); });
        return bytes;
    }
    const PackedBytes& getPacked() const
    {
        if (!isPacked) std::call_once(once, [this] { packed = pack(bytes); });
        return packed;
    }

    bool isPacked = false;
    mutable std::once_flag once;
    mutable std::string bytes;
    mutable PackedBytes packed;
};

/// The file as it was opened, which copies share.
struct Package::Opened {
    Opened(std::string bytes, const ArchiveLimits& limits) : archive(std::move(bytes), limits) {}

    Archive archive;
    /// Of each entry; empty for a folder.
    std::vector<std::string> keys;
    std::unordered_map<std::string, std::size_t> indices;
    std::string mainPart;
    bool isStrict = false;
    bool isSigned = false;
    /// What the parts refer to, by the key of the part that says so, once it was asked for.
    mutable std::mutex mutex;
    mutable std::unordered_map<std::string, std::vector<Relationship>> relationships;
};

namespace {

constexpr auto contentTypesPart = "[Content_Types].xml";
constexpr std::string_view strictTypes = "http://purl.oclc.org/ooxml/officeDocument/relationships/";
constexpr std::string_view transitionalTypes =
    "http://schemas.openxmlformats.org/officeDocument/2006/relationships/";

[[noreturn]] void failMissing(std::string_view name)
{
    throw std::runtime_error("The file has no part " + quoteText(name, 200) + ".");
}

/// The row of the content types for a part itself, or for its extension.
XmlElement findContentType(const XmlElement& types, std::string_view name, std::string_view row)
{
    const bool isOverride = row == "Override";
    const auto key = makePartKey(name);
    const auto wanted = isOverride ? key : key.substr(key.rfind('.') + 1);
    for (const auto& child : types.getChildren()) {
        if (child.getName() != row) continue;
        const auto value = child.getAttribute(isOverride ? "PartName" : "Extension").value_or("");
        if ((isOverride ? makePartKey(value) : toLower(value)) == wanted) return child;
    }
    return {};
}

XmlElement findRelationship(const XmlElement& relationships, std::string_view id)
{
    for (const auto& row : relationships.getChildren())
        if (row.getAttribute("Id") == id) return row;
    throw std::runtime_error("There is no relationship " + quoteText(id) + ".");
}

Relationship readRelationship(std::string_view source, const XmlElement& row)
{
    const auto target = row.getAttribute("Target").value_or("");
    const bool isExternal = row.getAttribute("TargetMode") == "External";
    return {row.getAttribute("Id").value_or(""), row.getAttribute("Type").value_or(""),
            isExternal ? target : resolveTarget(source, target), isExternal};
}

std::vector<Relationship> readRelationships(std::string_view source, const std::string& bytes)
{
    std::vector<Relationship> relationships;
    const XmlSpans rows(bytes, nameRelationships(source));
    for (const auto& row : rows.getRoot().getChildren())
        relationships.push_back(readRelationship(source, row));
    return relationships;
}

std::string findFreeId(const XmlElement& relationships)
{
    std::unordered_set<std::string> ids;
    for (const auto& row : relationships.getChildren()) ids.insert(row.getAttribute("Id").value_or(""));
    for (std::size_t number = 1;; ++number) {
        auto id = "rId" + std::to_string(number);
        if (!ids.contains(id)) return id;
    }
}

/// The markup of an element without content; the values are text.
std::string makeRow(std::string_view name,
                    std::initializer_list<std::pair<const char*, std::string_view>> attributes)
{
    std::string row = "<" + std::string(name);
    for (const auto& [key, value] : attributes)
        row += " " + std::string(key) + "=\"" + escapeAttribute(value) + "\"";
    return row + "/>";
}

std::string readFile(const std::string& path)
{
    const auto limit = ArchiveLimits().fileSize;
    std::error_code error;
    if (std::filesystem::is_directory(path, error)) throw std::runtime_error("It is a folder.");
    std::ifstream file(path, std::ios::binary);
    if (!file) throw std::runtime_error(std::string("Cannot read it: ") + std::strerror(errno) + ".");
    std::string bytes;
    constexpr std::size_t chunkSize = std::size_t{1} << 20;
    for (std::string chunk(chunkSize, '\0'); file && bytes.size() <= limit;) {
        file.read(chunk.data(), static_cast<std::streamsize>(chunk.size()));
        bytes.append(chunk, 0, static_cast<std::size_t>(file.gcount()));
    }
    if (file.bad()) throw std::runtime_error("Cannot read it to its end.");
    return bytes;
}

}  // namespace

std::string_view Relationship::getKind() const
{
    return std::string_view(type).substr(type.rfind('/') + 1);
}

Package::Package(std::string bytes, const ArchiveLimits& limits)
{
    const auto opened = std::make_shared<Opened>(requireZip(std::move(bytes)), limits);
    for (const auto& entry : opened->archive.getEntries()) {
        const bool isFolder = entry.name.ends_with('/') || entry.name.ends_with('\\');
        opened->keys.push_back(isFolder ? "" : makePartKey(entry.name));
        const auto& key = opened->keys.back();
        if (!isFolder && !opened->indices.emplace(key, opened->keys.size() - 1).second)
            throw std::runtime_error("The file is refused: it has two entries named " +
                                     quoteText(entry.name, 200) + ".");
        if (key.starts_with("_xmlsignatures/")) opened->isSigned = true;
    }
    opened_ = opened;
    if (hasPart("mimetype") && getPart("mimetype").starts_with("application/vnd.oasis.opendocument"))
        throw std::runtime_error("The file is an OpenDocument file; save it as .docx first.");
    if (!hasPart(contentTypesPart))
        throw std::runtime_error(
            "The file is a zip file, but not a document: it has no [Content_Types].xml.");
    for (const auto& relationship : getRelationships("")) {
        if (relationship.getKind() != "officeDocument" || relationship.isExternal) continue;
        opened->mainPart = relationship.target;
        opened->isStrict = relationship.type.starts_with(strictTypes);
    }
    if (!hasPart(opened->mainPart))
        throw std::runtime_error("The file is a zip file, but not a document: it has no main part.");
}

Package Package::open(const std::string& path)
{
    try {
        return Package(readFile(path));
    } catch (const std::runtime_error& error) {
        throw std::runtime_error(path + ": " + error.what());
    }
}

void Package::requireDocument() const
{
    requireDocumentType(getContentType(getMainPart()));
}

const std::string& Package::getMainPart() const
{
    return opened_->mainPart;
}

bool Package::isStrict() const
{
    return opened_->isStrict;
}

bool Package::isSigned() const
{
    return opened_->isSigned;
}

std::vector<std::string> Package::getPartNames() const
{
    std::vector<std::string> names;
    for (std::size_t i = 0; i < opened_->keys.size(); ++i) {
        const auto& key = opened_->keys[i];
        if (key.empty() || !hasPart(key)) continue;
        names.push_back(opened_->archive.getEntries()[i].name);
        std::ranges::replace(names.back(), '\\', '/');
    }
    names.insert(names.end(), added_.begin(), added_.end());
    return names;
}

/// The content of a part; null when it is missing.
const std::string* Package::findPart(const std::string& key) const
{
    if (const auto change = changes_.find(key); change != changes_.end())
        return change->second ? &change->second->getBytes() : nullptr;
    const auto index = opened_->indices.find(key);
    return index == opened_->indices.end() ? nullptr : &opened_->archive.read(index->second);
}

bool Package::hasPart(std::string_view name) const
{
    const auto key = makePartKey(name);
    const auto change = changes_.find(key);
    return change != changes_.end() ? change->second != nullptr : opened_->indices.contains(key);
}

const std::string& Package::getPart(std::string_view name) const
{
    if (const auto* bytes = findPart(makePartKey(name))) return *bytes;
    failMissing(name);
}

void Package::setPart(std::string_view name, std::string bytes)
{
    const auto key = makePartKey(name);
    if (getPart(name) == bytes) return;
    const auto index = opened_->indices.find(key);
    if (index != opened_->indices.end() && opened_->archive.read(index->second) == bytes)
        changes_.erase(key);
    else
        changes_[key] = std::make_shared<const Content>(std::move(bytes));
}

void Package::setPart(std::string_view name, PackedBytes packed)
{
    if (!hasPart(name)) failMissing(name);
    changes_[makePartKey(name)] = std::make_shared<const Content>(std::move(packed));
}

void Package::addPart(const std::string& name, std::string bytes, std::string_view contentType)
{
    if (hasPart(name)) throw std::runtime_error("The file has a part " + quoteText(name, 200) + " already.");
    const auto key = makePartKey(name);
    if (!opened_->indices.contains(key)) added_.push_back(name);
    changes_[key] = std::make_shared<const Content>(std::move(bytes));
    setContentType(name, contentType);
}

void Package::removePart(std::string_view name)
{
    const XmlSpans types(getPart(contentTypesPart), contentTypesPart);
    if (const auto row = findContentType(types.getRoot(), name, "Override")) {
        Edits edits;
        edits.remove(row.getOuter());
        setPart(contentTypesPart, edits.apply(types));
    }
    forget(makePartKey(name));
    forget(makePartKey(nameRelationships(name)));
}

void Package::forget(const std::string& key)
{
    std::erase_if(added_, [&key](const auto& other) { return makePartKey(other) == key; });
    if (opened_->indices.contains(key))
        changes_[key] = nullptr;
    else
        changes_.erase(key);
}

/// By their keys.
std::vector<std::string> Package::findLooseParts() const
{
    std::unordered_set<std::string> reached = {makePartKey(contentTypesPart),
                                               makePartKey(nameRelationships(""))};
    std::vector<std::string> waiting = {""};
    while (!waiting.empty()) {
        const auto source = std::move(waiting.back());
        waiting.pop_back();
        for (const auto& row : getRelationships(source)) {
            if (row.isExternal || !reached.insert(makePartKey(row.target)).second) continue;
            reached.insert(makePartKey(nameRelationships(row.target)));
            waiting.push_back(row.target);
        }
    }
    std::vector<std::string> loose;
    for (const auto& name : getPartNames())
        if (const auto key = makePartKey(name); !reached.contains(key)) loose.push_back(key);
    return loose;
}

void Package::removeLooseParts()
{
    const auto loose = findLooseParts();
    if (loose.empty()) return;
    const std::unordered_set<std::string_view> keys(loose.begin(), loose.end());
    const XmlSpans types(getPart(contentTypesPart), contentTypesPart);
    Edits edits;
    for (const auto& row : types.getRoot().getChildren())
        if (keys.contains(makePartKey(row.getAttribute("PartName").value_or(""))))
            edits.remove(row.getOuter());
    setPart(contentTypesPart, edits.apply(types));
    for (const auto& key : loose) forget(key);
}

std::string Package::findFreeName(const std::string& prefix, const std::string& suffix) const
{
    for (std::size_t number = 1;; ++number) {
        auto name = prefix;
        name.append(std::to_string(number)).append(suffix);
        if (!hasPart(name)) return name;
    }
}

std::string Package::getContentType(std::string_view name) const
{
    const XmlSpans types(getPart(contentTypesPart), contentTypesPart);
    auto row = findContentType(types.getRoot(), name, "Override");
    if (!row) row = findContentType(types.getRoot(), name, "Default");
    return row ? row.getAttribute("ContentType").value_or("") : "";
}

void Package::setContentType(std::string_view name, std::string_view contentType)
{
    if (getContentType(name) == contentType) return;
    const XmlSpans types(getPart(contentTypesPart), contentTypesPart);
    Edits edits;
    if (const auto row = findContentType(types.getRoot(), name, "Override"))
        edits.setAttribute(row, "ContentType", contentType);
    else
        edits.append(types.getRoot(),
                     makeRow(std::string(types.getRoot().getPrefix()) + "Override",
                             {{"PartName", "/" + encodePartName(name)}, {"ContentType", contentType}}));
    setPart(contentTypesPart, edits.apply(types));
}

std::vector<Relationship> Package::getRelationships(std::string_view source) const
{
    const auto name = nameRelationships(source);
    const auto key = makePartKey(name);
    if (!hasPart(name)) return {};
    if (changes_.contains(key)) return readRelationships(source, getPart(name));
    {
        const std::scoped_lock lock(opened_->mutex);
        const auto known = opened_->relationships.find(key);
        if (known != opened_->relationships.end()) return known->second;
    }
    auto relationships = readRelationships(source, getPart(name));
    const std::scoped_lock lock(opened_->mutex);
    opened_->relationships.emplace(key, relationships);
    return relationships;
}

std::string Package::makeType(std::string_view kind) const
{
    if (kind.find("://") != std::string_view::npos) return std::string(kind);
    return std::string(isStrict() ? strictTypes : transitionalTypes) + std::string(kind);
}

std::string Package::addRelationship(std::string_view source, std::string_view kind, std::string_view target)
{
    return appendRelationship(source, kind, writeTarget(source, target), false);
}

std::string Package::addExternalRelationship(std::string_view source, std::string_view kind,
                                             std::string_view address)
{
    return appendRelationship(source, kind, std::string(address), true);
}

std::string Package::appendRelationship(std::string_view source, std::string_view kind,
                                        const std::string& target, bool isExternal)
{
    const auto name = nameRelationships(source);
    if (!hasPart(name))
        addPart(name,
                "<?xml version=\"1.0\" encoding=\"UTF-8\" standalone=\"yes\"?>\n<Relationships xmlns=\"" +
                    std::string(getUri(Ns::PackageRelationships)) + "\"/>",
                "application/vnd.openxmlformats-package.relationships+xml");
    const XmlSpans rows(getPart(name), name);
    auto id = findFreeId(rows.getRoot());
    const auto element = std::string(rows.getRoot().getPrefix()) + "Relationship";
    const auto type = makeType(kind);
    Edits edits;
    edits.append(
        rows.getRoot(),
        isExternal
            ? makeRow(element, {{"Id", id}, {"Type", type}, {"Target", target}, {"TargetMode", "External"}})
            : makeRow(element, {{"Id", id}, {"Type", type}, {"Target", target}}));
    setPart(name, edits.apply(rows));
    return id;
}

void Package::retarget(std::string_view source, std::string_view id, std::string_view kind,
                       std::string_view target)
{
    const auto name = nameRelationships(source);
    const XmlSpans rows(getPart(name), name);
    const auto row = findRelationship(rows.getRoot(), id);
    Edits edits;
    edits.setAttribute(row, "Type", makeType(kind));
    edits.setAttribute(row, "Target", writeTarget(source, target));
    if (row.getAttribute("TargetMode")) edits.setAttribute(row, "TargetMode", "Internal");
    setPart(name, edits.apply(rows));
}

void Package::removeRelationships(std::string_view source,
                                  const std::function<bool(const Relationship&)>& isRemoved)
{
    const auto name = nameRelationships(source);
    if (!hasPart(name)) return;
    const XmlSpans rows(getPart(name), name);
    Edits edits;
    for (const auto& row : rows.getRoot().getChildren())
        if (isRemoved(readRelationship(source, row))) edits.remove(row.getOuter());
    setPart(name, edits.apply(rows));
}

std::string Package::toBytes() const
{
    const auto& archive = opened_->archive;
    if (changes_.empty()) return archive.getBytes();
    ArchiveWriter writer;
    writer.reserve(archive.getBytes().size());
    for (std::size_t i = 0; i < opened_->keys.size(); ++i) {
        const auto& entry = archive.getEntries()[i];
        const auto change = changes_.find(opened_->keys[i]);
        if (change == changes_.end())
            writer.copy(archive, entry);
        else if (change->second)
            writer.add(entry.name, change->second->getPacked(), entry.time);
    }
    for (const auto& name : added_) writer.add(name, changes_.at(makePartKey(name))->getPacked(), firstDay);
    return writer.finish(archive.getComment());
}

}  // namespace quillon::report
