#include "models/DiffParser.h"

#include <gtest/gtest.h>

#include <limits>
#include <ostream>

namespace vantrel {

void PrintTo(const HunkStarts &starts, std::ostream *stream)
{
    *stream << starts.oldStart << ' ' << starts.newStart;
}

TEST(ParseHunkHeader, ReadsBothStartsBeforeSectionText)
{
    EXPECT_EQ(parseHunkHeader("@@ -12,7 +12,9 @@ int main()"), (HunkStarts{12, 12}));
}

TEST(ParseHunkHeader, ReadsARangeWithoutAComma)
{
    EXPECT_EQ(parseHunkHeader("@@ -0,0 +1 @@"), (HunkStarts{0, 1}));
}

TEST(ParseHunkHeader, ALineWithoutTwoMarkersGivesZeros)
{
    EXPECT_EQ(parseHunkHeader(""), (HunkStarts{0, 0}));
    EXPECT_EQ(parseHunkHeader("-1 +1"), (HunkStarts{0, 0}));
    EXPECT_EQ(parseHunkHeader("@@ -1 +1"), (HunkStarts{0, 0}));
    EXPECT_EQ(parseHunkHeader("@@ -1 +1 @"), (HunkStarts{0, 0}));
    EXPECT_EQ(parseHunkHeader("@@@ -1 +1"), (HunkStarts{0, 0}));
}

TEST(ParseHunkHeader, MarkersWithNothingBetweenGiveZeros)
{
    EXPECT_EQ(parseHunkHeader("@@@@ -1 +1 @@"), (HunkStarts{0, 0}));
    EXPECT_EQ(parseHunkHeader("@@ @@"), (HunkStarts{0, 0}));
}

TEST(ParseHunkHeader, TextBeforeTheFirstMarkerIsIgnored)
{
    EXPECT_EQ(parseHunkHeader("-7 @@ -3,4 +5,6 @@"), (HunkStarts{3, 5}));
}

TEST(ParseHunkHeader, MarkersInTheSectionTextAreIgnored)
{
    EXPECT_EQ(parseHunkHeader("@@ -3 +4 @@ -5 +6 @@"), (HunkStarts{3, 4}));
}

TEST(ParseHunkHeader, AStartWithoutAPieceStaysZero)
{
    EXPECT_EQ(parseHunkHeader("@@ +4,2 @@"), (HunkStarts{0, 4}));
    EXPECT_EQ(parseHunkHeader("@@ -4,2 @@"), (HunkStarts{4, 0}));
}

TEST(ParseHunkHeader, OrderAndDoubleSpacesDoNotMatter)
{
    EXPECT_EQ(parseHunkHeader("@@  +8,1   -9,1  @@"), (HunkStarts{9, 8}));
}

TEST(ParseHunkHeader, OtherPiecesAreIgnored)
{
    EXPECT_EQ(parseHunkHeader("@@ 5 -1,2 x +3,4 y @@"), (HunkStarts{1, 3}));
}

TEST(ParseHunkHeader, TheLastPieceOfASideCounts)
{
    EXPECT_EQ(parseHunkHeader("@@ -1 -2 +3 +x @@"), (HunkStarts{2, 0}));
}

TEST(ParseHunkHeader, EmptyPartsBetweenCommasAreDropped)
{
    EXPECT_EQ(parseHunkHeader("@@ -,,6,7 +,8 @@"), (HunkStarts{6, 8}));
    EXPECT_EQ(parseHunkHeader("@@ - +,, @@"), (HunkStarts{0, 0}));
}

TEST(ParseHunkHeader, WhatIsNoNumberIsZero)
{
    EXPECT_EQ(parseHunkHeader("@@ -x +1x @@"), (HunkStarts{0, 0}));
    EXPECT_EQ(parseHunkHeader("@@ -0x10 +1.5 @@"), (HunkStarts{0, 0}));
    EXPECT_EQ(parseHunkHeader("@@ -\t1 +٣ @@"), (HunkStarts{0, 0}));
}

TEST(ParseHunkHeader, ASecondSignIsNoPartOfANumber)
{
    EXPECT_EQ(parseHunkHeader("@@ --5 +-5 @@"), (HunkStarts{0, 0}));
    EXPECT_EQ(parseHunkHeader("@@ -+5 ++5 @@"), (HunkStarts{0, 0}));
}

TEST(ParseHunkHeader, TheLargestNumberIsRead)
{
    constexpr auto largest = std::numeric_limits<std::int64_t>::max();

    EXPECT_EQ(parseHunkHeader("@@ -9223372036854775807 +0009 @@"), (HunkStarts{largest, 9}));
}

TEST(ParseHunkHeader, ANumberThatDoesNotFitIsZero)
{
    EXPECT_EQ(parseHunkHeader("@@ -9223372036854775808 +99999999999999999999,1 @@"),
              (HunkStarts{0, 0}));
}

} // namespace vantrel
