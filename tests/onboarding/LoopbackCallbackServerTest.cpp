#include "onboarding/LoopbackCallbackServer.h"

#include "onboarding/LoopbackClient.h"
#include "platform/jobs/RunQueue.h"
#include "support/Running.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <memory>
#include <sys/resource.h>
#include <sys/socket.h>
#include <vector>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

using Case = LoopbackCallbackServerError::Case;
using Wait = Running<CallbackOutcome>;

const LoopbackCallbackServerError cancellation{Case::cancelled, QString()};
const CallbackOutcome cancelled = failure(cancellation);

CallbackOutcome denial(const QString &message)
{
    return failure(LoopbackCallbackServerError{Case::providerError, message});
}

LoopbackCallbackServerError listenerFailed(const QString &message)
{
    return {Case::listenerFailed, message};
}

QByteArray redirect(const QByteArray &query)
{
    return "GET /callback?" + query + " HTTP/1.1\r\nHost: localhost\r\n\r\n";
}

const QByteArray successPage = responseBytes(CallbackPage::success);
const QByteArray providerErrorPage = responseBytes(CallbackPage::providerError);
const QByteArray notFoundPage = responseBytes(CallbackPage::notFound);
const QByteArray badRequestPage = responseBytes(CallbackPage::badRequest);

class LoopbackCallbackServerTest : public testing::Test
{
protected:
    /// Starts the server and keeps its port.
    void start()
    {
        const auto url = server->start();
        ASSERT_TRUE(url);
        port = quint16(url->port());
    }

    [[nodiscard]] QByteArray answer(const QByteArray &request) const
    {
        return answerFrom(port, request);
    }

    /// What a wait gives that ends.
    CallbackOutcome waitForCode()
    {
        const Wait wait(server->waitForCode());
        return waitFor(wait);
    }

    static CallbackOutcome waitFor(const Wait &wait)
    {
        RunQueue::interfaceThread().runUntil([&wait] { return wait.isOver(); });
        return *wait.value();
    }

    static void runUntilIdle() { RunQueue::interfaceThread().runUntilIdle(); }

    /// Whether a wait that begins now has nothing to give. The listener serves one after another,
    /// so that with one more answer every outcome from before has been posted.
    bool isStillWaiting()
    {
        EXPECT_EQ(answer("GET / HTTP/1.1\r\n\r\n"), notFoundPage);
        const Wait wait(server->waitForCode());
        runUntilIdle();
        return !wait.isOver();
    }

    std::unique_ptr<LoopbackCallbackServer> server =
        std::make_unique<LoopbackCallbackServer>(u"/callback"_s);
    quint16 port = 0;
};

// Starting

TEST_F(LoopbackCallbackServerTest, GivesItsAddressByTheNameLocalhost)
{
    const auto url = server->start();

    ASSERT_TRUE(url);
    EXPECT_EQ(url->toString(), u"http://localhost:%1/callback"_s.arg(url->port()));
    EXPECT_GT(url->port(), 0);
    EXPECT_TRUE(isListening(quint16(url->port()), LoopbackFamily::ipv4));
}

TEST_F(LoopbackCallbackServerTest, EachServerHasAPortOfItsOwn)
{
    LoopbackCallbackServer other(u"/callback"_s);

    EXPECT_NE(server->start()->port(), other.start()->port());
}

TEST_F(LoopbackCallbackServerTest, StartsOnce)
{
    start();

    EXPECT_EQ(server->start().error(),
              listenerFailed(u"The sign-in listener was already started."_s));
    EXPECT_EQ(answer(redirect("code=abc")), successPage);
}

TEST_F(LoopbackCallbackServerTest, DoesNotStartAfterItWasStopped)
{
    server->stop();

    EXPECT_EQ(server->start().error(), cancellation);
}

TEST_F(LoopbackCallbackServerTest, AStoppedServerStaysStopped)
{
    start();
    server->stop();

    EXPECT_EQ(server->start().error(), cancellation);
}

