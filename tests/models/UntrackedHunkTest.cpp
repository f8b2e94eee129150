#include "RecordMakers.h"
#include "models/DiffParser.h"

#include <gtest/gtest.h>

namespace vantrel {

using namespace test;

TEST(UntrackedHunk, ATextWithoutAFinalLineFeedHasOneLine)
{
    const RawHunk expected{slice("@@ -0,0 +1,1 @@"), 0, 1, {addition("x")}};

    EXPECT_EQ(untrackedHunk(slice("x")), expected);
}

TEST(UntrackedHunk, AFinalLineFeedYieldsAnEmptyLine)
{
    const RawHunk expected{slice("@@ -0,0 +1,2 @@"), 0, 1, {addition("x"), addition("")}};

    EXPECT_EQ(untrackedHunk(slice("x\n")), expected);
}

TEST(UntrackedHunk, AnEmptyFileHasOneEmptyLine)
{
    const RawHunk expected{slice("@@ -0,0 +1,1 @@"), 0, 1, {addition("")}};

    EXPECT_EQ(untrackedHunk(slice("")), expected);
    EXPECT_EQ(untrackedHunk(TextSlice()), expected);
}

TEST(UntrackedHunk, EveryPieceIsAnAdditionWhateverItBeginsWith)
{
    const RawHunk expected{slice("@@ -0,0 +1,6 @@"),
                           0,
                           1,
                           {addition("+a"), addition("-b"), addition(" c"), addition("@@ -1 +1 @@"),
                            addition(""), addition("\\ d\r")}};

    EXPECT_EQ(untrackedHunk(slice("+a\n-b\n c\n@@ -1 +1 @@\n\n\\ d\r")), expected);
}

TEST(UntrackedHunk, FinishedLinesHoldNoRoomToGrow)
{
    const RawHunk hunk = untrackedHunk(slice(QByteArray("line\n").repeated(1000)));

    EXPECT_EQ(hunk.lines.size(), 1001);
    EXPECT_EQ(hunk.lines.capacity(), 1001);
}

} // namespace vantrel
