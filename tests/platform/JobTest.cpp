#include "platform/jobs/Job.h"

#include "platform/jobs/AllOf.h"
#include "platform/jobs/Channel.h"
#include "platform/jobs/FirstOf.h"
#include "platform/jobs/RunQueue.h"
#include "platform/jobs/SerialQueue.h"
#include "support/Tracked.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using Log = std::vector<std::string>;

void settle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

Task<> note(Log *log, std::string line)
{
    log->push_back(std::move(line));
    co_return;
}

Task<> noteAfter(WaiterList *gate, Log *log, std::string line)
{
    co_await gate->wait();
    log->push_back(std::move(line));
}

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

TEST(Job, StartsWithTheNextTurnOfTheQueue)
{
    Log log;

    const Job job(note(&log, "ran"));

    EXPECT_EQ(log, Log());
    EXPECT_TRUE(job.isActive());
    settle();
    EXPECT_EQ(log, Log{"ran"});
    EXPECT_FALSE(job.isActive());
}

TEST(Job, RunsReadyJobsInTheOrderOfTheirStart)
{
    Log log;

    const Job first(note(&log, "first"));
    const Job second(note(&log, "second"));
    const Job third(note(&log, "third"));
    settle();

    EXPECT_EQ(log, (Log{"first", "second", "third"}));
}

TEST(Job, RunsTwoMillionReadyTasksInALoopFlat)
{
    long sum = 0;

    const Job job(addUp(2'000'000, &sum));
    settle();

    EXPECT_EQ(sum, 2'000'000);
    EXPECT_FALSE(job.isActive());
}

TEST(Job, CallsEndedOnceWhenItsBodyIsOver)
{
    WaiterList gate;
    Log log;

    const Job job(noteAfter(&gate, &log, "body"), [&log] { log.emplace_back("ended"); });
    settle();
    gate.wakeAll();
    settle();
    settle();

    EXPECT_EQ(log, (Log{"body", "ended"}));
}

TEST(Job, IsNotActiveWhenEndedIsCalled)
{
    Log log;
    bool wasActive = true;

    Job job;
    job = Job(note(&log, "body"), [&job, &wasActive] { wasActive = job.isActive(); });
    settle();

    EXPECT_FALSE(wasActive);
}

TEST(Job, MayBeReplacedWhileEndedIsCalled)
{
    Log log;

    Job job;
    job = Job(note(&log, "first"), [&] { job = Job(note(&log, "second")); });
    settle();

    EXPECT_EQ(log, (Log{"first", "second"}));
}

// The ways in which a handle lets go of its job.

struct Farewell
{
    const char *name = nullptr;
    void (*act)(std::optional<Job> &job) = nullptr;
};

class JobFarewell : public testing::TestWithParam<Farewell>
{};

Task<> holdAndWait(WaiterList *gate, Log *log, Tracked parameter)
{
    const Tracked local(parameter);
    co_await gate->wait();
    log->emplace_back("ran on");
}

TEST_P(JobFarewell, DestroysTheFramesAtOnceAndCallsNothing)
{
    WaiterList gate;
    Log log;
    Lifetimes lifetimes;
    std::optional<Job> job(std::in_place, holdAndWait(&gate, &log, Tracked(lifetimes)),
                           [&log] { log.emplace_back("ended"); });
    settle();
    ASSERT_EQ(lifetimes.alive(), 2);

    GetParam().act(job);

    EXPECT_EQ(lifetimes.alive(), 0);
    EXPECT_EQ(lifetimes.errors(), 0);
    EXPECT_TRUE(gate.isEmpty());
    gate.wakeAll();
    settle();
    EXPECT_EQ(log, Log());
}

const Farewell farewells[] = {
    {"Cancel", [](std::optional<Job> &job) { job->cancel(); }},
    {"CancelTwice",
     [](std::optional<Job> &job) {
         job->cancel();
         job->cancel();
     }},
    {"Destructor", [](std::optional<Job> &job) { job.reset(); }},
    {"AssignmentOfNothing", [](std::optional<Job> &job) { *job = Job(); }},
    {"AssignmentOfAnother",
     [](std::optional<Job> &job) {
         static long sum = 0;
         *job = Job(addUp(1, &sum));
     }},
    {"DestructorOfWhereItMovedTo",
     [](std::optional<Job> &job) { const Job moved = std::move(*job); }},
};

INSTANTIATE_TEST_SUITE_P(By, JobFarewell, testing::ValuesIn(farewells),
                         [](const auto &tested) { return std::string(tested.param.name); });

