// A sign-in with a real browser: it opens the page of a scripted site, is sent back to the
// application's own listener, and the new key lies in a real keyring.

#include "ai/config/SettingsStore.h"
#include "onboarding/AISetupViewModel.h"
#include "onboarding/LocalModelServerDetector.h"
#include "onboarding/OpenRouterSignIn.h"
#include "persistence/APIKeyPresenceStore.h"
#include "persistence/KeySavingNotice.h"
#include "persistence/KeychainAccessNotice.h"
#include "persistence/KeychainStore.h"
#include "persistence/KeychainWorker.h"
#include "platform/NotificationCenter.h"
#include "platform/UserDefaults.h"
#include "platform/http/NetworkHttpLoader.h"
#include "platform/jobs/SystemClock.h"
#include "platform/keychain/SecretItems.h"
#include "support/ScriptedServer.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>
#include <QUrlQuery>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString keychainService = QStringLiteral("com.orbisk.apikeys.tests");

class SignInInBrowser : public testing::Test
{
protected:
    SignInInBrowser()
    {
        recordShownKeySavingNotice(m_defaults);
        m_notice.acknowledge();
    }

    ~SignInInBrowser() override
    {
        m_browser.kill();
        m_browser.waitForFinished();
    }

    /// Opens the page in a browser without windows, after telling the site what to answer to it.
    bool openURL(const QUrl &url)
    {
        m_asked = QUrlQuery(url);
        const QByteArray callback =
            m_asked.queryItemValue(u"callback_url"_s, QUrl::FullyDecoded).toUtf8();
        m_site.answer(ServerScript().send(
            httpAnswer(302, QByteArray(), "Location: " + callback + "?code=code-1\r\n")));
        m_site.answer(ServerScript().send(httpAnswer(200, R"({"key": " sk-or-v1-new\n"})")));
        m_browser.start(u"chromium"_s,
                        {u"--headless"_s, u"--no-sandbox"_s, u"--disable-gpu"_s,
                         u"--disable-quic"_s, u"--no-first-run"_s,
                         u"--disable-background-networking"_s, u"--disable-component-update"_s,
                         u"--disable-sync"_s, u"--user-data-dir="_s + m_folder.filePath(u"web"_s),
                         u"--dump-dom"_s, url.toString(QUrl::FullyEncoded)});
        return m_browser.waitForStarted();
    }

    static OpenRouterSignIn::Settings settings(const QUrl &site)
    {
        OpenRouterSignIn::Settings settings;
        settings.addresses = {site, site};
        return settings;
    }

    QTemporaryDir m_folder{};
    SystemClock m_clock{};
    UserDefaults m_defaults{m_folder.path()};
    SettingsStore m_settingsStore{m_defaults};
    NotificationCenter m_notificationCenter{};
    KeychainAccessNotice m_notice{m_defaults};
    APIKeyPresenceStore m_presence{m_defaults};
    KeychainWorker m_keychain{std::make_shared<KeychainStore>(keychainService, systemSecretItems()),
                              m_clock};
    NetworkHttpLoader m_session{m_clock};
    ScriptedServer m_site{};
    QProcess m_browser{};
    QUrlQuery m_asked{};
    OpenRouterSignIn m_signIn{m_session, m_clock, [this](const QUrl &url) { return openURL(url); },
                              settings(m_site.url(QString()))};
    LocalModelServerDetector m_detector{m_session, m_clock};
    AISetupViewModel m_setup{AISetupViewModel::Services{
        m_settingsStore, m_keychain, m_notice, m_presence, m_signIn, m_detector, m_defaults,
        m_notificationCenter, [] {}, [](const QUrl &) { return false; }}};
};

TEST_F(SignInInBrowser, BringsAKeyIntoTheKeyring)
{
    m_setup.startSignIn();
    spinUntil([this] { return m_setup.step() != AISetupViewModel::Step::signingIn; });

    EXPECT_EQ(m_setup.errorMessage(), QString());
    EXPECT_EQ(m_setup.readyMessage(), u"Ready: using Gemini 3.8 Flash via OpenRouter"_s);
    KeychainStore keyring(keychainService, systemSecretItems());
    EXPECT_EQ(keyring.apiKey(AIProvider::openRouter), u"sk-or-v1-new"_s);
    EXPECT_EQ(m_settingsStore.loadAIConfig().provider, AIProvider::openRouter);

    spinUntil([this] { return m_browser.state() == QProcess::NotRunning; });
    const QByteArray page = m_browser.readAllStandardOutput();
    EXPECT_TRUE(
        page.contains("<h1 style=\"font-size: 18px; color: #1E1B17\">Return to Vantrel</h1>"))
        << page.toStdString();

    ASSERT_EQ(m_site.requests().size(), 2);
    EXPECT_TRUE(m_site.requests().at(0).target.startsWith("/auth?callback_url="));
    const ReceivedRequest exchange = m_site.requests().at(1);
    EXPECT_EQ(exchange.target, "/api/v1/auth/keys");
    const QJsonObject sent = QJsonDocument::fromJson(exchange.body).object();
    EXPECT_EQ(sent.value(u"code"_s).toString(), u"code-1"_s);
    const QByteArray challenge =
        QCryptographicHash::hash(sent.value(u"code_verifier"_s).toString().toUtf8(),
                                 QCryptographicHash::Sha256)
            .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
    EXPECT_EQ(m_asked.queryItemValue(u"code_challenge"_s).toUtf8(), challenge);
    EXPECT_TRUE(exchange.header("authorization").isNull());
}

} // namespace
} // namespace vantrel::test
