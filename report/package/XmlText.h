#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

#include "support/Export.h"

/// Text and attributes as they stand in well-formed XML in UTF-8.
namespace quillon::report {

/// UTF-8 as it is written between tags; a carriage return becomes a reference.
QUILLON_EXPORT std::string escapeText(std::string_view text);
/// Markup between tags as text: references and CDATA resolved, tags left out.
QUILLON_EXPORT std::string unescapeText(std::string_view markup);
/// UTF-8 as it is written between quotes of either kind; tabs and line ends become references.
QUILLON_EXPORT std::string escapeAttribute(std::string_view text);

/// Text without markup, references resolved; line ends become line feeds.
std::string resolveReferences(std::string_view raw);

/// The position behind the tag, comment, instruction or CDATA section at `at`; appends what the last holds.
std::size_t skipMarkup(std::string& text, std::string_view raw, std::size_t at);

constexpr bool isXmlSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// An attribute as it stands in a start tag; positions count in the tag.
struct Attribute {
    std::string_view name;
    std::size_t begin;
    std::size_t end;
};

/// Calls `visit` for each attribute of a well-formed start tag until it returns true.
template <typename Visit>
void visitAttributes(std::string_view tag, Visit visit)
{
    auto at = std::min(tag.find_first_of(" \t\r\n/>"), tag.size());
    while (true) {
        while (at < tag.size() && isXmlSpace(tag[at])) ++at;
        if (at >= tag.size() || tag[at] == '/' || tag[at] == '>') return;
        const auto nameEnd = tag.find_first_of(" \t\r\n=", at);
        const auto open = tag.find_first_of("\"'", nameEnd);
        const auto close = tag.find(tag[open], open + 1);
        if (visit(Attribute{tag.substr(at, nameEnd - at), open + 1, close})) return;
        at = close + 1;
    }
}

}  // namespace quillon::report
