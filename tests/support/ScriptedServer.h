#pragma once

#include <QByteArray>
#include <QList>
#include <QSslConfiguration>
#include <QString>
#include <QTcpServer>
#include <QUrl>

#include <cstdint>
#include <deque>
#include <memory>
#include <utility>
#include <variant>
#include <vector>

namespace vantrel::test {

/// What a server does once a request has arrived whole, step by step: `script.send(head).hold()`.
/// When the script is over, the server closes the connection.
class ServerScript
{
public:
    ServerScript &send(QByteArray bytes);

    /// Sends the bytes before and behind `position` in two writes.
    ServerScript &sendCutAt(const QByteArray &bytes, qsizetype position);

    /// Sends `block` `count` times, as fast as the client takes it.
    ServerScript &sendRepeatedly(QByteArray block, int count);

    /// Waits until the test calls `ScriptedServer::release()`.
    ServerScript &hold();

    /// Breaks the connection off, so that the client sees an error and no end.
    ServerScript &reset();

private:
    friend class ScriptedServer;

    struct Send
    {
        QByteArray bytes{};
        int count = 1;
    };
    struct Hold
    {};
    struct Reset
    {};
    using Step = std::variant<Send, Hold, Reset>;

    std::deque<Step> m_steps{};
};

/// A request as it arrived.
struct ReceivedRequest
{
    QByteArray method{};
    QByteArray target{};
    QList<std::pair<QByteArray, QByteArray>> headers{}; ///< Names in lower case, in order.
    QByteArray body{};

    /// The value of the only header of this lower-case name; null when it is missing.
    [[nodiscard]] QByteArray header(const QByteArray &name) const;
};

/// An HTTP server on 127.0.0.1 that does what the test wrote down: one script per request, in order
/// of arrival. A request without a script fails the test. It runs in the event loop of the test.
class ScriptedServer final
{
public:
    ScriptedServer();

    /// Speaks HTTP over TLS with the certificate and the key of this configuration.
    explicit ScriptedServer(const QSslConfiguration &tls);
    ScriptedServer(const ScriptedServer &) = delete;
    ScriptedServer &operator=(const ScriptedServer &) = delete;
    ~ScriptedServer();

    void answer(ServerScript script) { m_scripts.push_back(std::move(script)); }

    /// Lets every script go on that holds.
    void release();

    [[nodiscard]] QUrl url(const QString &path) const;
    [[nodiscard]] quint16 port() const { return m_server->serverPort(); }
    [[nodiscard]] const QList<ReceivedRequest> &requests() const { return m_requests; }

    /// All connections so far, and those that the client has not closed.
    [[nodiscard]] std::size_t connectionCount() const { return m_connections.size(); }
    [[nodiscard]] std::size_t openConnectionCount() const;

    /// How many scripts wait for `release()`.
    [[nodiscard]] std::size_t holdingCount() const;

    /// Bytes handed to the system, over all connections.
    [[nodiscard]] std::int64_t sentBytes() const { return m_sentBytes; }

private:
    class Connection;

    ScriptedServer(std::unique_ptr<QTcpServer> server, QString scheme);

    void accept();

    std::unique_ptr<QTcpServer> m_server;
    QString m_scheme;
    std::deque<ServerScript> m_scripts{};
    QList<ReceivedRequest> m_requests{};
    std::vector<std::unique_ptr<Connection>> m_connections{};
    std::int64_t m_sentBytes = 0;
};

/// A whole answer with a Content-Length. `headers`: whole lines, each with CR LF.
[[nodiscard]] QByteArray httpAnswer(int status, const QByteArray &body,
                                    const QByteArray &headers = {});

/// The head of an answer whose body ends with the connection.
[[nodiscard]] QByteArray httpHead(int status, const QByteArray &headers = {});

} // namespace vantrel::test
