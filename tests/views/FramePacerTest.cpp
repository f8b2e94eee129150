#include "views/FramePacer.h"

#include "support/Spin.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

TEST(FramePacer, AnnouncesTheFirstChangeAtOnceAndTheOthersWithTheNextFrame)
{
    int announced = 0;
    FramePacer pacer([&announced] { ++announced; });

    pacer.changed();
    EXPECT_EQ(announced, 1);
    pacer.changed();
    pacer.changed();
    EXPECT_EQ(announced, 1);
    spinUntil([&announced] { return announced > 1; });

    EXPECT_EQ(announced, 2);
}

TEST(FramePacer, AnnouncesAtOnceAgainWhenAFrameHasPassed)
{
    int announced = 0;
    FramePacer pacer([&announced] { ++announced; });
    int later = 0;
    FramePacer witness([&later] { ++later; });
    pacer.changed();
    witness.changed();
    witness.changed();
    spinUntil([&later] { return later > 1; }); // Its frame began after the other's.

    pacer.changed();

    EXPECT_EQ(announced, 2);
}

TEST(FramePacer, AnnouncesNothingThatWasDropped)
{
    int announced = 0;
    FramePacer pacer([&announced] { ++announced; });
    int later = 0;
    FramePacer witness([&later] { ++later; });
    pacer.changed();
    pacer.changed();
    witness.changed();
    witness.changed();

    pacer.drop();
    spinUntil([&later] { return later > 1; });

    EXPECT_EQ(announced, 1);
}

} // namespace
} // namespace vantrel::test
