#include "ai/AIWorker.h"

#include "platform/jobs/Channel.h"
#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"

#include <gtest/gtest.h>

#include <optional>
#include <utility>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

/// A service that begins and ends what it is asked when the test says so, and logs both.
class SteppedService final : public AIServicing
{
public:
    QStringList log{};
    Result<QString, AIFailure> reply = u" the reply\n"_s;
    Channel<HunkExplanationStreamEvent, AIFailure> explanation{};
    Channel<QString, AIFailure> chat{};

    void finishOne()
    {
        m_running.wakeOne();
        RunQueue::interfaceThread().runUntilIdle();
    }

    Task<Result<QString, AIFailure>> complete(QString systemPrompt, QString userMessage) override
    {
        log.append(u"complete %1 | %2"_s.arg(systemPrompt, userMessage));
        co_await m_running.wait();
        log.append(u"completed"_s);
        co_return reply;
    }

    Task<Result<QString, AIFailure>> summarizeFile(QString path, QString diffText) override
    {
        log.append(u"summarize %1 | %2"_s.arg(path, diffText));
        co_await m_running.wait();
        log.append(u"summarized"_s);
        co_return reply;
    }

    ExplanationStream explainHunk(QString path, QString hunkText, QString fullPicture) override
    {
        log.append(u"explain %1 | %2 | %3"_s.arg(path, hunkText, fullPicture));
        return explanation.stream();
    }

    TextStream chatAboutHunk(QString path, QString hunkText,
                             QList<ChatMessage> conversation) override
    {
        log.append(u"chat %1 | %2 | %3"_s.arg(path, hunkText).arg(conversation.size()));
        return chat.stream();
    }

    Task<Result<QStringList, AIFailure>> suggestQuestions(QString path, QString hunkText,
                                                          QList<ChatMessage> conversation) override
    {
        log.append(u"suggest %1 | %2 | %3"_s.arg(path, hunkText).arg(conversation.size()));
        co_await m_running.wait();
        log.append(u"suggested"_s);
        QStringList questions{u"Why?"_s};
        co_return questions;
    }

private:
    WaiterList m_running{};
};

template<typename Value>
Task<> keep(Task<Value> task, std::optional<Value> *kept)
{
    Value value = co_await std::move(task);
    kept->emplace(std::move(value));
}

class AIWorkerTest : public testing::Test
{
protected:
    using Text = Result<QString, AIFailure>;

    template<typename Value>
    static Job begin(Task<Value> task, std::optional<Value> &kept)
    {
        Job job(keep(std::move(task), &kept));
        RunQueue::interfaceThread().runUntilIdle();
        return job;
    }

    SteppedService m_service{};
    AIWorker m_worker{m_service};
    std::optional<Text> m_first{};
    std::optional<Text> m_second{};
    std::optional<Text> m_third{};
};

TEST_F(AIWorkerTest, RunsOneOperationAtATimeInOrderOfCall)
{
    std::optional<Result<QStringList, AIFailure>> questions;
    const Job first = begin(m_worker.summarizeFile(u"a"_s, u"+a"_s), m_first);
    const Job second = begin(m_worker.complete(u"system"_s, u"user"_s), m_second);
    const Job third = begin(m_worker.suggestQuestions(u"c"_s, u"+c"_s, {}), questions);

    m_service.finishOne();
    m_service.finishOne();
    m_service.finishOne();

    EXPECT_EQ(m_service.log,
              (QStringList{u"summarize a | +a"_s, u"summarized"_s, u"complete system | user"_s,
                           u"completed"_s, u"suggest c | +c | 0"_s, u"suggested"_s}));
    EXPECT_EQ(m_first.value(), Text(u" the reply\n"_s));
    EXPECT_EQ(m_second.value(), Text(u" the reply\n"_s));
    EXPECT_EQ(questions.value(), (Result<QStringList, AIFailure>(QStringList{u"Why?"_s})));
}

