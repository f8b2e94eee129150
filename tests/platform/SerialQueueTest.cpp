#include "platform/jobs/SerialQueue.h"

#include "platform/jobs/Job.h"
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

Task<> useFor(SerialQueue *queue, WaiterList *gate, Log *log, std::string name)
{
    const auto turn = co_await queue->turn();
    log->push_back(name + " begins");
    co_await gate->wait();
    log->push_back(name + " ends");
}

class SerialQueueTest : public testing::Test
{
protected:
    Job use(std::string name) { return Job(useFor(&queue, &gate, &log, std::move(name))); }

    void openGate()
    {
        gate.wakeAll();
        settle();
    }

    SerialQueue queue{};
    WaiterList gate{};
    Log log{};
};

TEST_F(SerialQueueTest, GivesTurnsInTheOrderOfCallOneAtATime)
{
    const Job a = use("a");
    const Job b = use("b");
    const Job c = use("c");
    settle();
    EXPECT_EQ(log, Log{"a begins"});
    openGate();
    EXPECT_EQ(log, (Log{"a begins", "a ends", "b begins"}));
    openGate();
    openGate();

    EXPECT_EQ(log, (Log{"a begins", "a ends", "b begins", "b ends", "c begins", "c ends"}));
}

TEST_F(SerialQueueTest, IsFreeAgainAfterTheLastTurn)
{
    const Job a = use("a");
    settle();
    openGate();

    const Job b = use("b");
    settle();

    EXPECT_EQ(log, (Log{"a begins", "a ends", "b begins"}));
}

TEST_F(SerialQueueTest, GoesOnWhenTheHolderIsCancelled)
{
    Job a = use("a");
    const Job b = use("b");
    settle();

    a.cancel();
    settle();

    EXPECT_EQ(log, (Log{"a begins", "b begins"}));
}

TEST_F(SerialQueueTest, PassesOverOneThatIsCancelledWhileItWaits)
{
    const Job a = use("a");
    Job b = use("b");
    const Job c = use("c");
    settle();

    b.cancel();
    openGate();

    EXPECT_EQ(log, (Log{"a begins", "a ends", "c begins"}));
}

TEST_F(SerialQueueTest, PassesOverOneThatIsCancelledBetweenItsGrantAndItsRun)
{
    Job a = use("a");
    Job b = use("b");
    const Job c = use("c");
    settle();

    a.cancel(); // Grants the turn to b, which has not run yet.
    b.cancel();
    settle();

    EXPECT_EQ(log, (Log{"a begins", "c begins"}));
}

} // namespace
} // namespace vantrel::test
