// The sample provider over real sockets.

#include "SampleServer.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QHostAddress>
#include <QTcpSocket>

namespace vantrel::sample {
namespace {

QByteArray completionRequest(const QByteArray &stream)
{
    const QByteArray body =
        R"({"model":"m","stream":)" + stream +
        R"(,"messages":[{"role":"system","content":"You suggest follow-up questions"},)"
        R"({"role":"user","content":"u"}]})";
    return "POST /v1/chat/completions HTTP/1.1\r\nContent-Length: " +
           QByteArray::number(body.size()) + "\r\n\r\n" + body;
}

class SampleServerTest : public testing::Test
{
protected:
    SampleServerTest()
    {
        SampleServer::Options options;
        options.delayMs = 0;
        server.emplace(options);
        EXPECT_TRUE(server->listen());
        socket.connectToHost(QHostAddress(QHostAddress::LocalHost), server->port());
    }

    /// Sends bytes and reads until `end` has come.
    QByteArray exchange(const QByteArray &request, const QByteArray &end)
    {
        socket.write(request);
        QByteArray answer;
        test::spinUntil([&] {
            answer += socket.readAll();
            return answer.contains(end);
        });
        return answer;
    }

    std::optional<SampleServer> server{};
    QTcpSocket socket{};
};

TEST_F(SampleServerTest, AnswersAPlainRequestAndKeepsTheConnection)
{
    const QByteArray first = exchange(completionRequest("false"), "chat.completion\"}");
    const QByteArray second = exchange(completionRequest("false"), "chat.completion\"}");

    EXPECT_TRUE(first.startsWith("HTTP/1.1 200 "));
    EXPECT_TRUE(first.contains(R"("role":"assistant")"));
    EXPECT_EQ(first, second);
}

TEST_F(SampleServerTest, StreamsWordByWordAndEndsWithDone)
{
    const QByteArray answer = exchange(completionRequest("true"), "data: [DONE]\n\n");

    EXPECT_TRUE(answer.contains("Content-Type: text/event-stream\r\n"));
    EXPECT_TRUE(answer.contains("\r\n\r\n: the sample provider\n\ndata: {"));
    EXPECT_EQ(answer.count("\"content\""), 6);
    test::spinUntil([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
}

TEST_F(SampleServerTest, ListsItsModel)
{
    const QByteArray answer = exchange("GET /v1/models HTTP/1.1\r\n\r\n", "}]");

    EXPECT_TRUE(answer.contains(R"("id":"sample")"));
}

TEST_F(SampleServerTest, RefusesUnknownPathsAndBodies)
{
    EXPECT_TRUE(exchange("GET / HTTP/1.1\r\n\r\n", "}}").startsWith("HTTP/1.1 404 "));
    EXPECT_TRUE(exchange("POST /v1/chat/completions HTTP/1.1\r\nContent-Length: 2\r\n\r\n{}", "}}")
                    .startsWith("HTTP/1.1 400 "));
}

TEST_F(SampleServerTest, EndsAConnectionThatSpeaksNoHttp)
{
    EXPECT_TRUE(exchange("hello\r\n\r\n", "}}").startsWith("HTTP/1.1 400 "));
    test::spinUntil([&] { return socket.state() == QAbstractSocket::UnconnectedState; });
}

TEST_F(SampleServerTest, GoesOnAfterAClientThatLeavesInMidStream)
{
    exchange(completionRequest("true"), "data: ");
    socket.abort();
    socket.connectToHost(QHostAddress(QHostAddress::LocalHost), server->port());

    EXPECT_TRUE(exchange("GET /v1/models HTTP/1.1\r\n\r\n", "}]").startsWith("HTTP/1.1 200 "));
}

TEST_F(SampleServerTest, ListensOnBothAddressFamilies)
{
    QTcpSocket other;
    other.connectToHost(QHostAddress(QHostAddress::LocalHostIPv6), server->port());

    test::spinUntil([&] { return other.state() == QAbstractSocket::ConnectedState; });
}

} // namespace
} // namespace vantrel::sample
