// A job is destroyed at every kind of point at which a coroutine can wait. Each point is tried in
// the same five ways; tracked values in all frames show that each is destroyed exactly once, and a
// log shows that no line ran afterwards.

#include "platform/jobs/AllOf.h"
#include "platform/jobs/Channel.h"
#include "platform/jobs/FirstOf.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/JobMap.h"
#include "platform/jobs/RunQueue.h"
#include "platform/jobs/SerialQueue.h"
#include "platform/jobs/SerialWorker.h"
#include "platform/jobs/SharedJob.h"
#include "support/ManualClock.h"
#include "support/Signal.h"
#include "support/Tracked.h"

#include <gtest/gtest.h>

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace vantrel::test {
namespace {

using namespace std::chrono_literals;

using Log = std::vector<std::string>;
using TrackedStream = Stream<Tracked, Tracked>;

void settle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

/// Everything that the coroutines wait for.
struct Scene
{
    Scene() = default;
    Scene(const Scene &) = delete;
    Scene &operator=(const Scene &) = delete;
    ~Scene() { workMayEnd.raise(); }

    Lifetimes lifetimes{};      ///< Of the job under test.
    Lifetimes otherLifetimes{}; ///< Of what outlives it.
    Log log{};
    bool cancelsItself = false;

    WaiterList gate{};
    WaiterList never{};
    Channel<Tracked, Tracked> channel{};
    std::optional<SharedJob<Tracked>> shared{};
    ManualClock clock{};
    SerialQueue queue{};
    Signal workHasBegun{};
    Signal workMayEnd{};
    Signal workHasPosted{};
    SerialWorker worker{};
    JobMap<int> jobs{};
    std::vector<Job> others{};
    Job job{};

    /// Called by each body just before it waits.
    void reached()
    {
        if (cancelsItself) {
            job.cancel();
        }
    }
    void wentOn() { log.emplace_back("went on"); }
};

Task<Tracked> child(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    co_await scene->gate.wait();
    co_return Tracked(local.lifetimes());
}

Task<Tracked> endlessChild(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    co_await scene->never.wait();
    co_return Tracked(local.lifetimes());
}

Task<Tracked> readyChild(Tracked parameter)
{
    const Tracked local(parameter);
    co_return Tracked(local.lifetimes());
}

Task<Tracked> parentOfChild(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    Tracked argument(parameter);
    co_return co_await child(scene, std::move(argument));
}

Task<Tracked> throwingChild(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    co_await scene->gate.wait();
    throw std::runtime_error("as expected");
}

Task<> other(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    co_await scene->gate.wait();
}

Task<> holdQueue(Scene *scene)
{
    const auto turn = co_await scene->queue.turn();
    co_await scene->never.wait();
}

Task<> occupyWorker(Scene *scene)
{
    const auto call = [scene](const WorkControl &) {
        scene->workHasBegun.raise();
        scene->workMayEnd.await();
        return 0;
    };
    co_await scene->worker.run(call);
}

Task<> markWorker(Scene *scene)
{
    const auto call = [scene](const WorkControl &) {
        scene->workHasPosted.raise();
        return 0;
    };
    co_await scene->worker.run(call);
}

TrackedStream produce(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    co_await scene->gate.wait();
    Tracked value(parameter);
    co_yield std::move(value);
}

TrackedStream produceAtOnceThenWait(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    Tracked first(parameter);
    co_yield std::move(first);
    Tracked argument(parameter);
    const Tracked second = co_await child(scene, std::move(argument));
    co_yield second;
}

TrackedStream relay(TrackedStream inner, Tracked parameter)
{
    const Tracked local(parameter);
    while (auto item = co_await inner.next()) {
        TrackedStream::Item value = std::move(*item);
        co_yield std::move(value);
    }
}

TrackedStream failLater(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    co_await scene->gate.wait();
    TrackedStream::Item error = failure(local);
    co_yield std::move(error);
}

// The points. Each body waits once.

Task<> waitsInAList(Scene *scene, Tracked)
{
    const Tracked local(scene->lifetimes);
    scene->reached();
    co_await scene->gate.wait();
    scene->wentOn();
}

Task<> waitsForATask(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    Tracked argument(parameter);
    scene->reached();
    const Tracked value = co_await child(scene, std::move(argument));
    scene->wentOn();
}

Task<> waitsForATaskInAVariable(Scene *scene, Tracked parameter)
{
    auto task = child(scene, Tracked(parameter));
    scene->reached();
    const Tracked value = co_await std::move(task);
    scene->wentOn();
}

Task<> waitsForANestedTask(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    Tracked argument(parameter);
    scene->reached();
    const Tracked value = co_await parentOfChild(scene, std::move(argument));
    scene->wentOn();
}

Task<> waitsForAThrowingTask(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    Tracked argument(parameter);
    scene->reached();
    try {
        const Tracked value = co_await throwingChild(scene, std::move(argument));
    } catch (const std::runtime_error &) {
        scene->wentOn();
    }
}

Task<> readsAStream(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    auto stream = produce(scene, Tracked(parameter));
    scene->reached();
    const auto item = co_await stream.next();
    scene->wentOn();
}

Task<> readsAStreamAgain(Scene *scene, Tracked parameter)
{
    auto stream = produceAtOnceThenWait(scene, Tracked(parameter));
    const auto first = co_await stream.next();
    scene->reached();
    const auto second = co_await stream.next();
    scene->wentOn();
}

Task<> readsAStreamOverAStream(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    auto stream = relay(produce(scene, Tracked(parameter)), Tracked(parameter));
    scene->reached();
    const auto item = co_await stream.next();
    scene->wentOn();
}

Task<> readsAFailingStream(Scene *scene, Tracked parameter)
{
    auto stream = failLater(scene, Tracked(parameter));
    scene->reached();
    const auto item = co_await stream.next();
    scene->wentOn();
}

Task<> readsAChannel(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    auto stream = scene->channel.stream();
    scene->reached();
    const auto item = co_await stream.next();
    scene->wentOn();
}

Task<> readsTheEndOfAChannel(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    auto stream = scene->channel.stream();
    scene->reached();
    const auto item = co_await stream.next();
    scene->wentOn();
}

Task<> waitsForASharedJob(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    scene->reached();
    const Tracked value = co_await scene->shared->result();
    scene->wentOn();
}

Task<> waitsForItsTurn(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    scene->reached();
    const auto turn = co_await scene->queue.turn();
    scene->wentOn();
}

Task<> waitsForAQueuedCall(Scene *scene, Tracked parameter)
{
    const auto call = [captured = Tracked(scene->otherLifetimes)](const WorkControl &) {
        return captured;
    };
    const Tracked local(parameter);
    scene->reached();
    const Tracked value = co_await scene->worker.run(call);
    scene->wentOn();
}

Task<> waitsForARunningCall(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    const auto call = [scene](const WorkControl &) {
        scene->workHasBegun.raise();
        scene->workMayEnd.await();
        return Tracked(scene->otherLifetimes);
    };
    scene->reached();
    const Tracked value = co_await scene->worker.run(call);
    scene->wentOn();
}

Task<> racesAndTheFirstWins(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    auto race = firstOf(child(scene, Tracked(parameter)), endlessChild(scene, Tracked(parameter)));
    scene->reached();
    const auto winner = co_await race;
    scene->wentOn();
}

Task<> racesAndTheSecondWins(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    auto race = firstOf(endlessChild(scene, Tracked(parameter)), child(scene, Tracked(parameter)));
    scene->reached();
    const auto winner = co_await race;
    scene->wentOn();
}

Task<> racesAndBothArrive(Scene *scene, Tracked parameter)
{
    auto first = child(scene, Tracked(parameter));
    auto second = child(scene, Tracked(parameter));
    scene->reached();
    const auto winner = co_await firstOf(std::move(first), std::move(second));
    scene->wentOn();
}

Task<> waitsForAllOf(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    std::vector<Task<Tracked>> tasks;
    tasks.push_back(readyChild(Tracked(parameter)));
    tasks.push_back(child(scene, Tracked(parameter)));
    tasks.push_back(parentOfChild(scene, Tracked(parameter)));
    auto all = allOf(std::move(tasks));
    scene->reached();
    const auto values = co_await all;
    scene->wentOn();
}

Task<> sleeps(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    scene->reached();
    co_await scene->clock.sleep(1s);
    scene->wentOn();
}

Task<> waitsForAJob(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    scene->reached();
    co_await scene->others.front().finished();
    scene->wentOn();
}

Task<> waitsForAJobOfItsOwn(Scene *scene, Tracked parameter)
{
    const Job inner(other(scene, Tracked(parameter)));
    scene->reached();
    co_await inner.finished();
    scene->wentOn();
}

Task<> waitsForAJobOfAMap(Scene *scene, Tracked parameter)
{
    const Tracked local(parameter);
    scene->reached();
    co_await scene->jobs.finished(7);
    scene->wentOn();
}

// What lets the bodies go on.

void openGate(Scene &scene)
{
    scene.gate.wakeAll();
}

/// Returns when the worker has posted the end of everything before, which is not yet run.
void endWork(Scene &scene)
{
    scene.others.emplace_back(markWorker(&scene));
    settle();
    scene.workMayEnd.raise();
    scene.workHasPosted.await();
}

void nothing(Scene &) {}

struct AwaitPoint
{
    const char *name = nullptr;
    Task<> (*body)(Scene *scene, Tracked parameter) = nullptr;
    void (*release)(Scene &scene) = openGate;
    void (*arrange)(Scene &scene) = nothing; ///< Before the body begins.
    void (*arrive)(Scene &scene) = nothing;  ///< Until the point is reached, after it began.
};

const AwaitPoint awaitPoints[] = {
    {"WaiterList", waitsInAList},
    {"Task", waitsForATask},
    {"TaskInAVariable", waitsForATaskInAVariable},
    {"NestedTask", waitsForANestedTask},
    {"ThrowingTask", waitsForAThrowingTask},
    {"Stream", readsAStream},
    {"StreamInItsSecondStep", readsAStreamAgain},
    {"StreamOverAStream", readsAStreamOverAStream},
    {"FailingStream", readsAFailingStream},
    {"Channel", readsAChannel,
     [](Scene &scene) { scene.channel.push(Tracked(scene.otherLifetimes)); }},
    {"EndOfAChannel", readsTheEndOfAChannel, [](Scene &scene) { scene.channel.finish(); }},
    {"SharedJob", waitsForASharedJob, openGate,
     [](Scene &scene) { scene.shared.emplace(child(&scene, Tracked(scene.otherLifetimes))); }},
    {"SerialQueue", waitsForItsTurn, [](Scene &scene) { scene.others.clear(); },
     [](Scene &scene) {
         scene.others.emplace_back(holdQueue(&scene));
         settle();
     }},
    {"QueuedCall", waitsForAQueuedCall, endWork,
     [](Scene &scene) {
         scene.others.emplace_back(occupyWorker(&scene));
         settle();
         scene.workHasBegun.await();
     }},
    {"RunningCall", waitsForARunningCall, endWork, nothing,
     [](Scene &scene) { scene.workHasBegun.await(); }},
    {"FirstOfTwo", racesAndTheFirstWins},
    {"SecondOfTwo", racesAndTheSecondWins},
    {"BothOfTwo", racesAndBothArrive},
    {"AllOf", waitsForAllOf},
    {"Sleep", sleeps, [](Scene &scene) { scene.clock.advance(1s); }},
    {"Job", waitsForAJob, [](Scene &scene) { scene.others.front().cancel(); },
     [](Scene &scene) { scene.others.emplace_back(other(&scene, Tracked(scene.otherLifetimes))); }},
    {"JobOfItsOwn", waitsForAJobOfItsOwn},
    {"JobOfAMap", waitsForAJobOfAMap, [](Scene &scene) { scene.jobs.cancel(7); },
     [](Scene &scene) { scene.jobs.start(7, other(&scene, Tracked(scene.otherLifetimes))); }},
};

class Cancellation : public testing::TestWithParam<AwaitPoint>
{
protected:
    void begin()
    {
        GetParam().arrange(scene);
        scene.job = Job(GetParam().body(&scene, Tracked(scene.lifetimes)));
    }

    void reachThePoint()
    {
        begin();
        settle();
        GetParam().arrive(scene);
        ASSERT_GT(scene.lifetimes.alive(), 0);
        ASSERT_EQ(scene.log, Log());
    }

    void expectThatNothingIsLeft()
    {
        EXPECT_EQ(scene.lifetimes.alive(), 0);
        EXPECT_EQ(scene.lifetimes.errors(), 0);
        EXPECT_EQ(scene.otherLifetimes.errors(), 0);
    }

    Scene scene{};
};

TEST_P(Cancellation, NeverHappensAndTheJobGoesOnToItsEnd)
{
    reachThePoint();

    GetParam().release(scene);
    settle();

    EXPECT_EQ(scene.log, Log{"went on"});
    EXPECT_FALSE(scene.job.isActive());
    expectThatNothingIsLeft();
}

TEST_P(Cancellation, WhileItWaitsDestroysEverythingAtOnce)
{
    reachThePoint();

    scene.job.cancel();

    expectThatNothingIsLeft();
    GetParam().release(scene);
    settle();
    EXPECT_EQ(scene.log, Log());
    expectThatNothingIsLeft();
}

TEST_P(Cancellation, AfterItsReleaseAndBeforeItsTurnDestroysEverythingAtOnce)
{
    reachThePoint();
    GetParam().release(scene);

    scene.job.cancel();

    expectThatNothingIsLeft();
    settle();
    EXPECT_EQ(scene.log, Log());
    expectThatNothingIsLeft();
}

TEST_P(Cancellation, BeforeItsFirstTurnDestroysItsParameters)
{
    begin();

    scene.job.cancel();

    expectThatNothingIsLeft();
    settle();
    GetParam().release(scene);
    settle();
    EXPECT_EQ(scene.log, Log());
    expectThatNothingIsLeft();
}

TEST_P(Cancellation, ByTheRunningJobItselfIsDoneAtTheNextAwait)
{
    scene.cancelsItself = true;
    begin();

    settle();

    expectThatNothingIsLeft();
    GetParam().release(scene);
    settle();
    EXPECT_EQ(scene.log, Log());
    expectThatNothingIsLeft();
}

INSTANTIATE_TEST_SUITE_P(At, Cancellation, testing::ValuesIn(awaitPoints),
                         [](const auto &tested) { return std::string(tested.param.name); });

} // namespace
} // namespace vantrel::test
