#include "platform/NotificationCenter.h"

#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "support/Signal.h"

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Log = std::vector<std::string>;

const QString changed = u"com.orbisk.changed"_s;

Task<> count(NotificationCenter::Stream stream, int *number)
{
    while (const auto notification = co_await stream.next()) {
        ++*number;
    }
}

TEST(NotificationCenter, CallsObserversOfTheNameInTheOrderOfTheirRegistration)
{
    NotificationCenter center;
    Log log;
    const auto first = center.observe(changed, [&] { log.emplace_back("first"); });
    const auto other = center.observe(u"com.orbisk.other"_s, [&] { log.emplace_back("other"); });
    const auto second = center.observe(changed, [&] { log.emplace_back("second"); });

    center.post(changed);

    EXPECT_EQ(log, (Log{"first", "second"}));
}

TEST(NotificationCenter, CallsNobodyWhoseTokenIsGone)
{
    NotificationCenter center;
    int calls = 0;
    std::optional token = center.observe(changed, [&] { ++calls; });
    center.post(changed);

    token.reset();
    center.post(changed);

    EXPECT_EQ(calls, 1);
}

TEST(NotificationCenter, AnotherTokenInItsPlaceEndsTheFirst)
{
    NotificationCenter center;
    Log log;
    auto token = center.observe(changed, [&] { log.emplace_back("first"); });

    token = center.observe(changed, [&] { log.emplace_back("second"); });
    center.post(changed);

    EXPECT_EQ(log, Log{"second"});
}

TEST(NotificationCenter, AnObserverMayEndItself)
{
    NotificationCenter center;
    int calls = 0;
    std::optional<NotificationCenter::Token> token;
    token = center.observe(changed, [&] {
        ++calls;
        token.reset();
    });

    center.post(changed);
    center.post(changed);

    EXPECT_EQ(calls, 1);
}

TEST(NotificationCenter, AnObserverMayEndTheNextBeforeItIsCalled)
{
    NotificationCenter center;
    int calls = 0;
    std::optional<NotificationCenter::Token> second;
    const auto first = center.observe(changed, [&] { second.reset(); });
    second = center.observe(changed, [&] { ++calls; });

    center.post(changed);

    EXPECT_EQ(calls, 0);
}

TEST(NotificationCenter, AnObserverThatComesDuringAPostHearsTheNext)
{
    NotificationCenter center;
    int calls = 0;
    std::optional<NotificationCenter::Token> late;
    const auto first = center.observe(changed, [&] {
        if (!late) {
            late = center.observe(changed, [&] { ++calls; });
        }
    });

    center.post(changed);
    EXPECT_EQ(calls, 0);
    center.post(changed);

    EXPECT_EQ(calls, 1);
}

TEST(NotificationCenter, ATokenMayOutliveItsCenter)
{
    std::optional<NotificationCenter> center(std::in_place);
    const auto token = center->observe(changed, [] {});

    center.reset();
}

TEST(NotificationCenter, TheEndOfATokenWaitsForACallOnAnotherThread)
{
    NotificationCenter center;
    Signal begun;
    Signal mayEnd;
    std::atomic<bool> hasEnded = false;
    std::optional token = center.observe(changed, [&] {
        begun.raise();
        mayEnd.await();
        hasEnded = true;
    });
    std::thread poster([&] { center.post(changed); });
    begun.await();

    std::thread releaser([&] { mayEnd.raise(); });
    token.reset();

    EXPECT_TRUE(hasEnded);
    poster.join();
    releaser.join();
}

TEST(NotificationCenter, BearsPostsAndRegistrationsOnManyThreads)
{
    NotificationCenter center;
    std::atomic<int> calls = 0;
    const auto lasting = center.observe(changed, [&] { ++calls; });
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread) {
        threads.emplace_back([&] {
            for (int post = 0; post < 200; ++post) {
                const auto passing = center.observe(changed, [&] { ++calls; });
                center.post(changed);
            }
        });
    }
    for (std::thread &thread : threads) {
        thread.join();
    }

    EXPECT_GE(calls, 2 * 4 * 200);
}

TEST(NotificationCenter, AStreamGivesEachPostOnTheInterfaceThread)
{
    NotificationCenter center;
    int number = 0;
    const Job job(count(center.notifications(changed), &number));
    center.post(changed);
    std::thread([&] { center.post(changed); }).join();

    RunQueue::interfaceThread().runUntil([&] { return number == 2; });

    EXPECT_EQ(number, 2);
}

TEST(NotificationCenter, AStreamHearsWhatIsPostedBeforeItIsRead)
{
    NotificationCenter center;
    int number = 0;
    auto stream = center.notifications(changed);
    center.post(changed);

    const Job job(count(std::move(stream), &number));
    RunQueue::interfaceThread().runUntil([&] { return number == 1; });

    EXPECT_EQ(number, 1);
}

TEST(NotificationCenter, AStreamThatIsGoneIsNotHeardOf)
{
    NotificationCenter center;
    int number = 0;
    Job job(count(center.notifications(changed), &number));
    RunQueue::interfaceThread().runUntilIdle();

    center.post(changed);
    job.cancel();
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(number, 0);
}

} // namespace
} // namespace vantrel::test
