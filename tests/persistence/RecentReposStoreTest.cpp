#include "persistence/RecentReposStore.h"

#include "persistence/ChatThreadMakers.h"
#include "support/UnexpectedMessages.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QSet>
#include <QTemporaryDir>

#include <thread>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::second;

/// Two entries as another program wrote them, the older one first.
constexpr auto handWrittenList = R"([
  {"id": "8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A", "name": "orchard",
   "path": "/home/ada/orchard", "lastOpened": 721692800},
  {"id": "1B2C3D4E-5F60-4718-8293-A4B5C6D7E8F9", "name": "größe",
   "path": "/home/ada/größe/", "lastOpened": 721692800.25}
])";

QList<RecentRepo> handWrittenEntries()
{
    const QDateTime older(QDate(2023, 11, 14), QTime(22, 13, 20), Qt::UTC);
    return {
        {QUuid::fromString(u"1B2C3D4E-5F60-4718-8293-A4B5C6D7E8F9"_s), u"größe"_s,
         u"/home/ada/größe/"_s, older.addMSecs(250)},
        {QUuid::fromString(u"8C9B2F7E-3A1D-4F60-9A57-0B1C2D3E4F5A"_s), u"orchard"_s,
         u"/home/ada/orchard"_s, older},
    };
}

class RecentReposStoreTest : public testing::Test
{
protected:
    void store(const QByteArray &json) { ASSERT_TRUE(defaults.setBytes(u"recentRepos"_s, json)); }

    [[nodiscard]] QByteArray stored() const
    {
        return defaults.bytes(u"recentRepos"_s).value_or(QByteArray());
    }

    void recordAt(int seconds, const QString &name, const QString &path)
    {
        time = second(seconds);
        repos.record(name, path);
    }

    /// The paths in the order of the list.
    [[nodiscard]] QStringList paths() const
    {
        QStringList paths;
        for (const RecentRepo &repo : repos.load()) {
            paths.append(repo.path);
        }
        return paths;
    }

    QTemporaryDir folder{};
    UserDefaults defaults{folder.path()};
    QDateTime time{};
    RecentReposStore repos{defaults, u"recentRepos"_s, 10, [this] { return time; }};
};

TEST_F(RecentReposStoreTest, WithoutAnythingStoredTheListIsEmpty)
{
    EXPECT_EQ(repos.load(), QList<RecentRepo>());
}

TEST_F(RecentReposStoreTest, AnOpenedFolderIsRemembered)
{
    recordAt(7, u"orchard"_s, u"/home/ada/orchard"_s);

    const QList<RecentRepo> entries =
        RecentReposStore(UserDefaults(folder.path()), u"recentRepos"_s, 10).load();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_FALSE(entries.first().id.isNull());
    EXPECT_EQ(entries, (QList<RecentRepo>{
                           {entries.first().id, u"orchard"_s, u"/home/ada/orchard"_s, second(7)}}));
}

TEST_F(RecentReposStoreTest, OpeningTheSameFolderTwiceLeavesOneEntryWithANewIdAndANewerDate)
{
    recordAt(1, u"orchard"_s, u"/orchard"_s);
    const QUuid firstId = repos.load().first().id;

    recordAt(2, u"renamed"_s, u"/orchard"_s);

    const QList<RecentRepo> entries = repos.load();
    ASSERT_EQ(entries.size(), 1);
    EXPECT_NE(entries.first().id, firstId);
    EXPECT_EQ(entries.first().name, u"renamed"_s);
    EXPECT_EQ(entries.first().lastOpened, second(2));
}

TEST_F(RecentReposStoreTest, OpeningAFolderAgainMovesItToTheTop)
{
    recordAt(1, u"a"_s, u"/a"_s);
    recordAt(2, u"b"_s, u"/b"_s);

    recordAt(3, u"a"_s, u"/a"_s);

    EXPECT_EQ(paths(), QStringList({u"/a"_s, u"/b"_s}));
}

TEST_F(RecentReposStoreTest, AnEleventhFolderDropsTheLeastRecentlyOpened)
{
    QStringList expected;
    for (int i = 0; i < 10; ++i) {
        recordAt(i, u"repo"_s, u"/repo%1"_s.arg(i));
        expected.prepend(u"/repo%1"_s.arg(i));
    }
    ASSERT_EQ(paths(), expected);

    recordAt(10, u"repo"_s, u"/repo10"_s);

    expected.prepend(u"/repo10"_s);
    expected.removeLast();
    EXPECT_EQ(paths(), expected);
}

