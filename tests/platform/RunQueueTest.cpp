#include "platform/jobs/RunQueue.h"

#include "platform/jobs/Job.h"
#include "platform/jobs/Stream.h"
#include "support/Signal.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QThread>

#include <atomic>
#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace vantrel::test {
namespace {

using Log = std::vector<std::string>;

void settle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

/// Posts an event to itself until it has seen as many as it wants.
class EventCounter : public QObject
{
public:
    explicit EventCounter(int goal)
        : m_goal(goal)
    {
        QCoreApplication::postEvent(this, new QEvent(QEvent::User));
    }

    [[nodiscard]] int count() const { return m_count; }
    [[nodiscard]] bool isDone() const { return m_count == m_goal; }

    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User) {
            return QObject::event(event);
        }
        ++m_count;
        if (!isDone()) {
            QCoreApplication::postEvent(this, new QEvent(QEvent::User));
        }
        return true;
    }

private:
    int m_goal = 0;
    int m_count = 0;
};

/// One of two players between whom there is always something ready, until `counter` is done.
Task<> play(WaiterList *mine, WaiterList *theirs, const EventCounter *counter, long *turns)
{
    while (!counter->isDone()) {
        ++*turns;
        theirs->wakeAll();
        co_await mine->wait();
    }
    theirs->wakeAll();
}

TEST(RunQueue, LetsEventsRunBetweenTheSlicesOfAnEndlessBurst)
{
    EventCounter counter(5);
    WaiterList ping;
    WaiterList pong;
    long turns = 0;
    const Job first(play(&ping, &pong, &counter, &turns));
    const Job second(play(&pong, &ping, &counter, &turns));

    while (first.isActive() || second.isActive()) {
        QCoreApplication::processEvents();
    }

    EXPECT_EQ(counter.count(), 5);
    EXPECT_GT(turns, 5);
}

Stream<long, std::string> endlessNumbers()
{
    for (long number = 1;; ++number) {
        co_yield number;
    }
}

/// Reads a stream that never waits, until `counter` is done.
Task<> readUntilDone(const EventCounter *counter, long *last)
{
    auto numbers = endlessNumbers();
    while (!counter->isDone()) {
        const auto number = co_await numbers.next();
        *last = number->value_or(0);
    }
}

TEST(RunQueue, LetsEventsRunWhileAStreamAlwaysHasAValue)
{
    EventCounter counter(5);
    long last = 0;
    const Job reading(readUntilDone(&counter, &last));

    while (reading.isActive()) {
        QCoreApplication::processEvents();
    }

    EXPECT_EQ(counter.count(), 5);
    EXPECT_GT(last, 5);
}

void postUntilDone(const EventCounter *counter, long *calls)
{
    ++*calls;
    if (!counter->isDone()) {
        RunQueue::interfaceThread().postFromThread(
            [counter, calls] { postUntilDone(counter, calls); });
    }
}

TEST(RunQueue, LetsEventsRunBetweenEndlessCallsFromThreads)
{
    EventCounter counter(5);
    long calls = 0;
    postUntilDone(&counter, &calls);

    while (!counter.isDone()) {
        QCoreApplication::processEvents();
    }
    settle();

    EXPECT_EQ(counter.count(), 5);
    EXPECT_GT(calls, 5);
}

Task<> openALoop(QEventLoop *loop, Log *log)
{
    log->emplace_back("opens a loop");
    loop->exec();
    log->emplace_back("its loop has ended");
    co_return;
}

Task<> endTheLoop(QEventLoop *loop, Log *log)
{
    log->emplace_back("ends the loop");
    loop->quit();
    co_return;
}

TEST(RunQueue, GoesOnWithWhatIsReadyInANestedEventLoop)
{
    QEventLoop loop;
    Log log;
    const Job first(openALoop(&loop, &log));
    const Job second(endTheLoop(&loop, &log));

    spinUntil([&first] { return !first.isActive(); });

    EXPECT_EQ(log, (Log{"opens a loop", "ends the loop", "its loop has ended"}));
}

TEST(RunQueue, GoesOnWithWhatIsReadyInTheEventLoopOfAPostedCall)
{
    QEventLoop loop;
    Log log;
    const Job job(endTheLoop(&loop, &log));
    RunQueue::interfaceThread().postFromThread([&loop, &log] {
        loop.exec();
        log.emplace_back("its loop has ended");
    });

    spinUntil([&log] { return log.size() == 2; });

    EXPECT_EQ(log, (Log{"ends the loop", "its loop has ended"}));
}

TEST(RunQueue, RunsCallsFromAThreadInItsOrderOnTheInterfaceThread)
{
    std::vector<int> order;
    bool areAllHere = true;
    std::thread thread([&] {
        for (int i = 0; i < 5; ++i) {
            RunQueue::interfaceThread().postFromThread([&order, &areAllHere, i] {
                order.push_back(i);
                areAllHere = areAllHere && isInterfaceThread();
            });
        }
    });

    RunQueue::interfaceThread().runUntil([&order] { return order.size() == 5; });
    thread.join();

    EXPECT_EQ(order, (std::vector<int>{0, 1, 2, 3, 4}));
    EXPECT_TRUE(areAllHere);
}

TEST(RunQueue, RunsEveryCallOfManyThreads)
{
    constexpr int threadCount = 4;
    constexpr int callsPerThread = 1000;
    int calls = 0;
    std::vector<std::thread> threads;
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&calls] {
            for (int call = 0; call < callsPerThread; ++call) {
                RunQueue::interfaceThread().postFromThread([&calls] { ++calls; });
            }
        });
    }

    spinUntil([&calls] { return calls == threadCount * callsPerThread; });
    for (std::thread &thread : threads) {
        thread.join();
    }

    EXPECT_EQ(calls, threadCount * callsPerThread);
}

TEST(RunQueue, KnowsTheInterfaceThread)
{
    bool isWorkerTheInterface = true;
    std::thread thread([&isWorkerTheInterface] { isWorkerTheInterface = isInterfaceThread(); });
    thread.join();

    EXPECT_TRUE(isInterfaceThread());
    EXPECT_FALSE(isWorkerTheInterface);
}

/// Ends the application under a thread that keeps posting, as a worker that was left behind does.
[[noreturn]] void endTheApplicationUnderAPostingThread()
{
    static std::atomic<bool> isOver = false;
    static int ran = 0;
    Signal hasPosted;
    std::thread thread([&hasPosted] {
        while (!isOver) {
            RunQueue::interfaceThread().postFromThread([] { ++ran; });
            hasPosted.raise();
        }
    });
    hasPosted.await();
    QCoreApplication::instance()->~QCoreApplication();
    isOver = true;
    thread.join();
    std::_Exit(ran == 0 ? EXIT_SUCCESS : EXIT_FAILURE);
}

TEST(RunQueueDeathTest, KeepsWhatIsPostedAfterTheEndOfTheApplication)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");

    EXPECT_EXIT(endTheApplicationUnderAPostingThread(), testing::ExitedWithCode(EXIT_SUCCESS), "");
}

} // namespace
} // namespace vantrel::test
