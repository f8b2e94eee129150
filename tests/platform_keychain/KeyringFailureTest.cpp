#include "persistence/KeychainStore.h"
#include "persistence/KeychainWorker.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "platform_keychain/BusLog.h"
#include "platform_keychain/KeyringTest.h"
#include "support/ManualClock.h"

#include <QTemporaryDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::BusLog;
using test::ChildProcess;
using test::digestLine;
using test::ManualClock;
using test::ProcessRun;

const QString service = u"com.orbisk.apikeys"_s;
const QString account = u"openAI"_s;

using Key = std::optional<QString>;

const std::optional<Key> noKey(std::in_place); ///< The answer that there is no key.

Task<> keep(Task<Key> task, std::optional<Key> *answer)
{
    Key key = co_await std::move(task);
    answer->emplace(std::move(key));
}

Task<> keepStatus(Task<Result<void, KeychainError>> task, std::optional<std::int32_t> *status)
{
    const Result<void, KeychainError> outcome = co_await std::move(task);
    *status = outcome ? secretStatus::success : outcome.error().status;
}

void runUntilIdle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

void runUntilAnswered(const std::optional<Key> &answer)
{
    RunQueue::interfaceThread().runUntil([&] { return answer.has_value(); });
}

class KeyringFailureTest : public test::KeyringTest
{
protected:
    [[nodiscard]] std::int32_t readStatus() { return items->copyMatching(service, account).status; }
    [[nodiscard]] std::int32_t addStatus() { return items->add(service, account, "sk-new"); }
    [[nodiscard]] std::int32_t removeStatus() { return items->remove(service, account); }
};

TEST_F(KeyringFailureTest, WithoutADaemonNothingIsAvailable)
{
    keyring.kill();

    EXPECT_EQ(readStatus(), secretStatus::notAvailable);
    EXPECT_EQ(addStatus(), secretStatus::notAvailable);
    EXPECT_EQ(removeStatus(), secretStatus::notAvailable);
}

TEST_F(KeyringFailureTest, ADaemonThatStartsLaterIsUsed)
{
    keyring.kill();
    ASSERT_EQ(readStatus(), secretStatus::notAvailable);

    keyring.start();

    EXPECT_EQ(addStatus(), secretStatus::success);
    EXPECT_EQ(items->copyMatching(service, account).secret, "sk-new");
}

TEST_F(KeyringFailureTest, ADaemonRestartedBetweenTwoCallsIsFoundAgain)
{
    ASSERT_EQ(items->add(service, account, "sk-old"), secretStatus::success);
    keyring.kill();
    keyring.start();

    EXPECT_EQ(items->copyMatching(service, account).secret, "sk-old");
}

TEST_F(KeyringFailureTest, ARestartIsNoticedByEveryOperation)
{
    ASSERT_EQ(items->add(service, account, "sk-old"), secretStatus::success);

    keyring.kill();
    keyring.start();
    EXPECT_EQ(removeStatus(), secretStatus::success);

    keyring.kill();
    keyring.start();
    EXPECT_EQ(addStatus(), secretStatus::success);
}

TEST_F(KeyringFailureTest, ALockedKeyringRefusesEveryOperation)
{
    ASSERT_EQ(items->add(service, account, "sk-old"), secretStatus::success);
    keyring.lock();

    EXPECT_EQ(readStatus(), secretStatus::interactionNotAllowed);
    EXPECT_EQ(addStatus(), secretStatus::interactionNotAllowed);
    EXPECT_EQ(removeStatus(), secretStatus::interactionNotAllowed);
}

TEST_F(KeyringFailureTest, AKeyringUnlockedLaterWorksInTheSameProcess)
{
    ASSERT_EQ(items->add(service, account, "sk-old"), secretStatus::success);
    keyring.lock();
    ASSERT_EQ(readStatus(), secretStatus::interactionNotAllowed);
    ASSERT_EQ(removeStatus(), secretStatus::interactionNotAllowed);

    keyring.unlock();

    EXPECT_EQ(items->copyMatching(service, account).secret, "sk-old");
    EXPECT_EQ(addStatus(), secretStatus::success);
    EXPECT_EQ(removeStatus(), secretStatus::success);
}

