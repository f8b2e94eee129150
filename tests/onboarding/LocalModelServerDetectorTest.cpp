#include "onboarding/LocalModelServerDetector.h"

#include "platform/http/NetworkHttpLoader.h"
#include "support/ManualClock.h"
#include "support/Running.h"
#include "support/ScriptedServer.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QTcpServer>

#include <chrono>
#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

const LocalModelServerStatus notRunning = LocalModelServerStatus::notRunning();
const LocalModelServerStatus withoutModels = LocalModelServerStatus::running({});

ServerScript listing(const QByteArray &body)
{
    return ServerScript().send(httpAnswer(200, body));
}

/// A port on which nothing listens.
quint16 closedPort()
{
    QTcpServer server;
    EXPECT_TRUE(server.listen(QHostAddress::LocalHost));
    return server.serverPort();
}

QString addressAt(quint16 port, const QString &host = u"127.0.0.1"_s)
{
    return u"http://"_s + host + u':' + QString::number(port) + u"/v1"_s;
}

/// A detector over two servers of this test.
class LocalModelServerDetectorTest : public testing::Test
{
protected:
    LocalModelServerDetectorTest()
    {
        useAddresses(addressAt(ollama.port()), addressAt(lmStudio.port()));
    }

    void useAddresses(const QString &ollamaURL, const QString &lmStudioURL)
    {
        detector = std::make_unique<LocalModelServerDetector>(
            loader, clock,
            LocalModelServerDetector::BaseURLs{{LocalModelServer::ollama, ollamaURL},
                                               {LocalModelServer::lmStudio, lmStudioURL}});
    }

    LocalModelServerStatuses detect()
    {
        const Running<LocalModelServerStatuses> detection(detector->detectAll());
        spinUntil([&detection] { return detection.isOver(); });
        return detection.value().value_or(LocalModelServerStatuses());
    }

    /// With nothing at LM Studio's place.
    LocalModelServerStatus detectOllama(ServerScript script)
    {
        ollama.answer(std::move(script));
        useAddresses(addressAt(ollama.port()), addressAt(closedPort()));
        return detect().value(LocalModelServer::ollama);
    }

    ScriptedServer ollama{};
    ScriptedServer lmStudio{};
    ManualClock clock{};
    NetworkHttpLoader loader{clock};
    std::unique_ptr<LocalModelServerDetector> detector{};
};

TEST_F(LocalModelServerDetectorTest, AsksTheUsualPorts)
{
    const LocalModelServerDetector::BaseURLs expected{
        {LocalModelServer::ollama, u"http://localhost:11434/v1"_s},
        {LocalModelServer::lmStudio, u"http://localhost:1234/v1"_s}};

    EXPECT_EQ(LocalModelServerDetector::usualBaseURLs(), expected);
}

TEST_F(LocalModelServerDetectorTest, ListsTheModelsOfBothServers)
{
    ollama.answer(listing(R"({"data":[{"id":"llama3"},{"id":"qwen"}]})"));
    lmStudio.answer(listing(R"({"data":[{"id":"gemma"}]})"));

    const LocalModelServerStatuses statuses = detect();

    const LocalModelServerStatuses expected{
        {LocalModelServer::ollama, LocalModelServerStatus::running({u"llama3"_s, u"qwen"_s})},
        {LocalModelServer::lmStudio, LocalModelServerStatus::running({u"gemma"_s})}};
    EXPECT_EQ(statuses, expected);
}

TEST_F(LocalModelServerDetectorTest, SendsAPlainGetWithoutKeyAndBody)
{
    detectOllama(listing("{}"));

    ASSERT_EQ(ollama.requests().size(), 1);
    const ReceivedRequest &request = ollama.requests().first();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.target, "/v1/models");
    EXPECT_EQ(request.body, "");
    EXPECT_TRUE(request.header("authorization").isNull());
    EXPECT_TRUE(request.header("content-type").isNull());
}

