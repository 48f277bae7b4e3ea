#pragma once

#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "report/package/Zip.h"

namespace quillon::report {

/// The types that a part may have, behind "application/vnd.openxmlformats-" and before "+xml".
namespace content_type {
inline constexpr auto mainDocument = "officedocument.wordprocessingml.document.main";
inline constexpr auto styles = "officedocument.wordprocessingml.styles";
inline constexpr auto settings = "officedocument.wordprocessingml.settings";
inline constexpr auto theme = "officedocument.theme";
inline constexpr auto chart = "officedocument.drawingml.chart";
inline constexpr auto coreProperties = "package.core-properties";
inline constexpr auto extendedProperties = "officedocument.extended-properties";
}  // namespace content_type

/// Full names of relationship types: the last word, behind what nearly all share.
std::string makeRelationshipType(std::string_view lastWord);
inline constexpr auto corePropertiesRelationship =
    "http://schemas.openxmlformats.org/package/2006/relationships/metadata/core-properties";

/// A package under construction: parts with their content types, and what relates them.
class PackageWriter {
 public:
    /// Adds a part that has a content type of its own. Requires: a name that no part has.
    void addPart(std::string name, std::string bytes, const char* contentType);
    /// Adds a part whose extension tells what it is, "xlsx" or "png"; it is stored, not compressed, because
    /// it is compressed itself.
    void addFile(std::string name, std::string bytes);
    /// Relates the part `from`, or for an empty name the package, to `target`, a path from the part's folder.
    void relate(const std::string& from, const std::string& id, const std::string& type,
                const std::string& target);
    /// The same for a target outside the package, an address.
    void relateOutside(const std::string& from, const std::string& id, const std::string& type,
                       const std::string& target);

    /// The package, a zip file. The times in it are fixed, so that equal parts give equal bytes.
    std::string toBytes();

 private:
    struct Relationship {
        std::string id;
        std::string type;
        std::string target;
        bool isOutside;
    };
    struct Override {
        std::string name;
        const char* contentType;
    };

    std::string makeContentTypes() const;
    static std::string makeRelationships(const std::vector<Relationship>& relationships);

    std::vector<Part> parts_;
    std::vector<Override> overrides_;
    std::map<std::string, std::string> defaults_;
    std::map<std::string, std::vector<Relationship>> relationships_;
};

}  // namespace quillon::report