TEST(Job, GoesOnWhereItMovedTo)
{
    WaiterList gate;
    Log log;
    Job first(noteAfter(&gate, &log, "ran"));
    settle();

    const Job second = std::move(first);
    first.cancel();
    gate.wakeAll();
    settle();

    EXPECT_EQ(log, Log{"ran"});
}

/// Assigns a job to the handle that owns the frame in which this stands.
class Successor
{
public:
    Successor(Job *handle, Log *log)
        : m_handle(handle)
        , m_log(log)
    {}
    Successor(Successor &&other) noexcept
        : m_handle(std::exchange(other.m_handle, nullptr))
        , m_log(other.m_log)
    {}
    Successor &operator=(Successor &&) = delete;
    Successor(const Successor &) = delete;
    Successor &operator=(const Successor &) = delete;
    ~Successor()
    {
        if (m_handle != nullptr) {
            *m_handle = Job(note(m_log, "successor"));
        }
    }

private:
    Job *m_handle;
    Log *m_log;
};

Task<> waitWith(WaiterList *gate, Successor)
{
    co_await gate->wait();
}

TEST(Job, MayBeReplacedByWhatDiesWithIt)
{
    WaiterList gate;
    Log log;
    Job job;
    job = Job(waitWith(&gate, Successor(&job, &log)));
    settle();

    job = Job(note(&log, "replacement"));
    settle();

    EXPECT_EQ(log, Log{"successor"});
}

Task<> waitWithAJob(WaiterList *gate, std::shared_ptr<Job> held)
{
    co_await gate->wait();
    held->cancel();
}

TEST(Job, MayBeReplacedByAJobThatItHolds)
{
    WaiterList gate;
    Log log;
    auto held = std::make_shared<Job>(note(&log, "held"));
    Job &heldJob = *held;
    Job job(waitWithAJob(&gate, std::move(held)));

    job = std::move(heldJob);
    settle();

    EXPECT_EQ(log, Log{"held"});
}

// A job that cancels itself while it runs: at whatever it awaits next it goes no further.

struct NextAwait
{
    const char *name = nullptr;
    Task<> (*body)(std::function<void()> cancel, Log *log) = nullptr;
};

class JobThatCancelsItself : public testing::TestWithParam<NextAwait>
{};

Task<> cancelThenAwaitAReadyTask(std::function<void()> cancel, Log *log)
{
    cancel();
    log->emplace_back("same line");
    co_await ready(1);
    log->emplace_back("ran on");
}

Task<> cancelAndReturn(std::function<void()> cancel, Log *log)
{
    cancel();
    log->emplace_back("same line");
    co_return;
}

Task<> awaitAChildThatCancels(std::function<void()> cancel, Log *log)
{
    co_await cancelAndReturn(cancel, log);
    log->emplace_back("ran on");
}

Task<> cancelAndThrow(std::function<void()> cancel, Log *log)
{
    cancel();
    log->emplace_back("same line");
    throw std::runtime_error("never seen");
    co_return;
}

Task<> awaitAChildThatCancelsAndThrows(std::function<void()> cancel, Log *log)
{
    try {
        co_await cancelAndThrow(cancel, log);
    } catch (const std::exception &) {
        log->emplace_back("ran on");
    }
}

Task<> awaitAGrandchildThatCancels(std::function<void()> cancel, Log *log)
{
    co_await awaitAChildThatCancels(cancel, log);
    log->emplace_back("ran on");
}

Task<std::monostate> cancelAndGive(std::function<void()> cancel, Log *log)
{
    cancel();
    log->emplace_back("same line");
    co_return std::monostate();
}

Task<std::monostate> noteAndGive(Log *log)
{
    log->emplace_back("ran on");
    co_return std::monostate();
}

Task<> raceOfOneThatCancels(std::function<void()> cancel, Log *log)
{
    auto race = firstOf(cancelAndGive(cancel, log), noteAndGive(log));
    co_await race;
    log->emplace_back("ran on");
}

Task<std::monostate> cancelAndWait(std::function<void()> cancel, Log *log)
{
    WaiterList never;
    cancel();
    log->emplace_back("same line");
    co_await never.wait();
    co_return std::monostate();
}

Task<> raceOfOneThatCancelsAndWaits(std::function<void()> cancel, Log *log)
{
    auto race = firstOf(cancelAndWait(cancel, log), noteAndGive(log));
    co_await race;
    log->emplace_back("ran on");
}

Task<> allOfOneThatCancels(std::function<void()> cancel, Log *log)
{
    std::vector<Task<std::monostate>> tasks;
    tasks.push_back(cancelAndGive(cancel, log));
    tasks.push_back(noteAndGive(log));
    auto all = allOf(std::move(tasks));
    co_await all;
    log->emplace_back("ran on");
}