TEST_F(LocalModelServerDetectorTest, FindsAServerByTheNameLocalhost)
{
    ollama.answer(listing(R"({"data":[{"id":"llama3"}]})"));
    useAddresses(addressAt(ollama.port(), u"localhost"_s), addressAt(closedPort()));

    EXPECT_EQ(detect().value(LocalModelServer::ollama),
              LocalModelServerStatus::running({u"llama3"_s}));
}

TEST_F(LocalModelServerDetectorTest, NothingListeningIsNotRunning)
{
    useAddresses(addressAt(closedPort()), addressAt(closedPort()));

    const LocalModelServerStatuses statuses = detect();

    const LocalModelServerStatuses expected{{LocalModelServer::ollama, notRunning},
                                            {LocalModelServer::lmStudio, notRunning}};
    EXPECT_EQ(statuses, expected);
    EXPECT_EQ(statusText(statuses.value(LocalModelServer::ollama)), u"Not running"_s);
    EXPECT_EQ(statusText(statuses.value(LocalModelServer::lmStudio)), u"Not running"_s);
}

TEST_F(LocalModelServerDetectorTest, AServerThatDoesNotListModelsIsRunningWithout)
{
    const LocalModelServerStatus status =
        detectOllama(ServerScript().send(httpAnswer(404, R"({"data":[{"id":"a"}]})")));

    EXPECT_EQ(status, withoutModels);
    EXPECT_EQ(statusText(status), u"Running \u00B7 no models installed"_s);
}

class RefusingServerTest : public LocalModelServerDetectorTest,
                           public testing::WithParamInterface<int>
{};

