#include "platform/jobs/SystemClock.h"

#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <chrono>

namespace vantrel::test {
namespace {

using namespace std::chrono_literals;
using Instant = std::chrono::steady_clock;

Task<> noteWakening(Clock *clock, std::chrono::milliseconds duration, Instant::time_point *end)
{
    co_await clock->sleep(duration);
    *end = Instant::now();
}

TEST(SystemClock, SleepsNoShorterThanAsked)
{
    SystemClock clock;
    Instant::time_point end;

    const Instant::time_point begin = Instant::now();
    const Job job(noteWakening(&clock, 20ms, &end));

    spinUntil([&job] { return !job.isActive(); });

    EXPECT_GE(end - begin, 20ms);
}

TEST(SystemClock, ASleepThatIsCancelledNeverEnds)
{
    SystemClock clock;
    Instant::time_point end;
    Instant::time_point other;

    Job cancelled(noteWakening(&clock, 1ms, &end));
    const Job longer(noteWakening(&clock, 20ms, &other));
    RunQueue::interfaceThread().runUntilIdle();
    cancelled.cancel();
    spinUntil([&longer] { return !longer.isActive(); });

    EXPECT_EQ(end, Instant::time_point());
}

} // namespace
} // namespace vantrel::test
