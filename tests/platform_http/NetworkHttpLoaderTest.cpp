#include "platform/http/NetworkHttpLoader.h"

#include "platform/jobs/RunQueue.h"
#include "platform_http/HttpExchange.h"
#include "support/ManualClock.h"
#include "support/ScriptedServer.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QTcpServer>

#include <chrono>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

const QByteArray secret = "sk-top-secret";

ExchangeResult answered(int status, const QByteArray &body)
{
    ExchangeResult result;
    result.status = status;
    result.body = body;
    result.isOver = true;
    return result;
}

ExchangeResult failed(const QString &message)
{
    ExchangeResult result;
    result.error = PlatformError{message};
    result.isOver = true;
    return result;
}

ExchangeResult brokenOff(int status, const QByteArray &body, const QString &message)
{
    ExchangeResult result = answered(status, body);
    result.error = PlatformError{message};
    return result;
}

class NetworkHttpLoaderTest : public testing::Test
{
protected:
    [[nodiscard]] HttpRequest getRequest() const
    {
        HttpRequest request;
        request.url = m_server.url(u"/v1/models"_s);
        return request;
    }

    [[nodiscard]] HttpRequest postRequest() const
    {
        HttpRequest request;
        request.url = m_server.url(u"/v1/chat/completions"_s);
        request.method = "POST";
        request.headers.emplaceBack("Content-Type", "application/json");
        request.headers.emplaceBack("Authorization", "Bearer " + secret);
        request.body = R"({"stream":true})";
        return request;
    }

    ExchangeResult load(const HttpRequest &request)
    {
        HttpExchange exchange(m_loader, request);
        return exchange.waitForEnd();
    }

    ScriptedServer m_server{};
    ManualClock m_clock{};
    NetworkHttpLoader m_loader{m_clock};
};

TEST_F(NetworkHttpLoaderTest, SendsMethodTargetHeadersAndBody)
{
    m_server.answer(ServerScript().send(httpAnswer(200, "{}")));

    const ExchangeResult result = load(postRequest());

    EXPECT_EQ(result, answered(200, "{}"));
    ASSERT_EQ(m_server.requests().size(), 1);
    const ReceivedRequest &request = m_server.requests().first();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.target, "/v1/chat/completions");
    EXPECT_EQ(request.header("content-type"), "application/json");
    EXPECT_EQ(request.header("authorization"), "Bearer sk-top-secret");
    EXPECT_EQ(request.header("user-agent"), "Vantrel/" VANTREL_TEST_VERSION);
    EXPECT_EQ(request.body, R"({"stream":true})");
}

TEST_F(NetworkHttpLoaderTest, SendsAGetWithoutABody)
{
    m_server.answer(ServerScript().send(httpAnswer(200, "[]")));

    const ExchangeResult result = load(getRequest());

    EXPECT_EQ(result, answered(200, "[]"));
    const ReceivedRequest &request = m_server.requests().first();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.body, "");
    EXPECT_TRUE(request.header("content-type").isNull());
}

TEST_F(NetworkHttpLoaderTest, SendsABodyOfSeveralMegabytesWhole)
{
    HttpRequest request = postRequest();
    request.body = QByteArray(5'000'000, 'x') + "end";
    m_server.answer(ServerScript().send(httpAnswer(200, "ok")));

    const ExchangeResult result = load(request);

    EXPECT_EQ(result, answered(200, "ok"));
    EXPECT_EQ(m_server.requests().first().body, request.body);
}

class StatusTest : public NetworkHttpLoaderTest, public testing::WithParamInterface<int>
{};

TEST_P(StatusTest, IsAnAnswerWithABodyAndNoFailure)
{
    m_server.answer(ServerScript().send(httpAnswer(GetParam(), "why")));

    const ExchangeResult result = load(postRequest());

    EXPECT_EQ(result, answered(GetParam(), "why"));
    EXPECT_EQ(m_server.requests().size(), 1);
}

INSTANTIATE_TEST_SUITE_P(Http, StatusTest,
                         testing::Values(200, 201, 299, 300, 301, 302, 303, 307, 308, 400, 401, 402,
                                         403, 404, 405, 406, 407, 408, 409, 410, 413, 418, 422, 429,
                                         451, 499, 500, 501, 502, 503, 504, 529, 599));

