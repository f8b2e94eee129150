#include "onboarding/LoopbackSockets.h"

#include "onboarding/LoopbackClient.h"

#include <gtest/gtest.h>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <utility>
#include <vector>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using Family = LoopbackFamily;

bool hasIPv6()
{
    return listenOnLoopback(Family::ipv6, 0).has_value();
}

quint16 portOf(const Descriptor &socket)
{
    sockaddr_in6 address{};
    socklen_t size = sizeof address;
    ::getsockname(socket.value(), reinterpret_cast<sockaddr *>(&address), &size);
    return ntohs(address.sin6_port); // At the same place in both families.
}

/// A port that is taken on ::1 and free on 127.0.0.1.
struct HalfTakenPort
{
    Descriptor ipv6{};
    quint16 port = 0;
};

HalfTakenPort takeHalfOfAPort()
{
    HalfTakenPort taken;
    // A port can be taken on 127.0.0.1 too, by a connection that was closed a moment ago.
    std::vector<Descriptor> wholeTaken;
    do {
        wholeTaken.push_back(
            std::exchange(taken.ipv6, std::move(*listenOnLoopback(Family::ipv6, 0))));
        taken.port = portOf(taken.ipv6);
    } while (!listenOnLoopback(Family::ipv4, taken.port));
    return taken;
}

/// Opens sockets where the system is said to choose these IPv4 ports first.
Result<LoopbackSockets, PlatformError> openWithChoices(std::vector<quint16> ports)
{
    std::size_t next = 0;
    return openLoopbackSockets([&ports, &next](Family family, quint16 port) {
        const bool isChoice = family == Family::ipv4 && port == 0 && next < ports.size();
        return listenOnLoopback(family, isChoice ? ports.at(next++) : port);
    });
}

/// Where the system fails for one family with this error.
Result<LoopbackSockets, PlatformError> openWithFailure(Family failing, int error)
{
    return openLoopbackSockets(
        [failing, error](Family family, quint16 port) -> Result<Descriptor, int> {
            if (family == failing) {
                return failure(error);
            }
            return listenOnLoopback(family, port);
        });
}

TEST(LoopbackSockets, ListenOnOnePortInBothFamilies)
{
    if (!hasIPv6()) {
        GTEST_SKIP() << "this machine has no IPv6";
    }

    const auto sockets = openLoopbackSockets();

    ASSERT_TRUE(sockets);
    EXPECT_NE(sockets->port, 0);
    EXPECT_EQ(portOf(sockets->ipv4), sockets->port);
    EXPECT_EQ(portOf(sockets->ipv6), sockets->port);
    EXPECT_TRUE(isListening(sockets->port, Family::ipv4));
    EXPECT_TRUE(isListening(sockets->port, Family::ipv6));
}

TEST(LoopbackSockets, AreBoundToTheLoopbackAddressesAlone)
{
    const auto sockets = openLoopbackSockets();

    ASSERT_TRUE(sockets);
    sockaddr_in ipv4{};
    socklen_t size = sizeof ipv4;
    ::getsockname(sockets->ipv4.value(), reinterpret_cast<sockaddr *>(&ipv4), &size);
    EXPECT_EQ(ipv4.sin_family, AF_INET);
    EXPECT_EQ(ntohl(ipv4.sin_addr.s_addr), INADDR_LOOPBACK);
    if (sockets->ipv6.isOpen()) {
        sockaddr_in6 ipv6{};
        size = sizeof ipv6;
        ::getsockname(sockets->ipv6.value(), reinterpret_cast<sockaddr *>(&ipv6), &size);
        EXPECT_EQ(ipv6.sin6_family, AF_INET6);
        EXPECT_TRUE(IN6_IS_ADDR_LOOPBACK(&ipv6.sin6_addr));
    }
}

TEST(LoopbackSockets, AreNotInheritedByChildProcesses)
{
    const auto sockets = openLoopbackSockets();

    ASSERT_TRUE(sockets);
    EXPECT_NE(::fcntl(sockets->ipv4.value(), F_GETFD) & FD_CLOEXEC, 0);
    EXPECT_NE(::fcntl(sockets->ipv6.value(), F_GETFD) & FD_CLOEXEC, 0);
}

TEST(LoopbackSockets, TryAnotherPortWhenOneIsTakenInTheOtherFamily)
{
    if (!hasIPv6()) {
        GTEST_SKIP() << "this machine has no IPv6";
    }
    const std::array taken{takeHalfOfAPort(), takeHalfOfAPort(), takeHalfOfAPort()};

    const auto sockets = openWithChoices({taken.at(0).port, taken.at(1).port, taken.at(2).port});

    ASSERT_TRUE(sockets);
    EXPECT_NE(sockets->port, taken.at(0).port);
    EXPECT_NE(sockets->port, taken.at(1).port);
    EXPECT_NE(sockets->port, taken.at(2).port);
    EXPECT_TRUE(sockets->ipv6.isOpen());
    EXPECT_EQ(portOf(sockets->ipv6), sockets->port);
    for (const HalfTakenPort &port : taken) {
        EXPECT_FALSE(isListening(port.port, Family::ipv4));
    }
}

TEST(LoopbackSockets, GiveUpWhenNoPortIsFreeInBothFamilies)
{
    int attempts = 0;

    const auto sockets =
        openLoopbackSockets([&attempts](Family family, quint16 port) -> Result<Descriptor, int> {
            if (family == Family::ipv6) {
                return failure(EADDRINUSE);
            }
            ++attempts;
            return listenOnLoopback(family, port);
        });

    ASSERT_FALSE(sockets);
    EXPECT_EQ(sockets.error().description(), qt_error_string(EADDRINUSE));
    EXPECT_EQ(attempts, 20);
}

class MissingIPv6Test : public testing::TestWithParam<int>
{};

TEST_P(MissingIPv6Test, LeavesIPv4Alone)
{
    const auto sockets = openWithFailure(Family::ipv6, GetParam());

    ASSERT_TRUE(sockets);
    EXPECT_FALSE(sockets->ipv6.isOpen());
    EXPECT_TRUE(isListening(sockets->port, Family::ipv4));
}

INSTANTIATE_TEST_SUITE_P(LoopbackSockets, MissingIPv6Test,
                         testing::Values(EADDRNOTAVAIL, EAFNOSUPPORT));

TEST(LoopbackSockets, AnotherFailureOfIPv6LeavesNoAddressForOthersToTake)
{
    const auto sockets = openWithFailure(Family::ipv6, EMFILE);

    ASSERT_FALSE(sockets);
    EXPECT_EQ(sockets.error().description(), qt_error_string(EMFILE));
}

TEST(LoopbackSockets, FailWithTheSentenceOfTheSystem)
{
    const auto sockets = openWithFailure(Family::ipv4, EACCES);

    ASSERT_FALSE(sockets);
    EXPECT_EQ(sockets.error().description(), qt_error_string(EACCES));
}

TEST(LoopbackSockets, CloseTheirPort)
{
    auto sockets = openLoopbackSockets();
    ASSERT_TRUE(sockets);
    const quint16 port = sockets->port;

    *sockets = LoopbackSockets();

    EXPECT_FALSE(isListening(port, Family::ipv4));
    EXPECT_FALSE(isListening(port, Family::ipv6));
}

} // namespace
} // namespace vantrel::test
