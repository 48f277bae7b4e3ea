#include "report/table/JsonText.h"

#include <algorithm>

#include "report/options/QuotedText.h"
#include "report/table/Fail.h"

namespace quillon::report {

std::string describePosition(std::string_view text, const std::string& name, std::size_t position)
{
    const auto before = text.substr(0, position);
    const auto line = std::count(before.begin(), before.end(), '\n') + 1;
    const auto lineStart = before.rfind('\n') + 1;  // 0 where there is none
    const auto column = std::count_if(before.begin() + static_cast<std::ptrdiff_t>(lineStart), before.end(),
                                      [](char c) { return (c & 0xC0) != 0x80; }) +
                        1;
    return fmt::format("{}:{}:{}", name, line, column);
}

std::size_t findOpeningQuote(std::string_view text, std::size_t taken)
{
    for (std::size_t at = taken - 1; at-- > 0;) {
        if (text[at] != '"') continue;
        std::size_t slashes = 0;
        while (slashes < at && text[at - 1 - slashes] == '\\') ++slashes;
        if (slashes % 2 == 0) return at;
    }
    return 0;
}

namespace {

/// What the parser's own words say of a text, and how we say it; the first row that suits counts.
struct Reason {
    std::string_view words;
    const char* sentence;
};
constexpr Reason reasons[] = {
    {"closing quote", "expected a quote at the end of a text"},
    {"control character",
     "expected \\n, \\t or \\u in place of a line end, tab or control character in a text"},
    {"after backslash", "expected one of \" \\ / b f n r t u behind \\ in a text"},
    {"'\\u'", "expected four hexadecimal digits behind \\u in a text"},
    {"surrogate", "expected both halves of a character that is written with \\u"},
    {"UTF-8", "expected text in UTF-8"},
    {"comment", "expected a comment that begins with // or that stands between /* and */"},
    {"invalid number", "expected digits in a number"},
    {"parsing object key", "expected the name of a member in quotes"},
    {"parsing object separator", "expected a colon behind the name of a member"},
    {"parsing object", "expected a comma or } behind a member"},
    {"parsing array", "expected a comma or ] behind an item"},
    {"", "expected a text in quotes, a number, true, false, null, [ or {"},
};

/// `words`: "... while parsing value - what is wrong; last read: 'text of the author'; what is expected".
std::string describeReason(std::string_view words)
{
    if (words.ends_with("expected end of input")) return "expected nothing behind the value";
    words = words.substr(0, words.find("; last read"));
    const auto isSaid = [words](const Reason& row) {
        return words.find(row.words) != std::string_view::npos;
    };
    const std::string reason = std::ranges::find_if(reasons, isSaid)->sentence;
    return words.find("end of input") == std::string_view::npos ? reason
                                                                : reason + ", got the end of the text";
}

}  // namespace

void failParsing(std::string_view text, const std::string& name, std::size_t taken, const std::string& token,
                 const nlohmann::detail::exception& error)
{
    const auto place = describePosition(text, name, taken > 0 ? taken - 1 : 0);
    constexpr int tooLarge = 406;
    if (error.id == tooLarge) fail("{}: the number {} is too large.", place, quoteText(token));
    fail("{}: not well-formed JSON: {}.", place, describeReason(error.what()));
}

}  // namespace quillon::report
