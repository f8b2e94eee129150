#include "platform/jobs/JobMap.h"

#include "platform/jobs/RunQueue.h"
#include "platform/jobs/WaiterList.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace vantrel::test {
namespace {

using Log = std::vector<std::string>;

void settle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

Task<> noteAfter(WaiterList *gate, Log *log, std::string line)
{
    co_await gate->wait();
    log->push_back(std::move(line));
}

Task<> noteWhenFinished(Task<> finished, Log *log)
{
    co_await std::move(finished);
    log->emplace_back("finished");
}

TEST(JobMap, AJobThatEndsLeavesTheMap)
{
    WaiterList gate;
    Log log;
    JobMap<int> jobs;

    jobs.start(1, noteAfter(&gate, &log, "one"));
    jobs.start(2, noteAfter(&gate, &log, "two"));
    settle();
    EXPECT_TRUE(jobs.contains(1));
    EXPECT_FALSE(jobs.contains(3));
    gate.wakeAll();
    settle();

    EXPECT_EQ(log, (Log{"one", "two"}));
    EXPECT_TRUE(jobs.isEmpty());
}

TEST(JobMap, StartingUnderAKeyCancelsTheJobThatRunsThere)
{
    WaiterList gate;
    Log log;
    JobMap<int> jobs;

    jobs.start(1, noteAfter(&gate, &log, "first"));
    settle();
    jobs.start(1, noteAfter(&gate, &log, "second"));
    settle();
    gate.wakeAll();
    settle();

    EXPECT_EQ(log, Log{"second"});
    EXPECT_TRUE(jobs.isEmpty());
}

TEST(JobMap, CancelEndsOneJobAndCancelAllTheOthers)
{
    WaiterList gate;
    Log log;
    JobMap<int> jobs;
    jobs.start(1, noteAfter(&gate, &log, "one"));
    jobs.start(2, noteAfter(&gate, &log, "two"));
    settle();

    jobs.cancel(1);
    EXPECT_FALSE(jobs.contains(1));
    EXPECT_TRUE(jobs.contains(2));
    jobs.cancelAll();
    EXPECT_TRUE(jobs.isEmpty());
    gate.wakeAll();
    settle();

    EXPECT_EQ(log, Log());
}

TEST(JobMap, FinishedEndsWithTheJobOfItsKey)
{
    WaiterList gate;
    Log log;
    JobMap<int> jobs;
    jobs.start(1, noteAfter(&gate, &log, "one"));

    const Job waiting(noteWhenFinished(jobs.finished(1), &log));
    settle();
    EXPECT_EQ(log, Log());
    gate.wakeAll();
    settle();

    EXPECT_EQ(log, (Log{"one", "finished"}));
}

TEST(JobMap, FinishedEndsAtOnceWhereNothingRuns)
{
    Log log;
    const JobMap<int> jobs;

    const Job waiting(noteWhenFinished(jobs.finished(1), &log));
    settle();

    EXPECT_EQ(log, Log{"finished"});
}

} // namespace
} // namespace vantrel::test
