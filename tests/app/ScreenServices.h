#pragma once

#include "ai/AIWorker.h"
#include "ai/config/AppearanceController.h"
#include "ai/config/SettingsStore.h"
#include "app/AppCoordinator.h"
#include "app/ReviewServices.h"
#include "app/SettingsViewModel.h"
#include "git/GitWorker.h"
#include "onboarding/AISetupPresenter.h"
#include "onboarding/AISetupSession.h"
#include "onboarding/AISetupSheet.h"
#include "persistence/APIKeyPresenceStore.h"
#include "persistence/KeychainAccessNotice.h"
#include "persistence/KeychainWorker.h"
#include "persistence/RecentReposStore.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "platform/jobs/SystemClock.h"
#include "support/CallLog.h"
#include "support/FakeAIService.h"
#include "support/FakeChatHistory.h"
#include "support/FakeGitService.h"
#include "support/FakeKeychain.h"
#include "support/FakeLocalDetector.h"
#include "support/FakeRepositoryGuard.h"
#include "support/FakeSignIn.h"

#include <QList>
#include <QTemporaryDir>
#include <QUrl>

#include <functional>
#include <memory>

namespace vantrel::test {

/// The services that the composition root hands to screens, over fakes that share one log.
struct ScreenServices
{
    ScreenServices() = default;
    ScreenServices(const ScreenServices &) = delete;
    ScreenServices &operator=(const ScreenServices &) = delete;
    ~ScreenServices();

    /// Returns when git's thread has ended everything that it was asked so far, and its answers
    /// have arrived. Asks for the branch of no repository, which the log shows.
    void waitForGit();

    /// Puts the narrative of these files' change set into the cache, as if it had been asked for.
    void knowNarrative(const QList<FileChange> &files, const QString &narrative);

    CallLog log{};
    QTemporaryDir preferencesFolder{};
    UserDefaults defaults{preferencesFolder.path()};
    NotificationCenter notificationCenter{};
    FakeGitService git{log};
    GitWorker gitWorker{git};
    std::shared_ptr<RecentReposStore> recentRepos =
        std::make_shared<RecentReposStore>(defaults, QStringLiteral("recentRepos"), 10);
    std::shared_ptr<FakeRepositoryGuard> repositoryGuard = std::make_shared<FakeRepositoryGuard>();
    FakeAIService ai{log};
    AIWorker aiWorker{ai};
    FakeChatHistory chatHistory{log};
    KeychainAccessNotice notice{defaults};
    AppCoordinator coordinator{};
    ReviewServices review{gitWorker,   aiWorker,    notice,
                          chatHistory, coordinator, notificationCenter};
    SettingsStore settingsStore{defaults};
    AppearanceController appearance{settingsStore};
    APIKeyPresenceStore keyPresence{defaults};
    SystemClock clock{};
    std::shared_ptr<FakeKeychain> keychain = std::make_shared<FakeKeychain>();
    KeychainWorker keychainWorker{keychain, clock};
    SettingsViewModel settings{SettingsViewModel::Services{settingsStore, keychainWorker, notice,
                                                           appearance, keyPresence, defaults,
                                                           notificationCenter}};
    AISetupSession setupSession{};
    FakeSignIn signIn{};
    FakeLocalDetector localDetector{};
    QList<QUrl> openedPages{}; ///< In the browser.
    AISetupPresenter setupPresenter{
        AISetupPresenter::Services{settingsStore, keyPresence, setupSession, notificationCenter}};
    AISetupSheet setup{setupPresenter,
                       AISetupViewModel::Services{settingsStore, keychainWorker, notice,
                                                  keyPresence, signIn, localDetector, defaults,
                                                  notificationCenter, [] {},
                                                  [this](const QUrl &page) {
                                                      openedPages.append(page);
                                                      return true;
                                                  }}};
};

/// Runs what is ready on the interface thread.
void runUntilIdle();

/// Runs the interface thread, and waits for workers, until `isDone`.
void runUntil(const std::function<bool()> &isDone);

} // namespace vantrel::test
