#include "onboarding/LoopbackCallbackServer.h"
#include "onboarding/LoopbackClient.h"
#include "support/ProcessRun.h"

#include <gtest/gtest.h>

#include <QNetworkInterface>
#include <QTcpSocket>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Connects to the port of 127.0.0.1 from a shell, run by these words if there are any.
int connectFromShell(quint16 port, QStringList words = {})
{
    words += {u"bash"_s, u"-c"_s, u"exec 3<>/dev/tcp/127.0.0.1/%1"_s.arg(port)};
    const QString program = words.takeFirst();
    return run(program, words).exitCode;
}

/// A listener from which a code is to be kept.
class LoopbackReachTest : public testing::Test
{
protected:
    LoopbackCallbackServer server{u"/callback"_s};
    quint16 port = quint16(server.start()->port());
};

TEST_F(LoopbackReachTest, OtherAddressesOfThisMachineDoNotLeadToTheListener)
{
    int tried = 0;
    const QList<QHostAddress> addresses = QNetworkInterface::allAddresses();
    for (const QHostAddress &address : addresses) {
        if (!address.isLoopback()) {
            QTcpSocket socket;
            socket.connectToHost(address, port);
            EXPECT_FALSE(socket.waitForConnected()) << qPrintable(address.toString());
            ++tried;
        }
    }
    if (tried == 0) {
        GTEST_SKIP() << "this machine has no other address";
    }
}

TEST_F(LoopbackReachTest, OtherLoopbackAddressesDoNotEither)
{
    QTcpSocket socket;

    socket.connectToHost(QHostAddress(u"127.0.0.2"_s), port);

    EXPECT_FALSE(socket.waitForConnected());
}

TEST_F(LoopbackReachTest, AnotherNetworkNamespaceDoesNotReachTheListener)
{
    const QStringList inAnother{u"unshare"_s, u"--user"_s, u"--map-root-user"_s, u"--net"_s};
    if (run(inAnother.first(), inAnother.mid(1) + QStringList{u"true"_s}).exitCode != 0) {
        GTEST_SKIP() << "this machine lets no network namespace be made";
    }

    EXPECT_EQ(connectFromShell(port), 0);
    EXPECT_NE(connectFromShell(port, inAnother), 0);
}

} // namespace
} // namespace vantrel::test
