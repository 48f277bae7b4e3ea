#include "report/options/QuotedText.h"

#include <array>
#include <boost/locale/utf.hpp>
#include <cstdio>
#include <iterator>
#include <type_traits>

namespace quillon::report {
namespace {

template <typename Character>
using Utf = boost::locale::utf::utf_traits<Character>;
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
template <typename Iterator>
std::string takeCharacter(Iterator& at, Iterator end)
{
    using Character = typename std::iterator_traits<Iterator>::value_type;
    const auto start = at;
    const code_point character = Utf<Character>::decode(at, end);
    if (character == boost::locale::utf::illegal || character == boost::locale::utf::incomplete) {
        at = start + 1;
        return escape(sizeof(Character) == 1 ? "\\x%02X" : "\\u%04X",
                      static_cast<std::make_unsigned_t<Character>>(*start));
    }
    if (character == '\n') return "\\n";
    if (character == '\t') return "\\t";
    if (isControl(character)) return escape("\\x%02X", character);
    if (turnsDirection(character)) return escape("\\u%04X", character);
    std::string utf8;
    Utf<char>::encode(character, std::back_inserter(utf8));
    return utf8;
}

std::string groupThousands(std::size_t number)
{
    auto text = std::to_string(number);
    for (auto at = static_cast<std::ptrdiff_t>(text.size()) - 3; at > 0; at -= 3)
        text.insert(static_cast<std::size_t>(at), 1, ',');
    return text;
}

template <typename Text>
std::string show(const Text& text, std::size_t longest, const char* quote)
{
    std::string shown = quote;
    std::size_t count = 0;
    for (auto at = text.begin(); at != text.end(); ++count) {
        const auto character = takeCharacter(at, text.end());
        if (count < longest) shown += character;
    }
    if (count <= longest) return shown + quote;
    return shown + "..." + quote + " (" + groupThousands(count) + " characters)";
}

}  // namespace

std::string quoteText(std::string_view utf8, std::size_t longest)
{
    return show(utf8, longest, "\"");
}

std::string quoteText(std::u16string_view text, std::size_t longest)
{
    return show(text, longest, "\"");
}

std::string showText(std::string_view utf8, std::size_t longest)
{
    return show(utf8, longest, "");
}

}  // namespace quillon::report
