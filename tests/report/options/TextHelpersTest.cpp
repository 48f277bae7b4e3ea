#include <gtest/gtest.h>

#include "report/options/ListText.h"
#include "report/options/NearName.h"
#include "report/options/QuotedText.h"
#include "tests/ThrownText.h"

namespace quillon::report {
namespace {

using Items = std::vector<std::string>;

TEST(QuoteText, IsOneLineFitForATerminal)
{
    EXPECT_EQ(quoteText("Köln \"A\""), "\"Köln \"A\"\"");
    EXPECT_EQ(quoteText("a\nb\tc\x1B[0m\x7F"), "\"a\\nb\\tc\\x1B[0m\\x7F\"");
    EXPECT_EQ(quoteText("\u009B2J \u202Eabc"), "\"\\x9B2J \\u202Eabc\"");
    EXPECT_EQ(quoteText("a\xFFz\xC3"), "\"a\\xFFz\\xC3\"");
    EXPECT_EQ(quoteText(u"\xD83D\xDE00\xD800\u202E\x01"), "\"\xF0\x9F\x98\x80\\uD800\\u202E\\x01\"");
    EXPECT_EQ(showText("a\x1B.xml", 4), "a\\x1B.x... (6 characters)");
    EXPECT_EQ(quoteText("äöü", 3), "\"äöü\"");
    EXPECT_EQ(quoteText("äöüß", 3), "\"äöü...\" (4 characters)");
    EXPECT_EQ(quoteText(std::string(1'234'567, 'x'), 2), "\"xx...\" (1,234,567 characters)");
}

TEST(NearName, IsTheOneThatWasMeant)
{
    const Items names = {"type", "title", "top", "category", "categories"};
    EXPECT_EQ(findNearName("tpye", names), "type");
    EXPECT_EQ(findNearName("TYPE", names), "type");
    EXPECT_EQ(findNearName("titel", names), "title");
    EXPECT_EQ(findNearName("categry", names), "category");
    EXPECT_EQ(findNearName("xy", names), "");
    EXPECT_EQ(findNearName("a", {"b"}), "");
    EXPECT_EQ(findNearName("Exp", {"linear", "exponential", "export"}), "");
    EXPECT_EQ(findNearName("Expo", {"linear", "Exponential"}), "Exponential");
    EXPECT_EQ(findNearName("ex", {"linear", "exponential"}), "");
    EXPECT_EQ(suggestName("colums", {"columns"}), "; did you mean \"columns\"?");
    EXPECT_EQ(suggestName("x", {}), ".");
}

TEST(ListText, ItemsMayBeQuoted)
{
    EXPECT_EQ(splitList("a, b ,c"), (Items{"a", "b", "c"}));
    EXPECT_EQ(splitList("red,rgb(1,2,3)"), (Items{"red", "rgb(1,2,3)"}));
    EXPECT_EQ(splitList("\"Umsatz, netto\",B"), (Items{"Umsatz, netto", "B"}));
    EXPECT_EQ(splitList("\"say \"\"a,b\"\"\", \" c \""), (Items{"say \"a,b\"", " c "}));
    EXPECT_EQ(splitList("a,,"), (Items{"a", "", ""}));
    EXPECT_EQ(splitList(""), (Items{""}));
    EXPECT_EQ(splitList("\"a\"=\"b\""), (Items{"\"a\"=\"b\""}));
    EXPECT_EQ(
        thrownText([] { splitList("a,\"b"); }),
        "List \"a,\"b\": a double quote is not closed; an item with a quote stands in quotes, in which it "
        "is doubled.");
    for (const auto* item : {"a", "a,b", "say \"x\"", " b", "f(x", "", "a\"\",b"})
        EXPECT_EQ(splitList(putInQuotes(item) + ",z"), (Items{item, "z"})) << item;
}

}  // namespace
}  // namespace quillon::report
