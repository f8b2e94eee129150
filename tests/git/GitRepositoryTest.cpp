// What real git says of real working trees.

#include "FileTrees.h"
#include "ListingSamples.h"
#include "RepositoryTest.h"

#include "git/GitWorker.h"
#include "platform/jobs/Job.h"
#include "support/Spin.h"

#include <QDir>
#include <QFile>

#include <atomic>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::numberedLines;
using test::placeholderHunk;
using test::rawHunk;
using test::trackedFile;
using test::untrackedFile;

using GitRepository = test::RepositoryTest;
using Branch = Result<std::optional<QString>, ProcessFailure>;

TEST_F(GitRepository, AnUnchangedOneHasNoFiles)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.commitAll();

    EXPECT_EQ(changedFiles(), Listing(QList<FileChange>()));
}

TEST_F(GitRepository, AnEmptyOneHasNoFiles)
{
    EXPECT_EQ(changedFiles(), Listing(QList<FileChange>()));
}

TEST_F(GitRepository, StagedAndUnstagedEditsAreOneDiffAndUntrackedFilesComeLast)
{
    m_repository.write(u"gone"_s, "a\n");
    m_repository.write(u"zone"_s, "a\nb\n");
    m_repository.commitAll();
    m_repository.write(u"zone"_s, "A\nb\n");
    m_repository.git({u"add"_s, u"zone"_s});
    m_repository.write(u"zone"_s, "A\nB\n");
    m_repository.remove(u"gone"_s);
    m_repository.write(u"new"_s, "n\n");
    m_repository.git({u"add"_s, u"new"_s});
    m_repository.write(u"deep/in/free"_s, "x");

    const QList<FileChange> expected{
        trackedFile(u"gone"_s, ChangeStatus::deleted, 0, 1,
                    {rawHunk("@@ -1 +0,0 @@", 1, 0, {"-a"})}),
        trackedFile(u"new"_s, ChangeStatus::added, 1, 0, {rawHunk("@@ -0,0 +1 @@", 0, 1, {"+n"})}),
        trackedFile(u"zone"_s, ChangeStatus::modified, 2, 2,
                    {rawHunk("@@ -1,2 +1,2 @@", 1, 1, {"-a", "-b", "+A", "+B"})}),
        untrackedFile(u"deep/in/free"_s, 1, {rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+x"})})};
    EXPECT_EQ(changedFiles(), Listing(expected));
}

TEST_F(GitRepository, WithoutACommitAStagedFileIsShown)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.git({u"add"_s, u"f"_s});

    EXPECT_EQ(changedFiles(), Listing({trackedFile(u"f"_s, ChangeStatus::added, 1, 0,
                                                   {rawHunk("@@ -0,0 +1 @@", 0, 1, {"+a"})})}));
}

TEST_F(GitRepository, WithoutACommitUnstagedHunksComeFirst)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.git({u"add"_s, u"f"_s});
    m_repository.write(u"f"_s, "a\nb\n");

    EXPECT_EQ(changedFiles(), Listing({trackedFile(u"f"_s, ChangeStatus::added, 2, 0,
                                                   {rawHunk("@@ -1 +1,2 @@", 1, 1, {" a", "+b"}),
                                                    rawHunk("@@ -0,0 +1 @@", 0, 1, {"+a"})})}));
}

TEST_F(GitRepository, AFileTakenOutOfTheIndexAndKeptOccursOnce)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.commitAll();
    m_repository.git({u"rm"_s, u"--quiet"_s, u"--cached"_s, u"f"_s});

    EXPECT_EQ(changedFiles(), Listing({trackedFile(u"f"_s, ChangeStatus::deleted, 0, 1,
                                                   {rawHunk("@@ -1 +0,0 @@", 1, 0, {"-a"})})}));
}

TEST_F(GitRepository, AChangedModeHasNoHunks)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.commitAll();
    QFile::setPermissions(m_repository.path(u"f"_s),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);

    EXPECT_EQ(changedFiles(), Listing({trackedFile(u"f"_s, ChangeStatus::modified, 0, 0, {})}));
}

