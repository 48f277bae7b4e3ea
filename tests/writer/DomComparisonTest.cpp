#include "tests/writer/DomComparison.h"

namespace quillon::chart {
namespace {

std::string compare(const std::string& expected, const std::string& actual)
{
    return findDifference(*parseMarkup(expected)->getDocumentElement(),
                          *parseMarkup(actual)->getDocumentElement());
}

TEST(DomComparison, NamesTheFirstDifference)
{
    const std::tuple<const char*, const char*, const char*> cases[] = {
        {"<a b='1' c='2'><d>e</d></a>", "<a c='2' b='1'>\n  <d>e</d>\n</a>", ""},
        {"<a/>", "<b/>", "a: element: expected a, got b"},
        {"<a><b/><c/><b d='1'/></a>", "<a><b/><c/><b d='2'/></a>",
         R"(a/b[2]: attributes: expected u"d=\"1\"", got u"d=\"2\"")"},
        {"<a><b c='1'/></a>", "<a><b c='1' d=''/></a>",
         R"(a/b[1]: attributes: expected u"c=\"1\"", got u"c=\"1\" d=\"\"")"},
        {"<a><b>c</b></a>", "<a><b>c </b></a>", R"(a/b[1]: text: expected u"c", got u"c ")"},
        {"<a><b> </b></a>", "<a><b/></a>", R"(a/b[1]: text: expected u" ", got u"")"},
        {"<a><b/>c</a>", "<a><b/></a>", R"(a: text: expected u"c", got u"")"},
        {"<a><b/><c/></a>", "<a><c/><b/></a>", "a/b[1]: element: expected b, got c"},
        {"<a><b/></a>", "<a><b/><b/></a>", "a: number of elements: expected 1, got 2"},
    };
    for (const auto& [expected, actual, difference] : cases) EXPECT_EQ(compare(expected, actual), difference);
}

}  // namespace
}  // namespace quillon::chart
