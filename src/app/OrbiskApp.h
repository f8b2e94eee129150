#pragma once

#include "ai/AIWorker.h"
#include "ai/OpenAICompatibleAIService.h"
#include "ai/config/AppearanceController.h"
#include "ai/config/SettingsStore.h"
#include "app/AppCoordinator.h"
#include "app/RootViewModel.h"
#include "app/SettingsViewModel.h"
#include "git/FileSystemReader.h"
#include "git/GitService.h"
#include "git/GitWorker.h"
#include "git/RepositoryGuard.h"
#include "onboarding/AISetupPresenter.h"
#include "onboarding/AISetupSession.h"
#include "onboarding/AISetupSheet.h"
#include "onboarding/LocalModelServerDetector.h"
#include "onboarding/OpenRouterSignIn.h"
#include "persistence/APIKeyPresenceStore.h"
#include "persistence/ChatHistoryWorker.h"
#include "persistence/KeychainAccessNotice.h"
#include "persistence/KeychainWorker.h"
#include "persistence/RecentReposStore.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "platform/http/NetworkHttpLoader.h"
#include "platform/jobs/ContinuousClock.h"
#include "platform/jobs/SystemClock.h"
#include "updates/SoftwareUpdating.h"

#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <functional>
#include <memory>

namespace vantrel {

/// The composition root: makes every long-lived service once, in the order of the members, and owns
/// them until the application ends. Thread: interface.
class OrbiskApp final
{
public:
    /// Where the application keeps what outlives it; tests and the demonstration use places of
    /// their own.
    struct Places
    {
        QString preferencesFolder{};             ///< Of `UserDefaults`.
        QString keychainService{};               ///< The service name of every keychain item.
        OpenRouterOAuth::Addresses openRouter{}; ///< Where a browser sign-in goes.
        QString updatesFolder{};                 ///< Where downloaded updates lie.
        QJsonObject bundleInformation{};         ///< What the build says of its updates.
    };

    /// What only a program with windows can do.
    struct Desktop
    {
        /// Opens a page in the person's browser, or a file in the program that the system has for
        /// it, and tells whether it did.
        std::function<bool(const QUrl &url)> openURL = [](const QUrl &) { return false; };
        std::function<void()> activateApp = [] {}; ///< Brings the application to the front.
    };

    /// The person's own preferences and keys, and what the running build says of itself. An
    /// application object must be there.
    [[nodiscard]] static Places standardPlaces();

    explicit OrbiskApp(const Places &places = standardPlaces());
    OrbiskApp(const Places &places, const Desktop &desktop);
    OrbiskApp(const OrbiskApp &) = delete;
    OrbiskApp &operator=(const OrbiskApp &) = delete;
    ~OrbiskApp();

    [[nodiscard]] RootViewModel &rootViewModel() { return m_rootViewModel; }
    [[nodiscard]] AppearanceController &appearanceController() { return m_appearanceController; }
    [[nodiscard]] NotificationCenter &notificationCenter() { return m_notificationCenter; }

private:
    SystemClock m_clock;
    NotificationCenter m_notificationCenter;
    UserDefaults m_userDefaults;
    NetworkHttpLoader m_session;

    std::shared_ptr<RepositoryGuard> m_repositoryGuard;
    FileSystemReader m_fileReader;
    GitService m_gitService;
    GitWorker m_gitWorker;
    std::shared_ptr<RecentReposStore> m_recentReposStore;
    SettingsStore m_settingsStore;
    KeychainWorker m_keychainStore;
    OpenAICompatibleAIService m_aiService;
    AIWorker m_aiWorker;
    ChatHistoryWorker m_chatHistoryStore;
    AppCoordinator m_coordinator;
    KeychainAccessNotice m_keychainAccessNotice;
    AppearanceController m_appearanceController;
    APIKeyPresenceStore m_keyPresenceStore;
    SettingsViewModel m_settingsViewModel;
    ContinuousClock m_continuousClock;
    AISetupSession m_setupSession;
    OpenRouterSignIn m_signIn;
    LocalModelServerDetector m_localDetector;
    AISetupPresenter m_setupPresenter;
    AISetupSheet m_setupSheet;
    std::unique_ptr<SoftwareUpdating> m_softwareUpdater; ///< None when updates are not configured.
    RootViewModel m_rootViewModel;
};

} // namespace vantrel
