#include "platform/http/NetworkHttpLoader.h"

#include "platform/jobs/FirstOf.h"
#include "platform/jobs/WaiterList.h"

#include <QHostAddress>
#include <QIODevice>
#include <QNetworkAccessManager>
#include <QNetworkProxyFactory>
#include <QNetworkReply>
#include <QNetworkRequest>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <fcntl.h>
#include <optional>
#include <unistd.h>
#include <utility>
#include <variant>

namespace vantrel {

using namespace Qt::Literals::StringLiterals;

namespace {

/// What a slow reader of a fast body keeps in memory at most; beyond it the server has to wait.
constexpr qint64 readBufferBytes = 1 << 20;

/// Hands out proxies that are known already.
class KnownProxies final : public QNetworkProxyFactory
{
public:
    explicit KnownProxies(QList<QNetworkProxy> proxies)
        : m_proxies(std::move(proxies))
    {}

    QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery &) override { return m_proxies; }

private:
    QList<QNetworkProxy> m_proxies{};
};

bool isThisMachine(const QUrl &url)
{
    return url.host() == "localhost"_L1 || QHostAddress(url.host()).isLoopback();
}

/// The body of a request, which can be read but once, so that the request can be sent but once. Qt
/// by itself sends it again, up to three times, when its connection closes before the answer, and
/// even behind an answer that ends with its connection. A request that costs money, or whose code
/// is good for one use, must not be repeated.
class OnceReadableBody final : public QIODevice
{
public:
    OnceReadableBody(QByteArray bytes, QObject *parent)
        : QIODevice(parent)
        , m_bytes(std::move(bytes))
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    [[nodiscard]] qint64 size() const override { return m_bytes.size(); }
    bool reset() override { return false; }

protected:
    qint64 readData(char *data, qint64 maxSize) override
    {
        const qint64 count = std::min(maxSize, m_bytes.size() - pos());
        std::copy_n(m_bytes.cbegin() + pos(), count, data);
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_bytes{};
};

/// Whether Qt reports no more with this error than that the answer has this status.
bool isErrorOfStatus(QNetworkReply::NetworkError error, int status)
{
    constexpr int firstErrorStatus = 400;
    const bool isContentError =
        error >= QNetworkReply::ContentAccessDenied && error < QNetworkReply::ProtocolUnknownError;
    return status >= firstErrorStatus &&
           (isContentError || error >= QNetworkReply::InternalServerError ||
            error == QNetworkReply::ProtocolInvalidOperationError ||
            error == QNetworkReply::ProxyAuthenticationRequiredError);
}

/// Begins a request; `network` owns everything.
QNetworkReply *send(QNetworkAccessManager &network, const QNetworkRequest &head,
                    const HttpRequest &request)
{
    auto *const body = new OnceReadableBody(request.body, &network);
    return network.sendCustomRequest(head, request.method, body);
}

/// A running request. Destroying it closes its connection.
///
/// It has a network manager of its own: the manager's pool would otherwise keep a connection that
/// was still being made, or that the server leaves open, beyond the request that it was made for.
class Reply
{
public:
    Reply(const QNetworkRequest &head, const HttpRequest &request, QList<QNetworkProxy> proxies)
    {
        m_network.setProxyFactory(new KnownProxies(std::move(proxies))); // The manager owns it.
        m_reply = send(m_network, head, request);
        // Qt forgets a limit that is set before it has begun to send, which it does in its own
        // time.
        QObject::connect(m_reply, &QNetworkReply::metaDataChanged,
                         [this] { m_reply->setReadBufferSize(readBufferBytes); });
        const auto wake = [this] { m_changed.wakeAll(); };
        QObject::connect(m_reply, &QNetworkReply::uploadProgress, wake);
        QObject::connect(m_reply, &QNetworkReply::metaDataChanged, wake);
        QObject::connect(m_reply, &QNetworkReply::readyRead, wake);
        QObject::connect(m_reply, &QNetworkReply::finished, wake);
    }
    Reply(const Reply &) = delete;
    Reply &operator=(const Reply &) = delete;
    ~Reply() { m_reply->disconnect(); }

    [[nodiscard]] std::optional<int> status() const
    {
        const QVariant status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute);
        return status.isValid() ? std::optional(status.toInt()) : std::nullopt;
    }
    [[nodiscard]] QByteArray location() const { return m_reply->rawHeader("Location"); }
    [[nodiscard]] bool isFinished() const { return m_reply->isFinished(); }
    [[nodiscard]] QByteArray takeBytes() { return m_reply->readAll(); }

