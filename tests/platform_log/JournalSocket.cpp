#include "platform_log/JournalSocket.h"

#include <QList>

#include <algorithm>
#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace vantrel::test {

JournalSocket::JournalSocket()
    : m_handle(::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))
{
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const QByteArray name = path().toLocal8Bit();
    std::copy(name.cbegin(), name.cend(), std::begin(address.sun_path));
    if (::bind(m_handle, reinterpret_cast<const sockaddr *>(&address), sizeof address) != 0) {
        qFatal("no socket for a journal");
    }
}

JournalSocket::~JournalSocket()
{
    ::close(m_handle);
}

std::optional<JournalSocket::Fields> JournalSocket::awaitNext()
{
    constexpr int limitMs = 60'000;
    return receive(limitMs);
}

std::optional<JournalSocket::Fields> JournalSocket::receive(int waitMs)
{
    constexpr qsizetype largest = 1 << 20;
    pollfd coming{m_handle, POLLIN, 0};
    if (::poll(&coming, 1, waitMs) != 1) {
        return std::nullopt;
    }
    QByteArray datagram(largest, Qt::Uninitialized);
    datagram.truncate(::recv(m_handle, datagram.data(), std::size_t(datagram.size()), 0));
    Fields fields;
    const QList<QByteArray> lines = datagram.split('\n');
    for (const QByteArray &line : lines) {
        const qsizetype end = line.indexOf('=');
        if (end > 0) {
            fields.insert(line.first(end), line.sliced(end + 1));
        }
    }
    return fields;
}

} // namespace vantrel::test
