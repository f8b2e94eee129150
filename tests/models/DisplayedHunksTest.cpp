#include "models/DisplayedHunks.h"
#include "RecordMakers.h"

#include <gtest/gtest.h>

namespace vantrel {

using namespace test;

TEST(DisplayedHunks, AFileWithoutHunksShowsNone)
{
    EXPECT_EQ(displayedHunks({}), QList<Hunk>());
}

TEST(DisplayedHunks, EachHunkHasItsIndexHeaderAndRowsAndIsIdle)
{
    const RawHunk first{slice("@@ -1,2 +1 @@ a"), 1, 1, {context("a"), deletion("b")}};
    const RawHunk second{slice("@@ -9,0 +8 @@"), 9, 8, {addition("c")}};

    const QList<Hunk> hunks = displayedHunks({first, second});

    const QList<DiffRow> firstRows{{0, contextCell(1, "a"), contextCell(1, "a")},
                                   {1, deletionCell(2, "b"), fillerCell()}};
    const QList<DiffRow> secondRows{{0, fillerCell(), additionCell(8, "c")}};
    const auto idle = LoadableState<HunkExplanation>::idle();
    const QList<Hunk> expected{{0, slice("@@ -1,2 +1 @@ a"), firstRows, idle},
                               {1, slice("@@ -9,0 +8 @@"), secondRows, idle}};
    EXPECT_EQ(hunks, expected);
}

} // namespace vantrel