TEST_F(LoopbackCallbackServerTest, ReportsTheSentenceOfTheSystemWhenItCannotListen)
{
    LoopbackCallbackServer failing(u"/callback"_s, [] {
        return openLoopbackSockets(
            [](LoopbackFamily, quint16) -> Result<Descriptor, int> { return failure(EMFILE); });
    });

    EXPECT_EQ(failing.start().error(), listenerFailed(qt_error_string(EMFILE)));
    EXPECT_EQ(failing.start().error(),
              listenerFailed(u"The sign-in listener was already started."_s));
}

TEST_F(LoopbackCallbackServerTest, ReportsAListenerWithoutAPort)
{
    LoopbackCallbackServer failing(u"/callback"_s, [] {
        return openLoopbackSockets([](LoopbackFamily, quint16) -> Result<Descriptor, int> {
            return Descriptor(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
        });
    });

    EXPECT_EQ(failing.start().error(), listenerFailed(u"The sign-in listener has no port."_s));
}

// Answering

TEST_F(LoopbackCallbackServerTest, AnswersTheRedirectAndGivesItsCode)
{
    start();

    EXPECT_EQ(answer(redirect("code=abc")), successPage);
    EXPECT_EQ(waitForCode(), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, AnswersBothFamilies)
{
    if (!listenOnLoopback(LoopbackFamily::ipv6, 0)) {
        GTEST_SKIP() << "this machine has no IPv6";
    }
    start();

    EXPECT_EQ(answerFrom(port, redirect("code=abc"), LoopbackFamily::ipv6), successPage);
    EXPECT_EQ(waitForCode(), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, AFaviconIsNotFoundAndDoesNotDisturbTheWait)
{
    start();
    const Wait wait(server->waitForCode());

    EXPECT_EQ(answer("GET /favicon.ico HTTP/1.1\r\n\r\n"), notFoundPage);
    runUntilIdle();
    EXPECT_FALSE(wait.isOver());
    EXPECT_EQ(answer(redirect("code=abc")), successPage);

    EXPECT_EQ(waitFor(wait), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, ARequestInTwoPiecesIsPutTogether)
{
    start();
    LoopbackClient client(port);

    // Another connection in between shows that the first piece has arrived.
    client.send("GET /callback?co");
    EXPECT_EQ(answer("GET / HTTP/1.1\r\n\r\n"), notFoundPage);
    client.send("de=abc HTTP/1.1\r\n\r\n");

    EXPECT_EQ(client.receiveAll(), successPage);
    EXPECT_EQ(waitForCode(), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, ARequestInSingleBytesIsPutTogether)
{
    start();
    LoopbackClient client(port);

    client.sendSlowly(redirect("code=abc"));

    EXPECT_EQ(client.receiveAll(), successPage);
    EXPECT_EQ(waitForCode(), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, APostIsNotFound)
{
    start();

    EXPECT_EQ(answer("POST /callback?code=abc HTTP/1.1\r\n\r\n"), notFoundPage);
    EXPECT_TRUE(isStillWaiting());
}

TEST_F(LoopbackCallbackServerTest, ACodeKeepsItsPlus)
{
    start();

    EXPECT_EQ(answer(redirect("code=a+b")), successPage);
    EXPECT_EQ(waitForCode(), u"a+b"_s);
}

TEST_F(LoopbackCallbackServerTest, AnErrorOfTheProviderIsReported)
{
    start();

    EXPECT_EQ(answer(redirect("error=x&error_description=access+denied")), providerErrorPage);
    EXPECT_EQ(waitForCode(), denial(u"access denied"_s));
}

TEST_F(LoopbackCallbackServerTest, ALongErrorIsCut)
{
    start();

    EXPECT_EQ(answer(redirect("error_description=" + QByteArray(300, 'e'))), providerErrorPage);
    EXPECT_EQ(waitForCode(), denial(QString(200, u'e') + u'…'));
}

TEST_F(LoopbackCallbackServerTest, AnEmptyCodeIsNotFound)
{
    start();

    EXPECT_EQ(answer(redirect("code=")), notFoundPage);
    EXPECT_TRUE(isStillWaiting());
}

TEST_F(LoopbackCallbackServerTest, TheBrowserHasItsPageWhenTheServerStopsAtItsOutcome)
{
    start();
    LoopbackClient client(port);
    client.send(redirect("error=denied"));
    EXPECT_EQ(waitForCode(), denial(u"denied"_s));

    server->stop();

    EXPECT_EQ(client.receiveAll(), providerErrorPage);
}

// Bad requests

class MalformedRequestTest : public LoopbackCallbackServerTest,
                             public testing::WithParamInterface<QByteArray>
{};

TEST_P(MalformedRequestTest, IsABadRequestWithoutAnOutcome)
{
    start();

    EXPECT_EQ(answer(GetParam()), badRequestPage);
    EXPECT_TRUE(isStillWaiting());
}

INSTANTIATE_TEST_SUITE_P(LoopbackCallbackServer, MalformedRequestTest,
                         testing::Values("\r\n\r\n", "hello\r\n\r\n",
                                         "GET /callback?code=abc\r\n\r\n",
                                         "GET /callback?code=abc FTP/1.1\r\n\r\n",
                                         "GET callback?code=abc HTTP/1.1\r\n\r\n",
                                         "GET /callback?code=a b HTTP/1.1\r\n\r\n",
                                         "GET /callback?code=\xff HTTP/1.1\r\n\r\n",
                                         "\x16\x03\x01\x02 /callback?code=abc\r\n\r\n"));

TEST_F(LoopbackCallbackServerTest, APeerThatEndsTooEarlyIsTold)
{
    start();
    LoopbackClient client(port);

    client.send("GET /callback?code=abc HTTP/1.1\r\n").finishSending();

    EXPECT_EQ(client.receiveAll(), badRequestPage);
    EXPECT_TRUE(isStillWaiting());
}

TEST_F(LoopbackCallbackServerTest, APeerThatSendsNothingAtAllIsTold)
{
    start();
    LoopbackClient client(port);

    client.finishSending();

    EXPECT_EQ(client.receiveAll(), badRequestPage);
}

TEST_F(LoopbackCallbackServerTest, APeerThatEndsBehindItsRequestIsAnswered)
{
    start();
    LoopbackClient client(port);

    client.send(redirect("code=abc")).finishSending();

    EXPECT_EQ(client.receiveAll(), successPage);
    EXPECT_EQ(waitForCode(), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, APeerThatBreaksOffDisturbsNobody)
{
    start();
    LoopbackClient(port).send("GET /callb").reset();
    LoopbackClient(port).reset();
    LoopbackClient(port).send(redirect("state=1")).reset();

    EXPECT_EQ(answer(redirect("code=abc")), successPage);
    EXPECT_EQ(waitForCode(), u"abc"_s);
}

/// A request whose head, with its end, has this many bytes.
QByteArray requestOfSize(qsizetype size)
{
    const QByteArray begin = "GET /callback?code=abc HTTP/1.1\r\nCookie: ";
    const QByteArray end = "\r\n\r\n";
    return begin + QByteArray(size - begin.size() - end.size(), 'c') + end;
}

TEST_F(LoopbackCallbackServerTest, AHeadThatJustFitsIsAnswered)
{
    start();

    EXPECT_EQ(answer(requestOfSize(65'536)), successPage);
}

TEST_F(LoopbackCallbackServerTest, AHeadThatIsTooLongIsABadRequest)
{
    start();

    EXPECT_EQ(answer(requestOfSize(65'537)), badRequestPage);
    EXPECT_EQ(answer(QByteArray(65'536, 'x')), badRequestPage);
    EXPECT_EQ(answer(QByteArray(500'000, 'x')), badRequestPage);
    EXPECT_TRUE(isStillWaiting());
}

TEST_F(LoopbackCallbackServerTest, OneByteLessThanTheLimitWaitsForMore)
{
    start();
    LoopbackClient client(port);

    client.send(QByteArray(65'535, 'x'));
    EXPECT_EQ(answer("GET / HTTP/1.1\r\n\r\n"), notFoundPage);
    client.send("x");

    EXPECT_EQ(client.receiveAll(), badRequestPage);
}

TEST_F(LoopbackCallbackServerTest, WhateverFollowsTheRequestIsIgnored)
{
    start();

    EXPECT_EQ(answer(redirect("code=abc") + redirect("code=def") + QByteArray(100'000, 'x')),
              successPage);
    EXPECT_EQ(waitForCode(), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, APeerThatNeverEndsIsClosed)
{
    start();
    LoopbackClient client(port);
    client.send("POST / HTTP/1.1\r\n\r\n");

    for (int block = 0; block < 1000; ++block) {
        client.send(QByteArray(65'536, 'x'));
    }

    EXPECT_TRUE(client.isBroken());
    EXPECT_EQ(answer(redirect("code=abc")), successPage);
}

TEST_F(LoopbackCallbackServerTest, IdleAndSlowPeersKeepNobodyWaiting)
{
    start();
    LoopbackClient idle(port);
    LoopbackClient slow(port);
    slow.send("GET /callback?code=slow");

    EXPECT_EQ(answer(redirect("code=abc")), successPage);
    EXPECT_EQ(waitForCode(), u"abc"_s);
    EXPECT_EQ(slow.send(" HTTP/1.1\r\n\r\n").receiveAll(), successPage);
}

TEST_F(LoopbackCallbackServerTest, AnswersManyConnectionsAtOnce)
{
    start();
    constexpr int count = 200;
    std::vector<std::unique_ptr<LoopbackClient>> clients;
    for (int number = 0; number < count; ++number) {
        clients.push_back(std::make_unique<LoopbackClient>(port));
        clients.back()->send("GET /" + QByteArray::number(number));
    }

    for (const auto &client : clients) {
        client->send(" HTTP/1.1\r\n\r\n");
    }

    for (const auto &client : clients) {
        EXPECT_EQ(client->receiveAll(), notFoundPage);
    }
    EXPECT_EQ(answer(redirect("code=abc")), successPage);
}

TEST_F(LoopbackCallbackServerTest, GoesOnWhenDescriptorsWereShort)
{
    start();
    LoopbackClient other(port);
    EXPECT_EQ(answer("GET / HTTP/1.1\r\n\r\n"), notFoundPage);
    rlimit usual{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &usual), 0);
    Descriptor lowest(::dup(0));
    const Descriptor second(::dup(0));
    const rlimit narrow{rlim_t(second.value()), usual.rlim_max};

    // One is left, for the browser's end of the connection.
    lowest = Descriptor();
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &narrow), 0);
    LoopbackClient client(port);
    client.send(redirect("code=abc"));
    other.send("GET / HTTP/1.1\r\n\r\n");
    EXPECT_EQ(other.receiveAll(), notFoundPage);
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &usual), 0);

    EXPECT_TRUE(client.isConnected());
    EXPECT_EQ(client.receiveAll(), successPage);
}

// Waiting

TEST_F(LoopbackCallbackServerTest, ARedirectWakesTheWait)
{
    start();
    const Wait wait(server->waitForCode());
    runUntilIdle();

    EXPECT_EQ(answer(redirect("code=abc")), successPage);

    EXPECT_EQ(waitFor(wait), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, AnOutcomeIsKeptUntilSomebodyWaits)
{
    start();
    EXPECT_EQ(answer(redirect("error=denied")), providerErrorPage);

    EXPECT_EQ(waitForCode(), denial(u"denied"_s));
}

TEST_F(LoopbackCallbackServerTest, TheFirstOfTwoRedirectsCountsAndBothHaveTheirPage)
{
    start();

    EXPECT_EQ(answer(redirect("code=first")), successPage);
    EXPECT_EQ(answer(redirect("code=second")), successPage);
    EXPECT_EQ(answer(redirect("error=third")), providerErrorPage);

    EXPECT_EQ(waitForCode(), u"first"_s);
    EXPECT_EQ(waitForCode(), u"first"_s);
}

TEST_F(LoopbackCallbackServerTest, ASecondWaitIsRefusedAndTheFirstGoesOn)
{
    start();
    const Wait first(server->waitForCode());
    runUntilIdle();

    EXPECT_EQ(waitForCode(), CallbackOutcome(failure(listenerFailed(
                                 u"Something is already waiting for the sign-in callback."_s))));
    EXPECT_EQ(answer(redirect("code=abc")), successPage);
    EXPECT_EQ(waitFor(first), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, AWaitThatIsLeftMakesRoomForAnother)
{
    start();
    Wait left(server->waitForCode());
    runUntilIdle();

    left.cancel();
    const Wait wait(server->waitForCode());
    EXPECT_EQ(answer(redirect("code=abc")), successPage);

    EXPECT_EQ(waitFor(wait), u"abc"_s);
    EXPECT_FALSE(left.isOver());
}

TEST_F(LoopbackCallbackServerTest, WaitingBeforeItStartsIsPossible)
{
    const Wait wait(server->waitForCode());
    runUntilIdle();

    start();
    EXPECT_EQ(answer(redirect("code=abc")), successPage);

    EXPECT_EQ(waitFor(wait), u"abc"_s);
}

// Stopping

TEST_F(LoopbackCallbackServerTest, StoppingCancelsTheWaitAndEveryLaterOne)
{
    start();
    const Wait wait(server->waitForCode());
    runUntilIdle();

    server->stop();

    EXPECT_EQ(waitFor(wait), cancelled);
    EXPECT_EQ(waitForCode(), cancelled);
}

TEST_F(LoopbackCallbackServerTest, DestroyingItCancelsTheWait)
{
    start();
    const Wait wait(server->waitForCode());
    runUntilIdle();

    server.reset();

    EXPECT_EQ(waitFor(wait), cancelled);
}

TEST_F(LoopbackCallbackServerTest, NothingListensAnyMoreWhenStoppingReturns)
{
    start();

    server->stop();

    EXPECT_FALSE(isListening(port, LoopbackFamily::ipv4));
    EXPECT_FALSE(isListening(port, LoopbackFamily::ipv6));
}

TEST_F(LoopbackCallbackServerTest, StoppingClosesOpenConnectionsWithoutAnAnswer)
{
    start();
    LoopbackClient idle(port);
    LoopbackClient half(port);
    half.send("GET /callback?code=abc");
    EXPECT_EQ(answer("GET / HTTP/1.1\r\n\r\n"), notFoundPage);

    server->stop();

    EXPECT_EQ(idle.receiveAll(), QByteArray());
    EXPECT_EQ(half.receiveAll(), QByteArray());
}

TEST_F(LoopbackCallbackServerTest, StoppingTwiceAndBeforeTheStartDoesNoHarm)
{
    server->stop();
    server->stop();

    EXPECT_EQ(waitForCode(), cancelled);
}

TEST_F(LoopbackCallbackServerTest, AnOutcomeThatArrivesAfterTheStopIsDropped)
{
    start();
    // The page is there, and what it tells has not been taken from the queue yet.
    EXPECT_EQ(answer(redirect("code=abc")), successPage);

    server->stop();

    EXPECT_EQ(waitForCode(), cancelled);
}

TEST_F(LoopbackCallbackServerTest, AnOutcomeFromBeforeTheStopIsKept)
{
    start();
    EXPECT_EQ(answer(redirect("code=abc")), successPage);
    EXPECT_EQ(waitForCode(), u"abc"_s);

    server->stop();

    EXPECT_EQ(waitForCode(), u"abc"_s);
}

TEST_F(LoopbackCallbackServerTest, StoppingWhileBrowsersConnectEndsEveryConnection)
{
    for (int round = 0; round < 20; ++round) {
        LoopbackCallbackServer stopped(u"/callback"_s);
        const quint16 stoppedPort = quint16(stopped.start()->port());
        LoopbackClient first(stoppedPort);
        first.send(redirect("code=abc"));
        LoopbackClient second(stoppedPort);
        second.send("GET /");

        stopped.stop();

        const QByteArray received = first.receiveAll();
        EXPECT_TRUE(received.isEmpty() || received == successPage) << received.constData();
        EXPECT_EQ(second.receiveAll(), QByteArray());
    }
}

} // namespace
} // namespace vantrel::test
