#include "platform/http/NetworkHttpLoader.h"

#include "platform/jobs/RunQueue.h"
#include "platform_http/HttpExchange.h"
#include "support/ManualClock.h"
#include "support/ScriptedServer.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class NetworkHttpLoaderCancelTest : public testing::Test
{
protected:
    [[nodiscard]] HttpRequest request() const
    {
        HttpRequest request;
        request.url = m_server.url(u"/v1/chat/completions"_s);
        request.method = "POST";
        request.body = "{}";
        return request;
    }

    void waitUntilTheServerIsAlone()
    {
        spinUntil([&] { return m_server.openConnectionCount() == 0; });
    }

    ScriptedServer m_server{};
    ManualClock m_clock{};
    NetworkHttpLoader m_loader{m_clock};
};

TEST_F(NetworkHttpLoaderCancelTest, BeforeItsFirstTurnSendsNothing)
{
    m_server.answer(ServerScript().send(httpAnswer(200, "second")));
    HttpExchange first(m_loader, request());

    first.cancel();
    HttpExchange second(m_loader, request());
    second.waitForEnd();

    EXPECT_EQ(second.result().body, "second");
    EXPECT_EQ(m_server.connectionCount(), 1U);
}

TEST_F(NetworkHttpLoaderCancelTest, WhileConnectingLeavesNoRequest)
{
    m_server.answer(ServerScript().hold());
    HttpExchange first(m_loader, request());
    // Begins the request, while nothing of the event loop has run yet.
    RunQueue::interfaceThread().runUntilIdle();

    first.cancel();
    // Once another request has its answer, the network's thread has seen the end of the first.
    ScriptedServer other;
    other.answer(ServerScript().send(httpAnswer(200, "second")));
    HttpRequest otherRequest = request();
    otherRequest.url = other.url(u"/"_s);
    HttpExchange second(m_loader, otherRequest);
    second.waitForEnd();
    waitUntilTheServerIsAlone();

    EXPECT_EQ(second.result().body, "second");
    EXPECT_EQ(first.result(), ExchangeResult());
    EXPECT_EQ(m_clock.sleeperCount(), 0U);
}

TEST_F(NetworkHttpLoaderCancelTest, WhileWaitingForTheHeadClosesTheConnection)
{
    m_server.answer(ServerScript().hold());
    HttpExchange exchange(m_loader, request());
    spinUntil([&] { return m_server.holdingCount() == 1; });

    exchange.cancel();
    waitUntilTheServerIsAlone();

    EXPECT_FALSE(exchange.result().isOver);
    EXPECT_EQ(m_clock.sleeperCount(), 0U);
}

TEST_F(NetworkHttpLoaderCancelTest, InTheBodyClosesTheConnection)
{
    m_server.answer(ServerScript().send(httpHead(200) + "some").hold());
    HttpExchange exchange(m_loader, request());
    spinUntil([&] { return exchange.result().body == "some"; });

    exchange.cancel();
    waitUntilTheServerIsAlone();

    EXPECT_FALSE(exchange.result().isOver);
    EXPECT_EQ(m_clock.sleeperCount(), 0U);
}

TEST_F(NetworkHttpLoaderCancelTest, ABodyThatNobodyReadsClosesTheConnectionWhenItGoes)
{
    m_server.answer(ServerScript().send(httpHead(200) + "some").hold());
    HttpExchange exchange(m_loader, request(), HttpExchange::Reading::headOnly);
    spinUntil([&] { return exchange.result().status.has_value(); });

    exchange.cancel();
    waitUntilTheServerIsAlone();

    EXPECT_EQ(exchange.result().body, "");
}

TEST_F(NetworkHttpLoaderCancelTest, WhileTheServerSendsWithoutEndStopsIt)
{
    constexpr int blockCount = 4096;
    const QByteArray block(1 << 20, 'x');
    m_server.answer(ServerScript().send(httpHead(200)).sendRepeatedly(block, blockCount));
    HttpExchange exchange(m_loader, request());
    spinUntil([&] { return exchange.result().body.size() > block.size(); });

    exchange.cancel();
    waitUntilTheServerIsAlone();

    EXPECT_LT(m_server.sentBytes(), blockCount * block.size());
}

TEST_F(NetworkHttpLoaderCancelTest, OfOneRequestLeavesAnotherAlone)
{
    m_server.answer(ServerScript().send(httpHead(200) + "first").hold());
    m_server.answer(ServerScript().send(httpHead(200) + "second").hold().send(" half"));
    HttpExchange first(m_loader, request());
    spinUntil([&] { return first.result().body == "first"; });
    HttpExchange second(m_loader, request());
    spinUntil([&] { return second.result().body == "second"; });

    first.cancel();
    spinUntil([&] { return m_server.openConnectionCount() == 1; });
    m_server.release();

    EXPECT_EQ(second.waitForEnd().body, "second half");
}

} // namespace
} // namespace vantrel::test
