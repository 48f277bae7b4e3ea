#include "report/options/NumberText.h"

#include <gtest/gtest.h>

#include <limits>

namespace quillon::report {
namespace {

TEST(NumberText, ShowsNumbersAsCellsDo)
{
    struct Case {
        double number;
        const char* code;
        const char* text;
    };
    constexpr Case cases[] = {
        {1234.5, "", "1234.5"},
        {0.1 + 0.2, "General", "0.3"},
        {1234.5, "#,##0", "1,235"},
        {1500.5, "#,##0.00", "1,500.50"},
        {-1234567.891, "#,##0.0", "-1,234,567.9"},
        {0.125, "0.00", "0.13"},
        {9.995, "0.00", "10.00"},
        {-0.001, "0.00", "0.00"},
        {0.5, "#.##", ".5"},
        {3, "0.##", "3"},
        {7, "000", "007"},
        {0.4567, "0.0%", "45.7%"},
        {1234567, "#,##0,", "1,235"},
        {1234567, "0.0,,\" M\"", "1.2 M"},
        {12, "\"EUR\" 0.00", "EUR 12.00"},
        {12, "[$\u20AC-407] #,##0", "\u20AC 12"},
        {-12, "[Red]#,##0;(#,##0);\"none\"", "(12)"},
        {0, "0;-0;\"none\"", "none"},
        {1e16, "General", "1E+16"},
        {1e300, "0.00E+00", "1.00E+300"},
        {12.5, "[Red]0 \\k\\g_)", "13 kg "},
        {std::numeric_limits<double>::quiet_NaN(), "0", ""},
    };
    for (const auto& [number, code, text] : cases) EXPECT_EQ(formatNumber(number, code), text) << code;
}

TEST(NumberText, ShowsDatesAsCellsDo)
{
    struct Case {
        double serial;
        const char* code;
        const char* text;
    };
    constexpr Case cases[] = {
        {45'292, "yyyy-mm-dd", "2024-01-01"},
        {45'351, "d mmm yy", "29 Feb 24"},
        {45'351, "dddd, d mmmm yyyy", "Thursday, 29 February 2024"},
        {45'292.75, "h:mm AM/PM", "6:00 PM"},
        {45'292.0 + 61.0 / 86'400, "hh:mm:ss", "00:01:01"},
        {1, "yyyy-mm-dd", "1899-12-31"},
        {2'958'465, "dd/mm/yyyy", "31/12/9999"},
        {45'292, "mmmmm", "J"},
        {1.5, "[h]:mm", "36:00"},
        {1e300, "yyyy", ""},
    };
    for (const auto& [serial, code, text] : cases) EXPECT_EQ(formatNumber(serial, code), text) << code;
}

TEST(NumberText, HasTheMarksAndNamesOfALanguage)
{
    struct Case {
        const char* tag;
        double number;
        const char* code;
        const char* text;
    };
    constexpr Case cases[] = {
        {"de-DE", -1'234'567.5, "#,##0.00", "-1.234.567,50"},
        {"de_ch", 1'234'567.5, "#,##0.00", "1’234’567.50"},
        {"FR", 1234.5, "#,##0.0", "1\u00A0234,5"},
        {"pt-BR", 1234.5, "#,##0.0", "1.234,5"},
        {"pt-PT", 1234.5, "#,##0.0", "1\u00A0234,5"},
        {"it", 0.1234, "0.0%", "12,3%"},
        {"nl", 1e300, "0.0E+00", "1,0E+300"},
        {"es", 0.25, "General", "0,25"},
        {"tlh", 1234.5, "#,##0.0", "1,234.5"},
        {"dead", 1234.5, "#,##0.0", "1,234.5"},
        {"", 0.25, "", "0.25"},
        {"de-AT", 45'351, "dddd, d. mmmm yyyy", "Donnerstag, 29. Februar 2024"},
        {"fr", 45'505, "ddd d mmm", "jeu. 1 août"},
        {"cs", 45'474, "mmmmm", "č"},
        {"fi", 45'656, "mmmm", "joulukuu"},
    };
    for (const auto& [tag, number, code, text] : cases)
        EXPECT_EQ(formatNumber(number, code, findLanguage(tag)), text) << tag << " " << code;
    EXPECT_EQ(findLanguage("da-DK").dayFormat, "dd-mm-yyyy");
}

TEST(NumberText, KnowsFormatsOfDates)
{
    EXPECT_TRUE(isDateFormat("mmm yy"));
    EXPECT_FALSE(isDateFormat("#,##0 \"days\""));
    EXPECT_FALSE(isDateFormat("[Red]0"));
    EXPECT_FALSE(isDateFormat("General"));
}

}  // namespace
}  // namespace quillon::report