TEST_F(KeyringFailureTest, AnAddToALockedKeyringAsksThePersonOnce)
{
    keyring.lock();
    BusLog log;

    EXPECT_EQ(addStatus(), secretStatus::interactionNotAllowed);

    EXPECT_EQ(log.callCount("Unlock"), 1);
}

TEST_F(KeyringFailureTest, AReadOfALockedKeyringAsksThePersonOnce)
{
    ASSERT_EQ(items->add(service, account, "sk-old"), secretStatus::success);
    keyring.lock();
    BusLog log;

    EXPECT_EQ(readStatus(), secretStatus::interactionNotAllowed);

    EXPECT_EQ(log.callCount("Unlock"), 1);
}

TEST_F(KeyringFailureTest, ALockedKeyringWhosePromptHasNoDisplayAnswers)
{
    const ProcessRun run = probeElsewhere({u"--activation"_s},
                                          {u"save"_s, account, u"lock"_s, u"read"_s, account,
                                           u"delete"_s, account, u"unlock"_s, u"read"_s, account},
                                          "sk-old");

    EXPECT_EQ(run.output, "status 0\nlock\nnone\nstatus -25308\nunlock\n" + digestLine("sk-old"));
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
}

TEST_F(KeyringFailureTest, AKeyringWithoutACollectionAnswers)
{
    const ProcessRun run = probeElsewhere(
        {u"--no-daemon"_s},
        {u"start-locked"_s, u"read"_s, account, u"delete"_s, account, u"save"_s, account},
        "sk-new");

    EXPECT_EQ(run.output, "start-locked\nnone\nstatus 0\nstatus -25294\n");
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
}

/// The status of a save in a process that is told this of its bus; nothing to leave it untold.
ProcessRun probeWithBus(const std::optional<QString> &address)
{
    const QTemporaryDir emptyRuntimeFolder;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"XDG_RUNTIME_DIR"_s, emptyRuntimeFolder.path());
    environment.remove(u"DBUS_SESSION_BUS_ADDRESS"_s);
    if (address) {
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, *address);
    }
    return test::run(QStringLiteral(KEYCHAIN_PROBE),
                     {u"save"_s, account, u"read"_s, account, u"delete"_s, account}, "sk-new",
                     environment);
}

TEST_F(KeyringFailureTest, WithoutABusNothingIsAvailable)
{
    const ProcessRun run = probeWithBus(std::nullopt);

    EXPECT_EQ(run.output, "status -25291\nnone\nstatus -25291\n");
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
}

TEST_F(KeyringFailureTest, WithADisabledBusNothingIsAvailable)
{
    EXPECT_EQ(probeWithBus(u"disabled:"_s).output, "status -25291\nnone\nstatus -25291\n");
}

TEST_F(KeyringFailureTest, WithABusThatIsGoneNothingIsAvailable)
{
    EXPECT_EQ(probeWithBus(u"unix:path=/nonexistent/bus"_s).output,
              "status -25291\nnone\nstatus -25291\n");
}

TEST_F(KeyringFailureTest, ABusThatDiesTakesNobodyAlong)
{
    const ProcessRun run = probeElsewhere(
        {}, {u"save"_s, account, u"kill-bus"_s, u"read"_s, account, u"delete"_s, account}, "sk-1");

    EXPECT_EQ(run.output, "status 0\nkill-bus\nnone\nstatus -25291\n");
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
}

class KeyringWorkerTest : public KeyringFailureTest
{
protected:
    ManualClock clock{};
    KeychainWorker worker{std::make_shared<KeychainStore>(service, systemSecretItems()), clock};
};

