#include "platform/jobs/AllOf.h"
#include "platform/jobs/FirstOf.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "platform/jobs/WaiterList.h"
#include "support/Tracked.h"

#include <gtest/gtest.h>

#include <array>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vantrel::test {
namespace {

void settle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

template<typename Value>
Task<Value> give(WaiterList *gate, Value value, Tracked held)
{
    const Tracked own = std::move(held);
    co_await gate->wait();
    co_return value;
}

Task<int> giveOrFail(WaiterList *gate, int value)
{
    co_await gate->wait();
    if (value < 0) {
        throw std::runtime_error("negative");
    }
    co_return value;
}

Task<int> giveNow(int value)
{
    co_return value;
}

/// Two tasks of one race, each behind a gate of its own.
class FirstOfTest : public testing::Test
{
protected:
    static Task<> race(FirstOfTest *test)
    {
        auto a = give(&test->gates[0], 1, Tracked(test->lifetimes));
        auto b = give(&test->gates[1], std::string("b"), Tracked(test->lifetimes));
        auto both = firstOf(std::move(a), std::move(b));
        test->winner = co_await both;
    }

    std::array<WaiterList, 2> gates{};
    Lifetimes lifetimes{};
    std::variant<std::monostate, std::variant<int, std::string>> winner{};
};

TEST_F(FirstOfTest, TheFirstToEndWinsAndTheOtherIsDestroyed)
{
    const Job job(race(this));
    settle();
    EXPECT_EQ(lifetimes.alive(), 4);
    gates[1].wakeAll();
    settle();

    EXPECT_EQ(std::get<1>(std::get<1>(winner)), "b");
    EXPECT_EQ(lifetimes.alive(), 0);
    EXPECT_EQ(lifetimes.errors(), 0);
}

TEST_F(FirstOfTest, BothMayBeWokenInTheSameTurn)
{
    const Job job(race(this));
    settle();
    gates[1].wakeAll();
    gates[0].wakeAll();
    settle();

    EXPECT_FALSE(job.isActive());
    EXPECT_EQ(winner.index(), 1U);
    EXPECT_EQ(lifetimes.alive(), 0);
    EXPECT_EQ(lifetimes.errors(), 0);
}

Task<> collect(std::vector<Task<int>> tasks, std::vector<int> *values)
{
    auto all = allOf(std::move(tasks));
    *values = co_await all;
}

Task<> collectOrTell(std::vector<Task<int>> tasks, std::string *message)
{
    auto all = allOf(std::move(tasks));
    try {
        co_await all;
    } catch (const std::runtime_error &error) {
        *message = error.what();
    }
}

TEST(AllOf, GivesTheValuesInTheOrderOfTheTasks)
{
    std::array<WaiterList, 2> gates;
    std::vector<int> values;
    std::vector<Task<int>> tasks;
    tasks.push_back(giveOrFail(&gates[0], 1));
    tasks.push_back(giveNow(2));
    tasks.push_back(giveOrFail(&gates[1], 3));

    const Job job(collect(std::move(tasks), &values));
    settle();
    gates[1].wakeAll();
    settle();
    EXPECT_EQ(values, std::vector<int>());
    gates[0].wakeAll();
    settle();

    EXPECT_EQ(values, (std::vector{1, 2, 3}));
}

TEST(AllOf, EndsAtOnceWhenAllAreReadyOrThereIsNone)
{
    std::vector<int> values{9};
    std::vector<int> none{9};
    std::vector<Task<int>> tasks;
    tasks.push_back(giveNow(1));
    tasks.push_back(giveNow(2));

    const Job job(collect(std::move(tasks), &values));
    const Job empty(collect({}, &none));
    settle();

    EXPECT_EQ(values, (std::vector{1, 2}));
    EXPECT_EQ(none, std::vector<int>());
}

TEST(AllOf, PassesOnAnExceptionOnceAllHaveEnded)
{
    std::array<WaiterList, 2> gates;
    std::string message;
    std::vector<Task<int>> tasks;
    tasks.push_back(giveOrFail(&gates[0], -1));
    tasks.push_back(giveOrFail(&gates[1], 2));

    const Job job(collectOrTell(std::move(tasks), &message));
    settle();
    gates[0].wakeAll();
    settle();
    EXPECT_EQ(message, "");
    gates[1].wakeAll();
    settle();

    EXPECT_EQ(message, "negative");
}

} // namespace
} // namespace vantrel::test
