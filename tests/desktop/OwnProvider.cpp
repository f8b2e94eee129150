#include "OwnProvider.h"

#include "HttpRequestParser.h"

#include <gtest/gtest.h>

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTcpSocket>

#include <memory>
#include <utility>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray reply(const QString &part, const QString &content)
{
    const QJsonObject choice{{part, QJsonObject{{u"content"_s, content}}}};
    return QJsonDocument(QJsonObject{{u"choices"_s, QJsonArray{choice}}})
        .toJson(QJsonDocument::Compact);
}

} // namespace

OwnProvider::OwnProvider(Answer answer)
    : m_answer(std::move(answer))
{
    EXPECT_TRUE(m_server.listen(QHostAddress::LocalHost));
    QObject::connect(&m_server, &QTcpServer::newConnection, [this] { takeConnection(); });
}

QString OwnProvider::baseURL() const
{
    return u"http://127.0.0.1:%1/v1"_s.arg(m_server.serverPort());
}

void OwnProvider::answerAsSample(QTcpSocket *socket, const sample::SampleQuestion &question)
{
    const QString words = sample::answerTo(question);
    socket->write("HTTP/1.1 200 OK\r\n\r\n" + (question.isStreamed
                                                   ? chunk(words) + "data: [DONE]\n\n"
                                                   : reply(u"message"_s, words)));
    socket->disconnectFromHost();
}

QByteArray OwnProvider::chunk(const QString &content)
{
    return "data: " + reply(u"delta"_s, content) + "\n\n";
}

void OwnProvider::takeConnection()
{
    QTcpSocket *const socket = m_server.nextPendingConnection();
    const auto received = std::make_shared<QByteArray>();
    QObject::connect(socket, &QTcpSocket::readyRead, [this, socket, received] {
        *received += socket->readAll();
        sample::HttpRequestParser parser;
        sample::ReceivedRequest request;
        parser.feed(*received);
        if (parser.next(request) == sample::HttpRequestParser::Outcome::complete) {
            m_answer(socket, *received, *sample::readQuestion(request.body));
        }
    });
}

} // namespace vantrel::test
