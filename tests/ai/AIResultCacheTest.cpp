#include "ai/AIResultCache.h"

#include "platform/jobs/Job.h"
#include "platform/jobs/RunQueue.h"
#include "platform/jobs/WaiterList.h"

#include <gtest/gtest.h>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

ChangesetKey keyOf(const QList<ChangesetKey::Entry> &entries)
{
    return ChangesetKey(entries);
}

const ChangesetKey::Entry plum{u"plum.cpp"_s, u"+plum"_s};
const ChangesetKey::Entry pear{u"pear.cpp"_s, u"+pear"_s};

/// Lines "1" to `count`, joined by line feeds.
QString lines(int count)
{
    QStringList all;
    for (int number = 1; number <= count; ++number) {
        all.append(QString::number(number));
    }
    return all.join(u'\n');
}

class AIResultCacheTest : public testing::Test
{
protected:
    /// A producer that counts its starts and waits until the test lets it end.
    Task<QString> produce(QString text)
    {
        ++starts;
        co_await released.wait();
        co_return text;
    }

    static Task<> keep(Task<QString> task, QStringList *kept)
    {
        const QString result = co_await std::move(task);
        kept->append(result);
    }

    /// Asks for the narrative of `key`; the answer goes to `results`.
    [[nodiscard]] Job ask(const ChangesetKey &key, const QString &text)
    {
        return Job(keep(cache->changesetSummary(key, produce(text)), &results));
    }

    static void run() { RunQueue::interfaceThread().runUntilIdle(); }

    WaiterList released{};
    int starts = 0;
    QStringList results{};
    std::unique_ptr<AIResultCache> cache = std::make_unique<AIResultCache>();
};

TEST_F(AIResultCacheTest, KnowsNothingAtFirst)
{
    EXPECT_EQ(cache->fileSummary({u"a"_s, u"+a"_s}), std::nullopt);
    EXPECT_EQ(cache->hunkExplanation({u"a"_s, u"+a"_s}), std::nullopt);
    EXPECT_EQ(cache->chatThread({u"a"_s, u"+a"_s}), std::nullopt);
    EXPECT_FALSE(cache->hasChangesetSummary(keyOf({plum})));
    EXPECT_EQ(cache->finishedChangesetSummary(keyOf({plum})), std::nullopt);
}

TEST_F(AIResultCacheTest, KeepsASummaryUnderItsPathAndText)
{
    cache->setFileSummary({u"a"_s, u"+a"_s}, u"One."_s);
    cache->setFileSummary({u"a"_s, u"+a"_s}, u"Two."_s);

    EXPECT_EQ(cache->fileSummary({u"a"_s, u"+a"_s}), u"Two."_s);
    EXPECT_EQ(cache->fileSummary({u"a"_s, u"+b"_s}), std::nullopt) << "the file has changed";
    EXPECT_EQ(cache->fileSummary({u"b"_s, u"+a"_s}), std::nullopt);
}

TEST_F(AIResultCacheTest, KeepsAnExplanationUnderItsPathAndText)
{
    const HunkExplanation explanation{u"Bug fix"_s, u"Keeps the plum."_s, {}, {}};

    cache->setHunkExplanation({u"a"_s, u"+a"_s}, explanation);

    EXPECT_EQ(cache->hunkExplanation({u"a"_s, u"+a"_s}), explanation);
    EXPECT_EQ(cache->hunkExplanation({u"a"_s, u"+b"_s}), std::nullopt);
    EXPECT_EQ(cache->hunkExplanation({u"b"_s, u"+a"_s}), std::nullopt);
}

TEST_F(AIResultCacheTest, KeepsAConversationUnderItsPathAndText)
{
    PersistedChatThread thread;
    thread.filePath = u"a"_s;
    thread.diffText = u"+a"_s;

    cache->setChatThread({u"a"_s, u"+a"_s}, thread);

    EXPECT_EQ(cache->chatThread({u"a"_s, u"+a"_s}), thread);
    EXPECT_EQ(cache->chatThread({u"a"_s, u"+b"_s}), std::nullopt);
}

