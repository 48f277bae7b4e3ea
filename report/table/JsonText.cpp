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

void failParsing(std::string_view text, const std::string& name, std::size_t taken, const std::string& token,
                 const nlohmann::detail::exception& error)
{
    const auto place = describePosition(text, name, taken > 0 ? taken - 1 : 0);
    constexpr int tooLarge = 406;
    if (error.id == tooLarge) fail("{}: the number {} is too large.", place, quoteText(token));
    const std::string_view sentence = error.what();  // "[...] parse error at line 1, column 2: what is wrong"
    const auto colon = sentence.find(": ");
    const auto reason = sentence.substr(colon == std::string_view::npos ? 0 : colon + 2);
    fail("{}: not well-formed JSON: {}.", place, showText(reason));
}

}  // namespace quillon::report
