// What the application tells the system's log while it is used.

#include "DesktopFixture.h"
#include "HttpRequestParser.h"
#include "SampleAnswers.h"
#include "persistence/KeychainStore.h"
#include "platform/keychain/SecretItems.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpServer>
#include <QTcpSocket>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString key = u"sk-of-the-desktop-tests"_s;

/// A provider that answers as the sample does, but fails when it is asked for suggested questions,
/// and then says everything again that it was told.
class TalkativeProvider
{
public:
    TalkativeProvider()
    {
        EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
        QObject::connect(&m_server, &QTcpServer::newConnection, [this] { takeConnection(); });
    }

    [[nodiscard]] QString baseURL() const
    {
        return u"http://127.0.0.1:%1/v1"_s.arg(m_server.serverPort());
    }

    /// The request that failed, head and body.
    [[nodiscard]] const QByteArray &failedRequest() const { return m_failedRequest; }

private:
    void takeConnection()
    {
        QTcpSocket *const socket = m_server.nextPendingConnection();
        const auto received = std::make_shared<QByteArray>();
        QObject::connect(socket, &QTcpSocket::readyRead, [this, socket, received] {
            *received += socket->readAll();
            sample::HttpRequestParser parser;
            sample::ReceivedRequest request;
            parser.feed(*received);
            if (parser.next(request) == sample::HttpRequestParser::Outcome::complete) {
                socket->write(answer(*received, request.body));
                socket->disconnectFromHost();
            }
        });
    }

    QByteArray answer(const QByteArray &whole, const QByteArray &body)
    {
        const auto question = sample::readQuestion(body);
        if (question->systemPrompt.startsWith("You suggest follow-up questions"_L1)) {
            m_failedRequest = whole;
            const QByteArray words = QByteArray(whole).replace("\r\n", " ");
            return "HTTP/1.1 500 " + words.first(200) + "\r\n\r\n" + whole;
        }
        const QString part = question->isStreamed ? u"delta"_s : u"message"_s;
        const QJsonObject choice{{part, QJsonObject{{u"content"_s, sample::answerTo(*question)}}}};
        const QByteArray reply = QJsonDocument(QJsonObject{{u"choices"_s, QJsonArray{choice}}})
                                     .toJson(QJsonDocument::Compact);
        return "HTTP/1.1 200 OK\r\n\r\n" +
               (question->isStreamed ? "data: " + reply + "\n\ndata: [DONE]\n\n" : reply);
    }

    QTcpServer m_server{};
    QByteArray m_failedRequest{};
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
