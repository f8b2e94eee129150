#pragma once

#include "ai/config/AINotifications.h"
#include "ai/config/SettingsStore.h"
#include "onboarding/AISetupViewModel.h"
#include "persistence/APIKeyPresenceStore.h"
#include "persistence/KeychainAccessNotice.h"
#include "persistence/KeychainWorker.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "support/FakeKeychain.h"
#include "support/FakeLocalDetector.h"
#include "support/FakeSignIn.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <memory>

namespace vantrel::test {

/// The setup over a keychain in memory and real preferences. Neither explanation of the keychain
/// has been shown.
class AISetupViewModelTest : public testing::Test
{
protected:
    using Step = AISetupViewModel::Step;

    AISetupViewModelTest();
    ~AISetupViewModelTest() override { keychain->letGo(); }

    /// Made anew, as for another time that the sheet is shown.
    void makeSetup();

    void watch(void (AISetupViewModel::*signal)(), const QString &name);

    /// As if both explanations had been shown before.
    void rememberNotices();

    static void runUntilIdle();

    /// Until the keychain has answered.
    void waitForSave();

    /// What the keychain has been asked, once everything asked so far has been answered.
    QStringList keychainCalls();

    /// From the first page.
    void pasteKey(const QString &key);
    void signInWithKey(const QString &key);
    void detect(const LocalModelServerStatuses &statuses);

    /// With the keychain keeping its answer about this key to itself.
    void hangWhileSaving(const QString &key);

    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    SettingsStore store{defaults};
    ManualClock clock{};
    std::shared_ptr<FakeKeychain> keychain = std::make_shared<FakeKeychain>();
    KeychainWorker worker{keychain, clock};
    KeychainAccessNotice notice{defaults};
    APIKeyPresenceStore presence{defaults};
    FakeSignIn signIn{};
    FakeLocalDetector detector{};
    NotificationCenter notificationCenter{};
    int announcements = 0; ///< How often a changed configuration was announced.
    NotificationCenter::Token token =
        notificationCenter.observe(aiConfigurationDidChange, [this] { ++announcements; });
    int activations = 0;       ///< How often the application was brought to the front.
    QList<QUrl> openedPages{}; ///< In the browser.
    bool isBrowserThere = true;
    std::unique_ptr<AISetupViewModel> setup{};
    QStringList published{}; ///< Signals in their order.
};

} // namespace vantrel::test
