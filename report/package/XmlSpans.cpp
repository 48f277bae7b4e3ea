#include "report/package/XmlSpans.h"

#include <expat.h>

#include <algorithm>
#include <array>
#include <boost/locale/encoding_utf.hpp>
#include <charconv>
#include <memory>
#include <stdexcept>
#include <unordered_map>

#include "support/Text.h"

namespace quillon::report {
namespace {

struct NamespaceRow {
    Ns ns;
    std::string_view transitional;
    std::string_view strict = {};
};

constexpr std::array<NamespaceRow, 23> namespaces = {{
    {Ns::Xml, "http://www.w3.org/XML/1998/namespace"},
    {Ns::Chart, "http://schemas.openxmlformats.org/drawingml/2006/chart",
     "http://purl.oclc.org/ooxml/drawingml/chart"},
    {Ns::Drawing, "http://schemas.openxmlformats.org/drawingml/2006/main",
     "http://purl.oclc.org/ooxml/drawingml/main"},
    {Ns::Word, "http://schemas.openxmlformats.org/wordprocessingml/2006/main",
     "http://purl.oclc.org/ooxml/wordprocessingml/main"},
    {Ns::WordDrawing, "http://schemas.openxmlformats.org/drawingml/2006/wordprocessingDrawing",
     "http://purl.oclc.org/ooxml/drawingml/wordprocessingDrawing"},
    {Ns::Picture, "http://schemas.openxmlformats.org/drawingml/2006/picture",
     "http://purl.oclc.org/ooxml/drawingml/picture"},
    {Ns::Sheet, "http://schemas.openxmlformats.org/spreadsheetml/2006/main",
     "http://purl.oclc.org/ooxml/spreadsheetml/main"},
    {Ns::ChartDrawing, "http://schemas.openxmlformats.org/drawingml/2006/chartDrawing",
     "http://purl.oclc.org/ooxml/drawingml/chartDrawing"},
    {Ns::OfficeRelationships, "http://schemas.openxmlformats.org/officeDocument/2006/relationships",
     "http://purl.oclc.org/ooxml/officeDocument/relationships"},
    {Ns::PackageRelationships, "http://schemas.openxmlformats.org/package/2006/relationships"},
    {Ns::ContentTypes, "http://schemas.openxmlformats.org/package/2006/content-types"},
    {Ns::MarkupCompatibility, "http://schemas.openxmlformats.org/markup-compatibility/2006"},
    {Ns::Chart2007, "http://schemas.microsoft.com/office/drawing/2007/8/2/chart"},
    {Ns::Chart2012, "http://schemas.microsoft.com/office/drawing/2012/chart"},
    {Ns::Chart2014, "http://schemas.microsoft.com/office/drawing/2014/chart"},
    {Ns::ChartEx, "http://schemas.microsoft.com/office/drawing/2014/chartex"},
    {Ns::WordShape, "http://schemas.microsoft.com/office/word/2010/wordprocessingShape"},
    {Ns::WordGroup, "http://schemas.microsoft.com/office/word/2010/wordprocessingGroup"},
    {Ns::WordCanvas, "http://schemas.microsoft.com/office/word/2010/wordprocessingCanvas"},
    {Ns::Word2010, "http://schemas.microsoft.com/office/word/2010/wordml"},
    {Ns::Sheet2009, "http://schemas.microsoft.com/office/spreadsheetml/2009/9/main"},
    {Ns::Vml, "urn:schemas-microsoft-com:vml"},
    {Ns::Office, "urn:schemas-microsoft-com:office:office"},
}};

Ns findNs(std::string_view uri)
{
    if (uri.empty()) return Ns::None;
    const auto* row = std::find_if(namespaces.begin(), namespaces.end(),
                                   [&](const auto& r) { return r.transitional == uri || r.strict == uri; });
    return row == namespaces.end() ? Ns::Other : row->ns;
}

bool isStrictUri(std::string_view uri)
{
    return !uri.empty() && std::any_of(namespaces.begin(), namespaces.end(),
                                       [&](const auto& row) { return row.strict == uri; });
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

/// Between URI and name of what expat reports; no URI holds a line feed.
constexpr char nameSeparator = '\n';
/// Of a buffer that is read; expat copies what it is given.
constexpr std::size_t chunkSize = 0x10000;
constexpr std::size_t maximumSize = 0x7FFFFFFF;

void appendCodePoint(std::string& text, std::uint32_t code)
{
    boost::locale::utf::utf_traits<char>::encode(code, std::back_inserter(text));
}

/// Resolves what stands behind an ampersand up to the semicolon.
void appendReference(std::string& text, std::string_view name)
{
    constexpr std::array<std::pair<std::string_view, char>, 5> named = {
        {{"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''}}};
    for (const auto& [key, character] : named)
        if (key == name) text += character;
    if (name.empty() || name[0] != '#') return;
    const bool isHex = name.size() > 1 && name[1] == 'x';
    std::uint32_t code = 0;
    std::from_chars(name.data() + (isHex ? 2 : 1), name.data() + name.size(), code, isHex ? 16 : 10);
    appendCodePoint(text, code);
}

/// Appends text between markup; line ends become line feeds.
void appendDecoded(std::string& text, std::string_view raw)
{
    for (std::size_t at = 0; at < raw.size(); ++at) {
        if (raw[at] == '&') {
            const auto end = raw.find(';', at);
            appendReference(text, raw.substr(at + 1, end - at - 1));
            at = end;
        } else if (raw[at] == '\r') {
            if (at + 1 == raw.size() || raw[at + 1] != '\n') text += '\n';
        } else {
            text += raw[at];
        }
    }
}

/// The position behind the tag, comment, instruction or CDATA section at `at`; appends what the last holds.
std::size_t skipMarkup(std::string& text, std::string_view raw, std::size_t at)
{
    constexpr std::string_view cdata = "<![CDATA[";
    const auto rest = raw.substr(at);
    if (rest.starts_with(cdata)) {
        const auto end = raw.find("]]>", at);
        text += raw.substr(at + cdata.size(), end - at - cdata.size());
        return end + 3;
    }
    // A comment may begin with what would end it: "<!--->" goes on.
    constexpr std::string_view comment = "<!--";
    if (rest.starts_with(comment)) return raw.find("-->", at + comment.size()) + 3;
    if (rest.starts_with("<?")) return raw.find("?>", at) + 2;
    for (char quote = 0; at < raw.size(); ++at) {
        if (quote != 0) {
            if (raw[at] == quote) quote = 0;
        } else if (raw[at] == '"' || raw[at] == '\'') {
            quote = raw[at];
        } else if (raw[at] == '>') {
            break;
        }
    }
    return at + 1;
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
        while (at < tag.size() && isSpace(tag[at])) ++at;
        if (at >= tag.size() || tag[at] == '/' || tag[at] == '>') return;
        const auto nameEnd = tag.find_first_of(" \t\r\n=", at);
        const auto open = tag.find_first_of("\"'", nameEnd);
        const auto close = tag.find(tag[open], open + 1);
        if (visit(Attribute{tag.substr(at, nameEnd - at), open + 1, close})) return;
        at = close + 1;
    }
}

std::string decode(std::string_view raw)
{
    std::string text;
    appendDecoded(text, raw);
    return text;
}

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

std::string escape(std::string_view text, bool isAttribute)
{
    std::string escaped;
    for (const char c : text) {
        if (c == '&') {
            escaped += "&amp;";
        } else if (c == '<') {
            escaped += "&lt;";
        } else if (c == '>') {
            escaped += "&gt;";
        } else if (c == '\r' || (isAttribute && (c == '\n' || c == '\t' || c == '\'' || c == '"'))) {
            escaped += "&#" + std::to_string(static_cast<int>(c)) + ";";
        } else {
            escaped += c;
        }
    }
    return escaped;
}

}  // namespace

std::string_view getUri(Ns ns, bool strict)
{
    const auto* row =
        std::find_if(namespaces.begin(), namespaces.end(), [&](const auto& r) { return r.ns == ns; });
    if (row == namespaces.end()) return {};
    return strict && !row->strict.empty() ? row->strict : row->transitional;
}

std::string escapeText(std::string_view text)
{
    return escape(text, false);
}

std::string unescapeText(std::string_view markup)
{
    std::string text;
    for (std::size_t at = 0; at < markup.size();) {
        const auto tag = std::min(markup.find('<', at), markup.size());
        appendDecoded(text, markup.substr(at, tag - at));
        at = tag == markup.size() ? tag : skipMarkup(text, markup, tag);
    }
    return text;
}

std::string escapeAttribute(std::string_view text)
{
    return escape(text, true);
}

/// Fills an XmlSpans from what expat reports.
class XmlReader {
 public:
    XmlReader(XmlSpans& xml, XmlSpans::Defers defers)
        : xml_(xml), defers_(defers), parser_(XML_ParserCreateNS("UTF-8", nameSeparator))
    {
        if (!parser_) throw std::bad_alloc();
        XML_SetUserData(parser_.get(), this);
        XML_SetElementHandler(parser_.get(), &XmlReader::start, &XmlReader::end);
        XML_SetStartDoctypeDeclHandler(parser_.get(), &XmlReader::refuseDocumentType);
        XML_SetXmlDeclHandler(parser_.get(), &XmlReader::checkDeclaration);
    }

    void read(std::string_view text)
    {
        for (std::size_t at = 0; at == 0 || at < text.size(); at += chunkSize)
            parse(text.substr(at, chunkSize), at + chunkSize >= text.size());
    }

 private:
    struct Free {
        void operator()(XML_Parser parser) const { XML_ParserFree(parser); }
    };

    void parse(std::string_view chunk, bool isLast)
    {
        const auto status = XML_Parse(parser_.get(), chunk.data(), static_cast<int>(chunk.size()), isLast);
        if (!problem_.empty()) fail(problem_);
        if (status == XML_STATUS_OK) return;
        fail(std::string("it is not well-formed XML (") + XML_ErrorString(XML_GetErrorCode(parser_.get())) +
             ").");
    }

    [[noreturn]] void fail(const std::string& problem) const
    {
        const auto line = XML_GetCurrentLineNumber(parser_.get());
        throw std::runtime_error(xml_.part_ + ", line " + std::to_string(line) + ": " + problem);
    }

    void stop(const char* problem)
    {
        if (problem_.empty()) problem_ = problem;
        XML_StopParser(parser_.get(), XML_FALSE);
    }

    static XmlReader& get(void* self) { return *static_cast<XmlReader*>(self); }

    static void refuseDocumentType(void* self, const XML_Char* /*name*/, const XML_Char* /*system*/,
                                   const XML_Char* /*publicId*/, int /*hasSubset*/)
    {
        get(self).stop("a document type is declared; documents have none, and it could hide entities.");
    }

    static void checkDeclaration(void* self, const XML_Char* /*version*/, const XML_Char* encoding,
                                 int /*standalone*/)
    {
        if (encoding == nullptr) return;
        std::string name(encoding);
        for (auto& c : name)
            if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
        if (name != "UTF-8" && name != "US-ASCII" && !name.starts_with("UTF-16"))
            get(self).stop("its encoding is neither UTF-8 nor UTF-16.");
    }

    static void start(void* self, const XML_Char* name, const XML_Char** /*attributes*/)
    {
        get(self).open(name);
    }

    static void end(void* self, const XML_Char* /*name*/) { get(self).close(); }

    void open(std::string_view name)
    {
        if (++depth_ > XmlSpans::maximumDepth) stop("elements stand in each other deeper than 256 levels.");
        if (++count_ > XmlSpans::maximumElements) stop("it has more than 20,000,000 elements.");
        if (!problem_.empty() || deferredDepth_ != 0) return;
        const auto begin = static_cast<std::uint32_t>(XML_GetCurrentByteIndex(parser_.get()));
        const auto inner = begin + static_cast<std::uint32_t>(XML_GetCurrentByteCount(parser_.get()));
        const auto index = static_cast<std::uint32_t>(xml_.nodes_.size());
        const auto id = intern(name);
        xml_.nodes_.push_back({current_, XmlSpans::none, XmlSpans::none, begin, inner, inner, inner, id});
        link(index);
        current_ = index;
        const auto& key = xml_.names_[id];
        if (defers_ != nullptr && defers_(key.ns, key.local)) deferredDepth_ = depth_;
    }

    void link(std::uint32_t index)
    {
        if (last_.size() < depth_ + 1) last_.resize(depth_ + 1, XmlSpans::none);
        auto& previous = last_[depth_];
        if (previous != XmlSpans::none)
            xml_.nodes_[previous].next = index;
        else if (current_ != XmlSpans::none)
            xml_.nodes_[current_].firstChild = index;
        previous = index;
        if (last_.size() < depth_ + 2) last_.resize(depth_ + 2);
        last_[depth_ + 1] = XmlSpans::none;
    }

    void close()
    {
        const auto depth = depth_--;
        if (deferredDepth_ != 0 && depth > deferredDepth_) return;
        if (depth == deferredDepth_) deferredDepth_ = 0;
        if (current_ == XmlSpans::none) return;
        auto& node = xml_.nodes_[current_];
        current_ = node.parent;
        if (xml_.text_[node.innerBegin - 2] == '/') return;
        node.innerEnd = static_cast<std::uint32_t>(XML_GetCurrentByteIndex(parser_.get()));
        node.end = node.innerEnd + static_cast<std::uint32_t>(XML_GetCurrentByteCount(parser_.get()));
    }

    std::uint32_t intern(std::string_view name)
    {
        const auto found = ids_.find(std::string(name));
        if (found != ids_.end()) return found->second;
        const auto separator = name.find(nameSeparator);
        const auto uri = separator == std::string_view::npos ? std::string_view() : name.substr(0, separator);
        const auto local = separator == std::string_view::npos ? name : name.substr(separator + 1);
        const auto id = static_cast<std::uint32_t>(xml_.names_.size());
        xml_.names_.push_back({findNs(uri), std::string(uri), std::string(local)});
        ids_.emplace(name, id);
        return id;
    }

    XmlSpans& xml_;
    XmlSpans::Defers defers_;
    std::unique_ptr<XML_ParserStruct, Free> parser_;
    std::string problem_;
    std::uint32_t depth_ = 0;
    /// Of the element whose content is passed over; 0 outside.
    std::uint32_t deferredDepth_ = 0;
    std::size_t count_ = 0;
    std::uint32_t current_ = XmlSpans::none;
    /// The last element of each depth under the current parents.
    std::vector<std::uint32_t> last_;
    std::unordered_map<std::string, std::uint32_t> ids_;
};

XmlSpans::XmlSpans(std::string_view bytes, std::string part, Defers defers) : part_(std::move(part))
{
    if (bytes.size() > maximumSize) throw std::runtime_error(part_ + ": it is larger than 2 GB.");
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
    const auto refuse = [this] { throw std::runtime_error(part_ + ": it is not well-formed UTF-16."); };
    // Half a character at the end would be lost.
    if (bytes.size() % 2 != 0) refuse();
    try {
        converted_ = toUtf8(units);
    } catch (const std::runtime_error&) {
        refuse();
    }
    text_ = converted_;
}

std::string XmlSpans::encode(std::string text) const
{
    if (encoding_ == Encoding::Utf8) return text;
    std::string bytes;
    const auto append = [&](char16_t unit) {
        const char high = static_cast<char>(unit >> 8);
        const char low = static_cast<char>(unit & 0xFF);
        bytes += encoding_ == Encoding::Utf16Big ? high : low;
        bytes += encoding_ == Encoding::Utf16Big ? low : high;
    };
    if (hasMark_) append(0xFEFF);
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
        if (isSpace(c)) c = ' ';
    return report::decode(value);
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

std::optional<Tag> TagScanner::next()
{
    while (true) {
        const auto begin = text_.find('<', at_);
        if (begin >= end_) return {};
        std::string passedOver;
        at_ = static_cast<std::uint32_t>(skipMarkup(passedOver, text_, begin));
        if (text_[begin + 1] == '!' || text_[begin + 1] == '?') continue;
        const bool isEnd = text_[begin + 1] == '/';
        const auto start = begin + (isEnd ? 2 : 1);
        const auto name = text_.substr(start, text_.find_first_of(" \t\r\n/>", start) - start);
        const auto colon = name.find(':');
        return Tag{{static_cast<std::uint32_t>(begin), at_},
                   name.substr(colon == std::string_view::npos ? 0 : colon + 1),
                   isEnd,
                   text_[at_ - 2] == '/'};
    }
}

std::optional<Span> TagScanner::findAttribute(const Tag& tag, std::string_view name) const
{
    std::optional<Span> span;
    visitAttributes(text_.substr(tag.span.begin, tag.span.getSize()), [&](const Attribute& attribute) {
        if (attribute.name != name) return false;
        span = Span{tag.span.begin + static_cast<std::uint32_t>(attribute.begin),
                    tag.span.begin + static_cast<std::uint32_t>(attribute.end)};
        return true;
    });
    return span;
}

void Edits::setInner(const XmlElement& element, const std::string& markup)
{
    if (!element.isEmptyTag()) return replace(element.getInner(), markup);
    const auto source = element.getSource();
    const auto name = source.substr(1, source.find_first_of(" \t\r\n/>") - 1);
    const auto end = element.getOuter().end;
    replace({end - 2, end}, ">" + markup + "</" + std::string(name) + ">");
}

void Edits::append(const XmlElement& element, const std::string& markup)
{
    if (element.isEmptyTag()) return setInner(element, markup);
    insert(element.getInner().end, markup);
}

void Edits::setAttribute(const XmlElement& element, std::string_view name, std::string_view value)
{
    if (element.getAttribute(name) == value) return;
    const auto escaped = escapeAttribute(value);
    if (const auto span = element.findAttribute(Ns::None, name)) return replace(*span, escaped);
    const auto tag = element.getSource();
    const auto at = element.getOuter().begin + static_cast<std::uint32_t>(tag.find_first_of(" \t\r\n/>"));
    insert(at, " " + std::string(name) + "=\"" + escaped + "\"");
}

std::string Edits::apply(std::string_view text)
{
    return apply(text, {0, static_cast<std::uint32_t>(text.size())});
}

std::string Edits::apply(std::string_view text, Span stretch)
{
    std::stable_sort(edits_.begin(), edits_.end(), [](const Edit& left, const Edit& right) {
        const bool leftStands = left.span.getSize() != 0;
        const bool rightStands = right.span.getSize() != 0;
        return std::pair(left.span.begin, leftStands) < std::pair(right.span.begin, rightStands);
    });
    std::size_t size = stretch.getSize();
    for (const auto& edit : edits_) size += edit.text.size();
    std::string changed;
    changed.reserve(size);
    auto at = stretch.begin;
    for (auto& edit : edits_) {
        if (edit.span.begin < at || edit.span.end > stretch.end)
            throw std::logic_error("Two changes of a part overlap.");
        changed += text.substr(at, edit.span.begin - at);
        changed += edit.text;
        // Large texts are let go one by one, so that they are not there twice.
        edit.text = {};
        at = edit.span.end;
    }
    changed += text.substr(at, stretch.end - at);
    edits_.clear();
    return changed;
}

}  // namespace quillon::report
