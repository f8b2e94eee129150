#include "support/ScriptedServer.h"

#include <gtest/gtest.h>

#include <QSslServer>
#include <QTcpSocket>
#include <QTimer>

#include <algorithm>
#include <optional>

#include <sys/socket.h>

namespace vantrel::test {

namespace {

/// What a socket may hold that the system has not taken yet: enough to keep the client busy.
constexpr qint64 maxUnsentBytes = 1 << 18;

/// Takes one whole request off the front of `received`; nothing while it is still arriving.
std::optional<ReceivedRequest> takeRequest(QByteArray &received)
{
    const QByteArray endOfHead = "\r\n\r\n";
    const qsizetype headLength = received.indexOf(endOfHead);
    if (headLength < 0) {
        return std::nullopt;
    }
    QList<QByteArray> lines = received.first(headLength).replace("\r\n", "\n").split('\n');
    const QList<QByteArray> requestLine = lines.takeFirst().split(' ');
    ReceivedRequest request;
    request.method = requestLine.value(0);
    request.target = requestLine.value(1);
    for (const QByteArray &line : std::as_const(lines)) {
        const qsizetype colon = line.indexOf(':');
        request.headers.emplaceBack(line.first(colon).toLower(), line.sliced(colon + 1).trimmed());
    }
    const qsizetype bodyStart = headLength + endOfHead.size();
    const qsizetype bodyLength = request.header("content-length").toLongLong();
    if (received.size() < bodyStart + bodyLength) {
        return std::nullopt;
    }
    request.body = received.sliced(bodyStart, bodyLength);
    received.remove(0, bodyStart + bodyLength);
    return request;
}

std::unique_ptr<QTcpServer> tlsServer(const QSslConfiguration &tls)
{
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(tls);
    return server;
}

} // namespace

ServerScript &ServerScript::send(QByteArray bytes)
{
    return sendRepeatedly(std::move(bytes), 1);
}

ServerScript &ServerScript::sendCutAt(const QByteArray &bytes, qsizetype position)
{
    return send(bytes.first(position)).send(bytes.sliced(position));
}

ServerScript &ServerScript::sendRepeatedly(QByteArray block, int count)
{
    m_steps.emplace_back(Send{std::move(block), count});
    return *this;
}

ServerScript &ServerScript::hold()
{
    m_steps.emplace_back(Hold{});
    return *this;
}

ServerScript &ServerScript::reset()
{
    m_steps.emplace_back(Reset{});
    return *this;
}

QByteArray ReceivedRequest::header(const QByteArray &name) const
{
    QByteArray value;
    for (const auto &[headerName, headerValue] : headers) {
        if (headerName == name) {
            EXPECT_TRUE(value.isNull()) << name.constData() << " came twice";
            value = headerValue;
        }
    }
    return value;
}

class ScriptedServer::Connection
{
public:
    Connection(ScriptedServer &server, std::unique_ptr<QTcpSocket> socket)
        : m_server(server)
        , m_socket(std::move(socket))
    {
        m_socket->setSocketOption(QAbstractSocket::LowDelayOption, 1);
        QObject::connect(m_socket.get(), &QTcpSocket::readyRead, [this] { read(); });
        QObject::connect(m_socket.get(), &QTcpSocket::bytesWritten, [this](qint64 count) {
            m_server.m_sentBytes += count;
            m_next.start(0);
        });
        m_next.setSingleShot(true);
        QObject::connect(&m_next, &QTimer::timeout, [this] { work(); });
    }
    Connection(const Connection &) = delete;
    Connection &operator=(const Connection &) = delete;
    ~Connection() { m_socket->disconnect(); }

    [[nodiscard]] bool isOpen() const
    {
        return m_socket->state() != QAbstractSocket::UnconnectedState;
    }

    [[nodiscard]] bool isHolding() const
    {
        return !m_script.m_steps.empty() &&
               std::holds_alternative<ServerScript::Hold>(m_script.m_steps.front());
    }

