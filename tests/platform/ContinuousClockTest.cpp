#include "platform/jobs/ContinuousClock.h"

#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace std::chrono_literals;

Task<> sleepOn(Clock *clock, std::chrono::milliseconds duration)
{
    co_await clock->sleep(duration);
}

/// A machine that is awake or asleep as the test says.
class ContinuousClockTest : public testing::Test
{
protected:
    void beAwakeFor(std::chrono::milliseconds duration)
    {
        now += duration;
        timers.advance(duration);
        RunQueue::interfaceThread().runUntilIdle();
    }

    /// Timers stand still meanwhile.
    void beAsleepFor(std::chrono::milliseconds duration) { now += duration; }

    Job startSleep(std::chrono::milliseconds duration)
    {
        Job job(sleepOn(&clock, duration));
        RunQueue::interfaceThread().runUntilIdle();
        return job;
    }

    std::chrono::milliseconds now = 1h;
    ManualClock timers{};
    ContinuousClock clock{timers, [this] { return now; }};
};

TEST_F(ContinuousClockTest, SleepsAsLongAsAsked)
{
    const Job job = startSleep(12s);

    beAwakeFor(5s);
    beAwakeFor(5s);
    beAwakeFor(1999ms);
    EXPECT_TRUE(job.isActive());
    beAwakeFor(1ms);

    EXPECT_FALSE(job.isActive());
}

TEST_F(ContinuousClockTest, CountsTheTimeThatTheMachineWasAsleep)
{
    const Job job = startSleep(10min);
    beAwakeFor(5s);

    beAsleepFor(8h);
    EXPECT_TRUE(job.isActive());
    beAwakeFor(ContinuousClock::lookInterval);

    EXPECT_FALSE(job.isActive());
}

TEST_F(ContinuousClockTest, GoesOnAfterAShortNap)
{
    const Job job = startSleep(20s);

    beAsleepFor(10s);
    beAwakeFor(5s);
    EXPECT_TRUE(job.isActive());
    beAwakeFor(5s);

    EXPECT_FALSE(job.isActive());
}

TEST_F(ContinuousClockTest, ASleepOfNoTimeEndsAtOnce)
{
    EXPECT_FALSE(startSleep(0ms).isActive());
}

TEST_F(ContinuousClockTest, LeavingASleepLeavesNoTimer)
{
    Job job = startSleep(10min);
    EXPECT_EQ(timers.sleeperCount(), 1U);

    job.cancel();

    EXPECT_EQ(timers.sleeperCount(), 0U);
}

TEST(TimeSinceBoot, GoesForward)
{
    const auto first = timeSinceBoot();

    EXPECT_GT(first, 0ms);
    EXPECT_GE(timeSinceBoot(), first);
}

} // namespace
} // namespace vantrel::test
