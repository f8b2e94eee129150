#include "platform/jobs/SharedJob.h"

#include "platform/jobs/RunQueue.h"
#include "support/Tracked.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace vantrel::test {
namespace {

void settle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

Task<int> countAfter(WaiterList *gate, int *runs)
{
    ++*runs;
    co_await gate->wait();
    co_return 7;
}

Task<int> holdFor(WaiterList *gate, Tracked held)
{
    const Tracked own = std::move(held);
    co_await gate->wait();
    co_return 7;
}

Task<int> fail()
{
    throw std::runtime_error("broken");
    co_return 0;
}

Task<> read(Task<int> result, std::vector<int> *values)
{
    values->push_back(co_await std::move(result));
}

Task<> readFailure(Task<int> result, std::string *message)
{
    try {
        co_await std::move(result);
    } catch (const std::runtime_error &error) {
        *message = error.what();
    }
}

TEST(SharedJob, RunsOnceForAllWhoWaitAndForWhoeverComesLater)
{
    WaiterList gate;
    int runs = 0;
    std::vector<int> values;

    const SharedJob<int> shared(countAfter(&gate, &runs));
    const Job first(read(shared.result(), &values));
    const Job second(read(shared.result(), &values));
    settle();
    EXPECT_EQ(values, std::vector<int>());
    EXPECT_EQ(shared.value(), std::nullopt);
    gate.wakeAll();
    settle();
    const Job late(read(shared.result(), &values));
    settle();

    EXPECT_EQ(values, (std::vector{7, 7, 7}));
    EXPECT_EQ(shared.value(), 7);
    EXPECT_EQ(runs, 1);
}

TEST(SharedJob, GoesOnWithoutAWaiterThatLeaves)
{
    WaiterList gate;
    int runs = 0;
    std::vector<int> values;

    const SharedJob<int> shared(countAfter(&gate, &runs));
    Job leaving(read(shared.result(), &values));
    const Job staying(read(shared.result(), &values));
    settle();
    leaving.cancel();
    gate.wakeAll();
    settle();

    EXPECT_EQ(values, std::vector{7});
}

TEST(SharedJob, LivesWithAWaiterAfterItsOwnerIsGone)
{
    WaiterList gate;
    int runs = 0;
    std::vector<int> values;

    std::optional<SharedJob<int>> shared(std::in_place, countAfter(&gate, &runs));
    const Job waiting(read(shared->result(), &values));
    settle();
    shared.reset();
    gate.wakeAll();
    settle();

    EXPECT_EQ(values, std::vector{7});
}

TEST(SharedJob, IsDestroyedWithTheLastOfOwnersAndWaiters)
{
    WaiterList gate;
    Lifetimes lifetimes;
    std::vector<int> values;

    std::optional<SharedJob<int>> shared(std::in_place, holdFor(&gate, Tracked(lifetimes)));
    Job waiting(read(shared->result(), &values));
    settle();
    shared.reset();
    EXPECT_EQ(lifetimes.alive(), 2); // The parameter and the body's own.
    waiting.cancel();

    EXPECT_EQ(lifetimes.alive(), 0);
    EXPECT_EQ(lifetimes.errors(), 0);
    EXPECT_EQ(values, std::vector<int>());
}

TEST(SharedJob, PassesItsExceptionToEveryWaiter)
{
    std::string first;
    std::string second;

    const SharedJob<int> shared(fail());
    const Job a(readFailure(shared.result(), &first));
    settle();
    const Job b(readFailure(shared.result(), &second));
    settle();

    EXPECT_EQ(first, "broken");
    EXPECT_EQ(second, "broken");
}

} // namespace
} // namespace vantrel::test
