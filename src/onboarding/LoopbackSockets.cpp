#include "onboarding/LoopbackSockets.h"

#include <QByteArray>

#include <cerrno>
#include <cstring>
#include <netinet/in.h>
#include <sys/socket.h>
#include <utility>
#include <vector>

namespace vantrel {

namespace {

constexpr int maxAttempts = 20;

Result<Descriptor, int> listenOn(int family, const sockaddr *address, socklen_t size)
{
    Descriptor socket(::socket(family, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    if (!socket.isOpen() || ::bind(socket.value(), address, size) != 0 ||
        ::listen(socket.value(), SOMAXCONN) != 0) {
        return failure(errno);
    }
    return socket;
}

/// 0 when the socket has none.
quint16 portOf(const Descriptor &socket)
{
    sockaddr_in address{};
    socklen_t size = sizeof address;
    if (::getsockname(socket.value(), reinterpret_cast<sockaddr *>(&address), &size) != 0) {
        return 0;
    }
    return ntohs(address.sin_port);
}

bool isMissingFamily(int error)
{
    return error == EADDRNOTAVAIL || error == EAFNOSUPPORT;
}

PlatformError sentenceOf(int error)
{
    return PlatformError{qt_error_string(error)};
}

} // namespace

Result<Descriptor, int> listenOnLoopback(LoopbackFamily family, quint16 port)
{
    switch (family) {
    case LoopbackFamily::ipv4: {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(port);
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        return listenOn(AF_INET, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    }
    case LoopbackFamily::ipv6: {
        sockaddr_in6 address{};
        address.sin6_family = AF_INET6;
        address.sin6_port = htons(port);
        address.sin6_addr = in6addr_loopback;
        return listenOn(AF_INET6, reinterpret_cast<const sockaddr *>(&address), sizeof address);
    }
    }
    Q_UNREACHABLE();
}

Result<LoopbackSockets, PlatformError> openLoopbackSockets(const ListenOnLoopback &listen)
{
    // Ports that were free in one family only stay taken while others are tried, lest the system
    // hands out the same ones again.
    std::vector<Descriptor> halfFree;
    int error = EADDRINUSE;
    for (int attempt = 0; attempt < maxAttempts && error == EADDRINUSE; ++attempt) {
        auto ipv4 = listen(LoopbackFamily::ipv4, 0);
        if (!ipv4) {
            return failure(sentenceOf(ipv4.error()));
        }
        LoopbackSockets sockets;
        sockets.port = portOf(*ipv4);
        auto ipv6 = listen(LoopbackFamily::ipv6, sockets.port);
        if (ipv6 || isMissingFamily(ipv6.error())) {
            sockets.ipv4 = std::move(*ipv4);
            sockets.ipv6 = ipv6 ? std::move(*ipv6) : Descriptor();
            return sockets;
        }
        error = ipv6.error();
        halfFree.push_back(std::move(*ipv4));
    }
    return failure(sentenceOf(error));
}

} // namespace vantrel
