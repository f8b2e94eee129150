#include "onboarding/LoopbackListener.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/socket.h>
#include <system_error>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

constexpr qsizetype maxHeadBytes = 65'536;
constexpr qint64 maxDrainedBytes = 1 << 20;
constexpr int acceptPauseMs = 100;

bool isTemporary(int error)
{
    return error == EAGAIN || error == EWOULDBLOCK || error == EINTR;
}

/// One connection: receives a request, answers it, and lets the peer close.
class Connection
{
public:
    explicit Connection(Descriptor socket)
        : m_socket(std::move(socket))
    {}

    [[nodiscard]] int descriptor() const { return m_socket.value(); }
    [[nodiscard]] bool isOver() const { return m_isOver; }

    [[nodiscard]] short awaitedEvents() const
    {
        const int reading = m_isPeerDone ? 0 : POLLIN;
        return short(m_unsent.isEmpty() ? reading : reading | POLLOUT);
    }

    /// Does what can be done without waiting; gives the outcome that a request brought.
    std::optional<CallbackOutcome> serve(const QString &callbackPath)
    {
        std::optional<CallbackOutcome> outcome;
        if (!m_isPeerDone) {
            const QByteArray received = receive();
            if (!m_isAnswered) {
                outcome = readRequest(received, callbackPath);
            }
        }
        send();
        // Closing while there is something unread would take the answer away from the peer.
        m_isOver = m_isOver || (m_isAnswered && m_unsent.isEmpty() &&
                                (m_isPeerDone || m_drainedBytes > maxDrainedBytes));
        return outcome;
    }

private:
    QByteArray receive()
    {
        QByteArray bytes(m_isAnswered ? maxHeadBytes : maxHeadBytes - m_head.size(),
                         Qt::Uninitialized);
        const ssize_t count = ::recv(m_socket.value(), bytes.data(), std::size_t(bytes.size()), 0);
        m_isPeerDone = count == 0 || (count < 0 && !isTemporary(errno));
        bytes.truncate(std::max<ssize_t>(count, 0));
        m_drainedBytes += m_isAnswered ? bytes.size() : 0;
        return bytes;
    }

    std::optional<CallbackOutcome> readRequest(const QByteArray &received,
                                               const QString &callbackPath)
    {
        const qsizetype searchFrom = std::max<qsizetype>(0, m_head.size() - endOfHead.size() + 1);
        m_head.append(received);
        const bool isWhole = m_head.indexOf(endOfHead, searchFrom) >= 0;
        if (!isWhole && !m_isPeerDone && m_head.size() < maxHeadBytes) {
            return std::nullopt;
        }
        CallbackAnswer answer;
        const auto request = isWhole ? parseCallbackRequest(m_head) : std::nullopt;
        if (request) {
            answer = answerTo(*request, callbackPath);
        } else {
            answer.page = CallbackPage::badRequest;
        }
        m_isAnswered = true;
        m_head.clear();
        m_unsent = responseBytes(answer.page);
        return std::move(answer.outcome);
    }

    void send()
    {
        if (m_unsent.isEmpty()) {
            return;
        }
        const ssize_t count =
            ::send(m_socket.value(), m_unsent.data(), std::size_t(m_unsent.size()), 0);
        if (count < 0) {
            m_isOver = !isTemporary(errno);
            return;
        }
        m_unsent = m_unsent.sliced(count);
        if (m_unsent.isEmpty()) {
            ::shutdown(m_socket.value(), SHUT_WR);
        }
    }

    Descriptor m_socket;
    QByteArray m_head{};       ///< What has come of the request.
    QByteArrayView m_unsent{}; ///< What the peer has not been sent of its answer.
    qint64 m_drainedBytes = 0; ///< What it sent behind its request.
    bool m_isAnswered = false;
    bool m_isPeerDone = false; ///< It will send no more.
    bool m_isOver = false;
};

