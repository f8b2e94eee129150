// What is remembered of repositories and conversations when the disk is full or read-only.

#include "persistence/ChatHistoryWorker.h"
#include "persistence/ChatThreadMakers.h"
#include "persistence/RecentReposStore.h"
#include "platform/UserDefaults.h"
#include "platform/jobs/RunQueue.h"
#include "support/PreferencesOnASmallDisk.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::expectOneMessage;
using test::question;
using test::savingFailed;

class StoresOnASmallDisk : public test::PreferencesOnASmallDisk
{
protected:
    /// The files of the conversations that another process would find.
    [[nodiscard]] QStringList storedConversations() const
    {
        UserDefaults others(folder());
        QStringList files;
        for (const PersistedChatThread &thread : ChatHistoryStore(others).threads()) {
            files.append(thread.filePath);
        }
        return files;
    }

    [[nodiscard]] std::unique_ptr<ChatHistoryWorker> makeLoadedHistory()
    {
        auto history = std::make_unique<ChatHistoryWorker>(*defaults);
        const Job loading(history->whenLoaded());
        RunQueue::interfaceThread().runUntil([&] { return !loading.isActive(); });
        return history;
    }

    static void save(ChatHistoryWorker &history, const QString &filePath)
    {
        history.save(filePath, u"-a"_s, {question(u"Why?"_s)}, {}, std::nullopt);
    }
};

TEST_F(StoresOnASmallDisk, AConversationThatTheFullDiskHasNoRoomForIsStoredWithTheNext)
{
    auto history = makeLoadedHistory();
    save(*history, u"a.cpp"_s);
    RunQueue::interfaceThread().runUntil([&] { return storedConversations().size() == 1; });
    expectOneMessage(savingFailed);
    disk.fill();

    save(*history, u"b.cpp"_s);
    RunQueue::interfaceThread().runUntil(
        [&] { return ChatHistoryStore(*defaults).threads().size() == 2; });
    EXPECT_TRUE(history->thread(u"b.cpp"_s, u"-a"_s));
    EXPECT_EQ(storedConversations(), QStringList{u"a.cpp"_s});
    disk.makeRoom();
    save(*history, u"c.cpp"_s);
    history.reset();

    EXPECT_EQ(storedConversations(), QStringList({u"c.cpp"_s, u"b.cpp"_s, u"a.cpp"_s}));
}

TEST_F(StoresOnASmallDisk, AConversationThatWaitsIsStoredWhenTheApplicationEnds)
{
    auto history = makeLoadedHistory();
    expectOneMessage(savingFailed);
    disk.fill();
    save(*history, u"a.cpp"_s);
    history.reset();
    ASSERT_EQ(storedConversations(), QStringList());

    disk.makeRoom();
    defaults.reset();

    EXPECT_EQ(storedConversations(), QStringList{u"a.cpp"_s});
}

TEST_F(StoresOnASmallDisk, RepositoriesOpenedWhileItIsReadOnlyAreListedAndStoredLater)
{
    RecentReposStore repos(*defaults, u"recentRepos"_s, 10);
    repos.record(u"a"_s, u"/a"_s);
    expectOneMessage(savingFailed + u"Read-only file system"_s);
    disk.setReadOnly(true);

    repos.record(u"b"_s, u"/b"_s);
    EXPECT_EQ(repos.load().size(), 2);
    EXPECT_EQ(RecentReposStore(UserDefaults(folder()), u"recentRepos"_s, 10).load().size(), 1);
    disk.setReadOnly(false);
    repos.record(u"c"_s, u"/c"_s);

    EXPECT_EQ(RecentReposStore(UserDefaults(folder()), u"recentRepos"_s, 10).load(), repos.load());
    EXPECT_EQ(repos.load().size(), 3);
}

} // namespace
} // namespace vantrel
