#include "report/package/XmlReader.h"

#include <cstdlib>
#include <new>
#include <stdexcept>

#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// Between URI and name of what expat reports; no URI holds a line feed.
constexpr char nameSeparator = '\n';
/// Of a buffer that is read; expat copies what it is given.
constexpr std::size_t chunkSize = 0x10000;

/// Whether memory ran out since a parser was made on this thread: expat does not always say so.
thread_local bool hasRunOut = false;

void* reallocate(void* memory, std::size_t size)
{
    void* const found = std::realloc(memory, size);
    if (found == nullptr && size > 0) hasRunOut = true;
    return found;
}

void* allocate(std::size_t size)
{
    return reallocate(nullptr, size);
}

XML_Parser makeParser()
{
    constexpr XML_Memory_Handling_Suite memory = {allocate, reallocate, std::free};
    hasRunOut = false;
    return XML_ParserCreate_MM("UTF-8", &memory, &nameSeparator);
}

}  // namespace

XmlReader::XmlReader(XmlSpans& xml, XmlSpans::Defers defers)
    : xml_(xml), defers_(defers), parser_(makeParser())
{
    if (!parser_) throw std::bad_alloc();
    XML_SetUserData(parser_.get(), this);
    XML_SetElementHandler(parser_.get(), &XmlReader::start, &XmlReader::end);
    XML_SetStartDoctypeDeclHandler(parser_.get(), &XmlReader::refuseDocumentType);
    XML_SetXmlDeclHandler(parser_.get(), &XmlReader::checkDeclaration);
}

void XmlReader::read(std::string_view text)
{
    for (std::size_t at = 0; at == 0 || at < text.size(); at += chunkSize)
        parse(text.substr(at, chunkSize), at + chunkSize >= text.size());
}

void XmlReader::parse(std::string_view chunk, bool isLast)
{
    const auto status = XML_Parse(parser_.get(), chunk.data(), static_cast<int>(chunk.size()), isLast);
    if (hasRunOut) throw std::bad_alloc();
    if (!problem_.empty()) fail(problem_);
    if (status == XML_STATUS_OK) return;
    fail(std::string("it is not well-formed XML (") + XML_ErrorString(XML_GetErrorCode(parser_.get())) +
         ").");
}

void XmlReader::fail(const std::string& problem) const
{
    const auto line = XML_GetCurrentLineNumber(parser_.get());
    throw std::runtime_error(showText(xml_.part_) + ", line " + std::to_string(line) + ": " + problem);
}

void XmlReader::stop(const char* problem)
{
    if (problem_.empty()) problem_ = problem;
    XML_StopParser(parser_.get(), XML_FALSE);
}

void XmlReader::refuseDocumentType(void* self, const XML_Char* /*name*/, const XML_Char* /*system*/,
                                   const XML_Char* /*publicId*/, int /*hasSubset*/)
{
    get(self).stop("a document type is declared; documents have none, and it could hide entities.");
}

void XmlReader::checkDeclaration(void* self, const XML_Char* /*version*/, const XML_Char* encoding,
                                 int /*standalone*/)
{
    if (encoding == nullptr) return;
    const auto name = toLower(encoding);
    if (name != "utf-8" && name != "us-ascii" && !name.starts_with("utf-16"))
        get(self).stop("its encoding is neither UTF-8 nor UTF-16.");
}

void XmlReader::start(void* self, const XML_Char* name, const XML_Char** /*attributes*/)
{
    get(self).open(name);
}

void XmlReader::end(void* self, const XML_Char* /*name*/)
{
    get(self).close();
}

void XmlReader::open(std::string_view name)
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

void XmlReader::link(std::uint32_t index)
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

void XmlReader::close()
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

std::uint32_t XmlReader::intern(std::string_view name)
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

}  // namespace quillon::report
