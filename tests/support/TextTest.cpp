#include "support/Text.h"

#include <gtest/gtest.h>

#include <cmath>
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
}

TEST(Text, WritesAByteAsTwoHexadecimalDigits)
{
    EXPECT_EQ(num2HexStr(0), u"00");
    EXPECT_EQ(num2HexStr(0x0A), u"0a");
    EXPECT_EQ(num2HexStr(0xF9), u"f9");
}

TEST(Text, ReadsTheLeadingDigitsOfANumber)
{
    const std::pair<const char16_t*, std::uint32_t> cases[] = {
        {u"", 0},
        {u"007", 7},
        {u" \t\n\v\f\r12", 12},
        {u"12 3", 12},
        {u"abc", 0},
        {u"-1", 0},
        {u"1\uFF12", 1},
        {u"4294967295", 4294967295U},
        {u"4294967296", 4294967295U},
        {u"99999999999999999999999999999999999999990", 4294967295U}};
    for (const auto& [text, number] : cases) EXPECT_EQ(str2uint(text), number) << toUtf8(text);
}

TEST(Text, WritesTheShortestTextOfANumber)
{
    struct {
        double number;
        std::u16string text;
    } const cases[] = {
        {-0.0, u"-0"},           {0.1 + 0.2, u"0.30000000000000004"},
        {1e21, u"1e+21"},        {-2.5e-7, u"-2.5e-07"},
        {5e-324, u"5e-324"},     {1.7976931348623157e308, u"1.7976931348623157e+308"},
        {-std::nan(""), u"NaN"}, {HUGE_VAL, u"INF"},
        {-HUGE_VAL, u"-INF"},
    };
    for (const auto& [number, text] : cases) EXPECT_EQ(num2str(number), text);
    EXPECT_EQ(num2str(std::numeric_limits<unsigned long>::max()), u"18446744073709551615");
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

TEST(Text, RefusesIllFormedText)
{
    const std::string utf16 = "Text is not well-formed UTF-16: it has an unpaired surrogate.";
    for (const std::u16string text :
         {u"\xD800", u"\xDC00", u"a\xD83Dz", u"\xD83D\xD83D\xDE00", u"\xDE00\xD83D"}) {
        EXPECT_EQ(thrownText([&] { toUtf8(text); }), utf16);
        EXPECT_EQ(thrownText([&] { toWideString(text); }), utf16);
    }
    for (const std::string text : {"\x80", "\xFF", "a\xC3", "\xE2\x82", "\xF0\x9F\x98z", "\xC0\xAF",
                                   "\xE0\x80\xAF", "\xED\xA0\x80", "\xF4\x90\x80\x80"})
        EXPECT_EQ(thrownText([&] { toUtf16(text); }), "Text is not well-formed UTF-8.");
}

}  // namespace
}  // namespace quillon
