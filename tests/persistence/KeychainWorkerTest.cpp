#include "persistence/KeychainWorker.h"

#include "persistence/StuckKeychain.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "platform/keychain/SecretItems.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <utility>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;
using test::ManualClock;
using test::StuckKeychain;

using Key = std::optional<QString>;
using Outcome = Result<void, KeychainError>;

const std::optional<Key> noKey(std::in_place); ///< The answer that there is no key.

template<typename Value>
Task<> keep(Task<Value> task, std::optional<Value> *answer)
{
    auto value = co_await std::move(task);
    answer->emplace(std::move(value));
}

/// As `keep`, with the status of the outcome, 0 for a success.
Task<> keepStatus(Task<Outcome> task, std::optional<std::int32_t> *status)
{
    const Outcome outcome = co_await std::move(task);
    *status = outcome ? secretStatus::success : outcome.error().status;
}

Outcome unhandled(std::int32_t status)
{
    KeychainError error;
    error.status = status;
    return failure(error);
}

class KeychainWorkerTest : public testing::Test
{
protected:
    void runUntilIdle() { RunQueue::interfaceThread().runUntilIdle(); }

    template<typename Value>
    void runUntilAnswered(const std::optional<Value> &answer)
    {
        RunQueue::interfaceThread().runUntil([&] { return answer.has_value(); });
    }

    ManualClock clock{};
    std::shared_ptr<StuckKeychain> keychain = std::make_shared<StuckKeychain>();
    KeychainWorker worker{keychain, clock};
};

TEST_F(KeychainWorkerTest, GivesTheKeyOfTheStore)
{
    keychain->key = u"sk-1"_s;
    keychain->letGo();
    std::optional<Key> key;

    const Job job(keep(worker.apiKey(AIProvider::openRouter), &key));
    runUntilAnswered(key);

    EXPECT_EQ(key, Key(u"sk-1"_s));
    EXPECT_EQ(keychain->calls(), QStringList{u"read openRouter"_s});
    EXPECT_EQ(clock.sleeperCount(), 0U);
}

TEST_F(KeychainWorkerTest, GivesNothingWhenTheStoreHasNoKey)
{
    keychain->letGo();
    std::optional<Key> key;

    const Job job(keep(worker.apiKey(AIProvider::custom), &key));
    runUntilAnswered(key);

    EXPECT_EQ(key, noKey);
}

TEST_F(KeychainWorkerTest, SavesInTheStore)
{
    keychain->letGo();
    std::optional<std::int32_t> saved;

    const Job job(keepStatus(worker.saveAPIKey(u"sk-1"_s, AIProvider::openAI), &saved));
    runUntilAnswered(saved);

    EXPECT_EQ(saved, secretStatus::success);
    EXPECT_EQ(keychain->calls(), QStringList{u"save sk-1 openAI"_s});
}

TEST_F(KeychainWorkerTest, DeletesInTheStore)
{
    keychain->letGo();
    std::optional<std::int32_t> deleted;

    const Job job(keepStatus(worker.deleteAPIKey(AIProvider::custom), &deleted));
    runUntilAnswered(deleted);

    EXPECT_EQ(deleted, secretStatus::success);
    EXPECT_EQ(keychain->calls(), QStringList{u"delete custom"_s});
}

TEST_F(KeychainWorkerTest, PassesTheStoresErrorsOn)
{
    keychain->saved = unhandled(-25308);
    keychain->deleted = unhandled(-36);
    keychain->letGo();
    keychain->letGo();
    std::optional<std::int32_t> saved;
    std::optional<std::int32_t> deleted;

    const Job saving(keepStatus(worker.saveAPIKey(u"sk-1"_s, AIProvider::openAI), &saved));
    const Job deleting(keepStatus(worker.deleteAPIKey(AIProvider::openAI), &deleted));
    runUntilAnswered(saved);
    runUntilAnswered(deleted);

    EXPECT_EQ(saved, -25308);
    EXPECT_EQ(deleted, -36);
}

TEST_F(KeychainWorkerTest, AReadWithoutAnAnswerInTimeGivesNothing)
{
    keychain->key = u"sk-1"_s;
    std::optional<Key> key;
    const Job job(keep(worker.apiKey(AIProvider::openRouter), &key));
    runUntilIdle();

    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();

    EXPECT_EQ(key, noKey);
    keychain->letGo();
}

TEST_F(KeychainWorkerTest, ASaveWithoutAnAnswerInTimeFailsAsUnavailable)
{
    std::optional<std::int32_t> saved;
    const Job job(keepStatus(worker.saveAPIKey(u"sk-1"_s, AIProvider::openAI), &saved));
    runUntilIdle();

    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();

    EXPECT_EQ(saved, -25291);
    keychain->letGo();
}

