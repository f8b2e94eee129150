#pragma once

#include "onboarding/Descriptor.h"
#include "platform/PlatformError.h"
#include "platform/Result.h"

#include <QtGlobal>

#include <functional>

namespace vantrel {

enum class LoopbackFamily { ipv4, ipv6 };

/// Two listening sockets on one port of the loopback interface, which nothing but this machine can
/// reach. Browsers differ in which family they try first for `localhost`; were one of the two left
/// free, another program could take it and be sent what was meant for us.
struct LoopbackSockets
{
    Descriptor ipv4{};
    Descriptor ipv6{}; ///< Closed on a machine without IPv6.
    quint16 port = 0;
};

/// Makes a socket that listens on the family's loopback address and `port`, 0 for one that the
/// system chooses. Fails with the system's error number.
using ListenOnLoopback =
    std::function<Result<Descriptor, int>(LoopbackFamily family, quint16 port)>;
[[nodiscard]] Result<Descriptor, int> listenOnLoopback(LoopbackFamily family, quint16 port);

/// Opens both on a port that the system chooses. Fails with the system's sentence.
[[nodiscard]] Result<LoopbackSockets, PlatformError>
openLoopbackSockets(const ListenOnLoopback &listen = listenOnLoopback);

} // namespace vantrel
