#include "git/Gitlinks.h"

#include "RepositoryTest.h"

#include <QDir>
#include <QFile>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

TEST(Gitlinks, AreTheEntriesOfTheirMode)
{
    const QByteArray files("100644 abc 0\ta\0"
                           "160000 abc 0\tsub/with\ttab\0"
                           "120000 abc 0\t160000 x\0",
                           50);

    EXPECT_EQ(gitlinkPaths(files), QByteArrayList{"sub/with\ttab"});
    EXPECT_EQ(gitlinkPaths({}), QByteArrayList());
}

class GitlinksInARepository : public test::RepositoryTest
{
protected:
    GitlinksInARepository()
    {
        m_repository.write(u"f"_s, "a\n");
        m_repository.commitAll();
    }

    [[nodiscard]] bool mayHold(const QString &folder = {}) const
    {
        return mayHoldGitlinks(QFile::encodeName(m_repository.path(folder)));
    }

    void addSubmodule() const
    {
        m_repository.git({u"init"_s, u"--quiet"_s, u"sub"_s});
        m_repository.git(
            {u"-C"_s, u"sub"_s, u"commit"_s, u"--quiet"_s, u"--allow-empty"_s, u"--message=One"_s});
        m_repository.git({u"-c"_s, u"advice.addEmbeddedRepo=false"_s, u"add"_s, u"sub"_s});
    }
};

TEST_F(GitlinksInARepository, AreNotLookedForInAnOrdinaryOne)
{
    EXPECT_FALSE(mayHold());
}

TEST_F(GitlinksInARepository, AreNotLookedForWhereHeadIsDetached)
{
    m_repository.git({u"checkout"_s, u"--quiet"_s, u"--detach"_s});

    EXPECT_FALSE(mayHold());
}

TEST_F(GitlinksInARepository, AreNotLookedForWithoutAnIndex)
{
    m_repository.remove(u".git/index"_s);

    EXPECT_FALSE(mayHold());
}

TEST_F(GitlinksInARepository, AreNotLookedForInALinkedWorkingTree)
{
    m_repository.git({u"worktree"_s, u"add"_s, u"--quiet"_s, u"linked"_s});

    EXPECT_FALSE(mayHold(u"linked"_s));
}

class GitlinksInAnIndex : public GitlinksInARepository,
                          public testing::WithParamInterface<const char *>
{};

TEST_P(GitlinksInAnIndex, AreSeenInEachVersionOfItsFormat)
{
    addSubmodule();
    m_repository.git({u"update-index"_s, u"--index-version"_s, QString::fromLatin1(GetParam())});

    EXPECT_TRUE(mayHold());
}

INSTANTIATE_TEST_SUITE_P(All, GitlinksInAnIndex, testing::Values("2", "3", "4"));

TEST_F(GitlinksInARepository, AreSeenInALinkedWorkingTree)
{
    addSubmodule();
    m_repository.commitAll();
    m_repository.git({u"worktree"_s, u"add"_s, u"--quiet"_s, u"linked"_s});

    EXPECT_TRUE(mayHold(u"linked"_s));
}

TEST_F(GitlinksInARepository, MayBeInTheOtherPartOfASplitIndex)
{
    m_repository.git({u"update-index"_s, u"--split-index"_s});

    EXPECT_TRUE(mayHold());
}

TEST_F(GitlinksInARepository, MayBeInAnIndexThatIsALink)
{
    m_repository.git({u"-c"_s, u"alias.move=!mv .git/index ../index"_s, u"move"_s});
    m_repository.link(u".git/index"_s, "../../index");

    EXPECT_TRUE(mayHold());
}

TEST_F(GitlinksInARepository, MayBeWhereGitDoesNotTakeTheFolder)
{
    m_repository.write(u".git/HEAD"_s, "main\n");

    EXPECT_TRUE(mayHold());
}

TEST_F(GitlinksInARepository, MayBeWhereAFolderOfGitsIsMissing)
{
    ASSERT_TRUE(QDir(m_repository.path(u".git/refs"_s)).removeRecursively());

    EXPECT_TRUE(mayHold());
}

TEST_F(GitlinksInARepository, MayBeWhereTheFolderRefersToAnother)
{
    m_repository.write(u".git/commondir"_s, "../../other\n");

    EXPECT_TRUE(mayHold());
}

TEST_F(GitlinksInARepository, MayBeWhereTheEntryIsNoLinkOfGits)
{
    m_repository.write(u"sub/.git"_s, "elsewhere\n");

    EXPECT_TRUE(mayHold(u"sub"_s));
    EXPECT_TRUE(mayHold(u"none"_s));
}

} // namespace
} // namespace vantrel