TEST_F(KeychainWorkerTest, ADeleteWithoutAnAnswerInTimeFailsAsUnavailable)
{
    std::optional<std::int32_t> deleted;
    const Job job(keepStatus(worker.deleteAPIKey(AIProvider::openAI), &deleted));
    runUntilIdle();

    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();

    EXPECT_EQ(deleted, -25291);
    keychain->letGo();
}

TEST_F(KeychainWorkerTest, AnAnswerInTheLastMomentCounts)
{
    keychain->key = u"sk-1"_s;
    std::optional<Key> key;
    const Job job(keep(worker.apiKey(AIProvider::openRouter), &key));
    runUntilIdle();

    clock.advance(KeychainWorker::answerTime - 1ms);
    runUntilIdle();
    ASSERT_EQ(key, std::nullopt);
    keychain->letGo();
    runUntilAnswered(key);

    EXPECT_EQ(key, Key(u"sk-1"_s));
}

TEST_F(KeychainWorkerTest, LaterCallsAreAnsweredInTimeWhileAnEarlierOneHangs)
{
    std::optional<Key> first;
    std::optional<Key> second;
    std::optional<std::int32_t> third;
    const Job reading(keep(worker.apiKey(AIProvider::openRouter), &first));
    runUntilIdle();
    keychain->waitForCalls(1);
    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();

    const Job readingAgain(keep(worker.apiKey(AIProvider::openAI), &second));
    const Job saving(keepStatus(worker.saveAPIKey(u"sk-1"_s, AIProvider::openAI), &third));
    runUntilIdle();
    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();

    EXPECT_EQ(first, noKey);
    EXPECT_EQ(second, noKey);
    EXPECT_EQ(third, -25291);
    EXPECT_EQ(keychain->calls(), QStringList{u"read openRouter"_s});
    keychain->letGo();
}

TEST_F(KeychainWorkerTest, CallsGivenUpBeforeTheyBeganAreNeverMade)
{
    std::optional<Key> first;
    std::optional<std::int32_t> second;
    const Job reading(keep(worker.apiKey(AIProvider::openRouter), &first));
    const Job saving(keepStatus(worker.saveAPIKey(u"sk-1"_s, AIProvider::openAI), &second));
    runUntilIdle();
    keychain->waitForCalls(1);
    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();
    std::optional<Key> last;

    keychain->key = u"sk-2"_s;
    keychain->letGo();
    keychain->letGo();
    const Job readingAgain(keep(worker.apiKey(AIProvider::custom), &last));
    runUntilAnswered(last);

    EXPECT_EQ(last, Key(u"sk-2"_s));
    EXPECT_EQ(keychain->calls(), QStringList({u"read openRouter"_s, u"read custom"_s}));
}

TEST_F(KeychainWorkerTest, CallsRunOneAfterAnotherInOrder)
{
    std::optional<std::int32_t> saved;
    std::optional<Key> key;
    const Job saving(keepStatus(worker.saveAPIKey(u"sk-1"_s, AIProvider::openAI), &saved));
    const Job reading(keep(worker.apiKey(AIProvider::openAI), &key));
    runUntilIdle();
    keychain->waitForCalls(1);
    EXPECT_EQ(keychain->calls(), QStringList{u"save sk-1 openAI"_s});

    keychain->letGo();
    keychain->letGo();
    runUntilAnswered(key);

    EXPECT_EQ(keychain->calls(), QStringList({u"save sk-1 openAI"_s, u"read openAI"_s}));
    EXPECT_EQ(saved, secretStatus::success);
}

TEST_F(KeychainWorkerTest, ACancelledCallGivesNothingAndTakesItsTimerAlong)
{
    std::optional<Key> key;
    Job job(keep(worker.apiKey(AIProvider::openAI), &key));
    runUntilIdle();
    keychain->waitForCalls(1);
    ASSERT_EQ(clock.sleeperCount(), 1U);

    job.cancel();
    keychain->letGo();
    std::optional<Key> next;
    keychain->letGo();
    const Job reading(keep(worker.apiKey(AIProvider::custom), &next));
    runUntilAnswered(next);

    EXPECT_EQ(key, std::nullopt);
    EXPECT_EQ(clock.sleeperCount(), 0U);
}

TEST(KeychainWorker, GoesWithoutWaitingForACallThatHangs)
{
    ManualClock clock;
    auto keychain = std::make_shared<StuckKeychain>();
    const std::weak_ptr<StuckKeychain> watch = keychain;
    std::optional<Key> key;
    {
        KeychainWorker worker(keychain, clock);
        const Job job(keep(worker.apiKey(AIProvider::openAI), &key));
        RunQueue::interfaceThread().runUntilIdle();
        keychain->waitForCalls(1);
    }
    EXPECT_EQ(key, std::nullopt);

    keychain.reset();
    const auto stuck = watch.lock();
    ASSERT_NE(stuck, nullptr);
    stuck->letGo();
}

} // namespace
} // namespace vantrel
