/// Parsing, importing and finding in fragments, which every writer offers.

#include <gtest/gtest.h>

#include "chart/model/BarChart.h"
#include "chart/writer/DOCXChartWriter.h"
#include "tests/ThrownText.h"
#include "tests/writer/GoldenFile.h"
#include "tests/writer/TestCharts.h"

namespace quillon::chart {
namespace {

class Markup : public testing::Test {
 protected:
    std::shared_ptr<Chart> chart_ = BarChart::create();
    std::shared_ptr<DOCXChartWriter> writer_ = chart_->getDOCXWriter();
};

TEST_F(Markup, IsRefusedWithTheParsersMessage)
{
    const std::pair<std::u16string, const char*> cases[] = {
        {u"<!DOCTYPE a><a/>", "Doctype not allowed."},
        {u"<!DOCTYPE a [<!ENTITY b SYSTEM 'file:///etc/hostname'>]><a>&b;</a>", "Doctype not allowed."},
        // What has no root at all gets the parser's message for a document type, and so its text.
        {u"", "Doctype not allowed."},
        {u"text", "Doctype not allowed."},
        {u"<a>", "input ended before all started tags were ended; last tag started is 'a'"},
        {u"<a><b></a></c>", "expected end of tag 'b'"},
        {u"<a b=1/>", "attribute value expected"},
        {u"<a b='1' b='2'/>", "attribute 'b' is already specified for element 'a'"},
        {u"<a>&b;</a>", "entity 'b' not found"},
        {u"<a>\x0001</a>", "invalid character 0x1"},
        {u"<a>\xD800</a>", "Text is not well-formed UTF-16: it has an unpaired surrogate."},
        {u"<a/>", "nothing was thrown"},
    };
    for (const auto& [markup, failure] : cases)
        EXPECT_EQ(thrownText([&, &m = markup] { writer_->parseString(m); }), failure);
}

TEST_F(Markup, OutlivesItsWriter)
{
    const auto parsed = writer_->parseString(u"<n:a b='\U0001F600'>text<c/></n:a>");
    writer_->parseString(u"<other/>");
    writer_.reset();
    EXPECT_EQ(toMarkup(*parsed->getDocumentElement()), "<n:a b=\"\xF0\x9F\x98\x80\">text<c/></n:a>");
}

TEST_F(Markup, IsAppendedToItsParent)
{
    auto document = makeDocument(u"p");
    auto* parent = document->getDocumentElement();
    writer_->appendParsedElement(u"<a/>", document.get(), parent);
    auto* second = writer_->appendParsedElement(u"<b c='1'><d>&lt;</d></b>", document.get(), parent);
    EXPECT_EQ(second, parent->getLastChild());
    EXPECT_EQ(second->getOwnerDocument(), document.get());
    EXPECT_EQ(toMarkup(*parent), "<p><a/><b c=\"1\"><d>&lt;</d></b></p>");
}

TEST_F(Markup, IsNotImportedWhereItDoesNotBelong)
{
    auto document = makeDocument(u"p");
    auto other = makeDocument(u"p");
    auto* parent = document->getDocumentElement();
    const std::pair<xercesc::DOMDocument*, xercesc::DOMElement*> places[] = {
        {other.get(), parent}, {document.get(), nullptr}, {nullptr, parent}};
    for (const auto& [doc, element] : places)
        EXPECT_EQ(thrownText([&, d = doc, e = element] { writer_->appendParsedElement(u"<a/>", d, e); }),
                  "DOCXChartWriter could not import parsed markup.");
    EXPECT_EQ(thrownText([&] { writer_->appendParsedElement(u"<!DOCTYPE a><a/>", document.get(), parent); }),
              "Doctype not allowed.");
    EXPECT_FALSE(parent->hasChildNodes());
}

TEST_F(Markup, OffersItsElementsByNameAndPosition)
{
    const auto document = writer_->parseString(u"<p><a i='0'><a i='1'/></a><b><a i='2'/></b></p>");
    auto* root = document->getDocumentElement();
    const char16_t* const positions[] = {u"0", u"1", u"2"};
    for (unsigned long n = 0; n < 3; ++n)
        EXPECT_EQ(std::u16string(writer_->findElem(root, u"a", n)->getAttribute(u"i")), positions[n]);
    const struct {
        xercesc::DOMElement* from;
        const char16_t* name;
        unsigned long n;
        const char* failure;
    } cases[] = {
        {root, u"a", 3, "findElem: nth element not found."},
        {root, u"a", ~0UL, "findElem: nth element not found."},
        {root, u"c", 0, "findElem: element not found."},
        {root, u"p", 0, "findElem: element not found."},
        {nullptr, u"a", 0, "findElem: element not found."},
        {root, nullptr, 0, "findElem: element not found."},
    };
    for (const auto& row : cases)
        EXPECT_EQ(thrownText([&] { writer_->findElem(row.from, row.name, row.n); }), row.failure);
}

}  // namespace
}  // namespace quillon::chart