TEST_F(KeyringWorkerTest, AFrozenDaemonCostsBoundedTimeAndWorksAgainOnceItAnswers)
{
    ASSERT_EQ(items->add(service, account, "sk-old"), secretStatus::success);
    BusLog log;
    keyring.freeze();
    std::optional<Key> first;
    const Job job(keep(worker.apiKey(AIProvider::openAI), &first));
    runUntilIdle();
    log.waitForCallToDaemon(keyring.uniqueName());

    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();
    EXPECT_EQ(first, noKey);

    keyring.thaw();
    std::optional<Key> second;
    const Job next(keep(worker.apiKey(AIProvider::openAI), &second));
    runUntilAnswered(second);
    EXPECT_EQ(second, Key(u"sk-old"_s));
}

TEST_F(KeyringWorkerTest, CallsBehindAFrozenOneAreAnsweredInBoundedTimeToo)
{
    BusLog log;
    keyring.freeze();
    std::optional<Key> first;
    const Job reading(keep(worker.apiKey(AIProvider::openAI), &first));
    runUntilIdle();
    log.waitForCallToDaemon(keyring.uniqueName());
    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();

    std::optional<std::int32_t> saved;
    std::optional<std::int32_t> deleted;
    const Job saving(keepStatus(worker.saveAPIKey(u"sk-new"_s, AIProvider::openAI), &saved));
    const Job deleting(keepStatus(worker.deleteAPIKey(AIProvider::openAI), &deleted));
    runUntilIdle();
    clock.advance(KeychainWorker::answerTime);
    runUntilIdle();

    EXPECT_EQ(saved, secretStatus::notAvailable);
    EXPECT_EQ(deleted, secretStatus::notAvailable);
    keyring.thaw();
    std::optional<Key> last;
    const Job readingAgain(keep(worker.apiKey(AIProvider::openAI), &last));
    runUntilAnswered(last);
    EXPECT_EQ(last, noKey);
}

TEST_F(KeyringWorkerTest, ADaemonThatDiesInTheMiddleOfACallGivesNoKey)
{
    ASSERT_EQ(items->add(service, account, "sk-old"), secretStatus::success);
    BusLog log;
    keyring.freeze();
    std::optional<Key> key;
    const Job job(keep(worker.apiKey(AIProvider::openAI), &key));
    runUntilIdle();
    log.waitForCallToDaemon(keyring.uniqueName());

    keyring.kill();
    runUntilAnswered(key);

    EXPECT_EQ(key, noKey);
    EXPECT_EQ(clock.sleeperCount(), 0U);
}

TEST_F(KeyringWorkerTest, ADaemonThatDiesInTheMiddleOfASaveMakesItFail)
{
    BusLog log;
    keyring.freeze();
    std::optional<std::int32_t> status;
    const Job job(keepStatus(worker.saveAPIKey(u"sk-new"_s, AIProvider::openAI), &status));
    runUntilIdle();
    log.waitForCallToDaemon(keyring.uniqueName());

    keyring.kill();
    RunQueue::interfaceThread().runUntil([&] { return status.has_value(); });

    EXPECT_EQ(status, secretStatus::notAvailable);
}

TEST_F(KeyringWorkerTest, ADaemonStartedAfterItsDeathIsUsedByTheNextCall)
{
    ASSERT_EQ(items->add(service, account, "sk-old"), secretStatus::success);
    keyring.kill();
    std::optional<Key> withoutDaemon;
    const Job first(keep(worker.apiKey(AIProvider::openAI), &withoutDaemon));
    runUntilAnswered(withoutDaemon);
    ASSERT_EQ(withoutDaemon, noKey);

    keyring.start();
    std::optional<Key> key;
    const Job second(keep(worker.apiKey(AIProvider::openAI), &key));
    runUntilAnswered(key);

    EXPECT_EQ(key, Key(u"sk-old"_s));
}

TEST_F(KeyringWorkerTest, AnApplicationQuitsWhileACallHangs)
{
    BusLog log;
    keyring.freeze();
    ChildProcess probe(QStringLiteral(KEYCHAIN_PROBE), {u"read-and-quit"_s, account});
    log.waitForCallToDaemon(keyring.uniqueName());

    probe.closeInput();
    const ProcessRun run = probe.waitForEnd();

    EXPECT_EQ(run.output, "reading\n");
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
}

} // namespace
} // namespace vantrel