TEST_F(GitRepository, ATrackedBinaryFileHasNoHunks)
{
    m_repository.write(u"f"_s, QByteArray("a\0b", 3));
    m_repository.commitAll();
    m_repository.write(u"f"_s, QByteArray("a\0c", 3));

    EXPECT_EQ(changedFiles(), Listing({trackedFile(u"f"_s, ChangeStatus::modified, 0, 0, {})}));
}

TEST_F(GitRepository, ATrackedFileThatIsNotUtf8HasNoHunks)
{
    m_repository.write(u"f"_s, "caf\xe9\n");
    m_repository.commitAll();
    m_repository.write(u"f"_s, "caf\xe8\n");

    EXPECT_EQ(changedFiles(), Listing({trackedFile(u"f"_s, ChangeStatus::modified, 0, 0, {})}));
}

TEST_F(GitRepository, AnUntrackedBinaryFileGetsThePlaceholder)
{
    m_repository.write(u"f"_s, "\x89PNG\r\n");

    EXPECT_EQ(changedFiles(), Listing({untrackedFile(u"f"_s, 1, {placeholderHunk()})}));
}

TEST_F(GitRepository, AConflictIsOneHunkWithItsMarkers)
{
    m_repository.write(u"f"_s, "base\n");
    m_repository.commitAll();
    m_repository.git({u"checkout"_s, u"--quiet"_s, u"-b"_s, u"other"_s});
    m_repository.write(u"f"_s, "theirs\n");
    m_repository.commitAll();
    m_repository.git({u"checkout"_s, u"--quiet"_s, u"main"_s});
    m_repository.write(u"f"_s, "ours\n");
    m_repository.commitAll();
    ASSERT_EQ(m_repository.gitStatus({u"merge"_s, u"other"_s}), 1);

    const QList<RawHunk> hunks{
        rawHunk("@@ -1 +1,5 @@", 1, 1,
                {"+<<<<<<< HEAD", " ours", "+=======", "+theirs", "+>>>>>>> other"})};
    EXPECT_EQ(changedFiles(), Listing({trackedFile(u"f"_s, ChangeStatus::modified, 4, 0, hunks)}));
}

/// A repository with a submodule that was moved on to its second commit.
class GitSubmodule : public test::RepositoryTest
{
protected:
    GitSubmodule()
    {
        m_source.write(u"f"_s, "one\n");
        m_source.commitAll();
        m_first = m_source.git({u"rev-parse"_s, u"HEAD"_s}).trimmed();
        m_repository.git({u"-c"_s, u"protocol.file.allow=always"_s, u"submodule"_s, u"--quiet"_s,
                          u"add"_s, m_source.path(), u"sub"_s});
        m_repository.commitAll();
        m_source.write(u"f"_s, "two\n");
        m_source.commitAll();
        m_second = m_source.git({u"rev-parse"_s, u"HEAD"_s}).trimmed();
        m_repository.git({u"-C"_s, u"sub"_s, u"pull"_s, u"--quiet"_s});
    }

    [[nodiscard]] Listing moved() const
    {
        return QList<FileChange>{trackedFile(
            u"sub"_s, ChangeStatus::modified, 1, 1,
            {rawHunk("@@ -1 +1 @@", 1, 1,
                     {"-Subproject commit " + m_first, "+Subproject commit " + m_second})})};
    }

    test::TemporaryRepository m_source;
    QByteArray m_first{};
    QByteArray m_second{};
};

TEST_F(GitSubmodule, IsAPairOfCommits)
{
    EXPECT_EQ(changedFiles(), moved());
}

TEST_F(GitSubmodule, IsAPairOfCommitsWhereALogIsConfigured)
{
    m_repository.git({u"config"_s, u"diff.submodule"_s, u"log"_s});

    EXPECT_EQ(changedFiles(), moved());
}

TEST_F(GitRepository, ATrackedLinkShowsItsTargetsText)
{
    m_repository.link(u"link"_s, "old/target");
    m_repository.commitAll();
    m_repository.link(u"link"_s, "/etc/passwd");

    EXPECT_EQ(
        changedFiles(),
        Listing({trackedFile(u"link"_s, ChangeStatus::modified, 1, 1,
                             {rawHunk("@@ -1 +1 @@", 1, 1, {"-old/target", "+/etc/passwd"})})}));
}

