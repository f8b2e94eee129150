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
#include <sys/socket.h>

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

const QByteArray eventsHead = "HTTP/1.1 200 OK\r\nContent-Type: text/event-stream\r\n"
                              "Connection: close\r\n\r\n";

constexpr qsizetype hugeCharacters = qsizetype(3) * 1024 * 1024;
constexpr int charactersPerHugePart = 16 * 1024;
constexpr int slowPartMs = 700;

/// The parts of an answer: words, or large pieces of what would be too many words.
QStringList partsOf(const QString &text)
{
    static const QRegularExpression word(u"\\s*\\S+|\\s+$"_s);
    static const QRegularExpression piece(
        u"(?s).{1,%1}"_s.arg(charactersPerHugePart)); // The dot takes line ends, too.
    QStringList parts;
    for (auto match = (text.size() < hugeCharacters ? word : piece).globalMatch(text);
         match.hasNext();) {
        parts.append(match.next().captured());
    }
    return parts;
}

/// The streamed form of an answer as the events are sent, below the head of the response.
QByteArrayList events(const QString &text)
{
    QByteArrayList all{eventsHead, ": the sample provider\n\n",
                       chunk({{u"role"_s, u"assistant"_s}})};
    for (const QString &part : partsOf(text)) {
        all.append(chunk({{u"content"_s, part}}));
    }
    all.append("data: [DONE]\n\n");
    return all;
}

/// What is sent, one part after another, and what then becomes of the connection.
struct Answer
{
    enum class End { keep, close, reset };

    QByteArrayList parts{};
    End end = End::keep;
    int delayMs = 0; ///< Before each part but the first.
};

/// Lets the peer see a reset, as of a program that crashed, where a plain end would be good HTTP.
void reset(QTcpSocket *socket)
{
    socket->flush();
    const linger atOnce{1, 0};
    ::setsockopt(int(socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof(atOnce));
    socket->abort();
}

/// Sends an answer.
class AnswerSender final : public QObject
{
public:
    AnswerSender(QTcpSocket *socket, const Answer &answer)
        : QObject(socket) // Ends with the connection.
        , m_socket(socket)
        , m_answer(answer)
    {
        m_timer.setInterval(m_answer.delayMs);
        connect(&m_timer, &QTimer::timeout, this, &AnswerSender::sendNext);
        m_timer.start();
        sendNext();
    }

private:
    void sendNext()
    {
        if (!m_answer.parts.isEmpty()) {
            m_socket->write(m_answer.parts.takeFirst());
            return;
        }
        m_timer.stop();
        switch (m_answer.end) {
        case Answer::End::keep:
            deleteLater();
            return;
        case Answer::End::close:
            m_socket->disconnectFromHost();
            return;
        case Answer::End::reset:
            reset(m_socket);
            return;
        }
    }

    QTcpSocket *m_socket;
    Answer m_answer;
    QTimer m_timer;
};

/// The answer to a question as a provider in order gives it.
Answer goodAnswer(const QString &text, bool isStreamed, int delayMs)
{
    return isStreamed ? Answer{events(text), Answer::End::close, delayMs}
                      : Answer{{response(200, wholeReply(text))}};
}

/// Whatever was asked, until the answer has some megabytes.
QString hugeText(const QString &text)
{
    return (text + u"\n\n"_s).repeated(hugeCharacters / (text.size() + 2) + 1);
}

/// What the fault makes of the good answer.
Answer withFault(Fault fault, const Answer &good)
{
    const QByteArray bytes = good.parts.join();
    const qsizetype third = bytes.size() / 3;
    switch (fault) {
    case Fault::none:
    case Fault::huge:
        return good;
    case Fault::slow:
        return {{bytes.first(third), bytes.sliced(third, third), bytes.sliced(2 * third)},
                good.end,
                slowPartMs};
    case Fault::silent:
        return {};
    case Fault::resetBeforeHead:
        return {{}, Answer::End::reset};
    case Fault::resetInAnswer:
        return {{bytes.first(third)}, Answer::End::reset};
    case Fault::noHttp:
        return {{"220 mail.example.com\r\n\r\n\xff\xfe"}, Answer::End::close};
    case Fault::brokenBody:
        return {{good.end == Answer::End::close
                     ? eventsHead + "data: {\"choices\": [\n\ndata\n\n\xff\xfe\n\n"
                     : response(200, "{\"choices\": [{\"message\"")},
                Answer::End::close};
    case Fault::tooManyRequests:
        return {{response(429, errorBody(u"The sample has had enough."_s))}};
    case Fault::serverError:
        return {{response(500, errorBody(u"The sample fails by chance."_s))}};
    }
    Q_UNREACHABLE();
}

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
    const Fault fault = m_options.faults ? m_options.faults->next() : Fault::none;
    log(request, fault);
    if (m_options.status != 0) {
        socket->write(response(m_options.status, errorBody(u"The sample fails as told."_s)));
        return;
    }
    const bool isList = request.method == "GET" && request.path.endsWith("/models");
    if (!isList && (request.method != "POST" || !request.path.endsWith("/chat/completions"))) {
        socket->write(response(404, errorBody(u"The sample knows no such path."_s)));
        return;
    }
    Answer good{{response(200, modelList())}};
    if (!isList) {
        const auto question = readQuestion(request.body);
        if (!question) {
            socket->write(response(400, errorBody(u"The body is no chat-completions request."_s)));
            return;
        }
        const QString text = m_options.answer(*question);
        good = goodAnswer(fault == Fault::huge ? hugeText(text) : text, question->isStreamed,
                          m_options.delayMs);
    }
    new AnswerSender(socket, withFault(fault, good));
}

void SampleServer::log(const ReceivedRequest &request, Fault fault) const
{
    QFile file(m_options.logFile);
    if (m_options.logFile.isEmpty() || !file.open(QIODevice::Append)) {
        return;
    }
    QJsonObject line{{u"method"_s, QString::fromUtf8(request.method)},
                     {u"path"_s, QString::fromUtf8(request.path)},
                     {u"hasAuthorization"_s, request.hasAuthorization},
                     {u"body"_s, QJsonDocument::fromJson(request.body).object()}};
    if (m_options.faults) {
        line.insert(u"fault"_s, faultName(fault));
    }
    file.write(toJson(line) + '\n');
}

} // namespace vantrel::sample
