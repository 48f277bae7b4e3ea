#include "chart/model/Color.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <sstream>

#include "support/Text.h"
#include "tests/ThrownText.h"

namespace quillon::chart {
namespace {

std::u16string hexOf(const std::u16string& text)
{
    return Color(text).toHexString();
}

TEST(Color, WritesEachFormAsHexadecimalDigitsAndOthersWhite)
{
    const std::pair<const char16_t*, const char16_t*> cases[] = {
        {u"red", u"FF0000"},
        {u"RED", u"FF0000"},
        {u"GREY", u"808080"},
        {u"mediumpurple", u"9370D8"},
        {u"palevioletred", u"D87093"},
        {u"#00ff00", u"#00ff00"},
        {u"#", u"#"},
        {u"rgb(0,128,255)", u"0080FF"},
        {u"RGB(0,128,255)", u"0080FF"},
        {u"rgb(1 ,2\t,3)", u"010203"},
        {u"rgb(1, 2,3)", u"010203"},
    };
    for (const auto& [text, digits] : cases) EXPECT_EQ(hexOf(text), digits);
    for (const auto* text : {u"", u"00FF00", u"Rgb(0,128,255)", u"rgb(300,0,0)", u"rgb(256,0,0)",
                             u"rgb( 1,2,3)", u"rgb(1,2,3 )", u"rgb(1,2,3)x", u"rgb(1,2)"})
        EXPECT_EQ(hexOf(text), u"FFFFFF") << testing::PrintToString(text);
}

constexpr auto colorNames =
    "aliceblue antiquewhite aqua aquamarine azure beige bisque black blanchedalmond blue "
    "blueviolet brown burlywood cadetblue chartreuse chocolate coral cornflowerblue cornsilk "
    "crimson cyan darkblue darkcyan darkgoldenrod darkgray darkgrey darkgreen darkkhaki "
    "darkmagenta darkolivegreen darkorange darkorchid darkred darksalmon darkseagreen "
    "darkslateblue darkslategray darkslategrey darkturquoise darkviolet deeppink deepskyblue "
    "dimgray dimgrey dodgerblue firebrick floralwhite forestgreen fuchsia gainsboro ghostwhite "
    "gold goldenrod gray grey green greenyellow honeydew hotpink indianred indigo ivory khaki "
    "lavender lavenderblush lawngreen lemonchiffon lightblue lightcoral lightcyan "
    "lightgoldenrodyellow lightgray lightgrey lightgreen lightpink lightsalmon lightseagreen "
    "lightskyblue lightslategray lightslategrey lightsteelblue lightyellow lime limegreen linen "
    "magenta maroon mediumaquamarine mediumblue mediumorchid mediumpurple mediumseagreen "
    "mediumslateblue mediumspringgreen mediumturquoise mediumvioletred midnightblue mintcream "
    "mistyrose moccasin navajowhite navy oldlace olive olivedrab orange orangered orchid "
    "palegoldenrod palegreen paleturquoise palevioletred papayawhip peachpuff peru pink plum "
    "powderblue purple red rosybrown royalblue saddlebrown salmon sandybrown seagreen seashell "
    "sienna silver skyblue slateblue slategray slategrey snow springgreen steelblue tan teal "
    "thistle tomato turquoise violet wheat white whitesmoke yellow yellowgreen";

TEST(Color, HasSixUpperCaseDigitsForEveryNameAndEitherSpellingOfGray)
{
    std::istringstream names(colorNames);
    std::size_t count = 0;
    for (std::string name; names >> name; ++count) {
        const auto* const digits = findNamedColor(toUtf16(name));
        ASSERT_NE(digits, nullptr) << name;
        EXPECT_EQ(digits->size(), 6) << name;
        EXPECT_EQ(digits->find_first_not_of(u"0123456789ABCDEF"), std::u16string::npos) << name;
        const auto gray = name.find("gray");
        if (gray == std::string::npos) continue;
        const auto* const other = findNamedColor(toUtf16(name.replace(gray, 4, "grey")));
        ASSERT_NE(other, nullptr) << name;
        EXPECT_EQ(*other, *digits) << name;
    }
    EXPECT_EQ(count, 147);
}

TEST(Color, SurvivesHostileText)
{
    EXPECT_EQ(hexOf(u"rgb(1" + std::u16string(1'000'000, u' ') + u",2,3)"), u"010203");
    EXPECT_EQ(hexOf(u"rgb(" + std::u16string(1'000'000, u',')), u"FFFFFF");
    EXPECT_EQ(hexOf(u"rgb(\xD800,2,3)"), u"FFFFFF");
}

TEST(Color, KeepsATripletAsDigitsThatAreWrittenWhite)
{
    const std::pair<std::array<double, 3>, const char16_t*> cases[] = {
        {{1, 0.5, -0.1}, u"FF80E6"},
        {{1.2, 2, -0.5}, u"32FE80"},
        {{HUGE_VAL, std::nan(""), -1e300}, u"000000"},
    };
    Color color(u"red");
    for (const auto& [triplet, digits] : cases) {
        color.setFromTriplet(triplet[0], triplet[1], triplet[2]);
        EXPECT_EQ(color.getText(), digits);
        EXPECT_TRUE(Color(color).isFromTriplet());
        EXPECT_EQ(color.toHexString(), u"FFFFFF");
        EXPECT_EQ(thrownText([&] { color.toTriplet(); }), "Invalid color");
    }
    color.setFromText(u"#00ff00");
    EXPECT_FALSE(color.isFromTriplet());
    EXPECT_EQ(thrownText([&] { color.toTriplet(); }), "Invalid color");
}

TEST(Color, ShiftsTheTripletOfAnRgbExpressionByOneDigit)
{
    EXPECT_EQ(Color(u"rgb(255,128,0)").toTriplet(), (std::array{0xF8 / 255.0, 0x00 / 255.0, 0x0 / 255.0}));
}

}  // namespace
}  // namespace quillon::chart
