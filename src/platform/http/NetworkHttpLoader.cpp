#include "platform/http/NetworkHttpLoader.h"

#include "platform/jobs/FirstOf.h"
#include "platform/jobs/WaiterList.h"

#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QSslError>

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <variant>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a slow reader of a fast body keeps in memory at most; beyond it the server has to wait.
constexpr qint64 readBufferBytes = 1 << 20;

class ProxyFactory final : public QNetworkProxyFactory
{
public:
    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &query) override
    {
        const QString host = query.peerHostName();
        if (host == "localhost"_L1 || QHostAddress(host).isLoopback()) {
            return {QNetworkProxy(QNetworkProxy::NoProxy)};
        }
        return systemProxyForQuery(query);
    }
};

/// A running request. Destroying it closes its connection.
class Reply
{
public:
    explicit Reply(QNetworkReply *reply)
        : m_reply(reply)
    {
        const auto wake = [this] { m_changed.wakeAll(); };
        m_connections = {
            QObject::connect(reply, &QNetworkReply::metaDataChanged, wake),
            QObject::connect(reply, &QNetworkReply::readyRead, wake),
            QObject::connect(reply, &QNetworkReply::finished, wake),
        };
    }
    Reply(const Reply &) = delete;
    Reply &operator=(const Reply &) = delete;
    ~Reply()
    {
        for (const QMetaObject::Connection &connection : m_connections) {
            QObject::disconnect(connection);
        }
        m_reply->abort();
        m_reply->deleteLater();
    }

    [[nodiscard]] std::optional<int> status() const
    {
        const QVariant status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        return status.isValid() ? std::optional(status.toInt()) : std::nullopt;
    }
    [[nodiscard]] bool isFinished() const { return m_reply->isFinished(); }
    [[nodiscard]] bool hasBytes() const { return m_reply->bytesAvailable() > 0; }
    [[nodiscard]] QByteArray takeBytes() { return m_reply->readAll(); }

    /// Why the connection failed. A status of 400 and above is an answer, not a failure.
    [[nodiscard]] std::optional<PlatformError> transportFailure() const
    {
        const QNetworkReply::NetworkError error = m_reply->error();
        const bool isTransport = error != QNetworkReply::NoError &&
                                 (error < QNetworkReply::ContentAccessDenied ||
                                  error == QNetworkReply::ProtocolUnknownError ||
                                  error == QNetworkReply::ProtocolInvalidOperationError ||
                                  error == QNetworkReply::ProtocolFailure);
        return isTransport ? std::optional(PlatformError{m_reply->errorString()}) : std::nullopt;
    }

    Task<std::monostate> changed()
    {
        co_await m_changed.wait();
        co_return std::monostate();
    }

private:
    QNetworkReply *m_reply;
    WaiterList m_changed;
    std::array<QMetaObject::Connection, 3> m_connections;
};

Task<std::monostate> silence(Clock *clock, std::chrono::milliseconds timeout)
{
    co_await clock->sleep(timeout);
    co_return std::monostate();
}

/// Waits for news of the reply; false when it stays silent for too long.
Task<bool> hasNews(std::shared_ptr<Reply> reply, Clock *clock, std::chrono::milliseconds timeout)
{
    auto race = firstOf(reply->changed(), silence(clock, timeout));
    const auto first = co_await race;
    co_return first.index() == 0;
}

PlatformError timedOut()
{
    return PlatformError{u"The request timed out."_s};
}

HttpBody readBody(std::shared_ptr<Reply> reply, Clock *clock, std::chrono::milliseconds timeout)
{
    for (;;) {
        while (!reply->hasBytes() && !reply->isFinished()) {
            const bool isAlive = co_await hasNews(reply, clock, timeout);
            if (!isAlive) {
                HttpBody::Item silenceError = failure(timedOut());
                co_yield std::move(silenceError);
                co_return;
            }
        }
        if (!reply->hasBytes()) {
            break;
        }
        HttpBody::Item bytes = reply->takeBytes();
        co_yield std::move(bytes);
    }
    if (const auto error = reply->transportFailure()) {
        HttpBody::Item lost = failure(*error);
        co_yield std::move(lost);
    }
}

bool hasControlCharacter(const QByteArray &text)
{
    return std::any_of(text.cbegin(), text.cend(), [](char character) {
        return static_cast<unsigned char>(character) < 0x20 || character == 0x7f;
    });
}

} // namespace

NetworkHttpLoader::NetworkHttpLoader(Clock &clock)
    : m_clock(clock)
    , m_network(std::make_unique<QNetworkAccessManager>())
{
    m_network->setProxyFactory(new ProxyFactory); // The manager owns it.
}

NetworkHttpLoader::~NetworkHttpLoader() = default;

Task<Result<HttpResponse, PlatformError>> NetworkHttpLoader::load(HttpRequest request)
{
    QNetworkRequest networkRequest(request.url);
    networkRequest.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                                QNetworkRequest::ManualRedirectPolicy);
    networkRequest.setAttribute(QNetworkRequest::CookieLoadControlAttribute,
                                QNetworkRequest::Manual);
    networkRequest.setAttribute(QNetworkRequest::CookieSaveControlAttribute,
                                QNetworkRequest::Manual);
    networkRequest.setAttribute(QNetworkRequest::AuthenticationReuseAttribute,
                                QNetworkRequest::Manual);
    networkRequest.setRawHeader("User-Agent", "Vantrel/" VANTREL_VERSION);
    for (const auto &[name, value] : std::as_const(request.headers)) {
        if (hasControlCharacter(name) || hasControlCharacter(value)) {
            PlatformError refusal{u"A header of the request holds a control character."_s};
            co_return failure(std::move(refusal));
        }
        networkRequest.setRawHeader(name, value);
    }

    QNetworkReply *const networkReply =
        m_network->sendCustomRequest(networkRequest, request.method, request.body);
    networkReply->setReadBufferSize(readBufferBytes);
    const auto reply = std::make_shared<Reply>(networkReply);
    while (!reply->status() && !reply->isFinished()) {
        const bool isAlive = co_await hasNews(reply, &m_clock, request.timeout);
        if (!isAlive) {
            co_return failure(timedOut());
        }
    }
    if (!reply->status()) {
        if (const auto error = reply->transportFailure()) {
            co_return failure(*error);
        }
    }
    HttpResponse response{reply->status().value_or(-1), readBody(reply, &m_clock, request.timeout)};
    co_return std::move(response);
}

} // namespace vantrel