// The narrative

TEST_F(AIResultCacheTest, TwoRequestsForOneSetInDifferentOrdersShareOneJob)
{
    const Job first = ask(keyOf({plum, pear}), u"One."_s);
    const Job second = ask(keyOf({pear, plum}), u"Two."_s);
    run();
    EXPECT_EQ(starts, 1);
    EXPECT_TRUE(cache->hasChangesetSummary(keyOf({plum, pear})));
    EXPECT_EQ(cache->finishedChangesetSummary(keyOf({plum, pear})), std::nullopt);

    released.wakeAll();
    run();

    EXPECT_EQ(results, (QStringList{u"One."_s, u"One."_s}));
    EXPECT_EQ(cache->finishedChangesetSummary(keyOf({pear, plum})), u"One."_s);
}

TEST_F(AIResultCacheTest, AFinishedNarrativeIsAnsweredWithoutItsProducer)
{
    const Job first = ask(keyOf({plum}), u"One."_s);
    run();
    released.wakeAll();
    run();

    const Job second = ask(keyOf({plum}), u"Two."_s);
    run();

    EXPECT_EQ(starts, 1);
    EXPECT_EQ(results, (QStringList{u"One."_s, u"One."_s}));
}

TEST_F(AIResultCacheTest, AnotherSetHasANarrativeOfItsOwn)
{
    const Job first = ask(keyOf({plum}), u"One."_s);
    const Job second = ask(keyOf({plum, pear}), u"Two."_s);
    run();

    EXPECT_EQ(starts, 2);
}

TEST_F(AIResultCacheTest, TheNarrativeIsMadeOnWhenItsFirstReaderLeaves)
{
    Job first = ask(keyOf({plum}), u"One."_s);
    const Job second = ask(keyOf({plum}), u"Two."_s);
    run();

    first.cancel();
    released.wakeAll();
    run();

    EXPECT_EQ(results, QStringList{u"One."_s});
}

TEST_F(AIResultCacheTest, TheNarrativeIsMadeOnWhenAllItsReadersLeave)
{
    Job first = ask(keyOf({plum}), u"One."_s);
    run();

    first.cancel();
    released.wakeAll();
    run();

    EXPECT_EQ(cache->finishedChangesetSummary(keyOf({plum})), u"One."_s);
}

TEST_F(AIResultCacheTest, ACacheThatGoesWhileANarrativeIsMadeDropsIt)
{
    Job first = ask(keyOf({plum}), u"One."_s);
    run();
    first.cancel();

    cache.reset();
    released.wakeAll();
    run();

    EXPECT_EQ(results, QStringList());
}

// The texts of the request for the narrative

TEST_F(AIResultCacheTest, ADiffOf40LinesIsPassedWhole)
{
    EXPECT_EQ(cache->promptText(u"a"_s, lines(40)), lines(40));
}

TEST_F(AIResultCacheTest, ADiffOf41PiecesIsCutAfter40)
{
    EXPECT_EQ(cache->promptText(u"a"_s, lines(41)), lines(40) + u"\n… (truncated)"_s);
    EXPECT_EQ(cache->promptText(u"a"_s, lines(40) + u'\n'), lines(40) + u"\n… (truncated)"_s);
}

TEST_F(AIResultCacheTest, EmptyLinesCount)
{
    EXPECT_EQ(cache->promptText(u"a"_s, QString(45, u'\n')),
              QString(39, u'\n') + u"\n… (truncated)"_s);
    EXPECT_EQ(cache->promptText(u"a"_s, QString()), QString());
}

TEST_F(AIResultCacheTest, AFileIsToldByItsSummaryWhenThereIsOne)
{
    cache->setFileSummary({u"a"_s, lines(50)}, u"Counts."_s);

    EXPECT_EQ(cache->promptText(u"a"_s, lines(50)), u"Counts."_s);
    EXPECT_EQ(cache->promptText(u"b"_s, lines(3)), lines(3));
}

} // namespace
} // namespace vantrel::test
