#include "ai/AIServiceFixture.h"
#include "platform/jobs/RunQueue.h"

#include <QFile>

#include <chrono>

#include <unistd.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

using Case = AIServiceError::Case;
using Deltas = Received<QString>;
using Events = Received<HunkExplanationStreamEvent>;

class AIServiceStreamTest : public AIServiceFixture
{
protected:
    void answer(const QByteArray &body)
    {
        m_server.answer(ServerScript().send(httpAnswer(200, body)));
    }

    static HunkExplanationStreamEvent completed(const QString &tag, const QString &text)
    {
        HunkExplanation explanation;
        explanation.tag = tag;
        explanation.explanation = text;
        return ExplanationCompleted{explanation};
    }
};

TEST_F(AIServiceStreamTest, AChatYieldsItsDeltas)
{
    answer(events({u"Adds "_s, u"ä😀"_s, u"\n"_s}) + "data: [DONE]\n\n");

    EXPECT_EQ(waitFor(chat()), (Deltas{{u"Adds "_s, u"ä😀"_s, u"\n"_s}, std::nullopt, true}));
}

TEST_F(AIServiceStreamTest, AnExplanationYieldsProseItsEndAndTheRecord)
{
    answer(events({u"Adds it.\n--"_s, u"-META---\n"_s, u"{\"tag\":\"T\"}"_s}) + "data: [DONE]\n\n");

    EXPECT_EQ(waitFor(explain()), (Events{{ProseDelta{u"Adds it.\n"_s}, ProseFinished{},
                                           completed(u"T"_s, u"Adds it."_s)},
                                          std::nullopt,
                                          true}));
}

TEST_F(AIServiceStreamTest, AnExplanationWithoutMetadataIsWhole)
{
    answer(events({u"Adds it --"_s}));

    EXPECT_EQ(waitFor(explain()),
              (Events{{ProseDelta{u"Adds it "_s}, ProseDelta{u"--"_s}, ProseFinished{},
                       completed(u"Change"_s, u"Adds it --"_s)},
                      std::nullopt,
                      true}));
}

TEST_F(AIServiceStreamTest, CarriageReturnsAndCommentsDoNotMatter)
{
    answer(": OPENROUTER PROCESSING\r\n\r\n" + events({u"a"_s}).replace("\n", "\r\n") +
           ": keep-alive\n\nevent: x\nid: 1\n\ndata: [DONE]\r\n\r\n");

    EXPECT_EQ(waitFor(chat()), (Deltas{{u"a"_s}, std::nullopt, true}));
}

TEST_F(AIServiceStreamTest, DataWithoutABlankIsRead)
{
    answer(events({u"a"_s}).replace("data: ", "data:"));

    EXPECT_EQ(waitFor(chat()), (Deltas{{u"a"_s}, std::nullopt, true}));
}

TEST_F(AIServiceStreamTest, TheEndMarkEndsTheStreamWhateverTheServerDoes)
{
    m_server.answer(
        ServerScript()
            .send(httpHead(200) + events({u"a"_s}) + "data: [DONE]  \n" + events({u"too late"_s}))
            .hold());

    EXPECT_EQ(waitFor(chat()), (Deltas{{u"a"_s}, std::nullopt, true}));
    spinUntil([&] { return m_server.openConnectionCount() == 0; });
}

TEST_F(AIServiceStreamTest, ChunksThatCannotBeDecodedArePassedOver)
{
    answer("data: {broken\n\ndata: {\"error\":\"busy\"}\n\n" + events({u"a"_s}) +
           "data: {\"choices\":[]}\n\n");

    EXPECT_EQ(waitFor(chat()), (Deltas{{u"a"_s}, std::nullopt, true}));
}

TEST_F(AIServiceStreamTest, NoContentIsAnInvalidExplanationAndAnEmptyChat)
{
    const QByteArray nothing = events({QString(), QString()}) + "data: [DONE]\n\n";
    answer(nothing);
    answer(nothing);
    answer("");

    EXPECT_EQ(waitFor(chat()), (Deltas{{}, std::nullopt, true}));
    EXPECT_EQ(waitFor(explain()), (Events{{}, AIFailure(error(Case::invalidResponse)), true}));
    EXPECT_EQ(waitFor(explain()), (Events{{}, AIFailure(error(Case::invalidResponse)), true}));
}

TEST_F(AIServiceStreamTest, ADeltaIsYieldedAsSoonAsItArrives)
{
    m_server.answer(
        ServerScript().send(httpHead(200) + events({u"a"_s})).hold().send(events({u"b"_s})));
    Deltas received;
    const Job job(receive(chat(), &received));

    spinUntil([&] { return received.values == QStringList{u"a"_s}; });
    m_server.release();
    spinUntil([&] { return received.isOver; });

    EXPECT_EQ(received, (Deltas{{u"a"_s, u"b"_s}, std::nullopt, true}));
}

TEST_F(AIServiceStreamTest, AChunkedStreamIsTheSameHoweverItIsCut)
{
    const QByteArray data = events({u"é😀"_s, u"---META---{}"_s}) + "data: [DONE]\n\n";
    const QByteArray stream = httpHead(200, "Transfer-Encoding: chunked\r\n") +
                              QByteArray::number(data.size(), 16) + "\r\n" + data + "\r\n0\r\n\r\n";
    const Events expected{{ProseDelta{u"é😀"_s}, ProseFinished{}, completed(u"Change"_s, u"é😀"_s)},
                          std::nullopt,
                          true};

    for (qsizetype cut = 1; cut < stream.size(); ++cut) {
        m_server.answer(ServerScript().sendCutAt(stream, cut));
        EXPECT_EQ(waitFor(explain()), expected) << "cut at " << cut;
    }
}