TEST_P(RefusingServerTest, IsRunningWithoutModels)
{
    EXPECT_EQ(detectOllama(ServerScript().send(httpAnswer(GetParam(), "no"))), withoutModels);
    EXPECT_EQ(ollama.requests().size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Http, RefusingServerTest,
                         testing::Values(300, 301, 307, 400, 401, 403, 405, 500, 503));

class UnreadableListTest : public LocalModelServerDetectorTest,
                           public testing::WithParamInterface<QByteArray>
{};

TEST_P(UnreadableListTest, IsRunningWithoutModels)
{
    EXPECT_EQ(detectOllama(listing(GetParam())), withoutModels);
}

INSTANTIATE_TEST_SUITE_P(Http, UnreadableListTest,
                         testing::Values("", "{}", "<html>", R"({"models":[]})"));

TEST_F(LocalModelServerDetectorTest, EveryStatusOfSuccessIsRead)
{
    EXPECT_EQ(detectOllama(ServerScript().send(httpAnswer(299, R"({"data":[{"id":"a"}]})"))),
              LocalModelServerStatus::running({u"a"_s}));
}

TEST_F(LocalModelServerDetectorTest, KeepsAllOfManyModels)
{
    QByteArray body = R"({"data":[)";
    for (int number = 0; number < 2000; ++number) {
        body += R"({"id":"model-)" + QByteArray::number(number) + R"("},)";
    }
    body += R"({"id":"last"}]})";

    EXPECT_EQ(detectOllama(listing(body)).models().size(), 2001);
}

TEST_F(LocalModelServerDetectorTest, AListWithoutEndIsNotReadToTheEnd)
{
    const LocalModelServerStatus status = detectOllama(
        ServerScript().send(httpHead(200)).sendRepeatedly(QByteArray(65'536, ' '), 10'000).hold());

    EXPECT_EQ(status, withoutModels);
    EXPECT_LT(ollama.sentBytes(), 100'000'000);
    spinUntil([this] { return ollama.openConnectionCount() == 0; });
}

TEST_F(LocalModelServerDetectorTest, AnAnswerThatIsNotHttpIsNotRunning)
{
    EXPECT_EQ(detectOllama(ServerScript().send("SSH-2.0-OpenSSH\r\n\r\n")), notRunning);
}

TEST_F(LocalModelServerDetectorTest, AConnectionThatBreaksOffIsNotRunning)
{
    EXPECT_EQ(detectOllama(ServerScript().reset()), notRunning);
}

TEST_F(LocalModelServerDetectorTest, AListThatBreaksOffIsNotRunning)
{
    EXPECT_EQ(detectOllama(ServerScript()
                               .send("HTTP/1.1 200 OK\r\nContent-Length: 999\r\n\r\n{\"data\":[")
                               .reset()),
              notRunning);
}

TEST_F(LocalModelServerDetectorTest, AServerThatAcceptsAndNeverAnswersIsGivenTwoSeconds)
{
    QTcpServer silent;
    ASSERT_TRUE(silent.listen(QHostAddress::LocalHost));
    useAddresses(addressAt(silent.serverPort()), addressAt(closedPort()));
    const Running<LocalModelServerStatuses> detection(detector->detectAll());
    spinUntil([&silent] { return silent.hasPendingConnections(); });

    clock.advance(1999ms);
    RunQueue::interfaceThread().runUntilIdle();
    EXPECT_FALSE(detection.isOver());
    clock.advance(1ms);
    spinUntil([&detection] { return detection.isOver(); });

    EXPECT_EQ(detection.value()->value(LocalModelServer::ollama), notRunning);
}

TEST_F(LocalModelServerDetectorTest, AServerThatTricklesIsGivenTwoSecondsToo)
{
    ollama.answer(ServerScript()
                      .send("HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n{")
                      .hold()
                      .send("\"data\"")
                      .hold());
    useAddresses(addressAt(ollama.port()), addressAt(closedPort()));
    const Running<LocalModelServerStatuses> detection(detector->detectAll());
    spinUntil([this] { return ollama.holdingCount() == 1; });

    clock.advance(1500ms);
    ollama.release();
    spinUntil([this] { return ollama.holdingCount() == 1; });
    clock.advance(500ms);
    spinUntil([&detection] { return detection.isOver(); });

    EXPECT_EQ(detection.value()->value(LocalModelServer::ollama), notRunning);
}

TEST_F(LocalModelServerDetectorTest, AsksAllServersAtOnce)
{
    ollama.answer(ServerScript().hold().send(httpAnswer(200, R"({"data":[{"id":"a"}]})")));
    lmStudio.answer(ServerScript().hold().send(httpAnswer(200, R"({"data":[{"id":"b"}]})")));
    const Running<LocalModelServerStatuses> detection(detector->detectAll());

    spinUntil([this] { return ollama.holdingCount() == 1 && lmStudio.holdingCount() == 1; });
    EXPECT_FALSE(detection.isOver());
    ollama.release();
    lmStudio.release();
    spinUntil([&detection] { return detection.isOver(); });

    EXPECT_EQ(detection.value()->size(), 2);
}

TEST_F(LocalModelServerDetectorTest, OneSilentServerDoesNotHideTheOther)
{
    ollama.answer(ServerScript().hold());
    lmStudio.answer(listing(R"({"data":[{"id":"gemma"}]})"));
    const Running<LocalModelServerStatuses> detection(detector->detectAll());
    spinUntil([this] { return ollama.holdingCount() == 1 && lmStudio.requests().size() == 1; });
    // The silence and the whole answer of one server only are still timed.
    spinUntil([this] { return clock.sleeperCount() == 2; });

    clock.advance(2s);
    spinUntil([&detection] { return detection.isOver(); });

    const LocalModelServerStatuses expected{
        {LocalModelServer::ollama, notRunning},
        {LocalModelServer::lmStudio, LocalModelServerStatus::running({u"gemma"_s})}};
    EXPECT_EQ(detection.value(), expected);
}

TEST_F(LocalModelServerDetectorTest, LeavingWhileServersAreAskedClosesTheConnections)
{
    ollama.answer(ServerScript().hold());
    lmStudio.answer(ServerScript().send("HTTP/1.1 200 OK\r\n\r\n{").hold());
    Running<LocalModelServerStatuses> detection(detector->detectAll());
    spinUntil([this] { return ollama.holdingCount() == 1 && lmStudio.holdingCount() == 1; });

    detection.cancel();

    spinUntil([this] {
        return ollama.openConnectionCount() == 0 && lmStudio.openConnectionCount() == 0;
    });
    EXPECT_EQ(clock.sleeperCount(), 0U);
    EXPECT_FALSE(detection.isOver());
}

} // namespace
} // namespace vantrel::test
