
#include <gtest/gtest.h>

#include <stdexcept>

#include "report/package/Edits.h"
#include "report/package/TagScanner.h"
#include "report/package/XmlText.h"
#include "tests/ThrownText.h"

namespace quillon::report {
namespace {

constexpr auto chartPart =
    "<?xml version='1.0'?><c:a xmlns:c='http://schemas.openxmlformats.org/drawingml/2006/chart' "
    "xmlns:r=\"http://schemas.openxmlformats.org/officeDocument/2006/relationships\">"
    "<c:b val='x>&amp;&#x41;' r:id = \"rId1\" /><!-- <c:b/> --><c:numCache f='1'><c:pt idx='0'/></c:numCache>"
    "one <!--->no-->&lt;<![CDATA[<two>]]><c:d>\r\nthree</c:d></c:a>";

TEST(XmlSpans, ReadsNamesAttributesAndTextWhereTheyStand)
{
    const XmlSpans xml(chartPart, "part");
    const auto root = xml.getRoot();
    EXPECT_FALSE(xml.isStrict());
    EXPECT_TRUE(root.is(Ns::Chart, "a"));
    EXPECT_EQ(root.getPrefix(), "c:");
    EXPECT_EQ(root.getText(), "one <<two>\nthree");
    const auto b = root.findChild("b");
    EXPECT_EQ(b.getAttribute("val"), "x>&A");
    EXPECT_EQ(b.getAttribute(Ns::OfficeRelationships, "id"), "rId1");
    EXPECT_EQ(b.getAttribute("id"), std::nullopt);
    EXPECT_TRUE(b.isEmptyTag());
    EXPECT_EQ(b.getSource(), "<c:b val='x>&amp;&#x41;' r:id = \"rId1\" />");
    EXPECT_EQ(xml.getText(root.findPath({"numCache", "pt"}).getOuter()), "<c:pt idx='0'/>");
    EXPECT_FALSE(root.findPath({"missing", "pt"}));
    EXPECT_EQ(root.findChild("d").getParent(), root);
    EXPECT_EQ(root.findChild("d").findPrefix(Ns::OfficeRelationships), "r:");
    EXPECT_EQ(root.findPrefix(Ns::Drawing), std::nullopt);
}

TEST(XmlSpans, ReadsTheContentOfLargeElementsOnDemand)
{
    const XmlSpans xml(chartPart, "part", [](Ns, std::string_view name) { return name == "numCache"; });
    const auto cache = xml.getRoot().findChild("numCache");
    EXPECT_FALSE(cache.getFirstChild());
    EXPECT_TRUE(cache.getNext().is(Ns::Chart, "d"));
    TagScanner scanner(xml.getText(), cache.getInner());
    const auto tag = scanner.next();
    ASSERT_TRUE(tag);
    EXPECT_EQ(xml.getText(tag->span), "<c:pt idx='0'/>");
    EXPECT_EQ(tag->name, "pt");
    EXPECT_TRUE(tag->isEmpty);
    EXPECT_EQ(xml.getText(*scanner.findAttribute(*tag, "idx")), "0");
    EXPECT_FALSE(scanner.next());
}

TEST(XmlSpans, ScansTagsOnly)
{
    const std::string text = "<a b='>'><!-- <c> --><![CDATA[<d>]]><?e <f> ?>1</a>";
    TagScanner scanner(text, {0, static_cast<std::uint32_t>(text.size())});
    EXPECT_EQ(scanner.next()->span.end, 9U);
    EXPECT_TRUE(scanner.next()->isEnd);
    EXPECT_FALSE(scanner.next());
}

TEST(XmlSpans, TellsTheDialectsApart)
{
    const XmlSpans xml("<a xmlns='http://purl.oclc.org/ooxml/drawingml/chart'/>", "part");
    EXPECT_TRUE(xml.isStrict());
    EXPECT_TRUE(xml.getRoot().is(Ns::Chart, "a"));
    EXPECT_EQ(getUri(xml.getRoot().getNs(), true), xml.getRoot().getNsUri());
}

std::string widen(std::u16string_view text, bool isBig)
{
    std::string bytes;
    for (const char16_t unit : text) {
        const char low = static_cast<char>(unit & 0xFF);
        const char high = static_cast<char>(unit >> 8);
        bytes += isBig ? high : low;
        bytes += isBig ? low : high;
    }
    return bytes;
}

TEST(XmlSpans, KeepsTheEncodingOfThePart)
{
    const std::u16string declared = u"<?xml version='1.0' encoding='UTF-16'?><a>\u00e9\U0001F600</a>";
    for (const auto& bytes :
         {widen(u"\uFEFF" + declared, false), widen(u"\uFEFF" + declared, true), widen(declared, false),
          std::string("\xEF\xBB\xBF<a>\xC3\xA9\xF0\x9F\x98\x80</a>")}) {
        const XmlSpans xml(bytes, "part");
        EXPECT_EQ(xml.getRoot().getText(), "\xC3\xA9\xF0\x9F\x98\x80");
        EXPECT_EQ(Edits().apply(xml), bytes);
        Edits edits;
        edits.setInner(xml.getRoot(), "\xC3\xA4");
        EXPECT_EQ(XmlSpans(edits.apply(xml), "part").getRoot().getText(), "\xC3\xA4");
    }
}

TEST(XmlSpans, RefusesWhatIsUnsafeOrBroken)
{
    std::string deep;
    std::string ends;
    for (int i = 0; i < 256; ++i) {
        deep += "<a>";
        ends += "</a>";
    }
    EXPECT_TRUE(XmlSpans(deep + ends, "p.xml").getRoot());
    const std::pair<std::string, std::string> refused[] = {
        {"<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>",
         "p.xml, line 1: a document type is declared; documents have none, and it could hide entities."},
        {"<a>\n&b;</a>", "p.xml, line 2: it is not well-formed XML (undefined entity)."},
        {deep + "<a>", "p.xml, line 1: elements stand in each other deeper than 256 levels."},
        {"<?xml version='1.0' encoding='latin1'?><a/>",
         "p.xml, line 1: its encoding is neither UTF-8 nor UTF-16."},
        {"", "p.xml, line 1: it is not well-formed XML (no element found)."},
        {"<a>", "p.xml, line 1: it is not well-formed XML (no element found)."},
        {"<a b:c='1'/>", "p.xml, line 1: it is not well-formed XML (unbound prefix)."},
        {"<a>\xFF</a>", "p.xml, line 1: it is not well-formed XML (not well-formed (invalid token))."},
        {widen(u"\uFEFF<a/>", false) + "\xFF", "p.xml: it is not well-formed UTF-16."},
        {widen(u"<a>\xD800</a>", true), "p.xml: it is not well-formed UTF-16."},
    };
    for (const auto& [bytes, sentence] : refused)
        EXPECT_EQ(thrownText([&b = bytes] { const XmlSpans xml(b, "p.xml"); }), sentence);
}

TEST(Edits, ChangeOnlyTheirSpans)
{
    const XmlSpans xml("<a><b/> <c d='1' e=\"2\">t</c><f >u</f ></a>", "part");
    const auto root = xml.getRoot();
    Edits edits;
    edits.setAttribute(root.findChild("c"), "e", "<'\n");
    edits.setAttribute(root.findChild("c"), "d", "1");
    edits.setAttribute(root.findChild("f"), "g", "x");
    edits.append(root, "<z/>");
    edits.setInner(root.findChild("b"), escapeText("1 < 2\r"));
    edits.remove(root.findChild("c").getInner());
    edits.insert(root.findChild("c").getOuter().begin, "first ");
    edits.insert(root.findChild("c").getOuter().begin, "second ");
    EXPECT_EQ(
        edits.apply(xml),
        "<a><b>1 &lt; 2&#13;</b> first second <c d='1' e=\"&lt;&#39;&#10;\"></c><f g=\"x\" >u</f ><z/></a>");
    EXPECT_TRUE(edits.isEmpty());
}

TEST(Edits, ThatOverlapAreRefused)
{
    Edits edits;
    edits.replace({0, 3}, "x");
    edits.remove({2, 4});
    EXPECT_THROW(edits.apply("12345"), std::logic_error);
}

}  // namespace
}  // namespace quillon::report
