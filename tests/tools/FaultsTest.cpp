// The sample provider's misbehaviour: its choices, and what of each a client sees.

#include "Faults.h"
#include "SampleServer.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QHostAddress>
#include <QMap>
#include <QTcpSocket>

namespace vantrel::sample {
namespace {

using namespace Qt::Literals::StringLiterals;

QList<Fault> choices(std::uint32_t seed)
{
    Faults faults(seed);
    QList<Fault> all;
    for (int i = 0; i < 500; ++i) {
        all.append(faults.next());
    }
    return all;
}

TEST(Faults, AreTheSameForTheSameSeedOnly)
{
    EXPECT_EQ(choices(7), choices(7));
    EXPECT_NE(choices(7), choices(8));
}

TEST(Faults, ComeAllAndMostRequestsAreAnswered)
{
    QMap<QString, int> counts;
    for (const Fault fault : choices(1)) {
        ++counts[faultName(fault)];
    }

    EXPECT_EQ(std::size_t(counts.size()), Faults::usualShares().size());
    EXPECT_GT(counts.value(u"none"_s), 200);
}

/// A server with one fault only, and a client of it.
class FaultyServer : public testing::TestWithParam<bool>
{
protected:
    void startWith(Fault fault)
    {
        SampleServer::Options options;
        options.delayMs = 0;
        options.faults.emplace(1, std::vector<Faults::Share>{{Fault::none, 0}, {fault, 1}});
        server.emplace(options);
        ASSERT_TRUE(server->listen());
        socket.connectToHost(QHostAddress(QHostAddress::LocalHost), server->port());
        const QByteArray body =
            QByteArray(R"({"model":"m","stream":)") + (GetParam() ? "true" : "false") +
            R"(,"messages":[{"role":"system","content":"You suggest follow-up questions"},)"
            R"({"role":"user","content":"u"}]})";
        socket.write("POST /v1/chat/completions HTTP/1.1\r\nContent-Length: " +
                     QByteArray::number(body.size()) + "\r\n\r\n" + body);
    }

    QByteArray awaitAnswer(const std::function<bool(const QByteArray &)> &isWhole)
    {
        QByteArray answer;
        test::spinUntil([&] {
            answer += socket.readAll();
            return isWhole(answer);
        });
        return answer;
    }

    QByteArray awaitEnd()
    {
        QByteArray answer = awaitAnswer([this](const QByteArray &) {
            return socket.state() == QAbstractSocket::UnconnectedState;
        });
        return answer + socket.readAll();
    }

    std::optional<SampleServer> server{};
    QTcpSocket socket{};
};

bool isRefusal(const QByteArray &answer)
{
    return answer.endsWith("}}");
}

TEST_P(FaultyServer, ResetsBeforeTheHead)
{
    startWith(Fault::resetBeforeHead);

    EXPECT_EQ(awaitEnd(), "");
    EXPECT_EQ(socket.error(), QAbstractSocket::RemoteHostClosedError);
}

TEST_P(FaultyServer, ResetsInTheAnswer)
{
    startWith(Fault::resetInAnswer);

    const QByteArray answer = awaitEnd();

    EXPECT_TRUE(answer.startsWith("HTTP/1.1 200 ")) << answer.toStdString();
    EXPECT_FALSE(answer.contains("What could break?"));
}

TEST_P(FaultyServer, SpeaksNoHttp)
{
    startWith(Fault::noHttp);

    EXPECT_TRUE(awaitEnd().startsWith("220 mail.example.com\r\n"));
}

TEST_P(FaultyServer, SendsABrokenBody)
{
    startWith(Fault::brokenBody);

    const QByteArray answer = awaitEnd();

    EXPECT_TRUE(answer.startsWith("HTTP/1.1 200 ")) << answer.toStdString();
    EXPECT_FALSE(answer.contains("}]}"));
}

TEST_P(FaultyServer, SaysThatThereWereTooManyRequests)
{
    startWith(Fault::tooManyRequests);

    EXPECT_TRUE(awaitAnswer(isRefusal).startsWith("HTTP/1.1 429 "));
}

TEST_P(FaultyServer, SaysThatItFailed)
{
    startWith(Fault::serverError);

    EXPECT_TRUE(awaitAnswer(isRefusal).startsWith("HTTP/1.1 500 "));
}

TEST_P(FaultyServer, SendsMegabytes)
{
    startWith(Fault::huge);

    const QByteArray end = GetParam() ? "data: [DONE]\n\n" : R"("chat.completion"})";
    EXPECT_GT(awaitAnswer([&](const QByteArray &answer) { return answer.endsWith(end); }).size(),
              3'000'000);
}

TEST_P(FaultyServer, PausesWithinAnAnswerThatIsGood)
{
    startWith(Fault::slow);

    const QByteArray end = GetParam() ? "data: [DONE]\n\n" : R"("chat.completion"})";
    const QByteArray begun = awaitAnswer([](const QByteArray &bytes) { return !bytes.isEmpty(); });
    EXPECT_FALSE(begun.endsWith(end));
    const QByteArray rest =
        awaitAnswer([&](const QByteArray &bytes) { return bytes.endsWith(end); });
    EXPECT_TRUE((begun + rest).startsWith("HTTP/1.1 200 "));
}

TEST_P(FaultyServer, IsSilentAndStillTakesOthers)
{
    startWith(Fault::silent);
    QTcpSocket other;
    other.connectToHost(QHostAddress(QHostAddress::LocalHost), server->port());
    other.write("hello\r\n\r\n");

    QByteArray refusal;
    test::spinUntil([&] {
        refusal += other.readAll();
        return isRefusal(refusal);
    });
    EXPECT_EQ(socket.readAll(), "");
    EXPECT_EQ(socket.state(), QAbstractSocket::ConnectedState);
}

INSTANTIATE_TEST_SUITE_P(StreamedAndWhole, FaultyServer, testing::Bool());

} // namespace
} // namespace vantrel::sample
