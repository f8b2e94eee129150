#include "persistence/ChatHistoryWorker.h"

#include "persistence/ChatThreadMakers.h"
#include "platform/UserDefaults.h"
#include "platform/jobs/RunQueue.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <memory>
#include <random>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::explanationSaying;
using test::question;
using test::second;

using Threads = QList<PersistedChatThread>;

class ChatHistoryWorkerTest : public testing::Test
{
protected:
    /// Saves one message in the worker, at a second later than the time before.
    PersistedChatThread save(ChatHistoryWorker &history, const QString &filePath,
                             const QString &text,
                             const std::optional<HunkExplanation> &explanation = std::nullopt)
    {
        time = time.addSecs(1);
        history.save(filePath, u"-a"_s, {question(text)}, {}, explanation);
        return PersistedChatThread{filePath, u"-a"_s, {question(text)}, {}, time, explanation};
    }

    /// As `save`, straight to the disk.
    PersistedChatThread store(const QString &filePath, const QString &text,
                              const std::optional<HunkExplanation> &explanation = std::nullopt)
    {
        time = time.addSecs(1);
        const PersistedChatThread thread{filePath, u"-a"_s, {question(text)},
                                         {},       time,    explanation};
        disk.save(thread);
        return thread;
    }

    std::unique_ptr<ChatHistoryWorker> makeWorker()
    {
        return std::make_unique<ChatHistoryWorker>(defaults, [this] { return time; });
    }

    std::unique_ptr<ChatHistoryWorker> makeLoadedWorker()
    {
        auto history = makeWorker();
        load(*history);
        return history;
    }

    static void load(ChatHistoryWorker &history)
    {
        const Job loading(history.whenLoaded());
        RunQueue::interfaceThread().runUntil([&] { return !loading.isActive(); });
    }

    void runUntilStored(const Threads &threads)
    {
        RunQueue::interfaceThread().runUntil([&] { return disk.threads() == threads; });
    }

    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    ChatHistoryStore disk{defaults};
    QDateTime time = second(0);
};

TEST_F(ChatHistoryWorkerTest, IsLoadedThoughNothingIsStored)
{
    const auto history = makeLoadedWorker();

    EXPECT_EQ(history->thread(u"a.cpp"_s, u"-a"_s), std::nullopt);
    EXPECT_TRUE(history->explanations(u"a.cpp"_s).isEmpty());
}

TEST_F(ChatHistoryWorkerTest, KnowsWhatIsStoredOnceItIsLoaded)
{
    const auto stored = store(u"a.cpp"_s, u"Why?"_s, explanationSaying(u"It mends."_s));
    const auto history = makeWorker();
    EXPECT_EQ(history->thread(u"a.cpp"_s, u"-a"_s), std::nullopt);

    load(*history);

    const QHash<QString, HunkExplanation> explanations{{u"-a"_s, *stored.explanation}};
    EXPECT_EQ(history->thread(u"a.cpp"_s, u"-a"_s), stored);
    EXPECT_EQ(history->thread(u"b.cpp"_s, u"-a"_s), std::nullopt);
    EXPECT_EQ(history->explanations(u"a.cpp"_s), explanations);
}

TEST_F(ChatHistoryWorkerTest, WhoeverAsksAfterItIsLoadedGoesOnAtOnce)
{
    const auto history = makeLoadedWorker();

    const Job asking(history->whenLoaded());
    RunQueue::interfaceThread().runUntilIdle();

    EXPECT_FALSE(asking.isActive());
}

TEST_F(ChatHistoryWorkerTest, AWaiterThatLeavesIsForgotten)
{
    const auto history = makeWorker();
    Job asking(history->whenLoaded());
    RunQueue::interfaceThread().runUntilIdle();
    ASSERT_TRUE(asking.isActive());

    asking.cancel();
    load(*history);

    EXPECT_FALSE(asking.isActive());
}

TEST_F(ChatHistoryWorkerTest, ASaveCountsAtOnceAndIsWrittenLater)
{
    const auto history = makeLoadedWorker();

    const auto saved = save(*history, u"a.cpp"_s, u"Why?"_s, explanationSaying(u"It mends."_s));

    const QHash<QString, HunkExplanation> explanations{{u"-a"_s, *saved.explanation}};
    EXPECT_EQ(history->thread(u"a.cpp"_s, u"-a"_s), saved);
    EXPECT_EQ(history->explanations(u"a.cpp"_s), explanations);
    EXPECT_EQ(disk.threads(), Threads());
    runUntilStored({saved});
}

TEST_F(ChatHistoryWorkerTest, SavesAreWrittenAsLongAsTheyCome)
{
    const auto history = makeLoadedWorker();
    const auto first = save(*history, u"a.cpp"_s, u"Why?"_s);
    runUntilStored({first});

    const auto second = save(*history, u"b.cpp"_s, u"How?"_s);

    runUntilStored({second, first});
}

TEST_F(ChatHistoryWorkerTest, ASaveWithoutAnExplanationKeepsTheOneStored)
{
    auto expected = store(u"a.cpp"_s, u"Why?"_s, explanationSaying(u"It mends."_s));
    const auto history = makeLoadedWorker();

    expected = save(*history, u"a.cpp"_s, u"How?"_s);

    expected.explanation = explanationSaying(u"It mends."_s);
    EXPECT_EQ(history->thread(u"a.cpp"_s, u"-a"_s), expected);
    runUntilStored({expected});
}

