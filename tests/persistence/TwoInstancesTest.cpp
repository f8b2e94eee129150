// Two applications with the same preferences, at the same time.

#include "persistence/ChatHistoryStore.h"
#include "persistence/RecentReposStore.h"
#include "platform/UserDefaults.h"
#include "support/ProcessRun.h"

#include <gtest/gtest.h>

#include <QSet>
#include <QTemporaryDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::ChildProcess;
using test::ProcessRun;

constexpr int count = ChatHistoryStore::maxPersistedThreads / 2;

TEST(TwoInstances, NeitherUndoesWhatTheOtherRemembers)
{
    const QTemporaryDir folder;
    const QString each = QString::number(count);
    ChildProcess one(QStringLiteral(PREFERENCES_PROBE), {folder.path(), u"one"_s, each});
    ChildProcess other(QStringLiteral(PREFERENCES_PROBE), {folder.path(), u"other"_s, each});

    for (ChildProcess *const process : {&one, &other}) {
        const ProcessRun run = process->waitForEnd();
        EXPECT_EQ(run.exitCode, 0);
        EXPECT_EQ(run.errors, "");
    }

    QSet<QString> expected;
    for (int number = 1; number <= count; ++number) {
        expected.insert(u"one%1"_s.arg(number));
        expected.insert(u"other%1"_s.arg(number));
    }
    UserDefaults defaults(folder.path());
    QSet<QString> conversations;
    for (const PersistedChatThread &thread : ChatHistoryStore(defaults).threads()) {
        conversations.insert(thread.filePath);
    }
    QSet<QString> repositories;
    for (const RecentRepo &repo : RecentReposStore(defaults, u"recentRepos"_s, 100).load()) {
        repositories.insert(repo.name);
    }
    EXPECT_EQ(conversations, expected);
    EXPECT_EQ(repositories, expected);
}

TEST(TwoInstances, OneThatIsKilledHoldsUpNobody)
{
    const QTemporaryDir folder;
    UserDefaults defaults(folder.path());
    RecentReposStore repos(defaults, u"recentRepos"_s, 10);
    for (int round = 0; round < 20; ++round) {
        {
            ChildProcess killed(QStringLiteral(PREFERENCES_PROBE),
                                {folder.path(), u"k"_s, u"1000000"_s});
            while (repos.load().isEmpty() && !killed.hasEnded()) {
            }
            ASSERT_FALSE(killed.hasEnded());
        }
        ASSERT_TRUE(defaults.remove(u"recentRepos"_s));

        repos.record(u"mine"_s, u"/mine"_s);

        ASSERT_EQ(repos.load().size(), 1);
        ASSERT_TRUE(defaults.remove(u"recentRepos"_s));
    }
}

} // namespace
} // namespace vantrel
