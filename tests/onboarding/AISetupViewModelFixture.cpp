#include "onboarding/AISetupViewModelFixture.h"

#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"

#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

Task<> discard(Task<std::optional<QString>> reading)
{
    co_await std::move(reading);
}

} // namespace

AISetupViewModelTest::AISetupViewModelTest()
{
    makeSetup();
}

void AISetupViewModelTest::makeSetup()
{
    setup = std::make_unique<AISetupViewModel>(
        AISetupViewModel::Services{store, worker, notice, presence, signIn, detector, defaults,
                                   notificationCenter, [this] { ++activations; },
                                   [this](const QUrl &page) {
                                       openedPages.append(page);
                                       return isBrowserThere;
                                   }});
    published.clear();
    watch(&AISetupViewModel::stepChanged, u"step"_s);
    watch(&AISetupViewModel::errorMessageChanged, u"errorMessage"_s);
    watch(&AISetupViewModel::isShowingKeychainNoticeChanged, u"isShowingKeychainNotice"_s);
    watch(&AISetupViewModel::hasCompletedSetupChanged, u"hasCompletedSetup"_s);
    watch(&AISetupViewModel::completedProviderChanged, u"completedProvider"_s);
    watch(&AISetupViewModel::isSigningInChanged, u"isSigningIn"_s);
    watch(&AISetupViewModel::isSavingKeyChanged, u"isSavingKey"_s);
    watch(&AISetupViewModel::canSaveKeyAgainChanged, u"canSaveKeyAgain"_s);
    watch(&AISetupViewModel::pasteProviderChanged, u"pasteProvider"_s);
    watch(&AISetupViewModel::apiKeyDraftChanged, u"apiKeyDraft"_s);
    watch(&AISetupViewModel::pasteModelChanged, u"pasteModel"_s);
    watch(&AISetupViewModel::isPasteModelCustomChanged, u"isPasteModelCustom"_s);
    watch(&AISetupViewModel::isCheckingLocalServersChanged, u"isCheckingLocalServers"_s);
    watch(&AISetupViewModel::isNoLocalModelFoundChanged, u"isNoLocalModelFound"_s);
    watch(&AISetupViewModel::localServerStatusesChanged, u"localServerStatuses"_s);
    watch(&AISetupViewModel::selectedLocalServerChanged, u"selectedLocalServer"_s);
    watch(&AISetupViewModel::localModelsChanged, u"localModels"_s);
    watch(&AISetupViewModel::selectedLocalModelChanged, u"selectedLocalModel"_s);
}

void AISetupViewModelTest::watch(void (AISetupViewModel::*signal)(), const QString &name)
{
    QObject::connect(setup.get(), signal, [this, name] { published.append(name); });
}

void AISetupViewModelTest::rememberNotices()
{
    ASSERT_TRUE(defaults.setBoolean(u"settings.hasShownKeychainNotice"_s, true));
    ASSERT_TRUE(defaults.setBoolean(u"keychainAccessNotice.hasAcknowledged"_s, true));
}

void AISetupViewModelTest::runUntilIdle()
{
    RunQueue::interfaceThread().runUntilIdle();
}

void AISetupViewModelTest::waitForSave()
{
    RunQueue::interfaceThread().runUntil([this] { return !setup->isSavingKey(); });
}

QStringList AISetupViewModelTest::keychainCalls()
{
    const Job job(discard(worker.apiKey(AIProvider::custom)));
    RunQueue::interfaceThread().runUntil([&job] { return !job.isActive(); });
    QStringList calls = keychain->log.entries();
    calls.removeLast();
    return calls;
}

void AISetupViewModelTest::pasteKey(const QString &key)
{
    setup->choosePasteKey();
    setup->setApiKeyDraft(key);
    setup->savePastedKey();
}

void AISetupViewModelTest::signInWithKey(const QString &key)
{
    setup->startSignIn();
    runUntilIdle();
    signIn.finish(key);
    runUntilIdle();
}

void AISetupViewModelTest::detect(const LocalModelServerStatuses &statuses)
{
    runUntilIdle();
    detector.finish(statuses);
    runUntilIdle();
}

void AISetupViewModelTest::hangWhileSaving(const QString &key)
{
    rememberNotices();
    keychain->hangNext();
    pasteKey(key);
    runUntilIdle();
    keychain->waitForHang();
}

} // namespace vantrel::test