Task<> cancelThenAllOfNothing(std::function<void()> cancel, Log *log)
{
    cancel();
    log->emplace_back("same line");
    auto all = allOf(std::vector<Task<int>>());
    co_await all;
    log->emplace_back("ran on");
}

Stream<int, int> cancelAndYield(std::function<void()> cancel, Log *log)
{
    cancel();
    log->emplace_back("same line");
    const int value = 1;
    co_yield value;
}

Task<> readAStreamThatCancels(std::function<void()> cancel, Log *log)
{
    auto stream = cancelAndYield(cancel, log);
    const auto item = co_await stream.next();
    log->emplace_back(item ? "ran on" : "ran on at the end");
}

Task<> cancelThenReadWhatWasPushed(std::function<void()> cancel, Log *log)
{
    Channel<int, int> channel;
    channel.push(1);
    auto stream = channel.stream();
    cancel();
    log->emplace_back("same line");
    const auto item = co_await stream.next();
    log->emplace_back(item ? "ran on" : "ran on at the end");
}

Task<> cancelThenTakeAFreeTurn(std::function<void()> cancel, Log *log)
{
    SerialQueue queue;
    cancel();
    log->emplace_back("same line");
    const auto turn = co_await queue.turn();
    log->emplace_back("ran on");
}

Task<> cancelThenEnd(std::function<void()> cancel, Log *log)
{
    const WaiterList nothing;
    cancel();
    log->emplace_back("same line");
    co_return;
}

TEST_P(JobThatCancelsItself, GoesNoFurther)
{
    Log log;
    Job job;
    std::function<void()> cancel = [&job] { job.cancel(); };
    job = Job(GetParam().body(std::move(cancel), &log), [&log] { log.emplace_back("ended"); });

    settle();

    EXPECT_EQ(log, Log{"same line"});
}

const NextAwait nextAwaits[] = {
    {"AtAReadyTask", cancelThenAwaitAReadyTask},
    {"AfterAChildThatReturns", awaitAChildThatCancels},
    {"AfterAChildThatThrows", awaitAChildThatCancelsAndThrows},
    {"AfterAGrandchildThatReturns", awaitAGrandchildThatCancels},
    {"AfterARaceWonAtOnce", raceOfOneThatCancels},
    {"InARaceBeforeTheSecondBegins", raceOfOneThatCancelsAndWaits},
    {"InAllOfBeforeTheSecondBegins", allOfOneThatCancels},
    {"AtAllOfNothing", cancelThenAllOfNothing},
    {"AfterAStreamThatYields", readAStreamThatCancels},
    {"AtAFilledChannel", cancelThenReadWhatWasPushed},
    {"AtAFreeQueue", cancelThenTakeAFreeTurn},
    {"AtItsEnd", cancelThenEnd},
};

INSTANTIATE_TEST_SUITE_P(Stops, JobThatCancelsItself, testing::ValuesIn(nextAwaits),
                         [](const auto &tested) { return std::string(tested.param.name); });

// Errors.

Task<> throwAfter(WaiterList *gate)
{
    co_await gate->wait();
    throw std::runtime_error("the disk is made of cheese");
}

Task<> throwANumber()
{
    throw 7;
    co_return;
}

TEST(Job, LogsAnExceptionAndStops)
{
    expectMessage(u"a job stopped at an unexpected error: the disk is made of cheese"_s);
    WaiterList gate;
    const Job job(throwAfter(&gate));
    settle();

    gate.wakeAll();
    settle();

    EXPECT_FALSE(job.isActive());
}

TEST(Job, LogsAnExceptionOfAForeignType)
{
    expectMessage(u"a job stopped at an unexpected error"_s);

    const Job job(throwANumber());
    settle();

    EXPECT_FALSE(job.isActive());
}

Task<> catchFrom(Task<> task, Log *log)
{
    try {
        co_await std::move(task);
    } catch (const std::exception &exception) {
        log->emplace_back(exception.what());
    }
}

TEST(Job, PassesAnExceptionToTheAwaitingCoroutine)
{
    WaiterList gate;
    Log log;
    const Job job(catchFrom(throwAfter(&gate), &log));
    settle();

    gate.wakeAll();
    settle();

    EXPECT_EQ(log, Log{"the disk is made of cheese"});
}

// Waiting for the end.

Task<> noteWhenFinished(Task<> finished, Log *log)
{
    co_await std::move(finished);
    log->emplace_back("finished");
}