TEST_F(ChatHistoryWorkerTest, WhatIsSavedBeforeItIsLoadedCountsAtOnceAndIsWritten)
{
    const auto stored = store(u"b.cpp"_s, u"Why?"_s);
    const auto history = makeWorker();

    const auto saved = save(*history, u"a.cpp"_s, u"How?"_s);
    EXPECT_EQ(history->thread(u"a.cpp"_s, u"-a"_s), saved);
    load(*history);

    EXPECT_EQ(history->thread(u"a.cpp"_s, u"-a"_s), saved);
    EXPECT_EQ(history->thread(u"b.cpp"_s, u"-a"_s), stored);
    runUntilStored({saved, stored});
}

TEST_F(ChatHistoryWorkerTest, ASaveBeforeItIsLoadedKeepsTheExplanationThatIsStored)
{
    store(u"a.cpp"_s, u"Why?"_s, explanationSaying(u"It mends."_s));
    const auto history = makeWorker();

    auto expected = save(*history, u"a.cpp"_s, u"How?"_s);
    load(*history);

    expected.explanation = explanationSaying(u"It mends."_s);
    EXPECT_EQ(history->thread(u"a.cpp"_s, u"-a"_s), expected);
    runUntilStored({expected});
}

TEST_F(ChatHistoryWorkerTest, ASaveThatTheNextOneReplacesLeavesItsExplanation)
{
    const auto history = makeWorker();

    save(*history, u"a.cpp"_s, u"Why?"_s, explanationSaying(u"It mends."_s));
    auto expected = save(*history, u"a.cpp"_s, u"How?"_s);
    load(*history);

    expected.explanation = explanationSaying(u"It mends."_s);
    EXPECT_EQ(history->thread(u"a.cpp"_s, u"-a"_s), expected);
    runUntilStored({expected});
}

TEST_F(ChatHistoryWorkerTest, NothingIsLostWhenItGoesBeforeItHasLoaded)
{
    const auto stored = store(u"b.cpp"_s, u"Why?"_s);
    auto history = makeWorker();
    const auto first = save(*history, u"a.cpp"_s, u"How?"_s);
    const auto second = save(*history, u"c.cpp"_s, u"When?"_s);

    history.reset();

    EXPECT_EQ(disk.threads(), Threads({second, first, stored}));
}

TEST_F(ChatHistoryWorkerTest, NothingIsLostWhenItGoesWhileItReads)
{
    const auto stored = store(u"b.cpp"_s, u"Why?"_s);
    auto history = makeWorker();
    RunQueue::interfaceThread().runUntilIdle();
    const auto saved = save(*history, u"a.cpp"_s, u"How?"_s);

    history.reset();

    EXPECT_EQ(disk.threads(), Threads({saved, stored}));
}

TEST_F(ChatHistoryWorkerTest, NothingIsLostWhenItGoesWhileItWrites)
{
    auto history = makeLoadedWorker();
    Threads expected;
    for (int i = 0; i < 20; ++i) {
        expected.prepend(save(*history, u"file%1.cpp"_s.arg(i), u"Why?"_s));
        RunQueue::interfaceThread().runUntilIdle();
    }

    history.reset();

    EXPECT_EQ(disk.threads(), expected);
}

TEST_F(ChatHistoryWorkerTest, TwoInstancesKeepEachOthersThreads)
{
    const auto one = makeLoadedWorker();
    const auto other = makeLoadedWorker();

    const auto first = save(*one, u"a.cpp"_s, u"Why?"_s);
    runUntilStored({first});
    const auto second = save(*other, u"b.cpp"_s, u"How?"_s);
    runUntilStored({second, first});
    const auto third = save(*one, u"c.cpp"_s, u"When?"_s);

    runUntilStored({third, second, first});
}

TEST_F(ChatHistoryWorkerTest, MemoryAndDiskHoldWhatTheSameSavesOneByOneLeave)
{
    QTemporaryDir otherFolder;
    UserDefaults otherDefaults(otherFolder.path());
    ChatHistoryStore oneByOne(otherDefaults);
    std::mt19937 random(7);
    auto history = makeWorker();

    for (int i = 0; i < 150; ++i) {
        // More pairs than the limit, repeated ones, and a clock that is set back now and then.
        const QString filePath = u"file%1.cpp"_s.arg(random() % 70);
        time = second(int(random() % 40) + i);
        const auto explanation =
            random() % 3 == 0 ? std::optional(explanationSaying(u"%1"_s.arg(i))) : std::nullopt;
        for (unsigned repetition = 0; repetition <= random() % 3; ++repetition) {
            const bool isFirst = repetition == 0;
            const PersistedChatThread saved =
                save(*history, filePath, u"%1"_s.arg(i), isFirst ? explanation : std::nullopt);
            oneByOne.save(saved);
        }
        if (i % 16 == 0) {
            load(*history);
        }
    }
    Threads known;
    for (const PersistedChatThread &thread : oneByOne.threads()) {
        known.append(history->thread(thread.filePath, thread.diffText).value());
    }
    history.reset();

    EXPECT_EQ(known, oneByOne.threads());
    EXPECT_EQ(known.size(), 50);
    EXPECT_EQ(disk.threads(), known);
}

} // namespace
} // namespace vantrel