TEST_F(NetworkHttpLoaderTest, AnEmptyAnswerEndsWithoutABlock)
{
    m_server.answer(ServerScript().send(httpHead(204)));

    EXPECT_EQ(load(getRequest()), answered(204, ""));
}

class BodyWithoutALengthTest : public NetworkHttpLoaderTest,
                               public testing::WithParamInterface<QByteArray>
{};

TEST_P(BodyWithoutALengthTest, EndsWithTheConnectionAndIsAskedForOnce)
{
    m_server.answer(ServerScript().send(GetParam() + "\r\nall of it"));
    m_server.answer(ServerScript().send(GetParam() + "\r\nall of it"));

    EXPECT_EQ(load(getRequest()), answered(200, "all of it"));
    EXPECT_EQ(load(postRequest()), answered(200, "all of it"));
    EXPECT_EQ(m_server.requests().size(), 2);
}

INSTANTIATE_TEST_SUITE_P(Http, BodyWithoutALengthTest,
                         testing::Values("HTTP/1.0 200 OK\r\n",
                                         "HTTP/1.0 200 OK\r\nContent-Type: text/plain\r\n",
                                         "HTTP/1.1 200 OK\r\n",
                                         "HTTP/1.1 200 OK\r\nConnection: close\r\n"));

TEST_F(NetworkHttpLoaderTest, AChunkedBodyWithoutItsLastChunkFails)
{
    m_server.answer(
        ServerScript().send(httpHead(200, "Transfer-Encoding: chunked\r\n") + "4\r\nsome\r\n"));

    EXPECT_EQ(load(postRequest()), brokenOff(200, "some", u"Connection closed"_s));
}

TEST_F(NetworkHttpLoaderTest, TheHeadComesBeforeTheBodyEnds)
{
    m_server.answer(ServerScript().send(httpHead(200)).hold().send("late"));

    HttpExchange exchange(m_loader, getRequest());
    spinUntil([&] { return exchange.result().status.has_value(); });
    m_server.release();

    EXPECT_EQ(exchange.waitForEnd(), answered(200, "late"));
}

TEST_F(NetworkHttpLoaderTest, ARefusedConnectionIsThePlatformsSentence)
{
    HttpRequest request = postRequest();
    {
        QTcpServer gone;
        ASSERT_TRUE(gone.listen(QHostAddress::LocalHost));
        request.url.setPort(gone.serverPort());
    }

    EXPECT_EQ(load(request), failed(u"Connection refused"_s));
}

TEST_F(NetworkHttpLoaderTest, AnAddressWithoutAHostFails)
{
    HttpRequest request = getRequest();
    request.url = QUrl(u"http:///v1/models"_s);

    const ExchangeResult result = load(request);

    EXPECT_FALSE(result.status.has_value());
    ASSERT_TRUE(result.error.has_value());
    EXPECT_FALSE(result.error->message.isEmpty());
}

