#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// Documents and workbooks as other programs see them: by libzip and expat, and by none of our own readers.
namespace quillon::fuzz {

/// Contents of parts by their names.
using Parts = std::map<std::string, std::string>;

/// Ends the program unless `bytes` are a sound zip file whose names are different and lead nowhere else.
Parts readParts(const std::string& bytes);

/// A zip file of the parts, as they are.
std::string writeParts(const Parts& parts);

struct XmlTree {
    /// Without its namespace.
    std::string name = {};
    std::map<std::string, std::string> attributes = {};
    /// What stands between the tags of this element alone.
    std::string text = {};
    std::vector<XmlTree> children = {};

    /// The first child of that name, or null.
    const XmlTree* find(std::string_view child) const;
    /// The element at the end of a path of names. Ends the program where a step is missing.
    const XmlTree& get(std::initializer_list<std::string_view> path) const;
    std::vector<const XmlTree*> findAll(std::string_view child) const;
    /// Visits this element and all below it.
    void visit(const std::function<void(const XmlTree&)>& visitor) const;
};

/// Ends the program, with the name of the part, unless `bytes` are well-formed, in UTF-8 whatever their
/// declaration says.
XmlTree readXml(const std::string& name, const std::string& bytes);

/// Ends the program unless `bytes` are a sound package of well-formed parts, and so are packages in it.
Parts readSoundPackage(const std::string& bytes);

}  // namespace quillon::fuzz
