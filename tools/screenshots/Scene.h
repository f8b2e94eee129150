#pragma once

#include "SampleServices.h"

#include "ai/AIWorker.h"
#include "ai/config/AppearanceController.h"
#include "ai/config/SettingsStore.h"
#include "app/AppCoordinator.h"
#include "app/RootViewModel.h"
#include "app/SettingsViewModel.h"
#include "git/GitWorker.h"
#include "onboarding/AISetupPresenter.h"
#include "onboarding/AISetupSession.h"
#include "onboarding/AISetupSheet.h"
#include "persistence/APIKeyPresenceStore.h"
#include "persistence/ChatHistoryWorker.h"
#include "persistence/KeychainAccessNotice.h"
#include "persistence/KeychainWorker.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "platform/jobs/SystemClock.h"
#include "support/FakeUpdateServer.h"
#include "updates/FeedSoftwareUpdater.h"
#include "views/MainWindow.h"
#include "views/SystemAppearance.h"

#include <QImage>
#include <QQuickWindow>
#include <QSize>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>
#include <QVariantMap>

#include <functional>
#include <memory>
#include <optional>

namespace vantrel::screenshots {

/// The application's window over the view models it really has and services that answer from a
/// script, brought into one named state. Thread: interface.
class Scene final
{
public:
    /// The names of all states, in the order of the screens.
    [[nodiscard]] static QStringList states();

    explicit Scene(AppAppearance appearance);
    Scene(const Scene &) = delete;
    Scene &operator=(const Scene &) = delete;
    ~Scene();

    /// Brings the window into this state at this size; null when it could not be made. Call it
    /// once.
    [[nodiscard]] QQuickWindow *show(const QString &state, QSize size);

    /// The same, and what the window then looks like; a null image when it could not be made.
    [[nodiscard]] QImage picture(const QString &state, QSize size);

private:
    struct State;

    static const QList<State> &all();

    void showPicker();
    void showRecents();
    void showMissingRecent();
    void showRefusal();
    void showProgramsQuestion();
    void showFileList();
    void showFiles(SampleGitService::Listing listing);
    void showLoadingFiles();
    void showNotice();
    void showFile(int row);
    void showFirstSummary();
    void showSummaries();
    void showTokenStore(const SampleAIService::Explanation &second);
    void showLoadedTokenStore();
    void showSelection();
    void showQuestion(const SampleAIService::Answer &answer);
    void showFailedQuestion();
    void ask(const QString &question);
    void showGitErrorOfDiff();

    /// Makes a window of its own, whose picture it is from then on.
    void makeWindow(const QString &type, const QVariantMap &properties);

    /// Opens the settings window.
    void showSettings();
    void showSavedKey();
    void showRemovedKey();
    void showRefusedBaseURL();
    void showModelMenu();
    void showRemovalQuestion();
    void showSettingsNotice();
    void saveKey();

    /// Opens the setup sheet over the files.
    void showSetup();
    void showSignIn(std::optional<SampleSignIn::Outcome> outcome);
    void showPastedKey(AIProvider provider);
    void showUnknownModel();
    void showLocalServers(std::optional<LocalModelServerStatuses> statuses);
    void showLocalSetup();
    void recordShownNotice();

    /// Checks for updates, in a window of its own, as far as the server answers.
    void checkForUpdates();
    void showOffer(const QString &version);
    void showDownload(double part);
    void showUpdateMenu();

    /// Runs the event loop until `isReached`.
    static void wait(const std::function<bool()> &isReached);
    void waitForLines();

    QTemporaryDir m_folder{};
    UserDefaults m_defaults;
    SettingsStore m_settings;
    AppearanceController m_appearanceController;
    SystemAppearance m_appearance;
    std::shared_ptr<SampleRecentRepos> m_recentRepos = std::make_shared<SampleRecentRepos>();
    std::shared_ptr<SampleRepositoryGuard> m_repositoryGuard =
        std::make_shared<SampleRepositoryGuard>();
    NotificationCenter m_notificationCenter{};
    SampleGitService m_git{};
    GitWorker m_gitWorker;
    SampleAIService m_ai{};
    AIWorker m_aiWorker;
    ChatHistoryWorker m_chatHistory;
    AppCoordinator m_coordinator{};
    SystemClock m_clock{};
    KeychainWorker m_keychain;
    APIKeyPresenceStore m_keyPresence;
    std::unique_ptr<KeychainAccessNotice> m_notice{};
    std::unique_ptr<SettingsViewModel> m_settingsViewModel{};
    AISetupSession m_setupSession{};
    SampleSignIn m_signIn{};
    SampleLocalDetector m_localDetector{};
    std::unique_ptr<AISetupPresenter> m_setupPresenter{};
    std::unique_ptr<AISetupSheet> m_setupSheet{};
    test::FakeUpdateServer m_updateServer{};
    std::unique_ptr<FeedSoftwareUpdater> m_updater{};
    std::unique_ptr<RootViewModel> m_rootViewModel{};
    std::unique_ptr<MainWindow> m_mainWindow{};
    std::unique_ptr<QQuickWindow> m_ownWindow{}; ///< That of the settings or of updates.
    QQuickWindow *m_window = nullptr;            ///< The one that is drawn.
};

} // namespace vantrel::screenshots