TEST(JobFinished, EndsWhenTheJobEnds)
{
    WaiterList gate;
    Log log;
    const Job job(noteAfter(&gate, &log, "body"));
    const Job waiting(noteWhenFinished(job.finished(), &log));
    settle();

    gate.wakeAll();
    settle();

    EXPECT_EQ(log, (Log{"body", "finished"}));
}

TEST(JobFinished, EndsWhenTheJobIsCancelled)
{
    WaiterList gate;
    Log log;
    Job job(noteAfter(&gate, &log, "body"));
    const Job waiting(noteWhenFinished(job.finished(), &log));
    settle();

    job.cancel();
    settle();

    EXPECT_EQ(log, Log{"finished"});
}

TEST(JobFinished, EndsWhenTheJobStopsAtAnException)
{
    expectMessage(u"cheese"_s);
    WaiterList gate;
    Log log;
    const Job job(throwAfter(&gate));
    const Job waiting(noteWhenFinished(job.finished(), &log));
    settle();

    gate.wakeAll();
    settle();

    EXPECT_EQ(log, Log{"finished"});
}

TEST(JobFinished, EndsAtOnceForAJobThatHasEndedAndForNone)
{
    Log log;
    const Job job(note(&log, "body"));
    settle();

    const Job first(noteWhenFinished(job.finished(), &log));
    const Job second(noteWhenFinished(Job().finished(), &log));
    settle();

    EXPECT_EQ(log, (Log{"body", "finished", "finished"}));
}

TEST(JobFinished, OutlivesTheHandle)
{
    WaiterList gate;
    Log log;
    std::optional<Job> job(std::in_place, noteAfter(&gate, &log, "body"));
    Task<> finished = job->finished();
    job.reset();

    const Job waiting(noteWhenFinished(std::move(finished), &log));
    settle();

    EXPECT_EQ(log, Log{"finished"});
}

// Event loops inside a job.

Task<std::monostate> runTheQueueInside(WaiterList *gate, Log *log)
{
    co_await gate->wait();
    log->emplace_back("before");
    settle();
    log->emplace_back("after");
    co_return std::monostate();
}

Task<std::monostate> goOn(WaiterList *gate, Log *log)
{
    co_await gate->wait();
    log->emplace_back("sibling");
    co_return std::monostate();
}

Task<> raceWithAnEventLoopInside(WaiterList *gate, Log *log)
{
    auto race = firstOf(runTheQueueInside(gate, log), goOn(gate, log));
    const auto winner = co_await race;
    log->emplace_back(winner.index() == 0 ? "the first won" : "the second won");
}

TEST(JobWithAnEventLoopInside, RunsNoOtherFrameOfItsOwnBelow)
{
    WaiterList gate;
    Log log;
    const Job job(raceWithAnEventLoopInside(&gate, &log));
    settle();

    gate.wakeAll();
    settle();

    EXPECT_EQ(log, (Log{"before", "after", "the first won"}));
}

Task<> bothWithAnEventLoopInside(WaiterList *gate, Log *log)
{
    std::vector<Task<std::monostate>> tasks;
    tasks.push_back(runTheQueueInside(gate, log));
    tasks.push_back(goOn(gate, log));
    auto both = allOf(std::move(tasks));
    co_await both;
    log->emplace_back("both");
}

TEST(JobWithAnEventLoopInside, RunsItsOtherFramesAfterwards)
{
    WaiterList gate;
    Log log;
    const Job job(bothWithAnEventLoopInside(&gate, &log));
    settle();

    gate.wakeAll();
    settle();

    EXPECT_EQ(log, (Log{"before", "after", "sibling", "both"}));
}

TEST(JobWithAnEventLoopInside, LetsOtherJobsRunBelow)
{
    WaiterList gate;
    Log log;
    const Job first(bothWithAnEventLoopInside(&gate, &log));
    settle();
    const Job second(noteAfter(&gate, &log, "other job"));
    settle();

    gate.wakeAll();
    settle();

    EXPECT_EQ(log, (Log{"before", "other job", "after", "sibling", "both"}));
}

Task<> cancelOther(WaiterList *gate, Job *job, Log *log)
{
    co_await gate->wait();
    job->cancel();
    log->emplace_back("cancelled");
}

TEST(JobWithAnEventLoopInside, EndsAfterItWhenItIsCancelledBelow)
{
    WaiterList gate;
    Log log;
    Job first(bothWithAnEventLoopInside(&gate, &log));
    settle();
    const Job second(cancelOther(&gate, &first, &log));
    settle();

    gate.wakeAll();
    settle();

    EXPECT_EQ(log, (Log{"before", "cancelled", "after"}));
}

} // namespace
} // namespace vantrel::test
