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
#include "git/ProcessRunner.h"
#include "persistence/APIKeyPresenceStore.h"
#include "persistence/ChatHistoryWorker.h"
#include "persistence/KeychainAccessNotice.h"
#include "persistence/KeychainWorker.h"
#include "persistence/RecentReposStore.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "platform/http/NetworkHttpLoader.h"
#include "platform/jobs/SystemClock.h"

#include <QString>

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
        QString preferencesFolder{}; ///< Of `UserDefaults`.
        QString keychainService{};   ///< The service name of every keychain item.
    };

    /// The person's own preferences and keys.
    [[nodiscard]] static Places standardPlaces();

    explicit OrbiskApp(const Places &places = standardPlaces());
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

    ProcessRunner m_processRunner;
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
    RootViewModel m_rootViewModel;
};

} // namespace vantrel
