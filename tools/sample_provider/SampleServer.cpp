#include "SampleServer.h"

#include "SampleAnswers.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTcpSocket>
#include <QTimer>

#include <memory>

namespace vantrel::sample {

using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray toJson(const QJsonObject &object)
{
    return QJsonDocument(object).toJson(QJsonDocument::Compact);
}

QByteArray response(int status, const QByteArray &body)
{
    return "HTTP/1.1 " + QByteArray::number(status) +
           " Sample\r\nContent-Type: application/json\r\n" +
           "Content-Length: " + QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

QByteArray errorBody(const QString &message)
{
    return toJson({{u"error"_s, QJsonObject{{u"message"_s, message}}}});
}

QByteArray modelList()
{
    const QJsonObject model{{u"id"_s, u"sample"_s}, {u"object"_s, u"model"_s}};
    return toJson({{u"object"_s, u"list"_s}, {u"data"_s, QJsonArray{model}}});
}

QByteArray wholeReply(const QString &text)
{
    const QJsonObject message{{u"role"_s, u"assistant"_s}, {u"content"_s, text}};
    const QJsonObject choice{{u"index"_s, 0}, {u"message"_s, message}};
    return toJson({{u"object"_s, u"chat.completion"_s}, {u"choices"_s, QJsonArray{choice}}});
}

QByteArray chunk(const QJsonObject &delta)
{
    const QJsonObject choice{{u"index"_s, 0}, {u"delta"_s, delta}};
    const QJsonObject body{{u"object"_s, u"chat.completion.chunk"_s},
                           {u"choices"_s, QJsonArray{choice}}};
    return "data: " + toJson(body) + "\n\n";
}

/// The streamed form of an answer, word by word, as the events are sent.
QByteArrayList events(const QString &text)
{
    QByteArrayList all{": the sample provider\n\n", chunk({{u"role"_s, u"assistant"_s}})};
    static const QRegularExpression word(u"\\s*\\S+|\\s+$"_s);
    for (auto match = word.globalMatch(text); match.hasNext();) {
        all.append(chunk({{u"content"_s, match.next().captured()}}));
    }
    all.append("data: [DONE]\n\n");
    return all;
}

/// Sends the events one after another, and closes the connection behind the last.
class EventSender final : public QObject
{
public:
    EventSender(QTcpSocket *socket, const QByteArrayList &pending, int delayMs)
        : QObject(socket) // Ends with the connection.
        , m_socket(socket)
        , m_events(pending)
    {
        m_timer.setInterval(delayMs);
        connect(&m_timer, &QTimer::timeout, this, &EventSender::sendNext);
        m_socket->write("HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n"
                        "Connection: close\r\n\r\n");
        m_timer.start();
    }

private:
    void sendNext()
    {
        if (m_events.isEmpty()) {
            m_timer.stop();
            m_socket->disconnectFromHost();
            return;
        }
        m_socket->write(m_events.takeFirst());
    }

    QTcpSocket *m_socket;
    QByteArrayList m_events;
    QTimer m_timer;
};

} // namespace

SampleServer::SampleServer(Options options, QObject *parent)
    : QObject(parent)
    , m_options(std::move(options))
{
    connect(&m_ipv4, &QTcpServer::newConnection, this, [this] { takeConnections(m_ipv4); });
    connect(&m_ipv6, &QTcpServer::newConnection, this, [this] { takeConnections(m_ipv6); });
}

bool SampleServer::listen()
{
    if (!m_ipv4.listen(QHostAddress::LocalHost, m_options.port)) {
        return false;
    }
    m_ipv6.listen(QHostAddress::LocalHostIPv6, m_ipv4.serverPort());
    return true;
}

void SampleServer::takeConnections(QTcpServer &server)
{
    while (QTcpSocket *const socket = server.nextPendingConnection()) {
        const auto parser = std::make_shared<HttpRequestParser>();
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        connect(socket, &QTcpSocket::readyRead, this, [this, socket, parser] {
            parser->feed(socket->readAll());
            ReceivedRequest request;
            auto outcome = parser->next(request);
            for (; outcome == HttpRequestParser::Outcome::complete;
                 outcome = parser->next(request)) {
                answer(socket, request);
            }
            if (outcome == HttpRequestParser::Outcome::invalid) {
                socket->write(response(400, errorBody(u"This is no request."_s)));
                socket->disconnectFromHost();
            }
        });
    }
}

void SampleServer::answer(QTcpSocket *socket, const ReceivedRequest &request)
{
    log(request);
    if (m_options.status != 0) {
        socket->write(response(m_options.status, errorBody(u"The sample fails as told."_s)));
        return;
    }
    if (request.method == "GET" && request.path.endsWith("/models")) {
        socket->write(response(200, modelList()));
        return;
    }
    if (request.method != "POST" || !request.path.endsWith("/chat/completions")) {
        socket->write(response(404, errorBody(u"The sample knows no such path."_s)));
        return;
    }
    const auto question = readQuestion(request.body);
    if (!question) {
        socket->write(response(400, errorBody(u"The body is no chat-completions request."_s)));
        return;
    }
    const QString text = m_options.answer(*question);
    if (question->isStreamed) {
        new EventSender(socket, events(text), m_options.delayMs);
    } else {
        socket->write(response(200, wholeReply(text)));
    }
}

void SampleServer::log(const ReceivedRequest &request) const
{
    QFile file(m_options.logFile);
    if (m_options.logFile.isEmpty() || !file.open(QIODevice::Append)) {
        return;
    }
    const QJsonObject line{{u"method"_s, QString::fromUtf8(request.method)},
                           {u"path"_s, QString::fromUtf8(request.path)},
                           {u"hasAuthorization"_s, request.hasAuthorization},
                           {u"body"_s, QJsonDocument::fromJson(request.body).object()}};
    file.write(toJson(line) + '\n');
}

} // namespace vantrel::sample