    /// Why the connection failed. A status of 400 and above is an answer, not a failure.
    [[nodiscard]] std::optional<PlatformError> transportFailure() const
    {
        const QNetworkReply::NetworkError error = m_reply->error();
        if (error == QNetworkReply::ContentReSendError) {
            return isAnsweredWithoutResending()
                       ? std::nullopt
                       : std::optional(PlatformError{u"Connection closed"_s});
        }
        if (error == QNetworkReply::NoError || isErrorOfStatus(error, status().value_or(-1))) {
            return std::nullopt;
        }
        return PlatformError{m_reply->errorString()};
    }

    Task<std::monostate> changed()
    {
        co_await m_changed.wait();
        co_return std::monostate();
    }

private:
    /// Whether Qt wanted to send the request again without need: it rewinds the body for a redirect
    /// that it does not follow, and takes a close that ends a body for a connection that was lost.
    [[nodiscard]] bool isAnsweredWithoutResending() const
    {
        constexpr int firstRedirect = 300;
        const bool endsWithConnection =
            !m_reply->hasRawHeader("Content-Length") && !m_reply->hasRawHeader("Transfer-Encoding");
        const int answered = status().value_or(-1);
        return answered >= firstRedirect || (answered >= 0 && endsWithConnection);
    }

    WaiterList m_changed;
    QNetworkAccessManager m_network;
    QNetworkReply *m_reply = nullptr; ///< The manager owns it.
};

/// More than a request ever has open: its thread's event loop, its socket, and the files that a
/// look up of a name or of certificates reads.
constexpr std::size_t descriptorsOfRequest = 16;

/// Whether this process can open as many files as a request needs. Qt ends the whole process when
/// the thread of a request cannot have its event loop.
bool hasDescriptorsForRequest()
{
    std::array<int, descriptorsOfRequest> taken{};
    std::generate(taken.begin(), taken.end(), [] { return ::open("/", O_RDONLY | O_CLOEXEC); });
    bool hasAll = true;
    for (const int descriptor : taken) {
        hasAll = hasAll && descriptor >= 0;
        if (descriptor >= 0) {
            ::close(descriptor);
        }
    }
    return hasAll;
}

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
        QByteArray bytes = reply->takeBytes();
        if (!bytes.isEmpty()) {
            HttpBody::Item item = std::move(bytes);
            co_yield std::move(item);
        } else if (reply->isFinished()) {
            break;
        } else {
            const bool isAlive = co_await hasNews(reply, clock, timeout);
            if (!isAlive) {
                reply.reset();
                HttpBody::Item silenceError = failure(timedOut());
                co_yield std::move(silenceError);
                co_return;
            }
        }
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
    , m_proxyWorker(SerialWorker::AtEnd::leave)
{}

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
    // Over HTTP/2 a slow reader would not hold the server back.
    networkRequest.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    // No later request can use the connection.
    networkRequest.setRawHeader("Connection", "close");
    networkRequest.setRawHeader("User-Agent", "Vantrel/" VANTREL_VERSION);
    for (const auto &[name, value] : std::as_const(request.headers)) {
        if (hasControlCharacter(name) || hasControlCharacter(value)) {
            PlatformError refusal{u"A header of the request holds a control character."_s};
            co_return failure(std::move(refusal));
        }
        networkRequest.setRawHeader(name, value);
    }

    QList<QNetworkProxy> proxies{QNetworkProxy(QNetworkProxy::NoProxy)};
    if (!isThisMachine(request.url)) {
        // The system may have to read its settings or even load a script to tell the proxy.
        auto lookUp = [url = request.url](const WorkControl &) {
            return QNetworkProxyFactory::systemProxyForQuery(QNetworkProxyQuery(url));
        };
        auto answer = m_proxyWorker.run(std::move(lookUp));
        auto race = firstOf(std::move(answer), silence(&m_clock, request.timeout));
        auto first = co_await race;
        auto *const found = std::get_if<0>(&first);
        if (found == nullptr) {
            co_return failure(timedOut());
        }
        proxies = std::move(*found);
    }

    if (!hasDescriptorsForRequest()) {
        PlatformError refusal{qt_error_string(EMFILE)};
        co_return failure(std::move(refusal));
    }
    const auto reply = std::make_shared<Reply>(networkRequest, request, proxies);
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
    HttpResponse response{reply->status().value_or(-1), readBody(reply, &m_clock, request.timeout),
                          reply->location()};
    co_return std::move(response);
}

} // namespace vantrel