/// What the listener's thread works on.
class Loop
{
public:
    Loop(Descriptor wake, LoopbackSockets sockets, QString callbackPath,
         LoopbackListener::Deliver deliver)
        : m_wake(std::move(wake))
        , m_sockets(std::move(sockets))
        , m_callbackPath(std::move(callbackPath))
        , m_deliver(std::move(deliver))
    {}

    void run()
    {
        // A peer that has gone is an error of `send`, not the end of the process.
        sigset_t brokenPipe{};
        sigemptyset(&brokenPipe);
        sigaddset(&brokenPipe, SIGPIPE);
        pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
        while (wait()) {
            serveConnections();
            m_isAcceptPaused = false;
            accept(m_sockets.ipv4);
            accept(m_sockets.ipv6);
        }
    }

private:
    /// Waits until there is something to do; false when the listener is to end.
    bool wait()
    {
        m_polled.clear();
        m_polled.push_back({m_wake.value(), POLLIN, 0});
        for (const Connection &connection : m_connections) {
            m_polled.push_back({connection.descriptor(), connection.awaitedEvents(), 0});
        }
        for (const Descriptor *listening : {&m_sockets.ipv4, &m_sockets.ipv6}) {
            if (listening->isOpen() && !m_isAcceptPaused) {
                m_polled.push_back({listening->value(), POLLIN, 0});
            }
        }
        while (::poll(m_polled.data(), nfds_t(m_polled.size()),
                      m_isAcceptPaused ? acceptPauseMs : -1) < 0) {
        }
        return m_polled.front().revents == 0;
    }

    void serveConnections()
    {
        for (std::size_t place = 0; place < m_connections.size(); ++place) {
            if (m_polled.at(place + 1).revents == 0) {
                continue;
            }
            auto outcome = m_connections.at(place).serve(m_callbackPath);
            if (outcome) {
                m_deliver(std::move(*outcome));
            }
        }
        std::erase_if(m_connections, [](const Connection &each) { return each.isOver(); });
    }

    void accept(const Descriptor &listening)
    {
        while (listening.isOpen()) {
            Descriptor socket(
                ::accept4(listening.value(), nullptr, nullptr, SOCK_CLOEXEC | SOCK_NONBLOCK));
            if (socket.isOpen()) {
                m_connections.emplace_back(std::move(socket));
            } else if (errno != ECONNABORTED && errno != EINTR) {
                // Without descriptors left the connection stays where it is, and asking for it at
                // once again would keep a processor busy.
                m_isAcceptPaused = m_isAcceptPaused || !isTemporary(errno);
                return;
            }
        }
    }

    Descriptor m_wake;
    LoopbackSockets m_sockets;
    QString m_callbackPath;
    LoopbackListener::Deliver m_deliver;
    std::vector<Connection> m_connections{};
    std::vector<pollfd> m_polled{}; ///< The wake, every connection, and what is listened on.
    bool m_isAcceptPaused = false;
};

} // namespace

LoopbackListener::LoopbackListener(Descriptor wake)
    : m_wake(std::move(wake))
{}

LoopbackListener::~LoopbackListener()
{
    m_wake = Descriptor();
    if (m_thread.joinable()) {
        m_thread.join();
    }
}

Result<std::unique_ptr<LoopbackListener>, PlatformError>
LoopbackListener::start(LoopbackSockets sockets, const QString &callbackPath, Deliver deliver)
{
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) {
        return failure(PlatformError{qt_error_string(errno)});
    }
    Descriptor wakeUp(ends.at(0));
    std::unique_ptr<LoopbackListener> listener(new LoopbackListener(Descriptor(ends.at(1))));
    auto loop = std::make_unique<Loop>(std::move(wakeUp), std::move(sockets), callbackPath,
                                       std::move(deliver));
    try {
        listener->m_thread = std::thread([loop = std::move(loop)] { loop->run(); });
    } catch (const std::system_error &error) {
        return failure(PlatformError{qt_error_string(error.code().value())});
    }
    return listener;
}

} // namespace vantrel
