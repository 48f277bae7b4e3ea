#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillon::report {

/// A member of an object. A template, since a node holds members and is what they hold.
template <typename Node>
struct JsonMemberOf {
    std::string name;
    /// Of the name.
    std::size_t position = 0;
    Node value;
};

/// A value of a JSON text, with its position there. All members of an object are kept, those of the same name
/// too.
struct JsonNode {
    enum class Kind : unsigned char { Null, Flag, Number, Text, List, Object };

    Kind kind = Kind::Null;
    /// Where the value starts: bytes from the start of the text.
    std::size_t position = 0;
    bool flag = false;
    double number = 0;
    /// Of a text, in UTF-8.
    std::string text = {};
    std::vector<JsonNode> items = {};
    std::vector<JsonMemberOf<JsonNode>> members = {};

    bool is(Kind other) const { return kind == other; }
    /// The member of that name, or null.
    const JsonNode* find(std::string_view name) const;
};

using JsonMember = JsonMemberOf<JsonNode>;

/// Reads JSON in which comments may stand. `name` is the file's in sentences.
/// Throws: std::runtime_error with file, line and column for a text that is not well-formed, a number that is
/// too large, and more than 100 levels.
JsonNode parseJson(const std::string& text, const std::string& name);

/// "job.json:3:12", for a position in the text; columns count characters, from 1.
std::string describePosition(const std::string& text, const std::string& name, std::size_t position);

}  // namespace quillon::report
