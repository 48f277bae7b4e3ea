#include "report/package/XmlSpans.h"

#include <stdexcept>

#include "report/options/QuotedText.h"
#include "report/package/XmlReader.h"
#include "report/package/XmlText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

constexpr std::size_t maximumSize = 0x7FFFFFFF;

/// The URI that a start tag declares for a prefix without colon; nothing when it declares none.
std::optional<std::string_view> findDeclaration(std::string_view tag, std::string_view prefix)
{
    std::optional<std::string_view> uri;
    visitAttributes(tag, [&](const Attribute& attribute) {
        const bool isDefault = attribute.name == "xmlns";
        if (!isDefault && !attribute.name.starts_with("xmlns:")) return false;
        if ((isDefault ? std::string_view() : attribute.name.substr(6)) != prefix) return false;
        uri = tag.substr(attribute.begin, attribute.end - attribute.begin);
        return true;
    });
    return uri;
}

}  // namespace

XmlSpans::XmlSpans(std::string_view bytes, std::string part, Defers defers) : part_(std::move(part))
{
    if (bytes.size() > maximumSize) throw std::runtime_error(showText(part_) + ": it is larger than 2 GB.");
    decode(bytes);
    XmlReader(*this, defers).read(text_);
    strict_ = isStrictUri(names_[nodes_[0].name].uri);
}

void XmlSpans::decode(std::string_view bytes)
{
    const auto starts = [&](std::string_view mark) { return bytes.starts_with(mark); };
    hasMark_ = starts("\xFF\xFE") || starts("\xFE\xFF");
    if (starts("\xFF\xFE") || starts(std::string_view("<\0", 2))) encoding_ = Encoding::Utf16Little;
    if (starts("\xFE\xFF") || starts(std::string_view("\0<", 2))) encoding_ = Encoding::Utf16Big;
    text_ = bytes;
    if (encoding_ == Encoding::Utf8) return;
    std::u16string units;
    const auto isBig = encoding_ == Encoding::Utf16Big;
    for (std::size_t at = hasMark_ ? 2 : 0; at + 1 < bytes.size(); at += 2) {
        const auto first = static_cast<unsigned char>(bytes[at]);
        const auto second = static_cast<unsigned char>(bytes[at + 1]);
        units += static_cast<char16_t>(isBig ? first << 8 | second : second << 8 | first);
    }
    const auto refuse = [this] {
        throw std::runtime_error(showText(part_) + ": it is not well-formed UTF-16.");
    };
    // Half a character at the end would be lost.
    if (bytes.size() % 2 != 0) refuse();
    try {
        converted_ = toUtf8(units);
    } catch (const std::runtime_error&) {
        refuse();
    }
    text_ = converted_;
}

std::string XmlSpans::encode(std::string text, bool isStart) const
{
    if (encoding_ == Encoding::Utf8) return text;
    std::string bytes;
    const auto append = [&](char16_t unit) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += encoding_ == Encoding::Utf16Big ? high : low;
        bytes += encoding_ == Encoding::Utf16Big ? low : high;
    };
    if (hasMark_ && isStart) append(0xFEFF);
    for (const char16_t unit : toUtf16(text)) append(unit);
    return bytes;
}

Ns XmlElement::getNs() const
{
    return xml_ == nullptr ? Ns::None : xml_->names_[xml_->nodes_[index_].name].ns;
}

std::string_view XmlElement::getNsUri() const
{
    return xml_ == nullptr ? std::string_view() : xml_->names_[xml_->nodes_[index_].name].uri;
}

std::string_view XmlElement::getName() const
{
    return xml_ == nullptr ? std::string_view() : xml_->names_[xml_->nodes_[index_].name].local;
}

bool XmlElement::is(Ns ns, std::string_view name) const
{
    return xml_ != nullptr && getNs() == ns && getName() == name;
}

std::string_view XmlElement::getPrefix() const
{
    const auto tag = xml_->getText(getStartTag()).substr(1);
    const auto name = tag.substr(0, tag.find_first_of(" \t\r\n/>"));
    return name.substr(0, name.find(':') + 1);
}

XmlElement XmlElement::getParent() const
{
    const auto parent = xml_ == nullptr ? XmlSpans::none : xml_->nodes_[index_].parent;
    return parent == XmlSpans::none ? XmlElement() : XmlElement(xml_, parent);
}

