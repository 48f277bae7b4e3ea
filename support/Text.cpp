#include "support/Text.h"

#include <algorithm>
#include <array>
#include <boost/locale/encoding_utf.hpp>
#include <charconv>
#include <cmath>
#include <limits>
#include <stdexcept>

namespace quillon {
namespace {

/// Converts between encodings, refusing ill-formed input.
template <typename To, typename From>
std::basic_string<To> convert(std::basic_string_view<From> text, const char* message)
{
    try {
        return boost::locale::conv::utf_to_utf<To>(text.data(), text.data() + text.size(),
                                                   boost::locale::conv::stop);
    } catch (const boost::locale::conv::conversion_error&) {
        throw std::runtime_error(message);
    }
}

constexpr auto illFormedUtf16 = "Text is not well-formed UTF-16: it has an unpaired surrogate.";
constexpr auto illFormedUtf8 = "Text is not well-formed UTF-8.";

template <typename Number>
std::u16string toDecimal(Number number)
{
    std::array<char, 32> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return {digits.data(), end};
}

}  // namespace

std::u16string toLowerString(std::u16string_view text)
{
    std::u16string result(text);
    for (auto& character : result)
        if (character >= u'A' && character <= u'Z')
            character = static_cast<char16_t>(character + (u'a' - u'A'));
    return result;
}

std::string toLower(std::string_view text)
{
    std::string result(text);
    for (auto& character : result) character = toLower(character);
    return result;
}

std::u16string toUpperString(std::u16string_view text)
{
    std::u16string result(text);
    for (auto& character : result)
        if (character >= u'a' && character <= u'z')
            character = static_cast<char16_t>(character - (u'a' - u'A'));
    return result;
}

std::wstring toWideString(std::u16string_view text)
{
    return convert<wchar_t>(text, illFormedUtf16);
}

std::string toUtf8(std::u16string_view text)
{
    return convert<char>(text, illFormedUtf16);
}

std::u16string toUtf16(std::string_view text)
{
    return convert<char16_t>(text, illFormedUtf8);
}

std::u16string num2HexStr(unsigned char byte)
{
    constexpr std::u16string_view digits = u"0123456789abcdef";
    return {digits[byte >> 4U], digits[byte & 0xFU]};
}

std::uint32_t str2uint(std::u16string_view text)
{
    constexpr std::uint64_t maximum = std::numeric_limits<std::uint32_t>::max();
    std::uint64_t number = 0;
    for (auto at = std::find_if_not(text.begin(), text.end(), isSpace); at != text.end(); ++at) {
        if (*at < u'0' || *at > u'9') break;
        number = std::min(number * 10 + (*at - u'0'), maximum);
    }
    return static_cast<std::uint32_t>(number);
}

std::u16string num2str(unsigned long number)
{
    return toDecimal(number);
}

std::u16string num2str(double number)
{
    if (std::isnan(number)) return u"NaN";
    if (std::isinf(number)) return number < 0 ? u"-INF" : u"INF";
    return toDecimal(number);
}

}  // namespace quillon
