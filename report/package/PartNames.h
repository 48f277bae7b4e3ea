#pragma once

#include <string>
#include <string_view>

/// The names of the parts of a package, and how parts name each other. A name has no slash in front:
/// "word/document.xml"; the package itself is "".
namespace quillon::report {

/// What is the same for all spellings of a part's name.
std::string makePartKey(std::string_view name);

/// The name as it is written in markup: what cannot stand there becomes "%20" and its like.
std::string encodePartName(std::string_view name);

/// The part with the relationships of another: "word/_rels/document.xml.rels" for "word/document.xml".
std::string nameRelationships(std::string_view source);

/// The name of the part that `target` leads to from a part; steps above the root stay at the root.
std::string resolveTarget(std::string_view source, std::string_view target);

/// How a part names another: from its folder, "../embeddings/data.xlsx".
std::string writeTarget(std::string_view source, std::string_view target);

}  // namespace quillon::report
