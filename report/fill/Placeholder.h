#pragma once

#include <cstdint>
#include <string>

namespace quillon::report {

/// What a placeholder can become: text anywhere, a chart in the place of a paragraph or a picture, a table in
/// the place of a paragraph.
enum class PlaceholderKind : std::uint8_t { Text, Paragraph, Picture, Table };

/// A name in double braces, `{{margin}}`, in the text of a document or in the alternative text of a picture.
struct Placeholder {
    /// Without the braces; that of a table without "table:".
    std::string name;
    PlaceholderKind kind = PlaceholderKind::Text;
    /// The part that holds it, "word/document.xml".
    std::string part = {};

    bool operator==(const Placeholder& other) const = default;
};

}  // namespace quillon::report