TEST_F(AIServiceStreamTest, AResetKeepsTheDeltasAndFails)
{
    const AIFailure closed(PlatformError{u"Connection closed"_s});
    const QByteArray some = httpHead(200, "Content-Length: 9999\r\n") + events({u"a"_s});
    m_server.answer(ServerScript().send(some).hold().reset());
    Events received;
    const Job job(receive(explain(), &received));
    spinUntil([&] { return !received.values.isEmpty(); });

    m_server.release();
    spinUntil([&] { return received.isOver; });

    EXPECT_EQ(received, (Events{{ProseDelta{u"a"_s}}, closed, true}));
    EXPECT_EQ(m_server.requests().size(), 1);
}

TEST_F(AIServiceStreamTest, SilenceBeyondTheTimeoutFails)
{
    const AIFailure silent(PlatformError{u"The request timed out."_s});
    m_server.answer(ServerScript().send(httpHead(200) + events({u"a"_s})).hold());
    Deltas received;
    const Job job(receive(chat(), &received));
    spinUntil([&] { return !received.values.isEmpty(); });

    m_clock.advance(60s);
    spinUntil([&] { return received.isOver; });
    spinUntil([&] { return m_server.openConnectionCount() == 0; });

    EXPECT_EQ(received, (Deltas{{u"a"_s}, silent, true}));
}

TEST_F(AIServiceStreamTest, AnAnswerThatIsNoHttpFails)
{
    m_server.answer(ServerScript().send("SSH-2.0-OpenSSH_9.2\r\n"));

    const Deltas received = waitFor(chat());

    EXPECT_EQ(received.values, QStringList());
    ASSERT_TRUE(received.error.has_value());
    EXPECT_EQ(received.error->serviceError(), nullptr);
    EXPECT_FALSE(received.error->description().isEmpty());
}

TEST_F(AIServiceStreamTest, AMissingKeyEndsTheStreamAndAsksForTheSetup)
{
    useProvider(AIProvider::openAI);

    EXPECT_EQ(waitFor(chat()), (Deltas{{}, AIFailure(error(Case::missingAPIKey)), true}));
    EXPECT_EQ(waitFor(explain()), (Events{{}, AIFailure(error(Case::missingAPIKey)), true}));
    EXPECT_EQ(m_setupRequiredCount, 2);
    EXPECT_EQ(m_server.connectionCount(), 0U);
}

TEST_F(AIServiceStreamTest, NothingIsSentBeforeAStreamIsRead)
{
    const TextStream unread = chat();

    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_EQ(m_keychain->log().entries(), QStringList());
}

TEST_F(AIServiceStreamTest, CancellingWhileTheKeyIsReadSendsNothing)
{
    m_keychain->holdReads();
    Deltas received;
    Job job(receive(chat(), &received));
    RunQueue::interfaceThread().runUntilIdle();
    m_keychain->log().waitFor(u"read custom"_s);

    job.cancel();
    m_keychain->releaseReads();
    // Behind another request, everything of the cancelled one would have come.
    m_server.answer(ServerScript().send(httpAnswer(200, reply(u"a"_s))));
    waitFor(summarize());

    EXPECT_EQ(m_server.connectionCount(), 1U);
    EXPECT_EQ(received, Deltas());
}

TEST_F(AIServiceStreamTest, CancellingBeforeTheHeadClosesTheConnection)
{
    m_server.answer(ServerScript().hold());
    Events received;
    Job job(receive(explain(), &received));
    spinUntil([&] { return m_server.holdingCount() == 1; });

    job.cancel();
    spinUntil([&] { return m_server.openConnectionCount() == 0; });

    EXPECT_EQ(received, Events());
}

TEST_F(AIServiceStreamTest, CancellingInTheStreamClosesTheConnection)
{
    m_server.answer(ServerScript().send(httpHead(200) + events({u"a"_s})).hold());
    Events received;
    Job job(receive(explain(), &received));
    spinUntil([&] { return !received.values.isEmpty(); });

    job.cancel();
    spinUntil([&] { return m_server.openConnectionCount() == 0; });

    EXPECT_EQ(received, (Events{{ProseDelta{u"a"_s}}, std::nullopt, false}));
}

/// Reads a stream and keeps nothing but its length.
Task<> measure(TextStream stream, qsizetype *length, bool *isOver)
{
    while (const auto item = co_await stream.next()) {
        if (*item) {
            *length += (*item)->size();
        } else {
            ADD_FAILURE() << qPrintable(item->error().description());
        }
    }
    *isOver = true;
}

/// The bytes of this process that lie in memory.
qint64 residentBytes()
{
    QFile file(u"/proc/self/statm"_s);
    EXPECT_TRUE(file.open(QIODevice::ReadOnly));
    return file.readAll().split(' ').value(1).toLongLong() * ::sysconf(_SC_PAGESIZE);
}

TEST_F(AIServiceStreamTest, AnEndlessStreamDoesNotGrowTheMemory)
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    GTEST_SKIP() << "the sanitizers keep freed memory";
#endif
    const QByteArray block = events({QString(8'000, u'x')});
    const int blockCount = int(100'000'000 / block.size());
    m_server.answer(ServerScript().send(httpHead(200)).sendRepeatedly(block, blockCount / 5));
    m_server.answer(ServerScript().send(httpHead(200)).sendRepeatedly(block, blockCount));
    waitFor(chat());

    const qint64 before = residentBytes();
    qsizetype length = 0;
    bool isOver = false;
    const Job job(measure(chat(), &length, &isOver));
    spinUntil([&] { return isOver; });

    EXPECT_EQ(length, qsizetype(blockCount) * 8'000);
    EXPECT_LT(residentBytes() - before, 32'000'000);
}

} // namespace
} // namespace vantrel::test
