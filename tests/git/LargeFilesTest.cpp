// Git LFS, which sits in most people's own configuration as a filter: it runs without a question,
// and the repository names it no programs and no servers.

#include "ListingSamples.h"
#include "TrapTest.h"

#include <QDir>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::rawHunk;
using test::trackedFile;

class LargeFiles : public test::TrapTest
{
protected:
    LargeFiles()
    {
        configurePerson("[filter \"lfs\"]\n\tclean = git-lfs clean -- %f\n"
                        "\tsmudge = git-lfs smudge -- %f\n\tprocess = git-lfs filter-process\n"
                        "\trequired = true\n");
        m_repository.write(u".gitattributes"_s, "f filter=lfs diff=lfs merge=lfs -text\n");
        m_repository.write(u"f"_s, "one\n");
        m_repository.git({u"-c"_s, u"filter.lfs.clean=git-lfs clean -- %f"_s, u"add"_s, u"."_s});
        m_repository.git({u"commit"_s, u"--quiet"_s, u"--message=A step"_s});
        m_repository.write(u"f"_s, "two\n");
    }

    /// Another command in the place of git's diff makes git ask for the old file's content.
    void askForOldContent() const
    {
        QDir(m_repository.path(u".git/lfs/objects"_s)).removeRecursively();
        configure(u"diff.lfs.command"_s, trap(u"command"_s));
        configure(u"lfs.url"_s, u"ssh://example.invalid/r"_s);
        configure(u"core.sshCommand"_s, trap(u"ssh"_s, "exit 1\n"));
    }

    static Listing otherPointer()
    {
        const QByteArray one = "2c8b08da5ce60398e1f19af0e5dccc744df274b826abe585eaba68c525434806";
        const QByteArray two = "27dd8ed44a83ff94d557f9fd0412ed5a8cbca69ea04922d88c01184a07300a5a";
        return QList<FileChange>{
            trackedFile(u"f"_s, ChangeStatus::modified, 1, 1,
                        {rawHunk("@@ -1,3 +1,3 @@", 1, 1,
                                 {" version https://git-lfs.github.com/spec/v1",
                                  "-oid sha256:" + one, "+oid sha256:" + two, " size 4"})})};
    }
};

TEST_F(LargeFiles, AreShownByTheirPointersWithoutAQuestion)
{
    EXPECT_EQ(m_guard.inspect(m_repository.root()).value(), QList<RepositoryProgram>());
    EXPECT_EQ(changedFiles(), otherPointer());
}

TEST_F(LargeFiles, AnExtensionThatTheRepositoryNamesIsAskedFor)
{
    const QString extension = filterTrap(u"extension"_s);
    configure(u"lfs.extension.case.clean"_s, extension);
    configure(u"lfs.extension.case.smudge"_s, u"cat"_s);
    configure(u"lfs.extension.case.priority"_s, u"0"_s);

    EXPECT_EQ(m_guard.inspect(m_repository.root()).value(),
              (QList<RepositoryProgram>{{{}, u"lfs.extension.case.clean"_s, extension}}));
    EXPECT_FALSE(changedFiles());
    EXPECT_EQ(marks(), QStringList());
    EXPECT_TRUE(changedFilesUnguarded());
    EXPECT_EQ(marks(), QStringList{u"extension"_s});
}

TEST_F(LargeFiles, AreNotFetchedForADiffProgram)
{
    askForOldContent();

    EXPECT_EQ(changedFiles(), otherPointer());
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(LargeFiles, WouldBeFetchedByTheRepositorysSsh)
{
    askForOldContent();
    qunsetenv("GIT_SSH_COMMAND");

    EXPECT_EQ(changedFiles(), otherPointer());
    EXPECT_EQ(marks(), QStringList{u"ssh"_s});
}

TEST_F(LargeFiles, WouldBeFetchedByTheRepositorysTransfer)
{
    askForOldContent();
    configure(u"lfs.standalonetransferagent"_s, u"own"_s);
    configure(u"lfs.customtransfer.own.path"_s, trap(u"transfer"_s));
    ASSERT_EQ(changedFiles(), otherPointer());
    ASSERT_EQ(marks(), QStringList());
    qunsetenv("GIT_LFS_SKIP_SMUDGE");

    EXPECT_FALSE(changedFiles());
    EXPECT_EQ(marks(), QStringList{u"transfer"_s});
}

} // namespace
} // namespace vantrel
