#include "platform/jobs/SerialWorker.h"

#include "platform/jobs/Job.h"
#include "support/Signal.h"
#include "support/Tracked.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

namespace vantrel::test {
namespace {

RunQueue &queue()
{
    return RunQueue::interfaceThread();
}

void waitFor(const Job &job)
{
    queue().runUntil([&job] { return !job.isActive(); });
}

Task<> appendNumber(SerialWorker *worker, int number, std::vector<int> *numbers)
{
    auto call = [number](const WorkControl &) { return number; };
    auto running = worker->run(std::move(call));
    numbers->push_back(co_await std::move(running));
}

Task<> appendError(SerialWorker *worker, std::string *error)
{
    auto call = [](const WorkControl &) -> int { throw std::runtime_error("disk full"); };
    auto running = worker->run(std::move(call));
    try {
        co_await std::move(running);
    } catch (const std::runtime_error &thrown) {
        *error = thrown.what();
    }
}

/// What a call on the worker shows of itself.
struct Visit
{
    Signal begun{};
    Signal mayEnd{};
    std::atomic<bool> wasAbandoned = false;
    std::atomic<bool> hasEnded = false;
};

Task<> visit(SerialWorker *worker, std::shared_ptr<Visit> shown)
{
    auto call = [shown](const WorkControl &control) {
        shown->begun.raise();
        shown->mayEnd.await();
        shown->wasAbandoned = control.isAbandoned();
        shown->hasEnded = true;
        return 0;
    };
    auto running = worker->run(std::move(call));
    co_await std::move(running);
}

TEST(SerialWorker, RunsCallsOnAThreadOfItsOwnAndGoesOnHere)
{
    SerialWorker worker;
    std::thread::id there;
    std::thread::id here;
    const auto look = [](SerialWorker *on, std::thread::id *ranOn,
                         std::thread::id *wentOn) -> Task<> {
        auto call = [](const WorkControl &) { return std::this_thread::get_id(); };
        auto running = on->run(std::move(call));
        *ranOn = co_await std::move(running);
        *wentOn = std::this_thread::get_id();
    };

    const Job job(look(&worker, &there, &here));
    waitFor(job);

    EXPECT_NE(there, std::this_thread::get_id());
    EXPECT_EQ(here, std::this_thread::get_id());
}

TEST(SerialWorker, RunsCallsInTheOrderOfTheirStart)
{
    SerialWorker worker;
    std::vector<int> numbers;
    std::vector<Job> jobs;
    for (int number = 0; number < 100; ++number) {
        jobs.emplace_back(appendNumber(&worker, number, &numbers));
    }

    queue().runUntil([&] { return numbers.size() == 100; });

    for (int number = 0; number < 100; ++number) {
        EXPECT_EQ(numbers.at(std::size_t(number)), number);
    }
}

TEST(SerialWorker, PassesAnExceptionToItsWaiterAndGoesOn)
{
    SerialWorker worker;
    std::string error;
    std::vector<int> numbers;
    const Job failing(appendError(&worker, &error));
    const Job next(appendNumber(&worker, 1, &numbers));

    waitFor(next);

    EXPECT_EQ(error, "disk full");
    EXPECT_EQ(numbers, std::vector<int>{1});
}

TEST(SerialWorker, ACallThatRunsSeesThatItWasAbandoned)
{
    SerialWorker worker;
    const auto shown = std::make_shared<Visit>();
    Job job(visit(&worker, shown));
    queue().runUntilIdle();
    shown->begun.await();

    job.cancel();
    shown->mayEnd.raise();
    std::vector<int> numbers;
    const Job next(appendNumber(&worker, 1, &numbers));
    waitFor(next);

    EXPECT_TRUE(shown->wasAbandoned);
}

TEST(SerialWorker, ACallThatIsWaitedForSeesThat)
{
    SerialWorker worker;
    const auto shown = std::make_shared<Visit>();
    const Job job(visit(&worker, shown));
    shown->mayEnd.raise();

    waitFor(job);

    EXPECT_FALSE(shown->wasAbandoned);
}

TEST(SerialWorker, ACallThatIsAbandonedBeforeItBeginsIsSkipped)
{
    SerialWorker worker;
    const auto first = std::make_shared<Visit>();
    const auto second = std::make_shared<Visit>();
    second->mayEnd.raise();
    const Job running(visit(&worker, first));
    Job waiting(visit(&worker, second));
    queue().runUntilIdle();
    first->begun.await();

    waiting.cancel();
    first->mayEnd.raise();
    std::vector<int> numbers;
    const Job next(appendNumber(&worker, 1, &numbers));
    waitFor(next);

    EXPECT_FALSE(second->hasEnded);
}

TEST(SerialWorker, WhatACallHoldsDiesOnItsThreadBeforeItsWaiterGoesOn)
{
    struct Held
    {
        explicit Held(std::thread::id *diedOnThread)
            : diedOn(diedOnThread)
        {}
        Held(const Held &) = delete;
        Held &operator=(const Held &) = delete;
        ~Held() { *diedOn = std::this_thread::get_id(); }

        std::thread::id *diedOn;
    };
    SerialWorker worker;
    std::thread::id diedOn;
    const auto hold = [](SerialWorker *on, std::shared_ptr<Held> held) -> Task<> {
        auto call = [held = std::move(held)](const WorkControl &) { return held != nullptr; };
        auto running = on->run(std::move(call));
        co_await std::move(running);
    };

    const Job job(hold(&worker, std::make_shared<Held>(&diedOn)));
    waitFor(job);

    EXPECT_NE(diedOn, std::thread::id());
    EXPECT_NE(diedOn, std::this_thread::get_id());
}

TEST(SerialWorker, EndsWithTheCallThatRunsWhenItJoins)
{
    const auto shown = std::make_shared<Visit>();
    {
        SerialWorker worker(SerialWorker::AtEnd::join);
        Job job(visit(&worker, shown));
        queue().runUntilIdle();
        shown->begun.await();
        job.cancel();
        shown->mayEnd.raise();
    }

    EXPECT_TRUE(shown->hasEnded);
}

TEST(SerialWorker, LeavesTheCallThatRunsBehind)
{
    const auto shown = std::make_shared<Visit>();
    {
        SerialWorker worker(SerialWorker::AtEnd::leave);
        Job job(visit(&worker, shown));
        queue().runUntilIdle();
        shown->begun.await();
        job.cancel();
    }
    EXPECT_FALSE(shown->hasEnded); // Its end did not wait.

    shown->mayEnd.raise();
    queue().runUntil([&] { return shown->hasEnded.load() && shown.use_count() == 1; });

    EXPECT_TRUE(shown->wasAbandoned);
}

TEST(SerialWorker, DropsTheCallsThatHaveNotBegun)
{
    Lifetimes lifetimes;
    const auto first = std::make_shared<Visit>();
    const auto second = std::make_shared<Visit>();
    std::optional<Job> waiting;
    {
        SerialWorker worker;
        Job running(visit(&worker, first));
        waiting.emplace(visit(&worker, second));
        queue().runUntilIdle();
        first->begun.await();
        running.cancel();
        waiting->cancel();
        first->mayEnd.raise();
    }

    EXPECT_FALSE(second->hasEnded);
    EXPECT_EQ(second.use_count(), 1);
}

} // namespace
} // namespace vantrel::test
