#include "chart/writer/MarkupTemplate.h"

#include <gtest/gtest.h>

#include "chart/model/BarChart.h"
#include "chart/writer/DOCXChartWriter.h"
#include "tests/ThrownText.h"
#include "tests/writer/GoldenFile.h"
#include "tests/writer/TestCharts.h"

namespace quillon::chart {
namespace {

class MarkupTemplates : public testing::Test {
 protected:
    MarkupTemplate makeBlock(std::initializer_list<MarkupTemplate::Slot> slots) const
    {
        return {*writer_->parseString(u"<a><b val='1' w='2'/><c>text</c><b val='3'/></a>"), slots};
    }

    std::shared_ptr<Chart> chart_ = BarChart::create();
    std::shared_ptr<DOCXChartWriter> writer_ = chart_->getDOCXWriter();
    Document document_ = makeDocument(u"p");
};

TEST_F(MarkupTemplates, PutValuesIntoTheirSlots)
{
    const auto block = makeBlock({{u"b", 0}, {u"c", 0}, {u"b", 1}});
    auto* parent = document_->getDocumentElement();
    block.appendTo(document_.get(), parent, {u"x", u"<", nullptr});
    EXPECT_EQ(toMarkup(*parent), "<p><a><b val=\"x\" w=\"2\"/><c>&lt;</c><b val=\"3\"/></a></p>");
}

TEST_F(MarkupTemplates, RefuseMoreOrFewerValuesThanSlots)
{
    const auto block = makeBlock({{u"b", 0}, {u"c", 0}});
    auto* parent = document_->getDocumentElement();
    EXPECT_THROW(block.appendTo(document_.get(), parent, {u"1"}), std::logic_error);
    EXPECT_THROW(block.appendTo(document_.get(), parent, {u"1", u"2", u"3"}), std::logic_error);
    EXPECT_FALSE(parent->hasChildNodes());
}

TEST_F(MarkupTemplates, RefuseSlotsThatAreMissingOrOutOfOrder)
{
    constexpr auto order = "MarkupTemplate: the slots are not in document order.";
    constexpr auto missing = "MarkupTemplate: a slot names no element of the block.";
    EXPECT_EQ(thrownText<std::logic_error>([&] { makeBlock({{u"c", 0}, {u"b", 0}}); }), order);
    EXPECT_EQ(thrownText<std::logic_error>([&] { makeBlock({{u"b", 1}, {u"b", 0}}); }), order);
    EXPECT_EQ(thrownText<std::logic_error>([&] { makeBlock({{u"b", 0}, {u"b", 0}}); }), order);
    EXPECT_EQ(thrownText<std::logic_error>([&] { makeBlock({{u"b", 2}}); }), missing);
}

}  // namespace
}  // namespace quillon::chart