    void release()
    {
        if (isHolding()) {
            m_script.m_steps.pop_front();
            work();
        }
    }

private:
    void read()
    {
        m_received.append(m_socket->readAll());
        auto request = takeRequest(m_received);
        if (!request) {
            return;
        }
        EXPECT_FALSE(std::exchange(m_hasRequest, true)) << "a second request on one connection";
        if (m_server.m_scripts.empty()) {
            ADD_FAILURE() << "no script for the request " << request->target.constData();
        } else {
            m_script = std::move(m_server.m_scripts.front());
            m_server.m_scripts.pop_front();
        }
        m_server.m_requests.append(std::move(*request));
        work();
    }

    /// Takes the next step, once the system has taken what was written before.
    void work()
    {
        if (!m_hasRequest || isHolding() || !isOpen()) {
            return;
        }
        if (m_script.m_steps.empty()) {
            m_socket->disconnectFromHost();
        } else if (auto *const sending =
                       std::get_if<ServerScript::Send>(&m_script.m_steps.front())) {
            send(*sending);
        } else if (m_socket->bytesToWrite() == 0) {
            reset();
        }
    }

    void reset()
    {
        const linger none{1, 0};
        ::setsockopt(int(m_socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &none, sizeof none);
        m_socket->abort();
    }

    void send(ServerScript::Send &sending)
    {
        while (sending.count > 0 && m_socket->bytesToWrite() < maxUnsentBytes) {
            --sending.count;
            m_socket->write(sending.bytes);
        }
        m_socket->flush();
        // The next step is another turn of the event loop, so that each write is a packet.
        if (sending.count == 0) {
            m_script.m_steps.pop_front();
            m_next.start(0);
        }
    }

    ScriptedServer &m_server;
    std::unique_ptr<QTcpSocket> m_socket;
    QTimer m_next{};
    QByteArray m_received{};
    bool m_hasRequest = false;
    ServerScript m_script{};
};

ScriptedServer::ScriptedServer()
    : ScriptedServer(std::make_unique<QTcpServer>(), QStringLiteral("http"))
{}

ScriptedServer::ScriptedServer(const QSslConfiguration &tls)
    : ScriptedServer(tlsServer(tls), QStringLiteral("https"))
{}

ScriptedServer::ScriptedServer(std::unique_ptr<QTcpServer> server, QString scheme)
    : m_server(std::move(server))
    , m_scheme(std::move(scheme))
{
    QObject::connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, m_server.get(),
                     [this] { accept(); });
    EXPECT_TRUE(m_server->listen(QHostAddress::LocalHost)) << qPrintable(m_server->errorString());
}

ScriptedServer::~ScriptedServer() = default;

void ScriptedServer::release()
{
    for (const auto &connection : m_connections) {
        connection->release();
    }
}

QUrl ScriptedServer::url(const QString &path) const
{
    QUrl url;
    url.setScheme(m_scheme);
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(port());
    url.setPath(path);
    return url;
}

std::size_t ScriptedServer::openConnectionCount() const
{
    return std::size_t(std::count_if(m_connections.begin(), m_connections.end(),
                                     [](const auto &connection) { return connection->isOpen(); }));
}

std::size_t ScriptedServer::holdingCount() const
{
    return std::size_t(
        std::count_if(m_connections.begin(), m_connections.end(),
                      [](const auto &connection) { return connection->isHolding(); }));
}

void ScriptedServer::accept()
{
    while (QTcpSocket *const socket = m_server->nextPendingConnection()) {
        socket->setParent(nullptr); // The connection owns it.
        m_connections.push_back(
            std::make_unique<Connection>(*this, std::unique_ptr<QTcpSocket>(socket)));
    }
}

QByteArray httpAnswer(int status, const QByteArray &body, const QByteArray &headers)
{
    const QByteArray length = "Content-Length: " + QByteArray::number(body.size()) + "\r\n";
    return httpHead(status, length + headers) + body;
}

QByteArray httpHead(int status, const QByteArray &headers)
{
    return "HTTP/1.1 " + QByteArray::number(status) + " Text\r\n" + headers + "\r\n";
}

} // namespace vantrel::test
