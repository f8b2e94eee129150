#include "onboarding/LoopbackClient.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>

namespace vantrel::test {

namespace {

int connectTo(int socket, quint16 port, LoopbackFamily family)
{
    if (family == LoopbackFamily::ipv4) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    }
    sockaddr_in6 address{};
    address.sin6_family = AF_INET6;
    address.sin6_port = htons(port);
    address.sin6_addr = in6addr_loopback;
    return ::connect(socket, reinterpret_cast<const sockaddr *>(&address), sizeof address);
}

} // namespace

LoopbackClient::LoopbackClient(quint16 port, LoopbackFamily family)
    : m_socket(::socket(family == LoopbackFamily::ipv4 ? AF_INET : AF_INET6,
                        SOCK_STREAM | SOCK_CLOEXEC, 0))
{
    constexpr timeval limit{60, 0};
    ::setsockopt(m_socket.value(), SOL_SOCKET, SO_RCVTIMEO, &limit, sizeof limit);
    constexpr int isOn = 1;
    ::setsockopt(m_socket.value(), IPPROTO_TCP, TCP_NODELAY, &isOn, sizeof isOn);
    m_isConnected = connectTo(m_socket.value(), port, family) == 0;
}

LoopbackClient &LoopbackClient::send(const QByteArray &bytes)
{
    for (qsizetype sent = 0; sent < bytes.size();) {
        const ssize_t count = ::send(m_socket.value(), bytes.constData() + sent,
                                     std::size_t(bytes.size() - sent), MSG_NOSIGNAL);
        if (count < 0) {
            m_isBroken = true;
            break;
        }
        sent += count;
    }
    return *this;
}

LoopbackClient &LoopbackClient::sendSlowly(const QByteArray &bytes)
{
    for (const char byte : bytes) {
        send(QByteArray(1, byte));
    }
    return *this;
}

LoopbackClient &LoopbackClient::finishSending()
{
    ::shutdown(m_socket.value(), SHUT_WR);
    return *this;
}

void LoopbackClient::reset()
{
    const linger none{1, 0};
    ::setsockopt(m_socket.value(), SOL_SOCKET, SO_LINGER, &none, sizeof none);
    m_socket = Descriptor();
}

QByteArray LoopbackClient::receiveAll()
{
    QByteArray received;
    std::array<char, 4096> block{};
    for (;;) {
        const ssize_t count = ::recv(m_socket.value(), block.data(), block.size(), 0);
        if (count <= 0) {
            EXPECT_FALSE(count < 0 && errno == EAGAIN) << "the peer keeps silent";
            return received;
        }
        received.append(block.data(), count);
    }
}

QByteArray answerFrom(quint16 port, const QByteArray &request, LoopbackFamily family)
{
    LoopbackClient client(port, family);
    EXPECT_TRUE(client.isConnected());
    return client.send(request).receiveAll();
}

bool isListening(quint16 port, LoopbackFamily family)
{
    return LoopbackClient(port, family).isConnected();
}

} // namespace vantrel::test
