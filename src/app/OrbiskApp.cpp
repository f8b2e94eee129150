#include "app/OrbiskApp.h"

#include "app/SoftwareUpdateSetup.h"
#include "persistence/KeychainStore.h"
#include "platform/keychain/SecretItems.h"
#include "updates/BundleInformation.h"

#include <QStandardPaths>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype maxRecentRepos = 10;

OpenRouterSignIn::Settings signInSettings(const OrbiskApp::Places &places)
{
    OpenRouterSignIn::Settings settings;
    settings.addresses = places.openRouter;
    return settings;
}

} // namespace

OrbiskApp::Places OrbiskApp::standardPlaces()
{
    Places places;
    places.preferencesFolder = UserDefaults::standardFolder();
    places.keychainService = u"com.orbisk.apikeys"_s;
    places.updatesFolder = QStandardPaths::writableLocation(QStandardPaths::GenericCacheLocation) +
                           u"/com.orbisk.app/updates"_s;
    places.bundleInformation = mainBundleInformation();
    return places;
}

OrbiskApp::OrbiskApp(const Places &places)
    : OrbiskApp(places, Desktop())
{}

OrbiskApp::OrbiskApp(const Places &places, const Desktop &desktop)
    : m_userDefaults(places.preferencesFolder)
    , m_session(m_clock)
    , m_repositoryGuard(std::make_shared<RepositoryGuard>())
    , m_gitService(*m_repositoryGuard, m_fileReader)
    , m_gitWorker(m_gitService)
    , m_recentReposStore(
          std::make_shared<RecentReposStore>(m_userDefaults, u"recentRepos"_s, maxRecentRepos))
    , m_settingsStore(m_userDefaults)
    , m_keychainStore(std::make_shared<KeychainStore>(places.keychainService, systemSecretItems()),
                      m_clock)
    , m_aiService(m_session, m_settingsStore, m_keychainStore, m_notificationCenter)
    , m_aiWorker(m_aiService)
    , m_chatHistoryStore(m_userDefaults)
    , m_keychainAccessNotice(m_userDefaults)
    , m_appearanceController(m_settingsStore)
    , m_keyPresenceStore(m_userDefaults)
    , m_settingsViewModel(SettingsViewModel::Services{
          m_settingsStore, m_keychainStore, m_keychainAccessNotice, m_appearanceController,
          m_keyPresenceStore, m_userDefaults, m_notificationCenter})
    , m_continuousClock(m_clock)
    , m_signIn(m_session, m_continuousClock, desktop.openURL, signInSettings(places))
    , m_localDetector(m_session, m_clock)
    , m_setupPresenter(AISetupPresenter::Services{m_settingsStore, m_keyPresenceStore,
                                                  m_setupSession, m_notificationCenter})
    , m_setupSheet(m_setupPresenter,
                   AISetupViewModel::Services{m_settingsStore, m_keychainStore,
                                              m_keychainAccessNotice, m_keyPresenceStore, m_signIn,
                                              m_localDetector, m_userDefaults, m_notificationCenter,
                                              desktop.activateApp, desktop.openURL})
    , m_softwareUpdater(SoftwareUpdateSetup::makeUpdater(places.bundleInformation, m_session,
                                                         places.updatesFolder, desktop.openURL))
    , m_rootViewModel(ReviewServices{m_gitWorker, m_aiWorker, m_keychainAccessNotice,
                                     m_chatHistoryStore, m_coordinator, m_notificationCenter},
                      m_recentReposStore, m_repositoryGuard, m_settingsViewModel, m_setupSheet,
                      m_softwareUpdater.get())
{}

OrbiskApp::~OrbiskApp() = default;

} // namespace vantrel
