#include "report/options/ListText.h"

#include <stdexcept>

#include "report/options/QuotedText.h"
#include "support/Text.h"

namespace quillon::report {
namespace {

/// The position behind the quoted text that starts at `at`.
std::size_t skipQuoted(std::string_view text, std::size_t at)
{
    const auto end = text.find('"', at + 1);
    if (end == std::string_view::npos)
        throw std::runtime_error("List " + quoteText(text) +
                                 ": a double quote is not closed; an item with a quote stands in quotes, in "
                                 "which it is doubled.");
    return end + 1;
}

/// The position of the comma, or of the end, behind the item that starts at `at`.
std::size_t findItemEnd(std::string_view text, std::size_t at)
{
    int depth = 0;
    while (at < text.size() && (text[at] != ',' || depth > 0)) {
        if (text[at] == '(') ++depth;
        if (text[at] == ')') --depth;
        at = text[at] == '"' ? skipQuoted(text, at) : at + 1;
    }
    return at;
}

}  // namespace

std::string unquoteItem(const std::string& item)
{
    if (item.size() < 2 || item.front() != '"' || item.back() != '"') return item;
    std::string result;
    for (std::size_t i = 1; i + 1 < item.size(); ++i) {
        // A quote that is not doubled ends the quoted text, which is then only a part.
        if (item[i] == '"' && (item[++i] != '"' || i + 1 == item.size())) return item;
        result += item[i];
    }
    return result;
}

std::vector<std::string> splitList(std::string_view text)
{
    std::vector<std::string> items;
    for (std::size_t at = 0; at <= text.size();) {
        const auto end = findItemEnd(text, at);
        items.push_back(unquoteItem(std::string(trim(text.substr(at, end - at)))));
        at = end + 1;
    }
    return items;
}

std::string putInQuotes(const std::string& text)
{
    std::string quoted = "\"";
    for (const char c : text) quoted += c == '"' ? std::string("\"\"") : std::string(1, c);
    return quoted + "\"";
}

}  // namespace quillon::report
