#include "tests/writer/DomComparison.h"

namespace quillon::chart {
namespace {

TEST(DomComparison, TellsTreesApart)
{
    const std::tuple<const char*, const char*, bool> cases[] = {
        {"<a b='1' c='2'><d>e</d></a>", "<a c='2' b='1'>\n  <d>e</d>\n</a>", true},
        {"<a/>", "<b/>", false},
        {"<a><b c='1'/></a>", "<a><b c='2'/></a>", false},
        {"<a><b c='1'/></a>", "<a><b c='1' d=''/></a>", false},
        {"<a><b>c</b></a>", "<a><b>c </b></a>", false},
        {"<a><b/><c/></a>", "<a><c/><b/></a>", false},
        {"<a><b><c/></b></a>", "<a><b/><c/></a>", false},
        {"<a><b/></a>", "<a><b/><b/></a>", false},
    };
    for (const auto& [expected, actual, same] : cases)
        EXPECT_EQ(bool(isSameTree(*parseMarkup(expected)->getDocumentElement(),
                                  *parseMarkup(actual)->getDocumentElement())),
                  same);
}

}  // namespace
}  // namespace quillon::chart
