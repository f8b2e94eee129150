#include "views/PanesColumns.h"
#include "SamplePanesTheme.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

PanesColumns columns()
{
    static const PanesSizes sizes = samplePanesSizes();
    PanesColumns made{sizes};
    made.width = 901; // Within margins and borders 875, so the panes differ by one pixel.
    made.gutterWidth = 44;
    made.columnWidth = 7;
    return made;
}

TEST(PanesColumns, BothCellsShareTheWidthOfACard)
{
    EXPECT_EQ(columns().cell(CodeSide::before, 5), QRectF(13, 5, 437, 20));
    EXPECT_EQ(columns().cell(CodeSide::after, 5), QRectF(450, 5, 438, 20));
}

TEST(PanesColumns, TextComesBehindGutterAndSign)
{
    EXPECT_EQ(columns().signLeft(CodeSide::before), 13 + 44);
    EXPECT_EQ(columns().textLeft(CodeSide::before), 13 + 44 + 18 + 3);
    EXPECT_EQ(columns().textWidth(CodeSide::before), 437 - 44 - 18 - 3 - 14);
}

TEST(PanesColumns, ScrollsSoFarThatTheLongestLineEndsInTheNarrowerPane)
{
    EXPECT_EQ(columns().maximumContentX(51), 0);
    EXPECT_EQ(columns().maximumContentX(52), 52 * 7 - 358);
    EXPECT_EQ(columns().maximumContentX(0), 0);
}

TEST(PanesColumns, TellsSidesGuttersAndColumnsApart)
{
    PanesColumns scrolled = columns();
    scrolled.contentX = 70;

    EXPECT_EQ(scrolled.sideAt(449), CodeSide::before);
    EXPECT_EQ(scrolled.sideAt(450), CodeSide::after);
    EXPECT_TRUE(scrolled.isGutter(CodeSide::after, 493));
    EXPECT_FALSE(scrolled.isGutter(CodeSide::after, 494));
    EXPECT_EQ(scrolled.columnAt(CodeSide::before, 78), 10);
    EXPECT_EQ(scrolled.columnAt(CodeSide::before, 78 + 10.5), 11.5);
    EXPECT_EQ(columns().columnAt(CodeSide::before, 0), 0);
}

TEST(PanesColumns, AColumnIsFoundWhereItIsDrawn)
{
    PanesColumns scrolled = columns();
    scrolled.contentX = 33;

    for (const CodeSide side : {CodeSide::before, CodeSide::after}) {
        for (int column = 5; column < 60; ++column) {
            EXPECT_DOUBLE_EQ(scrolled.columnAt(side, scrolled.columnLeft(side, column)), column);
        }
    }
}

} // namespace
} // namespace vantrel::test