TEST_F(RecentReposStoreTest, PathsThatDifferByATrailingSlashAreDifferentEntries)
{
    recordAt(1, u"a"_s, u"/a"_s);
    recordAt(2, u"a"_s, u"/a/"_s);

    EXPECT_EQ(paths(), QStringList({u"/a/"_s, u"/a"_s}));
}

TEST_F(RecentReposStoreTest, AListWrittenByHandIsReadNewestFirst)
{
    store(handWrittenList);

    EXPECT_EQ(repos.load(), handWrittenEntries());
}

TEST_F(RecentReposStoreTest, UnknownKeysAreIgnored)
{
    store(QByteArray(handWrittenList)
              .replace("\"name\": \"orchard\"", "\"pinned\": {}, \"name\": \"orchard\""));

    EXPECT_EQ(repos.load(), handWrittenEntries());
}

TEST_F(RecentReposStoreTest, AnEntryHasTheStoredForm)
{
    recordAt(86401, u"orchard"_s, u"/home/ada/orchard"_s);

    const QByteArray id = repos.load().first().id.toString(QUuid::WithoutBraces).toUpper().toUtf8();
    EXPECT_EQ(stored(), "[{\"id\":\"" + id +
                            "\",\"lastOpened\":86401,\"name\":\"orchard\","
                            "\"path\":\"/home/ada/orchard\"}]");
}

TEST_F(RecentReposStoreTest, EntriesOfTheSameMomentKeepTheOrderOfOpening)
{
    recordAt(1, u"a"_s, u"/a"_s);
    recordAt(1, u"b"_s, u"/b"_s);

    EXPECT_EQ(paths(), QStringList({u"/b"_s, u"/a"_s}));
}

TEST_F(RecentReposStoreTest, ADamagedListIsEmptyAndStaysUntilTheNextRecord)
{
    const QByteArray whole = handWrittenList;
    for (const QByteArray &damaged :
         {QByteArray(), QByteArray("{}"), QByteArray("[1]"), whole.chopped(1),
          QByteArray(whole).replace("\"name\": \"orchard\",", ""),
          QByteArray(whole).replace("8C9B2F7E", "8C9B2F7")}) {
        store(damaged);

        EXPECT_EQ(repos.load(), QList<RecentRepo>()) << damaged.constData();
        EXPECT_EQ(stored(), damaged);
        recordAt(1, u"a"_s, u"/a"_s);
        EXPECT_EQ(paths(), QStringList{u"/a"_s}) << damaged.constData();
    }
}

TEST_F(RecentReposStoreTest, ListsUnderOtherKeysAreOtherLists)
{
    RecentReposStore other(defaults, u"others"_s, 1);

    other.record(u"a"_s, u"/a"_s);
    other.record(u"b"_s, u"/b"_s);

    EXPECT_EQ(repos.load(), QList<RecentRepo>());
    ASSERT_EQ(other.load().size(), 1);
    EXPECT_EQ(other.load().first().path, u"/b"_s);
}

TEST_F(RecentReposStoreTest, FoldersRecordedByTwoThreadsAtOnceAreAllRemembered)
{
    RecentReposStore shared(defaults, u"shared"_s, 10);
    const auto recordFive = [&shared](const QString &prefix) {
        for (int i = 0; i < 5; ++i) {
            shared.record(prefix, prefix + QString::number(i));
        }
    };

    std::thread other(recordFive, u"/other"_s);
    recordFive(u"/own"_s);
    other.join();

    QSet<QString> paths;
    for (const RecentRepo &repo : shared.load()) {
        paths.insert(repo.path);
    }
    EXPECT_EQ(paths.size(), 10);
}

TEST_F(RecentReposStoreTest, TheListIsReadableByItsOwnerAlone)
{
    recordAt(1, u"a"_s, u"/a"_s);

    const auto ownersAlone =
        QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
    EXPECT_EQ(QFile::permissions(folder.filePath(u"recentRepos"_s)), ownersAlone);
}

TEST_F(RecentReposStoreTest, FailedRecordsAreLoggedOnceAndCountUntilTheEnd)
{
    QFile file(folder.filePath(u"no-folder"_s));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    RecentReposStore lost(UserDefaults(file.fileName()), u"recentRepos"_s, 10);
    test::expectOneMessage(
        u"the preferences could not be saved, and are kept until they can be: "_s);

    lost.record(u"a"_s, u"/a"_s);
    lost.record(u"b"_s, u"/b"_s);

    EXPECT_EQ(lost.load().size(), 2);
}

} // namespace
} // namespace vantrel
