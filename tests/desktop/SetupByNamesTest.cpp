// A newcomer's three ways to a provider, by what a screen reader reads out.

#include "DesktopFixture.h"
#include "Keyboard.h"
#include "ai/config/SettingsStore.h"
#include "persistence/KeychainStore.h"
#include "platform/UserDefaults.h"
#include "platform/keychain/SecretItems.h"
#include "support/ScriptedServer.h"

#include <QDir>
#include <QFile>
#include <QTcpServer>
#include <QTcpSocket>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// In place of the desktop's program that opens pages: a person who approves at once.
const QByteArray approvingBrowser = R"(#!/usr/bin/env python3
import sys, urllib.parse, urllib.request
asked = urllib.parse.parse_qs(urllib.parse.urlsplit(sys.argv[1]).query)
urllib.request.urlopen(asked['callback_url'][0] + '?code=code-1').read()
)";

class SetupByNames : public DesktopFixture
{
protected:
    void SetUp() override
    {
        startKeyring();
        writeBrowser();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"PATH"_s, folder() + u"/bin:"_s + environment.value(u"PATH"_s));
        environment.insert(u"VANTREL_OPENROUTER_ADDRESS"_s, m_site.url(QString()).toString());
        start({}, environment);
    }

    void confirmKeychainNotice()
    {
        await({named(u"dialog"_s, u"Your API Key Is Stored in the Keychain"_s)});
        press(named(u"push button"_s, u"Continue"_s));
    }

    void finish(const QString &readyMessage)
    {
        await({named(u"heading"_s, readyMessage)});
        press(named(u"push button"_s, u"Done"_s));
        await({named(u"push button"_s, u"Choose Folder…"_s)});
    }

    [[nodiscard]] static std::optional<QString> savedKey(AIProvider provider)
    {
        return KeychainStore(keychainService(), systemSecretItems()).apiKey(provider);
    }

    [[nodiscard]] AIProviderConfig savedConfig() const
    {
        UserDefaults defaults(folder() + u"/com.orbisk.app"_s);
        return SettingsStore(defaults).loadAIConfig();
    }

    ScriptedServer m_site{};

private:
    void writeBrowser()
    {
        QDir(folder()).mkdir(u"bin"_s);
        QFile browser(folder() + u"/bin/xdg-open"_s);
        ASSERT_TRUE(browser.open(QIODevice::WriteOnly));
        browser.write(approvingBrowser);
        browser.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
};

TEST_F(SetupByNames, SigningInBringsAKeyOfItsOwn)
{
    m_site.answer(ServerScript().send(httpAnswer(200, R"({"key": "sk-or-v1-new"})")));
    press(named(u"push button"_s, u"Sign in with OpenRouter"_s));
    confirmKeychainNotice();
    finish(u"Ready: using Gemini 3.8 Flash via OpenRouter"_s);

    EXPECT_EQ(savedKey(AIProvider::openRouter), u"sk-or-v1-new"_s);
    EXPECT_EQ(savedConfig().provider, AIProvider::openRouter);
}

TEST_F(SetupByNames, AKeyIsPastedByTheKeyboard)
{
    press(named(u"push button"_s, u"Paste an API Key"_s));
    await({named(u"dialog"_s, u"Paste an API Key"_s)});
    press(named(u"radio button"_s, u"OpenAI"_s));
    await({named(u"link"_s, u"Get an OpenAI key"_s)});
    activateWindow(u"Reviewer"_s);
    typeText(u"sk-pasted"_s);
    pressKey(u"Return"_s);
    confirmKeychainNotice();
    finish(u"Ready: using GPT-6 Luna via OpenAI"_s);

    EXPECT_EQ(savedKey(AIProvider::openAI), u"sk-pasted"_s);
    EXPECT_EQ(savedConfig().provider, AIProvider::openAI);
}

TEST_F(SetupByNames, TheSettingsOpenItAgain)
{
    press(named(u"push button"_s, u"Not Now"_s));
    await({focused(named(u"push button"_s, u"Choose Folder…"_s))});

    pressKey(u"ctrl+comma"_s);
    await(
        {named(u"frame"_s, u"Settings"_s), named(u"dialog"_s, u"Vantrel Needs Keychain Access"_s)});
    press(named(u"push button"_s, u"Continue"_s));
    press(named(u"push button"_s, u"Run Setup…"_s));
    await({named(u"dialog"_s, u"Set Up AI"_s)});
    activateWindow(u"Reviewer"_s);
    pressKey(u"Escape"_s);
    await({named(u"push button"_s, u"Choose Folder…"_s)});
}

TEST_F(SetupByNames, AModelOfThisMachineNeedsNoKey)
{
    QTcpServer ollama;
    if (!ollama.listen(QHostAddress::LocalHost, 11'434)) {
        GTEST_SKIP() << "a program of this machine listens where the model server would";
    }
    QObject::connect(&ollama, &QTcpServer::newConnection, [&ollama] {
        QTcpSocket *const peer = ollama.nextPendingConnection();
        QObject::connect(peer, &QTcpSocket::readyRead, [peer] {
            if (peer->readAll().endsWith("\r\n\r\n")) {
                peer->write(httpAnswer(200, R"({"data": [{"id": "llama3"}, {"id": "qwen3"}]})"));
                peer->disconnectFromHost();
            }
        });
    });
    press(named(u"push button"_s, u"Use a Local Model"_s));
    await({named(u"radio button"_s, u"Ollama"_s), named(u"link"_s, u"Get LM Studio"_s)});
    press(named(u"push button"_s, u"Use This Model"_s));
    finish(u"Ready: using llama3 via Ollama"_s);

    EXPECT_EQ(savedConfig(),
              (AIProviderConfig{AIProvider::custom, u"http://localhost:11434/v1"_s, u"llama3"_s}));
    EXPECT_EQ(savedKey(AIProvider::custom), std::nullopt);
}

} // namespace
} // namespace vantrel::test
