#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "report/package/XmlSpans.h"
#include "support/Export.h"

namespace quillon::report {

/// Changes to a text, each a span and what stands there afterwards; all are made in one pass.
class QUILLON_EXPORT Edits {
 public:
    /// Several insertions at one place keep their order, and come before a span that starts there.
    void insert(std::uint32_t at, std::string text) { replace({at, at}, std::move(text)); }
    void replace(Span span, std::string text) { edits_.push_back({span, std::move(text)}); }
    void remove(Span span) { replace(span, {}); }
    /// Replaces all between the tags; an empty element gets two tags. The text is markup.
    void setInner(const XmlElement& element, std::string markup);

    /// Appends a text to what comes before it.
    using Write = std::function<void(std::string&)>;
    /// The same for a text so long that it should not be there twice: it is written where it belongs, when
    /// all changes are made. `size` is what it takes at most, roughly.
    void setInnerLater(const XmlElement& element, std::size_t size, Write write);
    /// Inserts markup behind the last child.
    void append(const XmlElement& element, const std::string& markup);
    /// Replaces or adds an attribute without prefix; the value is text, and stays as it is written when it is
    /// the same.
    void setAttribute(const XmlElement& element, std::string_view name, std::string_view value);

    bool isEmpty() const { return edits_.empty(); }
    /// The text with all changes made, which are used up. Throws: std::logic_error when two overlap.
    std::string apply(std::string_view text);
    /// The same for a stretch that holds all changes.
    std::string apply(std::string_view text, Span stretch);
    /// The same for a part, as bytes in its encoding.
    std::string apply(const XmlSpans& xml) { return xml.encode(apply(xml.getText())); }

 private:
    struct Edit {
        Span span;
        std::string text;
        /// Null for the text.
        Write write = {};
        std::size_t size = 0;
    };
    std::vector<Edit> edits_;
};

}  // namespace quillon::report
