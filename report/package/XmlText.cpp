#include "report/package/XmlText.h"

#include <algorithm>
#include <array>
#include <boost/locale/encoding_utf.hpp>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <utility>

namespace quillon::report {
namespace {

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

/// Line ends of every kind become line feeds.
void appendLines(std::string& text, std::string_view raw)
{
    for (std::size_t at = 0; at < raw.size(); ++at)
        if (raw[at] != '\r')
            text += raw[at];
        else if (at + 1 == raw.size() || raw[at + 1] != '\n')
            text += '\n';
}

/// Appends text between markup.
void appendDecoded(std::string& text, std::string_view raw)
{
    while (!raw.empty()) {
        const auto reference = std::min(raw.find('&'), raw.size());
        appendLines(text, raw.substr(0, reference));
        raw.remove_prefix(reference);
        if (raw.empty()) return;
        const auto end = raw.find(';');
        appendReference(text, raw.substr(1, end - 1));
        raw.remove_prefix(end + 1);
    }
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

std::string resolveReferences(std::string_view raw)
{
    std::string text;
    appendDecoded(text, raw);
    return text;
}

std::size_t skipMarkup(std::string& text, std::string_view raw, std::size_t at)
{
    constexpr std::string_view cdata = "<![CDATA[";
    const auto rest = raw.substr(at);
    if (rest.starts_with(cdata)) {
        const auto end = raw.find("]]>", at);
        appendLines(text, raw.substr(at + cdata.size(), end - at - cdata.size()));
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

}  // namespace quillon::report
