#pragma once

#include "onboarding/Descriptor.h"
#include "onboarding/LoopbackSockets.h"

#include <QByteArray>

namespace vantrel::test {

/// A browser's connection to a port of the loopback interface, in calls that block: the listener
/// has a thread of its own. A peer that keeps silent for a minute fails the test.
class LoopbackClient
{
public:
    explicit LoopbackClient(quint16 port, LoopbackFamily family = LoopbackFamily::ipv4);

    /// Something listened there.
    [[nodiscard]] bool isConnected() const { return m_isConnected; }

    /// The peer has closed what was to be sent to.
    [[nodiscard]] bool isBroken() const { return m_isBroken; }

    LoopbackClient &send(const QByteArray &bytes);

    /// Sends each byte on its own.
    LoopbackClient &sendSlowly(const QByteArray &bytes);

    /// Sends no more, and can still receive.
    LoopbackClient &finishSending();

    /// Breaks the connection off, so that the peer sees an error and no end.
    void reset();

    /// Everything up to the peer's close. What an error takes away is missing.
    [[nodiscard]] QByteArray receiveAll();

private:
    Descriptor m_socket{};
    bool m_isConnected = false;
    bool m_isBroken = false;
};

/// The whole answer to a request that is sent in one piece.
[[nodiscard]] QByteArray answerFrom(quint16 port, const QByteArray &request,
                                    LoopbackFamily family = LoopbackFamily::ipv4);

[[nodiscard]] bool isListening(quint16 port, LoopbackFamily family);

} // namespace vantrel::test
