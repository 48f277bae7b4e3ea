#include "report/package/Xml.h"

#include <gtest/gtest.h>

namespace quillon::report {
namespace {

/// As a spreadsheet program reads the notation: from left to right, each character once.
std::u16string readBack(const std::u16string& text)
{
    std::u16string read;
    for (std::size_t at = 0; at < text.size();) {
        const auto digits = text.substr(at).substr(0, 7).substr(2 < text.size() - at ? 2 : 0);
        const bool isNotation = text.substr(at, 2) == u"_x" && digits.size() == 5 && digits[4] == u'_' &&
                                digits.find_first_not_of(u"0123456789ABCDEFabcdef") == 4;
        if (isNotation)
            read += static_cast<char16_t>(
                std::stoul(std::string(digits.begin(), digits.begin() + 4), nullptr, 16));
        else
            read += text[at];
        at += isNotation ? 7 : 1;
    }
    return read;
}

TEST(Xml, EscapesSoThatEveryTextReadsBack)
{
    const std::pair<std::u16string, std::u16string> cases[] = {
        {u"plain _text_ _x00_", u"plain _text_ _x00_"},
        {u"\x01\t\xFFFF", u"_x0001_\t_xFFFF_"},
        {u"_x0041_", u"_x005F_x0041_"},
        {u"_x0041\x01", u"_x005F_x0041_x0001_"},
        {u"\x01x0041_", u"_x0001_x0041_"},
        {std::u16string(u"\xD83D\xDE00_") + u'\xD83D', u"\xD83D\xDE00__xD83D_"},
    };
    for (const auto& [text, escaped] : cases) EXPECT_EQ(escapeCharacters(text), escaped);

    // All texts of up to six of these pieces.
    const std::u16string pieces[] = {u"_", u"x", u"_x0041", u"x005F", u"\x01", u"0001_"};
    std::vector<std::u16string> texts = {u""};
    for (std::size_t at = 0; texts.size() < 50'000; ++at)
        for (const auto& piece : pieces) texts.push_back(texts[at] + piece);
    for (const auto& text : texts) ASSERT_EQ(readBack(escapeCharacters(text)), text);
}

}  // namespace
}  // namespace quillon::report
