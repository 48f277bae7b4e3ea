#pragma once

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "report/package/Namespaces.h"
#include "support/Export.h"

namespace quillon::report {

/// A stretch of text by the positions of its first byte and of the byte behind it.
struct Span {
    std::uint32_t begin = 0;
    std::uint32_t end = 0;
    std::uint32_t getSize() const { return end - begin; }
};

class XmlSpans;
class XmlChildren;

/// A place in an XmlSpans, cheap to copy; valid as long as that is. What is not found is an element that is
/// false, and its children are as well.
class QUILLON_EXPORT XmlElement {
 public:
    XmlElement() = default;
    explicit operator bool() const { return xml_ != nullptr; }
    bool operator==(const XmlElement& other) const = default;

    Ns getNs() const;
    std::string_view getNsUri() const;
    /// Without prefix.
    std::string_view getName() const;
    bool is(Ns ns, std::string_view name) const;
    /// As written, with its colon: "c:"; empty for the default namespace. For new elements beside or inside.
    std::string_view getPrefix() const;

    XmlElement getParent() const;
    XmlElement getNext() const;
    XmlElement getFirstChild() const;
    XmlChildren getChildren() const;
    XmlElement findChild(Ns ns, std::string_view name) const;
    /// In the namespace of this element.
    XmlElement findChild(std::string_view name) const { return findChild(getNs(), name); }
    /// The element at the end of a path of child names, all in the namespace of this one.
    XmlElement findPath(std::initializer_list<std::string_view> names) const;
    /// The nearest element around this one of that name.
    XmlElement findAncestor(Ns ns, std::string_view name) const;

    /// From the start tag to the end tag.
    Span getOuter() const;
    /// Between the tags; an empty element's stands behind it.
    Span getInner() const;
    /// The start tag, which is all of an empty element.
    Span getStartTag() const;
    /// Whether it is written `<name/>`.
    bool isEmptyTag() const;
    /// The outer span's text.
    std::string_view getSource() const;

    /// The text of the element and all inside, references and CDATA resolved.
    std::string getText() const;
    /// The value of an attribute without prefix, or in a namespace; nothing when there is none.
    std::optional<std::string> getAttribute(std::string_view name) const;
    std::optional<std::string> getAttribute(Ns ns, std::string_view name) const;
    /// Where the value stands, between its quotes.
    std::optional<Span> findAttribute(Ns ns, std::string_view name) const;
    /// The prefix, with its colon, that attributes and elements in here have for a namespace of any dialect;
    /// nothing when it is not declared. The default namespace serves elements only, and is left out.
    std::optional<std::string> findPrefix(Ns ns) const;

 private:
    friend class XmlSpans;
    XmlElement(const XmlSpans* xml, std::uint32_t index) : xml_(xml), index_(index) {}
    std::string_view findUri(std::string_view prefix) const;

    const XmlSpans* xml_ = nullptr;
    std::uint32_t index_ = 0;
};

/// The child elements of an element, for loops.
class XmlChildren {
 public:
    class Iterator {
     public:
        using iterator_category = std::input_iterator_tag;
        using value_type = XmlElement;
        using difference_type = std::ptrdiff_t;
        using pointer = const XmlElement*;
        using reference = XmlElement;
        explicit Iterator(XmlElement element) : element_(element) {}
        XmlElement operator*() const { return element_; }
        Iterator& operator++()
        {
            element_ = element_.getNext();
            return *this;
        }
        bool operator==(const Iterator& other) const = default;

     private:
        XmlElement element_;
    };
    explicit XmlChildren(XmlElement first) : first_(first) {}
    Iterator begin() const { return Iterator(first_); }
    Iterator end() const { return Iterator(XmlElement()); }

 private:
    XmlElement first_;
};

/// One XML part as a tree of spans in its own text: what is read, and where it stands, so that a change
/// leaves every other byte as it is. Document types are refused, and with them entities.
class QUILLON_EXPORT XmlSpans {
 public:
    /// Says of an element whether its content stays unread, to be read with a TagScanner.
    using Defers = bool (*)(Ns ns, std::string_view name);

    static constexpr std::size_t maximumDepth = 256;
    static constexpr std::size_t maximumElements = 20'000'000;

    /// Reads UTF-8 or UTF-16, with byte-order mark or without. The caller keeps `bytes`; messages name
    /// `part`. Throws: std::runtime_error that says what is wrong, and in which line.
    XmlSpans(std::string_view bytes, std::string part, Defers defers = nullptr);
    XmlSpans(const XmlSpans&) = delete;
    XmlSpans& operator=(const XmlSpans&) = delete;

    XmlElement getRoot() const { return {this, 0}; }
    /// What spans count in: the part's text in UTF-8.
    std::string_view getText() const { return text_; }
    std::string_view getText(Span span) const { return text_.substr(span.begin, span.getSize()); }
    /// Text in UTF-8 in the encoding and with the byte-order mark of the part, if it is the start of it.
    std::string encode(std::string text, bool isStart = true) const;
    /// Whether the root is in the strict dialect.
    bool isStrict() const { return strict_; }
    const std::string& getPart() const { return part_; }

 private:
    friend class XmlElement;
    friend class XmlReader;
    enum class Encoding : std::uint8_t { Utf8, Utf16Little, Utf16Big };
    static constexpr std::uint32_t none = 0xFFFFFFFF;
    struct Node {
        std::uint32_t parent;
        std::uint32_t next;
        std::uint32_t firstChild;
        std::uint32_t begin;
        std::uint32_t innerBegin;
        std::uint32_t innerEnd;
        std::uint32_t end;
        std::uint32_t name;
    };
    struct Name {
        Ns ns;
        std::string uri;
        std::string local;
    };

    void decode(std::string_view bytes);

    std::string part_;
    /// What `text_` is a view of when the part is UTF-16.
    std::string converted_;
    std::string_view text_;
    Encoding encoding_ = Encoding::Utf8;
    bool hasMark_ = false;
    bool strict_ = false;
    std::vector<Node> nodes_;
    std::vector<Name> names_;
};

}  // namespace quillon::report