TEST_F(GitRepository, AnUntrackedLinkOutOfTheRepositoryShowsItsTargetsTextOnly)
{
    m_repository.write(u"../secret"_s, "content");
    m_repository.link(u"link"_s, "../secret");

    EXPECT_EQ(
        changedFiles(),
        Listing({untrackedFile(u"link"_s, 1, {rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+../secret"})})}));
}

TEST_F(GitRepository, AnUntrackedLinkToAFolderShowsItsTargetsText)
{
    m_repository.link(u"link"_s, "/etc");

    EXPECT_EQ(
        changedFiles(),
        Listing({untrackedFile(u"link"_s, 1, {rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+/etc"})})}));
}

TEST_F(GitRepository, ANestedRepositoryGetsThePlaceholder)
{
    m_repository.git({u"init"_s, u"--quiet"_s, u"inner"_s});
    m_repository.write(u"inner/f"_s, "a\n");

    EXPECT_EQ(changedFiles(), Listing({untrackedFile(u"inner/"_s, 1, {placeholderHunk()})}));
}

TEST_F(GitRepository, ALinkedWorkingTreeIsListed)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.commitAll();
    const QString linked = m_repository.pathOutside(u"linked"_s);
    m_repository.git({u"worktree"_s, u"add"_s, u"--quiet"_s, u"-b"_s, u"side/way"_s, linked});
    m_repository.write(u"../linked/f"_s, "b\n");

    const Listing listing = m_service.changedFiles(QUrl::fromLocalFile(linked), ListingControl());
    const Branch branch = m_service.currentBranch(QUrl::fromLocalFile(linked));

    EXPECT_EQ(listing, Listing({trackedFile(u"f"_s, ChangeStatus::modified, 1, 1,
                                            {rawHunk("@@ -1 +1 @@", 1, 1, {"-a", "+b"})})}));
    EXPECT_EQ(branch, Branch(u"side/way"_s));
}

TEST_F(GitRepository, ARootWithASlashAtItsEndIsTheSame)
{
    m_repository.write(u"f"_s, "a");

    const Listing listing =
        m_service.changedFiles(QUrl::fromLocalFile(m_repository.path() + u'/'), ListingControl());

    EXPECT_EQ(listing,
              Listing({untrackedFile(u"f"_s, 1, {rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+a"})})}));
}

TEST_F(GitRepository, TheBranchIsNamedWithoutItsLineFeed)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.commitAll();
    m_repository.git({u"checkout"_s, u"--quiet"_s, u"-b"_s, u"feature/list"_s});

    EXPECT_EQ(m_service.currentBranch(m_repository.root()), Branch(u"feature/list"_s));
}

TEST_F(GitRepository, ADetachedHeadIsNamedHead)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.commitAll();
    m_repository.git({u"checkout"_s, u"--quiet"_s, u"--detach"_s});

    EXPECT_EQ(m_service.currentBranch(m_repository.root()), Branch(u"HEAD"_s));
}

TEST_F(GitRepository, WithoutACommitTheBranchQuestionFails)
{
    const Branch branch = m_service.currentBranch(m_repository.root());

    ASSERT_FALSE(branch);
    ASSERT_NE(branch.error().serviceError(), nullptr);
    EXPECT_EQ(branch.error().serviceError()->status, 128);
}

TEST_F(GitRepository, AFolderThatIsNoneFailsWithGitsWords)
{
    qputenv("GIT_CEILING_DIRECTORIES", QFile::encodeName(m_repository.pathOutside({})));
    ASSERT_TRUE(QDir(m_repository.path(u".git"_s)).removeRecursively());

    const Listing listing = changedFiles();

    ProcessRunnerError error;
    error.status = 128;
    error.message = u"fatal: not a git repository (or any of the parent directories): .git\n"_s;
    EXPECT_EQ(listing, Listing(failure(ProcessFailure(error))));
}

TEST_F(GitRepository, AFolderThatIsGoneIsALaunchThatFails)
{
    ASSERT_TRUE(QDir(m_repository.path()).removeRecursively());

    const Listing listing = changedFiles();

    EXPECT_EQ(listing,
              Listing(failure(ProcessFailure(PlatformError{u"No such file or directory"_s}))));
}

TEST_F(GitRepository, AMissingGitFailsWithTheWordsOfEnv)
{
    qputenv("PATH", "/nonexistent");

    EXPECT_EQ(failureOf(changedFiles()), u"127 /usr/bin/env: 'git': No such file or directory"_s);
}

TEST_F(GitRepository, ABareOneFailsWithGitsWords)
{
    m_repository.git({u"config"_s, u"core.bare"_s, u"true"_s});

    EXPECT_EQ(failureOf(changedFiles()), u"128 fatal: this operation must be run in a work tree"_s);
}

TEST_F(GitRepository, OneOfAnotherOwnerFailsWithGitsWords)
{
    // Only root can give a folder away; for anybody else git has a switch for its own tests.
    const QByteArray root = QFile::encodeName(m_repository.path());
    if (::chown(root.constData(), 12345, 12345) != 0) {
        qputenv("GIT_TEST_ASSUME_DIFFERENT_OWNER", "1");
    }

    EXPECT_EQ(failureOf(changedFiles()),
              u"128 fatal: detected dubious ownership in repository at '"_s + m_repository.path() +
                  u"'"_s);
}

TEST_F(GitRepository, AnUntrackedHugeFileIsNotReadBeyondTheLimit)
{
    test::makeSparseFile(m_repository.path(u"huge"_s), 10'000'000'000);
    const std::int64_t before = test::bytesReadSoFar();

    const Listing listing = changedFiles();

    EXPECT_LT(test::bytesReadSoFar() - before, 3'000'000);
    EXPECT_EQ(listing, Listing({untrackedFile(u"huge"_s, 1, {placeholderHunk()})}));
}

TEST_F(GitRepository, AnUntrackedFileOfExactlyTheLimitIsShownAndOneByteMoreIsNot)
{
    m_repository.write(u"just"_s, QByteArray(2'000'000, 'a'));
    m_repository.write(u"more"_s, QByteArray(2'000'001, 'a'));

    const QList<FileChange> expected{
        untrackedFile(
            u"just"_s, 1,
            {rawHunk("@@ -0,0 +1,1 @@", 0, 1, {QByteArray(2'000'000, 'a').prepend('+')})}),
        untrackedFile(u"more"_s, 1, {placeholderHunk()})};
    EXPECT_EQ(changedFiles(), Listing(expected));
}

TEST_F(GitRepository, PipesAndSocketsDoNotHoldAListingUp)
{
    test::makePipe(m_repository.path(u"pipe"_s));
    test::makeSocket(m_repository.path(u"socket"_s));
    m_repository.write(u"f"_s, "a");

    EXPECT_EQ(changedFiles(),
              Listing({untrackedFile(u"f"_s, 1, {rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+a"})})}));
}

TEST_F(GitRepository, APipeInThePlaceOfAListedFileGetsThePlaceholder)
{
    test::makePipe(m_repository.path(u"f"_s));

    const auto hunks = m_service.rawHunks(untrackedFile(u"f"_s, 0, {}), m_repository.root());

    EXPECT_EQ(hunks, (Result<QList<RawHunk>, ProcessFailure>({placeholderHunk()})));
}

/// Runs the real thing, counts it, and does something after each command.
class WatchedRunner final : public ProcessRunning
{
public:
    explicit WatchedRunner(std::function<void()> afterEach = {})
        : m_afterEach(std::move(afterEach))
    {}

    [[nodiscard]] Result<TextSlice, ProcessFailure>
    run(const QString &command, const QStringList &arguments, const QUrl &directory) const override
    {
        ++m_count;
        auto output = m_runner.run(command, arguments, directory);
        if (m_afterEach) {
            m_afterEach();
        }
        return output;
    }

    [[nodiscard]] int count() const { return m_count; }

private:
    ProcessRunner m_runner;
    std::function<void()> m_afterEach;
    mutable std::atomic<int> m_count = 0;
};

TEST_F(GitRepository, AFileThatVanishesAfterTheStatusGetsThePlaceholder)
{
    m_repository.write(u"f"_s, "a");
    const WatchedRunner runner([this] { m_repository.remove(u"f"_s); });
    GitService service(runner, m_reader);

    const Listing listing = service.changedFiles(m_repository.root(), ListingControl());

    EXPECT_EQ(listing, Listing({untrackedFile(u"f"_s, 1, {placeholderHunk()})}));
}

/// What tells whether a file was written.
struct FileState
{
    QByteArray content{};
    std::int64_t inode = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    bool operator==(const FileState &) const = default;
};

FileState stateOf(const QString &path)
{
    FileState state;
    QFile file(path);
    struct stat status = {};
    if (file.open(QFile::ReadOnly) && ::fstat(file.handle(), &status) == 0) {
        state.content = file.readAll();
        state.inode = std::int64_t(status.st_ino);
        state.seconds = status.st_mtim.tv_sec;
        state.nanoseconds = status.st_mtim.tv_nsec;
    }
    return state;
}

TEST_F(GitRepository, AListingDoesNotWriteTheIndex)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.write(u"g"_s, "a\n");
    m_repository.commitAll();
    m_repository.write(u"f"_s, "b\n");
    // A newer time and the same content: what a git that may write would note in the index.
    QFile touched(m_repository.path(u"g"_s));
    ASSERT_TRUE(touched.open(QFile::ReadWrite));
    ASSERT_TRUE(touched.setFileTime(QDateTime::fromSecsSinceEpoch(1'000'000'000),
                                    QFileDevice::FileModificationTime));
    touched.close();
    const FileState before = stateOf(m_repository.path(u".git/index"_s));

    const Listing listing = changedFiles();
    const Branch branch = m_service.currentBranch(m_repository.root());

    EXPECT_EQ(listing, Listing({trackedFile(u"f"_s, ChangeStatus::modified, 1, 1,
                                            {rawHunk("@@ -1 +1 @@", 1, 1, {"-a", "+b"})})}));
    EXPECT_EQ(branch, Branch(u"main"_s));
    EXPECT_FALSE(before.content.isEmpty());
    EXPECT_EQ(stateOf(m_repository.path(u".git/index"_s)), before);
}

TEST_F(GitRepository, ALockThatAnotherGitHoldsDoesNotMatter)
{
    m_repository.write(u"f"_s, "a\n");
    m_repository.commitAll();
    m_repository.write(u"f"_s, "b\n");
    m_repository.write(u".git/index.lock"_s, {});

    EXPECT_EQ(changedFiles(), Listing({trackedFile(u"f"_s, ChangeStatus::modified, 1, 1,
                                                   {rawHunk("@@ -1 +1 @@", 1, 1, {"-a", "+b"})})}));
    EXPECT_TRUE(QFile::exists(m_repository.path(u".git/index.lock"_s)));
}

Task<> list(GitWorker *worker, QUrl root, std::function<void(ListingProgress)> progress)
{
    auto listing = worker->changedFiles(std::move(root), std::move(progress));
    const auto listed = co_await std::move(listing);
    ADD_FAILURE() << "a cancelled listing came to its end: " << bool(listed);
}

TEST_F(GitRepository, ALongListingShowsItsProgressAndStopsWithinOneProcess)
{
    for (int i = 0; i < 2'000; ++i) {
        m_repository.write(QString::number(i), "a\n");
    }
    m_repository.commitAll();
    for (int i = 0; i < 2'000; ++i) {
        m_repository.write(QString::number(i), "b\n");
    }
    const WatchedRunner runner;
    GitService service(runner, m_reader);
    QList<ListingProgress> reports;
    int processesWhenCancelled = 0;

    {
        GitWorker worker(service);
        Job job(list(&worker, m_repository.root(),
                     [&](ListingProgress progress) { reports.append(progress); }));
        test::spinUntil(
            [&] { return !reports.isEmpty() && reports.constLast().finishedFiles >= 3; });
        processesWhenCancelled = runner.count();
        job.cancel();
    }

    EXPECT_EQ(reports.constLast().totalFiles, 2'000);
    EXPECT_LE(runner.count(), processesWhenCancelled + 1);
    EXPECT_LT(runner.count(), 2'001);
}

} // namespace
} // namespace vantrel