TEST_F(AIWorkerTest, HandsOutStreamsWhileAnOperationRuns)
{
    const Job running = begin(m_worker.summarizeFile(u"a"_s, u"+a"_s), m_first);

    const ExplanationStream explanation = m_worker.explainHunk(u"b"_s, u"+b"_s, u"all"_s);
    const TextStream chat = m_worker.chatAboutHunk(u"c"_s, u"+c"_s, {ChatMessage()});

    EXPECT_EQ(m_service.log, (QStringList{u"summarize a | +a"_s, u"explain b | +b | all"_s,
                                          u"chat c | +c | 1"_s}));
}

TEST_F(AIWorkerTest, IsFreeWhileAStreamIsRead)
{
    const ExplanationStream explanation = m_worker.explainHunk(u"b"_s, u"+b"_s, QString());

    const Job job = begin(m_worker.summarizeFile(u"a"_s, u"+a"_s), m_first);
    m_service.finishOne();

    EXPECT_EQ(m_first.value(), Text(u" the reply\n"_s));
}

TEST_F(AIWorkerTest, PassesOverAnOperationThatIsCancelledWhileItWaits)
{
    const Job first = begin(m_worker.summarizeFile(u"a"_s, u"+a"_s), m_first);
    Job second = begin(m_worker.summarizeFile(u"b"_s, u"+b"_s), m_second);
    const Job third = begin(m_worker.summarizeFile(u"c"_s, u"+c"_s), m_third);

    second.cancel();
    m_service.finishOne();
    m_service.finishOne();

    EXPECT_EQ(m_service.log, (QStringList{u"summarize a | +a"_s, u"summarized"_s,
                                          u"summarize c | +c"_s, u"summarized"_s}));
    EXPECT_FALSE(m_second.has_value());
}

TEST_F(AIWorkerTest, GoesOnWhenTheRunningOperationIsCancelled)
{
    Job first = begin(m_worker.summarizeFile(u"a"_s, u"+a"_s), m_first);
    const Job second = begin(m_worker.summarizeFile(u"b"_s, u"+b"_s), m_second);

    first.cancel();
    RunQueue::interfaceThread().runUntilIdle();
    m_service.finishOne();

    EXPECT_EQ(m_service.log,
              (QStringList{u"summarize a | +a"_s, u"summarize b | +b"_s, u"summarized"_s}));
    EXPECT_FALSE(m_first.has_value());
    EXPECT_EQ(m_second.value(), Text(u" the reply\n"_s));
}

TEST_F(AIWorkerTest, GoesOnAfterAFailure)
{
    m_service.reply = failure(AIFailure(PlatformError{u"Connection refused"_s}));
    const Job first = begin(m_worker.summarizeFile(u"a"_s, u"+a"_s), m_first);
    const Job second = begin(m_worker.complete(u"system"_s, u"user"_s), m_second);

    m_service.finishOne();
    m_service.finishOne();

    EXPECT_EQ(m_first.value(), m_service.reply);
    EXPECT_EQ(m_second.value(), m_service.reply);
}

TEST_F(AIWorkerTest, TheNarrativeIsOneTrimmedReply)
{
    const QList<ChangesetEntry> entries{{u"a.cpp"_s, u"Adds a."_s}, {u"b.cpp"_s, u"+b"_s}};

    const Job job = begin(m_worker.summarizeChangeset(entries), m_first);
    m_service.finishOne();

    EXPECT_EQ(m_first.value(), Text(u"the reply"_s));
    EXPECT_EQ(
        m_service.log.first(),
        u"complete %1 | %2"_s.arg(prompts::fullPicture(), prompts::fullPictureMessage(entries)));
}

TEST_F(AIWorkerTest, AFailedNarrativeFailsAsTheRequestDid)
{
    m_service.reply = failure(AIFailure(PlatformError{u"Connection refused"_s}));

    const Job job = begin(m_worker.summarizeChangeset({}), m_first);
    m_service.finishOne();

    EXPECT_EQ(m_first.value(), m_service.reply);
}

} // namespace
} // namespace vantrel
