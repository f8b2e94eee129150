// Git that is killed, a repository that goes, and a process without descriptors, in the middle of a
// listing: either all of it comes, or one failure.

#include "ListingSamples.h"
#include "RepositoryTest.h"

#include "support/FewDescriptors.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::FewDescriptors;
using test::numberedLines;

class GitFaults : public test::RepositoryTest
{
protected:
    void SetUp() override
    {
        m_repository.write(u"a"_s, numberedLines(20));
        m_repository.write(u"b"_s, numberedLines(20));
        m_repository.commitAll();
        m_repository.write(u"a"_s, numberedLines(20, {3}));
        m_repository.write(u"b"_s, numberedLines(20, {15}));
        m_usual = changedFiles();
        ASSERT_TRUE(m_usual);
    }

    /// Puts a git before the real one that runs `commands` first when one of its arguments is
    /// `argument`. They know the real one as $real.
    void interposeGit(const QByteArray &argument, const QByteArray &commands) const
    {
        const QByteArray real = QFile::encodeName(QStandardPaths::findExecutable(u"git"_s));
        const QString folder = m_repository.pathOutside(u"bin"_s);
        ASSERT_TRUE(QDir().mkpath(folder));
        QFile git(folder + u"/git"_s);
        ASSERT_TRUE(git.open(QIODevice::WriteOnly));
        git.write("#!/bin/sh\nreal=" + real + "\ncase \" $* \" in *' " + argument + " '*)\n" +
                  commands + "\nesac\nexec $real \"$@\"\n");
        git.setPermissions(QFile::ReadOwner | QFile::ExeOwner);
        git.close();
        qputenv("PATH", QFile::encodeName(folder) + ':' + qgetenv("PATH"));
    }

    Listing m_usual{};
};

TEST_F(GitFaults, OneThatIsKilledBeforeItListsFailsTheListing)
{
    interposeGit("status", "kill -s KILL $$");

    EXPECT_EQ(failureOf(changedFiles()), u"9 "_s);
}

TEST_F(GitFaults, OneThatIsKilledAmongItsRecordsFailsTheListing)
{
    interposeGit("status", "$real \"$@\" | head --bytes=5\nkill -s KILL $$");

    EXPECT_EQ(failureOf(changedFiles()), u"9 "_s);
}

TEST_F(GitFaults, OneThatIsKilledInEachDiffFailsTheListing)
{
    interposeGit("diff", "$real \"$@\" | head --bytes=100\nkill -s TERM $$");

    EXPECT_EQ(failureOf(changedFiles()), u"15 "_s);
}

TEST_F(GitFaults, OneThatIsKilledInTheCombinedDiffOnlyIsAskedForTheTwo)
{
    interposeGit("HEAD", "kill -s KILL $$");

    EXPECT_EQ(changedFiles(), m_usual);
}

TEST_F(GitFaults, OneThatIsKilledFailsTheBranchAlone)
{
    interposeGit("rev-parse", "kill -s KILL $$");

    EXPECT_FALSE(m_service.currentBranch(m_repository.root()));
    EXPECT_EQ(changedFiles(), m_usual);
}

TEST_F(GitFaults, AListingAfterOneThatFailedIsWhole)
{
    interposeGit("status", "[ -e ../killed ] || { touch ../killed; kill -s KILL $$; }");
    ASSERT_EQ(failureOf(changedFiles()), u"9 "_s);

    EXPECT_EQ(changedFiles(), m_usual);
}

TEST_F(GitFaults, ARepositoryThatGoesBetweenTheStatusAndTheDiffsFailsTheListing)
{
    interposeGit("diff", "rm -rf \"$PWD\"");

    EXPECT_EQ(changedFiles(),
              Listing(failure(ProcessFailure(PlatformError{u"No such file or directory"_s}))));
}

TEST_F(GitFaults, ARepositoryWhoseHistoryGoesBetweenTheStatusAndTheDiffsFailsTheListing)
{
    interposeGit("diff", "rm -rf .git");

    const Listing listing = changedFiles();

    ASSERT_FALSE(listing);
    EXPECT_FALSE(listing.error().description().isEmpty());
}

TEST_F(GitFaults, WithTooFewDescriptorsItComesWholeOrFailsInTheSystemsWords)
{
    const Listing tooMany(failure(ProcessFailure(PlatformError{u"Too many open files"_s})));
    for (int left = 0; left < 4; ++left) {
        const FewDescriptors few(left);
        EXPECT_EQ(changedFiles(), tooMany) << left;
    }
    for (int left = 4; left < 12; ++left) {
        FewDescriptors few(left);
        const Listing listing = changedFiles();
        few.end();
        EXPECT_TRUE(listing == m_usual || listing == tooMany) << left;
    }

    EXPECT_EQ(changedFiles(), m_usual);
}

TEST_F(GitFaults, AnUntrackedFileThatNoDescriptorIsLeftForGetsThePlaceholder)
{
    m_repository.write(u"new"_s, "text\n");
    FileChange file;
    file.path = u"new"_s;
    file.isUntracked = true;
    file.status = ChangeStatus::added;
    const FewDescriptors none(0);

    const auto hunks = m_service.rawHunks(file, m_repository.root());

    EXPECT_EQ(hunks,
              (Result<QList<RawHunk>, ProcessFailure>(QList<RawHunk>{test::placeholderHunk()})));
}

} // namespace
} // namespace vantrel
