// What the application tells the system's log while it is used.

#include "DesktopFixture.h"
#include "OwnProvider.h"
#include "persistence/KeychainStore.h"
#include "platform/keychain/SecretItems.h"

#include <QTcpSocket>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString key = u"sk-of-the-desktop-tests"_s;

/// A provider that answers as the sample does, but fails when it is asked for suggested questions,
/// and then says everything again that it was told.
class TalkativeProvider
{
public:
    [[nodiscard]] QString baseURL() const { return m_provider.baseURL(); }

    /// The request that failed, head and body.
    [[nodiscard]] const QByteArray &failedRequest() const { return m_failedRequest; }

private:
    void answer(QTcpSocket *socket, const QByteArray &whole, const sample::SampleQuestion &question)
    {
        if (!question.systemPrompt.startsWith("You suggest follow-up questions"_L1)) {
            OwnProvider::answerAsSample(socket, question);
            return;
        }
        m_failedRequest = whole;
        const QByteArray words = QByteArray(whole).replace("\r\n", " ");
        socket->write("HTTP/1.1 500 " + words.first(200) + "\r\n\r\n" + whole);
        socket->disconnectFromHost();
    }

    QByteArray m_failedRequest{};
    OwnProvider m_provider{
        [this](QTcpSocket *socket, const QByteArray &whole,
               const sample::SampleQuestion &question) { answer(socket, whole, question); }};
};

class Diagnostics : public DesktopFixture
{
protected:
    void SetUp() override
    {
        startKeyring();
        ASSERT_TRUE(keys().saveAPIKey(key, AIProvider::custom));
        writePreferences(m_provider.baseURL());
        start({makeDemoRepository(folder())}, QProcessEnvironment::systemEnvironment());
    }

    void TearDown() override
    {
        DesktopFixture::TearDown();
        EXPECT_TRUE(keys().deleteAPIKey(AIProvider::custom));
    }

    static KeychainStore keys() { return {keychainService(), systemSecretItems()}; }

    TalkativeProvider m_provider{};
};

TEST_F(Diagnostics, AFailedRefreshOfQuestionsIsLoggedWithoutKeyPromptOrCode)
{
    press(beginning(u"list item"_s, u"src/auth/token_store.cpp, "_s));
    press(named(u"push button"_s, u"What could break?"_s));

    // Nothing else: of all that was sent, and came back, no word is in the log.
    awaitErrors(
        "vantrel: SuggestedQuestions: Suggestion refresh failed; keeping the previous chips: "
        "The AI provider is having trouble (status 500). Try again shortly.\n");
    for (const QByteArray &sent : {key.toUtf8(), QByteArray("You suggest follow-up questions"),
                                   QByteArray("kRefreshTimeout")}) {
        EXPECT_TRUE(m_provider.failedRequest().contains(sent)) << sent.toStdString();
    }
}

} // namespace
} // namespace vantrel::test