XmlElement XmlElement::getNext() const
{
    const auto next = xml_ == nullptr ? XmlSpans::none : xml_->nodes_[index_].next;
    return next == XmlSpans::none ? XmlElement() : XmlElement(xml_, next);
}

XmlElement XmlElement::getFirstChild() const
{
    const auto first = xml_ == nullptr ? XmlSpans::none : xml_->nodes_[index_].firstChild;
    return first == XmlSpans::none ? XmlElement() : XmlElement(xml_, first);
}

XmlChildren XmlElement::getChildren() const
{
    return XmlChildren(getFirstChild());
}

XmlElement XmlElement::findChild(Ns ns, std::string_view name) const
{
    for (const auto child : getChildren())
        if (child.is(ns, name)) return child;
    return {};
}

XmlElement XmlElement::findPath(std::initializer_list<std::string_view> names) const
{
    auto element = *this;
    for (const auto name : names) element = element.findChild(name);
    return element;
}

XmlElement XmlElement::findAncestor(Ns ns, std::string_view name) const
{
    auto element = getParent();
    while (element && !element.is(ns, name)) element = element.getParent();
    return element;
}

Span XmlElement::getOuter() const
{
    const auto& node = xml_->nodes_[index_];
    return {node.begin, node.end};
}

Span XmlElement::getInner() const
{
    const auto& node = xml_->nodes_[index_];
    return {node.innerBegin, node.innerEnd};
}

Span XmlElement::getStartTag() const
{
    const auto& node = xml_->nodes_[index_];
    return {node.begin, node.innerBegin};
}

bool XmlElement::isEmptyTag() const
{
    return xml_->text_[xml_->nodes_[index_].innerBegin - 2] == '/';
}

std::string_view XmlElement::getSource() const
{
    return xml_->getText(getOuter());
}

std::string XmlElement::getText() const
{
    return xml_ == nullptr ? std::string() : unescapeText(xml_->getText(getInner()));
}

std::string_view XmlElement::findUri(std::string_view prefix) const
{
    if (prefix == "xml") return getUri(Ns::Xml);
    for (auto element = *this; element; element = element.getParent())
        if (const auto uri = findDeclaration(xml_->getText(element.getStartTag()), prefix)) return *uri;
    return {};
}

std::optional<Span> XmlElement::findAttribute(Ns ns, std::string_view name) const
{
    std::optional<Span> span;
    if (xml_ == nullptr) return span;
    const auto begin = getStartTag().begin;
    visitAttributes(xml_->getText(getStartTag()), [&](const Attribute& attribute) {
        const auto colon = attribute.name.find(':');
        const bool hasPrefix = colon != std::string_view::npos;
        if (attribute.name.substr(hasPrefix ? colon + 1 : 0) != name || hasPrefix == (ns == Ns::None))
            return false;
        if (hasPrefix && findNs(findUri(attribute.name.substr(0, colon))) != ns) return false;
        span = Span{begin + static_cast<std::uint32_t>(attribute.begin),
                    begin + static_cast<std::uint32_t>(attribute.end)};
        return true;
    });
    return span;
}

std::optional<std::string> XmlElement::getAttribute(Ns ns, std::string_view name) const
{
    const auto span = findAttribute(ns, name);
    if (!span) return {};
    auto value = std::string(xml_->getText(*span));
    // White space that is written as itself is read as blanks.
    for (auto& c : value)
        if (isXmlSpace(c)) c = ' ';
    return resolveReferences(value);
}

std::optional<std::string> XmlElement::getAttribute(std::string_view name) const
{
    return getAttribute(Ns::None, name);
}

std::optional<std::string> XmlElement::findPrefix(Ns ns) const
{
    std::optional<std::string> prefix;
    for (auto element = *this; element && !prefix; element = element.getParent()) {
        const auto tag = xml_->getText(element.getStartTag());
        visitAttributes(tag, [&](const Attribute& attribute) {
            if (!attribute.name.starts_with("xmlns:")) return false;
            const auto uri = tag.substr(attribute.begin, attribute.end - attribute.begin);
            const auto name = attribute.name.substr(6);
            if (findNs(uri) != ns || findUri(name) != uri) return false;
            prefix = std::string(name) + ":";
            return true;
        });
    }
    return prefix;
}

}  // namespace quillon::report
