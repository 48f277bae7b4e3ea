#include "support/Text.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <limits>
#include <locale>
#include <utility>

#include "tests/ThrownText.h"

namespace quillon {
namespace {

TEST(Text, MapsTheCaseOfAsciiLettersAlone)
{
    EXPECT_EQ(toLowerString(u"@AZ[`az{ \u00C4\u0130\u0410\U0001F600"),
              u"@az[`az{ \u00C4\u0130\u0410\U0001F600");
    EXPECT_EQ(toUpperString(u"@AZ[`az{ \u00E4\u0131\u0430\U0001F600"),
              u"@AZ[`AZ{ \u00E4\u0131\u0430\U0001F600");
    EXPECT_EQ(toLowerString(u""), u"");
}

TEST(Text, WritesAByteAsTwoHexadecimalDigits)
{
    for (unsigned byte = 0; byte < 256; ++byte) {
        const std::u16string digits = num2HexStr(static_cast<unsigned char>(byte));
        ASSERT_EQ(digits.size(), 2U);
        EXPECT_EQ(std::stoul(toUtf8(digits), nullptr, 16), byte);
        EXPECT_EQ(digits, toLowerString(digits));
    }
}

TEST(Text, ReadsTheLeadingDigitsOfANumber)
{
    const std::pair<const char16_t*, std::uint32_t> cases[] = {
        {u"", 0},
        {u"12", 12},
        {u"007", 7},
        {u" \t\n\v\f\r12", 12},
        {u"12 3", 12},
        {u"255)", 255},
        {u"abc", 0},
        {u"-1", 0},
        {u"+1", 0},
        {u" ", 0},
        {u"1\uFF12", 1},
        {u"4294967295", 4294967295U},
        {u"4294967296", 4294967295U},
        {u"99999999999999999999999999999999999999990", 4294967295U},
    };
    for (const auto& [text, number] : cases) EXPECT_EQ(str2uint(text), number) << toUtf8(text);
    EXPECT_EQ(str2uint({u"12\0003", 4}), 12U);
}

TEST(Text, WritesTheShortestTextOfANumber)
{
    const std::pair<double, const char16_t*> cases[] = {
        {0, u"0"},
        {1, u"1"},
        {-2.5, u"-2.5"},
        {0.1, u"0.1"},
        {0.1 + 0.2, u"0.30000000000000004"},
        {1.0 / 3, u"0.3333333333333333"},
        {1234567, u"1234567"},
        {1e21, u"1e+21"},
        {1e-7, u"1e-07"},
        {std::nan(""), u"NaN"},
        {-std::nan(""), u"NaN"},
        {HUGE_VAL, u"INF"},
        {-HUGE_VAL, u"-INF"},
    };
    for (const auto& [number, text] : cases) EXPECT_EQ(num2str(number), text);
    EXPECT_EQ(num2str(0UL), u"0");
    EXPECT_EQ(num2str(std::numeric_limits<unsigned long>::max()), u"18446744073709551615");
}

TEST(Text, WritesNumbersThatReadBackTheSame)
{
    using Limits = std::numeric_limits<double>;
    for (const double number : {Limits::max(), Limits::lowest(), Limits::min(), Limits::denorm_min(), 5e-324,
                                123456789.123456789, 2.2250738585072011e-308, 9007199254740993.0})
        EXPECT_EQ(std::strtod(toUtf8(num2str(number)).c_str(), nullptr), number);
    EXPECT_TRUE(std::signbit(std::strtod(toUtf8(num2str(-0.0)).c_str(), nullptr)));
}

TEST(Text, WritesNumbersWithoutTheLocale)
{
    struct Commas : std::numpunct<char> {
        char do_decimal_point() const override { return ','; }
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale::classic(), new Commas));
    const auto fraction = num2str(1234567.5);
    const auto whole = num2str(1234567UL);
    std::locale::global(before);
    EXPECT_EQ(fraction, u"1234567.5");
    EXPECT_EQ(whole, u"1234567");
}

TEST(Text, ConvertsBetweenEncodings)
{
    const std::pair<std::u16string, std::string> cases[] = {
        {u"", ""},
        {u"plain & <text>", "plain & <text>"},
        {{u"a\0b", 3}, {"a\0b", 3}},
        {u"\u007F\u0080\u07FF\u0800\uFFFD\uFFFF", "\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBD\xEF\xBF\xBF"},
        {u"\U00010000\U0001F600\U0010FFFF", "\xF0\x90\x80\x80\xF0\x9F\x98\x80\xF4\x8F\xBF\xBF"},
    };
    for (const auto& [utf16, utf8] : cases) {
        EXPECT_EQ(toUtf8(utf16), utf8);
        EXPECT_EQ(toUtf16(utf8), utf16);
    }
    EXPECT_EQ(toWideString(u"\u20AC\U0001F600"), L"\u20AC\U0001F600");
}

TEST(Text, RefusesIllFormedUtf16)
{
    for (const std::u16string text :
         {u"\xD800", u"\xDC00", u"a\xD83Dz", u"\xD83D\xD83D\xDE00", u"\xDE00\xD83D"}) {
        const std::string message = "Text is not well-formed UTF-16: it has an unpaired surrogate.";
        EXPECT_EQ(thrownText([&] { toUtf8(text); }), message);
        EXPECT_EQ(thrownText([&] { toWideString(text); }), message);
    }
}

TEST(Text, RefusesIllFormedUtf8)
{
    const char* const cases[] = {
        "\x80",              // a continuation byte alone
        "a\xC3",             // cut short
        "\xE2\x82",          // cut short
        "\xF0\x9F\x98z",     // cut short by a letter
        "\xC0\xAF",          // overlong
        "\xE0\x80\xAF",      // overlong
        "\xED\xA0\x80",      // a surrogate
        "\xF4\x90\x80\x80",  // past U+10FFFF
        "\xFF",
    };
    for (const auto* text : cases)
        EXPECT_EQ(thrownText([&] { toUtf16(text); }), "Text is not well-formed UTF-8.");
}

}  // namespace
}  // namespace quillon
