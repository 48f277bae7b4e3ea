#include "chart/model/Title.h"

#include <gtest/gtest.h>

namespace quillon::chart {
namespace {

/// The runs and colours of a title: "black: Revenue(red) 2024(black)".
std::u16string describe(const Title& title)
{
    std::u16string result = title.getText()->getColor()->getText() + u":";
    for (const auto& run : title.getText()->getContent())
        result += u" " + run->getContent() + u"(" + run->getColor()->getText() + u")";
    return result;
}

TEST(Title, HasBlackRunsByDefault)
{
    EXPECT_EQ(describe(Title()), u"black: Chart Title(black)");
    EXPECT_EQ(describe(Title(u"Revenue")), u"black: Revenue(black)");
    EXPECT_EQ(describe(Title(u"")), u"black: (black)");
    EXPECT_EQ(describe(Title(Paragraph::create())), u"black:");
    EXPECT_EQ(TextBase(u"red").getColor()->getText(), u"red");
}

TEST(Title, SharesWhatItIsGiven)
{
    const auto run = Text::create(u"Revenue");
    const auto paragraph = Paragraph::create(run);
    const Title shared(paragraph);
    const Title wrapped(run);
    EXPECT_EQ(paragraph->appendText(run), run);
    EXPECT_EQ(shared.getText(), paragraph);

    const auto red = Color::create(u"red");
    run->setColor(red);
    EXPECT_EQ(describe(shared), u"black: Revenue(red) Revenue(red)");
    EXPECT_EQ(describe(wrapped), u"black: Revenue(red)");
    EXPECT_EQ(TextBase(red).getColor(), red);
    EXPECT_EQ(run.use_count(), 4);  // Twice in the one paragraph, once in the other.
}

TEST(Title, CopiesParagraphRunsAndColors)
{
    const Title source(u"Revenue");
    source.getText()->appendText(Text::create(u"2024"));
    const Title copy(source);
    source.getText()->getColor()->setText(u"red");
    source.getText()->getContent().front()->getColor()->setText(u"red");
    source.getText()->getContent().back()->setContent(u"changed");
    source.getText()->appendText(Text::create(u"more"));
    EXPECT_EQ(describe(copy), u"black: Revenue(black) 2024(black)");
}

TEST(Title, KeepsWhatIsEmptyThroughCopies)
{
    Paragraph paragraph(std::shared_ptr<Text>{});
    paragraph.setColor(nullptr);
    paragraph.appendText(Text::create())->setColor(nullptr);
    const Paragraph copy(paragraph);
    EXPECT_EQ(copy.getColor(), nullptr);
    ASSERT_EQ(copy.getContent().size(), 2U);
    EXPECT_EQ(copy.getContent()[0], nullptr);
    EXPECT_EQ(copy.getContent()[1]->getColor(), nullptr);
    const Title empty(std::shared_ptr<Paragraph>{});
    const Title copyOfEmpty(empty);
    EXPECT_EQ(copyOfEmpty.getText(), nullptr);
}

}  // namespace
}  // namespace quillon::chart
