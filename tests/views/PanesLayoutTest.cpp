#include "views/PanesLayout.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

Hunk hunkOf(qsizetype rows)
{
    Hunk hunk;
    hunk.rows = QList<DiffRow>(rows);
    return hunk;
}

TEST(PanesLayout, StacksCardsOfAHeadRowsAndAnEndWithGapsAround)
{
    const PanesLayout layout({hunkOf(6), hunkOf(1)});

    EXPECT_EQ(layout.cardCount(), 2);
    EXPECT_EQ(layout.cardTop(0), 12);
    EXPECT_EQ(layout.rowsTop(0), 12 + 1 + 32);
    EXPECT_EQ(layout.cardBottom(0), 12 + 1 + 32 + 6 * 20 + 6 + 1);
    EXPECT_EQ(layout.cardTop(1), layout.cardBottom(0) + 12);
    EXPECT_EQ(layout.contentHeight(), layout.cardBottom(1) + 12);
}

TEST(PanesLayout, HasNoHeightWithoutHunks)
{
    const PanesLayout layout{QList<Hunk>()};

    EXPECT_EQ(layout.contentHeight(), 0);
    EXPECT_EQ(layout.firstCardBelow(0), 0);
}

TEST(PanesLayout, FindsTheFirstCardThatReachesBelowAPosition)
{
    const PanesLayout layout({hunkOf(6), hunkOf(1), hunkOf(2)});

    EXPECT_EQ(layout.firstCardBelow(0), 0);
    EXPECT_EQ(layout.firstCardBelow(layout.cardBottom(0) - 1), 0);
    EXPECT_EQ(layout.firstCardBelow(layout.cardBottom(0)), 1);
    EXPECT_EQ(layout.firstCardBelow(layout.cardTop(2)), 2);
    EXPECT_EQ(layout.firstCardBelow(layout.contentHeight()), 3);
}

} // namespace
} // namespace vantrel::test
