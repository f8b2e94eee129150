#include "views/PanesLayout.h"
#include "SamplePanesTheme.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

Hunk hunkOf(qsizetype rows)
{
    Hunk hunk;
    hunk.rows = QList<DiffRow>(rows);
    return hunk;
}

PanesLayout layOut(const QList<Hunk> &hunks)
{
    return {hunks, samplePanesSizes()};
}

TEST(PanesLayout, StacksCardsOfAHeadRowsAndAnEndWithGapsAround)
{
    const PanesLayout layout = layOut({hunkOf(6), hunkOf(1)});

    EXPECT_EQ(layout.cardCount(), 2);
    EXPECT_EQ(layout.cardTop(0), 12);
    EXPECT_EQ(layout.rowsTop(0), 12 + 1 + 32);
    EXPECT_EQ(layout.cardBottom(0), 12 + 1 + 32 + 6 * 20 + 6 + 1);
    EXPECT_EQ(layout.cardTop(1), layout.cardBottom(0) + 12);
    EXPECT_EQ(layout.contentHeight(), layout.cardBottom(1) + 12);
}

TEST(PanesLayout, HasNoHeightWithoutHunks)
{
    const PanesLayout layout = layOut({});

    EXPECT_EQ(layout.contentHeight(), 0);
    EXPECT_EQ(layout.firstCardBelow(0), 0);
}

TEST(PanesLayout, FindsTheFirstCardThatReachesBelowAPosition)
{
    const PanesLayout layout = layOut({hunkOf(6), hunkOf(1), hunkOf(2)});

    EXPECT_EQ(layout.firstCardBelow(0), 0);
    EXPECT_EQ(layout.firstCardBelow(layout.cardBottom(0) - 1), 0);
    EXPECT_EQ(layout.firstCardBelow(layout.cardBottom(0)), 1);
    EXPECT_EQ(layout.firstCardBelow(layout.cardTop(2)), 2);
    EXPECT_EQ(layout.firstCardBelow(layout.contentHeight()), 3);
}

TEST(PanesLayout, FindsTheRowAtAPosition)
{
    const PanesLayout layout = layOut({hunkOf(6), hunkOf(1)});

    EXPECT_EQ(layout.rowAt(layout.rowsTop(0) - 1), std::nullopt) << "on a head";
    EXPECT_EQ(layout.rowAt(layout.rowsTop(0)), (PaneRow{0, 0}));
    EXPECT_EQ(layout.rowAt(layout.rowsTop(0) + 119), (PaneRow{0, 5}));
    EXPECT_EQ(layout.rowAt(layout.rowsTop(0) + 120), std::nullopt) << "on an end";
    EXPECT_EQ(layout.rowAt(layout.rowsTop(1)), (PaneRow{1, 0}));
    EXPECT_EQ(layout.rowAt(layout.contentHeight()), std::nullopt);
    EXPECT_EQ(layout.rowTop(PaneRow{1, 0}), layout.rowsTop(1));
}

TEST(PanesLayout, FindsTheNearestRow)
{
    const PanesLayout layout = layOut({hunkOf(6), hunkOf(0), hunkOf(1)});

    EXPECT_EQ(layout.nearestRow(-5), (PaneRow{0, 0}));
    EXPECT_EQ(layout.nearestRow(layout.rowsTop(0) + 25), (PaneRow{0, 1}));
    EXPECT_EQ(layout.nearestRow(layout.cardBottom(0) + 1), (PaneRow{0, 5})) << "in a gap";
    EXPECT_EQ(layout.nearestRow(layout.cardTop(1) + 1), (PaneRow{0, 5})) << "in an empty card";
    EXPECT_EQ(layout.nearestRow(layout.cardTop(2) + 1), (PaneRow{2, 0})) << "on its head";
    EXPECT_EQ(layout.nearestRow(layout.contentHeight() + 50), (PaneRow{2, 0}));
    EXPECT_EQ(layOut({hunkOf(0), hunkOf(2)}).nearestRow(0), (PaneRow{1, 0}));
    EXPECT_EQ(layOut({hunkOf(0)}).nearestRow(0), std::nullopt);
    EXPECT_EQ(PanesLayout().nearestRow(0), std::nullopt);
}

} // namespace
} // namespace vantrel::test
