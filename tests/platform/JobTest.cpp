#include "platform/jobs/Job.h"
#include "platform/jobs/Channel.h"
#include "platform/jobs/RunQueue.h"

#include <gtest/gtest.h>

#include <variant>

namespace vantrel {
namespace {

Task<int> ready(int value)
{
    co_return value;
}

Task<> addUp(long count, long *sum)
{
    for (long i = 0; i < count; ++i) {
        *sum += co_await ready(1);
    }
}

TEST(Job, AMillionReadyTasksInALoopStayFlat)
{
    long sum = 0;

    const Job job(addUp(1'000'000, &sum));
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(sum, 1'000'000);
    EXPECT_FALSE(job.isActive());
}

Task<> addUpStream(Stream<int, std::monostate> stream, long *sum)
{
    while (const auto item = co_await stream.next()) {
        *sum += **item;
    }
}

TEST(Job, ReadsAChannelToItsEnd)
{
    long sum = 0;
    Channel<int, std::monostate> channel;

    const Job job(addUpStream(channel.stream(), &sum));
    for (int i = 0; i < 1000; ++i) {
        channel.push(1);
    }
    channel.finish();
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(sum, 1000);
}

} // namespace
} // namespace vantrel
