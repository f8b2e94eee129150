#include "RecordMakers.h"
#include "models/RowAligner.h"

#include <gtest/gtest.h>

#include <limits>

namespace vantrel {

using namespace test;

using Rows = QList<DiffRow>;

TEST(AlignRows, NoLinesGiveNoRows)
{
    EXPECT_EQ(alignRows(1, 1, {}), Rows());
}

TEST(AlignRows, ABlockStandsBetweenItsContext)
{
    const Rows rows = alignRows(
        10, 10, {context("a"), deletion("b"), deletion("c"), addition("B"), context("d")});

    const Rows expected{{0, contextCell(10, "a"), contextCell(10, "a")},
                        {1, deletionCell(11, "b"), additionCell(11, "B")},
                        {2, deletionCell(12, "c"), fillerCell()},
                        {3, contextCell(13, "d"), contextCell(12, "d")}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, OnlyAdditionsStandOppositeFillers)
{
    const Rows rows = alignRows(0, 5, {addition("a"), addition("b"), addition("c")});

    const Rows expected{{0, fillerCell(), additionCell(5, "a")},
                        {1, fillerCell(), additionCell(6, "b")},
                        {2, fillerCell(), additionCell(7, "c")}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, OnlyDeletionsStandOppositeFillers)
{
    const Rows rows = alignRows(5, 4, {deletion("a"), deletion("b")});

    const Rows expected{{0, deletionCell(5, "a"), fillerCell()},
                        {1, deletionCell(6, "b"), fillerCell()}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, ThreeDeletionsAndOneAdditionPadTheRightSide)
{
    const Rows rows = alignRows(1, 1, {deletion("a"), deletion("b"), deletion("c"), addition("A")});

    const Rows expected{{0, deletionCell(1, "a"), additionCell(1, "A")},
                        {1, deletionCell(2, "b"), fillerCell()},
                        {2, deletionCell(3, "c"), fillerCell()}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, OneDeletionAndThreeAdditionsPadTheLeftSide)
{
    const Rows rows = alignRows(1, 1, {deletion("a"), addition("A"), addition("B"), addition("C")});

    const Rows expected{{0, deletionCell(1, "a"), additionCell(1, "A")},
                        {1, fillerCell(), additionCell(2, "B")},
                        {2, fillerCell(), additionCell(3, "C")}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, AdditionsBeforeDeletionsAreTwoBlocks)
{
    const Rows rows = alignRows(1, 1, {addition("a"), addition("b"), deletion("c"), deletion("d")});

    const Rows expected{{0, fillerCell(), additionCell(1, "a")},
                        {1, fillerCell(), additionCell(2, "b")},
                        {2, deletionCell(1, "c"), fillerCell()},
                        {3, deletionCell(2, "d"), fillerCell()}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, ADeletionAfterAnAdditionStartsTheNextBlock)
{
    const Rows rows = alignRows(
        1, 1, {deletion("a"), addition("A"), deletion("b"), addition("B"), addition("C")});

    const Rows expected{{0, deletionCell(1, "a"), additionCell(1, "A")},
                        {1, deletionCell(2, "b"), additionCell(2, "B")},
                        {2, fillerCell(), additionCell(3, "C")}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, LinesArePairedByPositionNotByLikeness)
{
    const Rows rows =
        alignRows(1, 1, {deletion("same"), deletion("x"), addition("y"), addition("same")});

    const Rows expected{{0, deletionCell(1, "same"), additionCell(1, "y")},
                        {1, deletionCell(2, "x"), additionCell(2, "same")}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, NumbersRunOnThroughAllBlocks)
{
    const Rows rows = alignRows(7, 3,
                                {deletion("a"), context("b"), addition("c"), context("d"),
                                 deletion("e"), addition("E"), context("f")});

    const Rows expected{{0, deletionCell(7, "a"), fillerCell()},
                        {1, contextCell(8, "b"), contextCell(3, "b")},
                        {2, fillerCell(), additionCell(4, "c")},
                        {3, contextCell(9, "d"), contextCell(5, "d")},
                        {4, deletionCell(10, "e"), additionCell(6, "E")},
                        {5, contextCell(11, "f"), contextCell(7, "f")}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, StartsOfZeroAreCountedFrom)
{
    const Rows rows = alignRows(0, 0, {context("a"), context("b")});

    const Rows expected{{0, contextCell(0, "a"), contextCell(0, "a")},
                        {1, contextCell(1, "b"), contextCell(1, "b")}};
    EXPECT_EQ(rows, expected);
}

TEST(AlignRows, TheLargestStartIsHarmless)
{
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();

    const Rows rows = alignRows(largest, largest, {context("a"), context("b")});

    ASSERT_EQ(rows.size(), 2);
    EXPECT_EQ(rows[0], (DiffRow{0, contextCell(largest, "a"), contextCell(largest, "a")}));
}

TEST(AlignRows, PairsGiveBackTheRoomOfTheSecondLines)
{
    const QList<RawDiffLine> lines =
        QList<RawDiffLine>(1000, deletion("a")) + QList<RawDiffLine>(1000, addition("b"));

    const Rows rows = alignRows(1, 1, lines);

    EXPECT_EQ(rows.size(), 1000);
    EXPECT_EQ(rows.capacity(), 1000);
}

} // namespace vantrel
