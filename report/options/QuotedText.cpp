#include "report/options/QuotedText.h"

#include <array>
#include <boost/locale/utf.hpp>
#include <cstdio>

namespace quillon::report {
namespace {

using Utf8 = boost::locale::utf::utf_traits<char>;
using boost::locale::utf::code_point;

bool turnsDirection(code_point character)
{
    return (character >= 0x202A && character <= 0x202E) || (character >= 0x2066 && character <= 0x2069);
}

bool isControl(code_point character)
{
    return character < 0x20 || (character >= 0x7F && character < 0xA0);
}

std::string escape(const char* form, unsigned value)
{
    std::array<char, 16> text{};
    static_cast<void>(std::snprintf(text.data(), text.size(), form, value));
    return text.data();
}

/// The character at `at`, which moves behind it, as it can stand in a sentence.
std::string takeCharacter(std::string_view::const_iterator& at, std::string_view::const_iterator end)
{
    const auto start = at;
    const code_point character = Utf8::decode(at, end);
    if (character == boost::locale::utf::illegal || character == boost::locale::utf::incomplete) {
        at = start + 1;
        return escape("\\x%02X", static_cast<unsigned char>(*start));
    }
    if (character == '\n') return "\\n";
    if (character == '\t') return "\\t";
    if (isControl(character)) return escape("\\x%02X", character);
    if (turnsDirection(character)) return escape("\\u%04X", character);
    return {start, at};
}

std::string groupThousands(std::size_t number)
{
    auto text = std::to_string(number);
    for (auto at = static_cast<std::ptrdiff_t>(text.size()) - 3; at > 0; at -= 3)
        text.insert(static_cast<std::size_t>(at), 1, ',');
    return text;
}

}  // namespace

std::string quoteText(std::string_view utf8, std::size_t longest)
{
    std::string shown = "\"";
    std::size_t count = 0;
    for (auto at = utf8.begin(); at != utf8.end(); ++count) {
        const auto character = takeCharacter(at, utf8.end());
        if (count < longest) shown += character;
    }
    if (count <= longest) return shown + "\"";
    return shown + "...\" (" + groupThousands(count) + " characters)";
}

}  // namespace quillon::report
