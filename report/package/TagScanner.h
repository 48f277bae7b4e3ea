#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

#include "report/package/XmlSpans.h"
#include "support/Export.h"

namespace quillon::report {

/// A start tag, an end tag or an empty element, as it stands.
struct Tag {
    Span span;
    /// Without prefix.
    std::string_view name;
    bool isEnd;
    bool isEmpty;
};

/// Reads the tags inside a deferred element, which is known to be well-formed, one after the other.
class QUILLON_EXPORT TagScanner {
 public:
    TagScanner(std::string_view text, Span span) : text_(text), at_(span.begin), end_(span.end) {}
    /// Nothing at the end.
    std::optional<Tag> next();
    /// Where the value of an attribute without prefix stands.
    std::optional<Span> findAttribute(const Tag& tag, std::string_view name) const;

 private:
    std::string_view text_;
    std::uint32_t at_;
    std::uint32_t end_;
};

}  // namespace quillon::report
