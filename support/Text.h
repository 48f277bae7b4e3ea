#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "support/Export.h"

/// Text, number and encoding helpers. Text is UTF-16 unless a name says otherwise; nothing here reads the
/// locale.
namespace quillon {

/// Whether a character is white space of ASCII.
constexpr bool isSpace(char16_t character)
{
    return character == u' ' || (character >= u'\t' && character <= u'\r');
}

constexpr bool isDigit(char character)
{
    return character >= '0' && character <= '9';
}

/// The text without the `blanks` at its ends.
constexpr std::string_view trim(std::string_view text, std::string_view blanks = " \t")
{
    const auto begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

/// The texts that `toText`, a function or member, gives for `items`, with `separator` between them.
template <typename Items, typename ToText = std::identity>
std::string join(const Items& items, std::string_view separator, ToText toText = {})
{
    std::string result;
    bool isFirst = true;
    for (const auto& item : items) {
        if (!std::exchange(isFirst, false)) result += separator;
        result += std::invoke(toText, item);
    }
    return result;
}

/// Maps the ASCII letters A to Z to a to z; every other character stays.
QUILLON_EXPORT std::u16string toLowerString(std::u16string_view text);
/// The same for UTF-8.
QUILLON_EXPORT std::string toLower(std::string_view text);
constexpr char toLower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Maps the ASCII letters a to z to A to Z; every other character stays.
QUILLON_EXPORT std::u16string toUpperString(std::u16string_view text);

/// UTF-16 to wide characters (UTF-32).
/// Throws: std::runtime_error when `text` has an unpaired surrogate.
QUILLON_EXPORT std::wstring toWideString(std::u16string_view text);

/// UTF-16 to UTF-8. Throws: std::runtime_error when `text` has an unpaired surrogate.
QUILLON_EXPORT std::string toUtf8(std::u16string_view text);

/// UTF-8 to UTF-16. Throws: std::runtime_error when `text` is not well-formed UTF-8.
QUILLON_EXPORT std::u16string toUtf16(std::string_view text);

/// The two lower-case hexadecimal digits of a byte: 10 gives "0a".
QUILLON_EXPORT std::u16string num2HexStr(unsigned char byte);

/// Reads a decimal number: skips leading white space and stops at the first character that is not a digit.
/// No digits give 0; a number past the range of the type gives the type's maximum.
QUILLON_EXPORT std::uint32_t str2uint(std::u16string_view text);

/// Plain decimal text.
QUILLON_EXPORT std::u16string num2str(unsigned long number);

/// The shortest text that reads back to the same double: 0.1 gives "0.1", 1e21 gives "1e+21".
/// What is not a finite number gives "NaN", "INF" or "-INF".
QUILLON_EXPORT std::u16string num2str(double number);

}  // namespace quillon