TEST_F(NetworkHttpLoaderTest, ARequestThatIsClosedUnansweredIsNotSentAgain)
{
    m_server.answer(ServerScript());

    const ExchangeResult result = load(postRequest());

    EXPECT_EQ(result, failed(u"Connection closed"_s));
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_F(NetworkHttpLoaderTest, AGetThatIsClosedUnansweredIsNotSentAgain)
{
    m_server.answer(ServerScript());

    EXPECT_EQ(load(getRequest()), failed(u"Connection closed"_s));
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_F(NetworkHttpLoaderTest, ARequestThatIsResetUnansweredIsNotSentAgain)
{
    m_server.answer(ServerScript().reset());

    const ExchangeResult result = load(postRequest());

    EXPECT_EQ(result, failed(u"Connection closed"_s));
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_F(NetworkHttpLoaderTest, AResetInTheBodyKeepsWhatCameAndFails)
{
    m_server.answer(ServerScript()
                        .send(httpHead(200, "Content-Length: 100\r\n") + "the beginning")
                        .hold()
                        .reset());

    HttpExchange exchange(m_loader, postRequest());
    spinUntil([&] { return !exchange.result().body.isEmpty(); });
    m_server.release();

    EXPECT_EQ(exchange.waitForEnd(), brokenOff(200, "the beginning", u"Connection closed"_s));
}

TEST_F(NetworkHttpLoaderTest, ABodyShorterThanItsLengthFails)
{
    m_server.answer(
        ServerScript().send(httpHead(200, "Content-Length: 100\r\n") + "the beginning"));

    EXPECT_EQ(load(postRequest()), brokenOff(200, "the beginning", u"Connection closed"_s));
}

TEST_F(NetworkHttpLoaderTest, AnAnswerThatIsNoHttpFails)
{
    m_server.answer(ServerScript().send("220 mail.example ESMTP ready\r\n"));

    const ExchangeResult result = load(postRequest());

    EXPECT_FALSE(result.status.has_value());
    ASSERT_TRUE(result.error.has_value());
    EXPECT_FALSE(result.error->message.isEmpty());
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_F(NetworkHttpLoaderTest, ASilentServerTimesOutBeforeTheHead)
{
    m_server.answer(ServerScript().hold());
    HttpExchange exchange(m_loader, postRequest());
    spinUntil([&] { return m_server.holdingCount() == 1; });
    // Whatever was under way between the two threads has arrived once the next answer has.
    m_server.answer(ServerScript().send(httpAnswer(200, "")));
    load(getRequest());

    m_clock.advance(59'999ms);
    RunQueue::interfaceThread().runUntilIdle();
    EXPECT_FALSE(exchange.result().isOver);
    m_clock.advance(60s);
    exchange.waitForEnd();
    spinUntil([&] { return m_server.openConnectionCount() == 0; });

    EXPECT_EQ(exchange.result(), failed(u"The request timed out."_s));
}

TEST_F(NetworkHttpLoaderTest, TheTimeoutIsTheRequests)
{
    m_server.answer(ServerScript().hold());
    HttpRequest request = getRequest();
    request.timeout = 2s;
    HttpExchange exchange(m_loader, request);
    spinUntil([&] { return m_server.holdingCount() == 1; });

    m_clock.advance(2s);

    EXPECT_EQ(exchange.waitForEnd(), failed(u"The request timed out."_s));
}

TEST_F(NetworkHttpLoaderTest, OnlySilenceCountsTowardsTheTimeout)
{
    ServerScript script;
    script.send(httpHead(200)).hold();
    for (int i = 0; i < 5; ++i) {
        script.send("x").hold();
    }
    m_server.answer(script);
    HttpExchange exchange(m_loader, postRequest());
    spinUntil([&] { return exchange.result().status.has_value(); });

    for (int i = 1; i <= 5; ++i) {
        m_clock.advance(50s);
        m_server.release();
        spinUntil([&] { return exchange.result().body.size() == i; });
    }
    spinUntil([&] { return m_clock.sleeperCount() == 1; });
    EXPECT_FALSE(exchange.result().isOver);
    m_clock.advance(60s);
    exchange.waitForEnd();
    spinUntil([&] { return m_server.openConnectionCount() == 0; });

    EXPECT_EQ(exchange.result(), brokenOff(200, "xxxxx", u"The request timed out."_s));
}

TEST_F(NetworkHttpLoaderTest, AChunkedAnswerIsTheSameHoweverItIsCut)
{
    const QByteArray answer = httpHead(200, "Transfer-Encoding: chunked\r\n") +
                              "7\r\ndata: a\r\n1;note=x\r\n\n\r\nb\r\ndata: \xf0\x9f\x98\x80\n\r\n0"
                              "\r\n\r\n";
    const ExchangeResult expected = answered(200, "data: a\ndata: \xf0\x9f\x98\x80\n");

    for (qsizetype cut = 1; cut < answer.size(); ++cut) {
        m_server.answer(ServerScript().sendCutAt(answer, cut));
        EXPECT_EQ(load(postRequest()), expected) << "cut at " << cut;
    }
}

TEST_F(NetworkHttpLoaderTest, ACompressedAnswerIsTheSameHoweverItIsCut)
{
    const QByteArray compressed =
        QByteArray::fromHex("1f8b08000000000002034b492c49b45248cecf2d284a2d2e4e4d512849ad28d12128c0"
                            "05000e314f4f38000000");
    const QByteArray answer = httpAnswer(200, compressed, "Content-Encoding: gzip\r\n");
    const ExchangeResult expected =
        answered(200, "data: compressed text, compressed text, compressed text\n");

    for (qsizetype cut = 1; cut < answer.size(); ++cut) {
        m_server.answer(ServerScript().sendCutAt(answer, cut));
        EXPECT_EQ(load(postRequest()), expected) << "cut at " << cut;
    }
}

class RedirectTest : public NetworkHttpLoaderTest, public testing::WithParamInterface<int>
{};

TEST_P(RedirectTest, IsAnswerAndNotFollowed)
{
    ScriptedServer other;
    const QByteArray location = other.url(u"/v1/chat/completions"_s).toEncoded();
    m_server.answer(
        ServerScript().send(httpAnswer(GetParam(), "moved", "Location: " + location + "\r\n")));

    const ExchangeResult result = load(postRequest());

    EXPECT_EQ(result, answered(GetParam(), "moved"));
    EXPECT_EQ(other.connectionCount(), 0U);
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_P(RedirectTest, TellsWhereItLeads)
{
    m_server.answer(ServerScript().send(
        httpAnswer(GetParam(), "moved", "Location: https://elsewhere.test/a?b#c\r\n")));

    HttpExchange exchange(m_loader, postRequest(), HttpExchange::Reading::headOnly);
    exchange.waitForHead();

    EXPECT_EQ(exchange.location(), "https://elsewhere.test/a?b#c");
}

INSTANTIATE_TEST_SUITE_P(Http, RedirectTest, testing::Values(301, 302, 303, 307, 308));

struct ForbiddenHeader
{
    QByteArray name{};
    QByteArray value{};
};

class ForbiddenHeaderTest : public NetworkHttpLoaderTest,
                            public testing::WithParamInterface<ForbiddenHeader>
{};

TEST_P(ForbiddenHeaderTest, IsRefusedBeforeAnythingIsSent)
{
    HttpRequest request = postRequest();
    request.headers.emplaceBack(GetParam().name, GetParam().value);

    const ExchangeResult result = load(request);

    EXPECT_EQ(result, failed(u"A header of the request holds a control character."_s));
    EXPECT_EQ(m_server.connectionCount(), 0U);
}

INSTANTIATE_TEST_SUITE_P(Http, ForbiddenHeaderTest,
                         testing::Values(ForbiddenHeader{"X-Key", "secret\r\nX-Injected: 1"},
                                         ForbiddenHeader{"X-Key", "secret\n"},
                                         ForbiddenHeader{"X-Key", "\rsecret"},
                                         ForbiddenHeader{"X-Key", QByteArray("sec\0ret", 7)},
                                         ForbiddenHeader{"X-Key", "sec\tret"},
                                         ForbiddenHeader{"X-Key", "secret\x7f"},
                                         ForbiddenHeader{"X-Key\r\nX-Injected", "secret"}));

TEST_F(NetworkHttpLoaderTest, AHeaderMayHoldTextBeyondAscii)
{
    HttpRequest request = getRequest();
    request.headers.emplaceBack("X-Key", "schl\xc3\xbcssel");
    m_server.answer(ServerScript().send(httpAnswer(200, "")));

    load(request);

    EXPECT_EQ(m_server.requests().first().header("x-key"), "schl\xc3\xbcssel");
}

TEST_F(NetworkHttpLoaderTest, NoFailureTellsTheKey)
{
    const QList<ServerScript> scripts{
        ServerScript(),
        ServerScript().reset(),
        ServerScript().send("no http\r\n\r\n"),
        ServerScript().send(httpHead(200, "Content-Length: 9\r\n")),
    };

    for (const ServerScript &script : scripts) {
        m_server.answer(script);
        const ExchangeResult result = load(postRequest());
        ASSERT_TRUE(result.error.has_value());
        EXPECT_FALSE(result.error->message.contains(QString::fromLatin1(secret)));
    }
}

TEST_F(NetworkHttpLoaderTest, AServerThatLeavesConnectionsOpenHoldsNothingUp)
{
    for (int i = 0; i < 12; ++i) {
        m_server.answer(ServerScript().send(httpAnswer(200, "kept")).hold());
        EXPECT_EQ(load(postRequest()), answered(200, "kept"));
    }
    spinUntil([&] { return m_server.openConnectionCount() == 0; });

    EXPECT_EQ(m_server.connectionCount(), 12U);
}

TEST_F(NetworkHttpLoaderTest, KeepsNoCookies)
{
    m_server.answer(ServerScript().send(httpAnswer(200, "", "Set-Cookie: id=1; Path=/\r\n")));
    m_server.answer(ServerScript().send(httpAnswer(200, "")));

    load(getRequest());
    load(getRequest());

    EXPECT_TRUE(m_server.requests().last().header("cookie").isNull());
}

TEST_F(NetworkHttpLoaderTest, KeepsNoAnswers)
{
    const QByteArray fresh = "Cache-Control: max-age=3600\r\nETag: \"1\"\r\n";
    m_server.answer(ServerScript().send(httpAnswer(200, "first", fresh)));
    m_server.answer(ServerScript().send(httpAnswer(200, "second", fresh)));

    load(getRequest());

    EXPECT_EQ(load(getRequest()), answered(200, "second"));
    EXPECT_TRUE(m_server.requests().last().header("if-none-match").isNull());
}

TEST_F(NetworkHttpLoaderTest, ADemandForAPasswordIsAnAnswer)
{
    const QByteArray demand = "WWW-Authenticate: Basic realm=\"model\"\r\n";
    m_server.answer(ServerScript().send(httpAnswer(401, "no", demand)));

    const ExchangeResult result = load(postRequest());

    EXPECT_EQ(result, answered(401, "no"));
    EXPECT_EQ(m_server.requests().size(), 1);
}

/// Names an HTTP proxy in the environment, where the system looks for it.
class ProxyVariable
{
public:
    explicit ProxyVariable(const QUrl &proxy) { qputenv("http_proxy", proxy.toEncoded()); }
    ProxyVariable(const ProxyVariable &) = delete;
    ProxyVariable &operator=(const ProxyVariable &) = delete;
    ~ProxyVariable() { qunsetenv("http_proxy"); }
};

TEST_F(NetworkHttpLoaderTest, ThisMachineIsReachedPastAProxy)
{
    ScriptedServer proxy;
    const ProxyVariable variable(proxy.url(QString()));
    HttpRequest request = getRequest();

    for (const QString &host : {u"localhost"_s, u"127.0.0.1"_s}) {
        m_server.answer(ServerScript().send(httpAnswer(200, "direct")));
        request.url.setHost(host);
        EXPECT_EQ(load(request), answered(200, "direct"));
    }

    EXPECT_EQ(proxy.connectionCount(), 0U);
}

TEST_F(NetworkHttpLoaderTest, OtherMachinesAreReachedThroughTheProxy)
{
    ScriptedServer proxy;
    const ProxyVariable variable(proxy.url(QString()));
    proxy.answer(ServerScript().send(httpAnswer(200, "by proxy")));
    HttpRequest request = getRequest();
    request.url = QUrl(u"http://model.invalid/v1/models"_s);

    EXPECT_EQ(load(request), answered(200, "by proxy"));
    EXPECT_EQ(proxy.requests().first().target, "http://model.invalid/v1/models");
}

TEST_F(NetworkHttpLoaderTest, AReaderThatDoesNotReadHoldsTheServerBack)
{
    constexpr int blockCount = 64;
    const QByteArray block(1 << 20, 'x');
    m_server.answer(ServerScript().send(httpHead(200)).sendRepeatedly(block, blockCount));
    HttpExchange slow(m_loader, postRequest(), HttpExchange::Reading::headOnly);
    spinUntil([&] { return slow.result().status.has_value(); });

    // Gives the unread answer the time of another that is as long.
    ScriptedServer other;
    other.answer(ServerScript().send(httpHead(200)).sendRepeatedly(block, blockCount));
    HttpRequest request = postRequest();
    request.url = other.url(u"/"_s);
    EXPECT_EQ(load(request), answered(200, block.repeated(blockCount)));

    // What the two sockets and the reply hold between them.
    EXPECT_LT(m_server.sentBytes(), 24 * block.size());
    slow.readBody();
    EXPECT_EQ(slow.waitForEnd(), answered(200, block.repeated(blockCount)));
}

} // namespace
} // namespace vantrel::test
