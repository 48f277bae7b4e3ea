#pragma once

#include <cstddef>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "report/package/Archive.h"
#include "support/Export.h"

namespace quillon::report {

/// How one part refers to another.
struct QUILLON_EXPORT Relationship {
    std::string id;
    std::string type;
    /// The name of a part, or an address as it is written when that is external.
    std::string target;
    bool isExternal = false;

    /// The last word of the type, "chart", which is the same in every dialect.
    std::string_view getKind() const;
};

/// A package of parts that exists: a document or a workbook. What is not changed stays as it is, byte for
/// byte.
///
/// Names of parts are without a leading slash, "word/document.xml"; upper and lower case are the same.
/// Copying is cheap: copies share the file that was opened. Use one copy on one thread at a time; copies may
/// be on different threads.
class QUILLON_EXPORT Package {
 public:
    /// Throws: std::runtime_error with a sentence on what the file is instead, or what is wrong with it.
    explicit Package(std::string bytes, const ArchiveLimits& limits = {});
    /// The same for a file; the sentence names it.
    static Package open(const std::string& path);

    /// Throws: std::runtime_error that says what the package is when it is not a word-processing document.
    void requireDocument() const;
    /// The part that everything starts from, "word/document.xml".
    const std::string& getMainPart() const;
    /// Whether the document is written in the strict dialect, which has namespaces of its own.
    bool isStrict() const;
    /// Whether the document is signed; a changed one is so no longer.
    bool isSigned() const;

    /// The names of all parts, in the order of the file.
    std::vector<std::string> getPartNames() const;
    bool hasPart(std::string_view name) const;
    /// The content of a part, until it is changed. Throws: std::runtime_error when it is missing or damaged.
    const std::string& getPart(std::string_view name) const;
    /// Replaces the content of a part. Throws: std::runtime_error when it is missing.
    void setPart(std::string_view name, std::string bytes);
    /// The same for a content that is packed already, and is unpacked when it is asked for. It differs from
    /// the one before.
    void setPart(std::string_view name, PackedBytes packed);
    /// Throws: std::runtime_error when there is such a part already.
    void addPart(const std::string& name, std::string bytes, std::string_view contentType);
    /// Removes a part with its relationships and its content type; what refers to it is the caller's.
    void removePart(std::string_view name);
    /// The same for all parts that no relationship leads to.
    void removeLooseParts();
    /// The first of prefix1suffix, prefix2suffix ... that is free.
    std::string findFreeName(const std::string& prefix, const std::string& suffix) const;

    /// Empty without one.
    std::string getContentType(std::string_view name) const;
    void setContentType(std::string_view name, std::string_view contentType);

    /// The relationships of a part; those of the package for "".
    std::vector<Relationship> getRelationships(std::string_view source) const;
    /// Adds a relationship to a part, and returns its id. Kind: "chart", "package"; its type is of the
    /// dialect of the document.
    std::string addRelationship(std::string_view source, std::string_view kind, std::string_view target);
    /// The same for an address outside the package.
    std::string addExternalRelationship(std::string_view source, std::string_view kind,
                                        std::string_view address);
    /// Lets a relationship, which may be external, lead to a part. Throws: std::runtime_error when there is
    /// none of that id.
    void retarget(std::string_view source, std::string_view id, std::string_view kind,
                  std::string_view target);
    /// Removes those relationships of a part of which `isRemoved` says so.
    void removeRelationships(std::string_view source,
                             const std::function<bool(const Relationship&)>& isRemoved);

    /// The package: a file that has not been changed is returned as it was opened.
    std::string toBytes() const;

 private:
    struct Opened;
    struct Content;

    const std::string* findPart(const std::string& key) const;
    std::vector<std::string> findLooseParts() const;
    void forget(const std::string& key);
    std::string makeType(std::string_view kind) const;
    std::string appendRelationship(std::string_view source, std::string_view kind, const std::string& target,
                                   bool isExternal);

    std::shared_ptr<const Opened> opened_;
    /// What is not as it was opened, by key; null where it is removed.
    std::map<std::string, std::shared_ptr<const Content>> changes_;
    /// The names of the parts that the file did not have, in the order they came.
    std::vector<std::string> added_;
};

}  // namespace quillon::report
