#include "git/GitService.h"

#include "ListingSamples.h"
#include "ScriptedServices.h"

#include <gtest/gtest.h>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;
using test::placeholderHunk;
using test::QuestionLog;
using test::rawHunk;
using test::trackedFile;
using test::untrackedFile;

QStringList git(const QStringList &arguments)
{
    return QStringList{u"git"_s,
                       u"-c"_s,
                       u"core.fsmonitor="_s,
                       u"-c"_s,
                       u"core.pager=cat"_s,
                       u"--no-optional-locks"_s} +
           arguments + QStringList{u"/r"_s};
}

QStringList statusQuestion()
{
    return git(
        {u"status"_s, u"--porcelain=v1"_s, u"-z"_s, u"--untracked-files=all"_s, u"--no-renames"_s});
}

QStringList combinedQuestion(const QString &path)
{
    return git({u"diff"_s, u"HEAD"_s, u"--no-renames"_s, u"--"_s, path});
}

QStringList unstagedQuestion(const QString &path)
{
    return git({u"diff"_s, u"--no-renames"_s, u"--"_s, path});
}

QStringList stagedQuestion(const QString &path)
{
    return git({u"diff"_s, u"--cached"_s, u"--no-renames"_s, u"--"_s, path});
}

QStringList branchQuestion()
{
    return git({u"rev-parse"_s, u"--abbrev-ref"_s, u"HEAD"_s});
}

QStringList readQuestion(const QString &path, const QString &limit = u"2000000"_s)
{
    return {u"read"_s, path, limit};
}

ProcessFailure exitFailure(const QString &message)
{
    ProcessRunnerError error;
    error.status = 128;
    error.message = message;
    return error;
}

class GitServiceTest : public testing::Test
{
protected:
    using Listing = Result<QList<FileChange>, ProcessFailure>;
    using Hunks = Result<QList<RawHunk>, ProcessFailure>;
    using Branch = Result<std::optional<QString>, ProcessFailure>;

    Listing changedFiles(const ListingControl &control = {})
    {
        return m_service.changedFiles(m_root, control);
    }

    Hunks rawHunks(const FileChange &file) { return m_service.rawHunks(file, m_root); }
    Hunks rawHunksOfTracked()
    {
        return rawHunks(trackedFile(u"f"_s, ChangeStatus::modified, 0, 0, {}));
    }
    Hunks rawHunksOfUntracked() { return rawHunks(untrackedFile(u"f"_s, 0, {})); }

    /// The listing in which git is asked `questions` times before it is cancelled.
    ListingControl cancelledAfter(qsizetype questions)
    {
        ListingControl control;
        control.isCancelled = [this, questions] { return m_log.size() >= questions; };
        return control;
    }

    QUrl m_root = QUrl::fromLocalFile(u"/r"_s);
    QuestionLog m_log;
    test::FakeProcessRunner m_runner{m_log};
    test::FakeFileReader m_reader{m_log};
    GitService m_service{m_runner, m_reader};
};

TEST_F(GitServiceTest, AnUnchangedRepositoryCostsOneStatusCommand)
{
    m_runner.answer({});

    const Listing listing = changedFiles();

    EXPECT_EQ(listing, Listing(QList<FileChange>()));
    EXPECT_EQ(m_log, QuestionLog{statusQuestion()});
}

TEST_F(GitServiceTest, AsksForOneFileAfterAnotherInGitsOrder)
{
    m_runner.answer(QByteArray(" M b\0?? a\0D  c\0", 15));
    m_runner.answer("@@ -1,2 +1,3 @@\n kept\n-gone\n+new\n+newer\n@@ -9 +10 @@\n-x\n+y\n");
    m_reader.answer("one\n");
    m_runner.answer("@@ -1 +0,0 @@\n-c\n");

    const Listing listing = changedFiles();

    const QList<RawHunk> hunksOfB{
        rawHunk("@@ -1,2 +1,3 @@", 1, 1, {" kept", "-gone", "+new", "+newer"}),
        rawHunk("@@ -9 +10 @@", 9, 10, {"-x", "+y"})};
    const QList<FileChange> expected{
        trackedFile(u"b"_s, ChangeStatus::modified, 3, 2, hunksOfB),
        untrackedFile(u"a"_s, 2, {rawHunk("@@ -0,0 +1,2 @@", 0, 1, {"+one", "+"})}),
        trackedFile(u"c"_s, ChangeStatus::deleted, 0, 1, {rawHunk("@@ -1 +0,0 @@", 1, 0, {"-c"})})};
    EXPECT_EQ(listing, Listing(expected));
    EXPECT_EQ(m_log, (QuestionLog{statusQuestion(), combinedQuestion(u"b"_s),
                                  readQuestion(u"/r/a"_s), combinedQuestion(u"c"_s)}));
}

TEST_F(GitServiceTest, AFileWithoutHunksHasNoCounts)
{
    m_runner.answer(QByteArray(" M f\0", 5));
    m_runner.answer("diff --git a/f b/f\nBinary files a/f and b/f differ\n");

    const Listing listing = changedFiles();

    EXPECT_EQ(listing, Listing({trackedFile(u"f"_s, ChangeStatus::modified, 0, 0, {})}));
}

TEST_F(GitServiceTest, AFailedStatusFailsTheListingUnchanged)
{
    m_runner.fail(exitFailure(u"fatal: not a git repository\n"_s));

    const Listing listing = changedFiles();

    EXPECT_EQ(listing, Listing(failure(exitFailure(u"fatal: not a git repository\n"_s))));
    EXPECT_EQ(m_log, QuestionLog{statusQuestion()});
}

TEST_F(GitServiceTest, AFailureOfOneFileFailsTheListing)
{
    m_runner.answer(QByteArray(" M a\0 M b\0 M c\0", 15));
    m_runner.answer("@@ -1 +1 @@\n-x\n+y\n");
    m_runner.fail(exitFailure(u"combined"_s));
    m_runner.fail(exitFailure(u"unstaged"_s));

    const Listing listing = changedFiles();

    EXPECT_EQ(listing, Listing(failure(exitFailure(u"unstaged"_s))));
    EXPECT_EQ(m_log, (QuestionLog{statusQuestion(), combinedQuestion(u"a"_s),
                                  combinedQuestion(u"b"_s), unstagedQuestion(u"b"_s)}));
}

TEST_F(GitServiceTest, AFailedLaunchPassesThroughUnchanged)
{
    m_runner.fail(PlatformError{u"No such file or directory"_s});

    const Listing listing = changedFiles();

    EXPECT_EQ(listing,
              Listing(failure(ProcessFailure(PlatformError{u"No such file or directory"_s}))));
}

TEST_F(GitServiceTest, ATrackedFileCostsOneDiffAgainstHead)
{
    m_runner.answer("@@ -1 +1 @@\n-x\n+y\n");

    const Hunks hunks = rawHunksOfTracked();

    EXPECT_EQ(hunks, Hunks({rawHunk("@@ -1 +1 @@", 1, 1, {"-x", "+y"})}));
    EXPECT_EQ(m_log, QuestionLog{combinedQuestion(u"f"_s)});
}

TEST_F(GitServiceTest, WithoutHeadTheUnstagedHunksComeBeforeTheStagedOnes)
{
    m_runner.fail(exitFailure(u"fatal: bad revision 'HEAD'\n"_s));
    m_runner.answer("@@ -1 +1,2 @@\n one\n+two\n");
    m_runner.answer("@@ -0,0 +1 @@\n+one\n");

    const Hunks hunks = rawHunksOfTracked();

    EXPECT_EQ(hunks, Hunks({rawHunk("@@ -1 +1,2 @@", 1, 1, {" one", "+two"}),
                            rawHunk("@@ -0,0 +1 @@", 0, 1, {"+one"})}));
    EXPECT_EQ(m_log, (QuestionLog{combinedQuestion(u"f"_s), unstagedQuestion(u"f"_s),
                                  stagedQuestion(u"f"_s)}));
}

TEST_F(GitServiceTest, ALaunchThatFailsForTheCombinedDiffFallsBackToo)
{
    m_runner.fail(PlatformError{u"Resource temporarily unavailable"_s});
    m_runner.answer({});
    m_runner.answer({});

    const Hunks hunks = rawHunksOfTracked();

    EXPECT_EQ(hunks, Hunks(QList<RawHunk>()));
    EXPECT_EQ(m_log, (QuestionLog{combinedQuestion(u"f"_s), unstagedQuestion(u"f"_s),
                                  stagedQuestion(u"f"_s)}));
}

TEST_F(GitServiceTest, AFailedUnstagedDiffFailsWithItsOwnError)
{
    m_runner.fail(exitFailure(u"combined"_s));
    m_runner.fail(exitFailure(u"unstaged"_s));

    const Hunks hunks = rawHunksOfTracked();

    EXPECT_EQ(hunks, Hunks(failure(exitFailure(u"unstaged"_s))));
    EXPECT_EQ(m_log, (QuestionLog{combinedQuestion(u"f"_s), unstagedQuestion(u"f"_s)}));
}

TEST_F(GitServiceTest, AFailedStagedDiffFailsWithItsOwnError)
{
    m_runner.fail(exitFailure(u"combined"_s));
    m_runner.answer("@@ -1 +1 @@\n-x\n+y\n");
    m_runner.fail(exitFailure(u"staged"_s));

    const Hunks hunks = rawHunksOfTracked();

    EXPECT_EQ(hunks, Hunks(failure(exitFailure(u"staged"_s))));
}

TEST_F(GitServiceTest, AnUntrackedFileIsReadAndShownAsAllAdded)
{
    m_reader.answer("one\ntwo");

    const Hunks hunks = rawHunksOfUntracked();

    EXPECT_EQ(hunks, Hunks({rawHunk("@@ -0,0 +1,2 @@", 0, 1, {"+one", "+two"})}));
    EXPECT_EQ(m_log, QuestionLog{readQuestion(u"/r/f"_s)});
}

TEST_F(GitServiceTest, AnUntrackedNameIsNoPieceOfAnAddress)
{
    m_reader.answer("x");

    const Hunks hunks = rawHunks(untrackedFile(u"d/100%41 #?&\\:\n\".txt"_s, 0, {}));

    EXPECT_EQ(hunks, Hunks({rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+x"})}));
    EXPECT_EQ(m_log, QuestionLog{readQuestion(u"/r/d/100%41 #?&\\:\n\".txt"_s)});
}

TEST_F(GitServiceTest, AnUntrackedEmptyFileHasOneEmptyAddedLine)
{
    m_runner.answer(QByteArray("?? f\0", 5));
    m_reader.answer({});

    const Listing listing = changedFiles();

    EXPECT_EQ(listing,
              Listing({untrackedFile(u"f"_s, 1, {rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+"})})}));
}

TEST_F(GitServiceTest, AnUntrackedFileOfExactlyTheLimitIsShown)
{
    const QByteArray content(2'000'000, 'a');
    m_reader.answer(content);

    const Hunks hunks = rawHunksOfUntracked();

    EXPECT_EQ(hunks, Hunks({rawHunk("@@ -0,0 +1,1 @@", 0, 1, {'+' + content})}));
}

TEST_F(GitServiceTest, AnUntrackedFileOfOneByteMoreGetsThePlaceholder)
{
    m_reader.answer(QByteArray(2'000'001, 'a'));

    const Hunks hunks = rawHunksOfUntracked();

    EXPECT_EQ(hunks, Hunks({placeholderHunk()}));
}

TEST_F(GitServiceTest, AnotherLimitIsHandedToTheReaderAndKept)
{
    GitService service(m_runner, m_reader, 3);
    m_reader.answer("abc");
    m_reader.answer("abcd");

    const Hunks shown = service.rawHunks(untrackedFile(u"f"_s, 0, {}), m_root);
    const Hunks notShown = service.rawHunks(untrackedFile(u"f"_s, 0, {}), m_root);

    EXPECT_EQ(shown, Hunks({rawHunk("@@ -0,0 +1,1 @@", 0, 1, {"+abc"})}));
    EXPECT_EQ(notShown, Hunks({placeholderHunk()}));
    EXPECT_EQ(m_log,
              (QuestionLog{readQuestion(u"/r/f"_s, u"3"_s), readQuestion(u"/r/f"_s, u"3"_s)}));
}

TEST_F(GitServiceTest, AnUnreadableUntrackedFileCountsAsOneAddition)
{
    m_runner.answer(QByteArray("?? f\0", 5));
    m_reader.fail(u"Permission denied"_s);

    const Listing listing = changedFiles();

    EXPECT_EQ(listing, Listing({untrackedFile(u"f"_s, 1, {placeholderHunk()})}));
}

TEST_F(GitServiceTest, AnUntrackedFileThatIsNotUtf8GetsThePlaceholder)
{
    m_reader.answer("caf\xe9\n");

    const Hunks hunks = rawHunksOfUntracked();

    EXPECT_EQ(hunks, Hunks({placeholderHunk()}));
}

TEST_F(GitServiceTest, AnUntrackedFileThatEndsInTheMiddleOfALetterGetsThePlaceholder)
{
    m_reader.answer("caf\xc3");

    const Hunks hunks = rawHunksOfUntracked();

    EXPECT_EQ(hunks, Hunks({placeholderHunk()}));
}

TEST_F(GitServiceTest, TheBranchIsTrimmedAndKeepsItsSlash)
{
    m_runner.answer("feature/new-list\n");

    const Branch branch = m_service.currentBranch(m_root);

    EXPECT_EQ(branch, Branch(u"feature/new-list"_s));
    EXPECT_EQ(m_log, QuestionLog{branchQuestion()});
}

TEST_F(GitServiceTest, WhiteSpaceAloneIsNoBranch)
{
    m_runner.answer(" \r\n\t\n");

    const Branch branch = m_service.currentBranch(m_root);

    EXPECT_EQ(branch, Branch(std::nullopt));
}

TEST_F(GitServiceTest, AFailedBranchQuestionFailsUnchanged)
{
    m_runner.fail(exitFailure(u"fatal: ambiguous argument 'HEAD'\n"_s));

    const Branch branch = m_service.currentBranch(m_root);

    EXPECT_EQ(branch, Branch(failure(exitFailure(u"fatal: ambiguous argument 'HEAD'\n"_s))));
}

TEST_F(GitServiceTest, ReportsTheTotalAndThenEachFile)
{
    m_runner.answer(QByteArray("?? a\0?? b\0", 10));
    m_reader.answer("a");
    m_reader.answer("b");
    QList<ListingProgress> reports;
    ListingControl control;
    control.report = [&](const ListingProgress &progress) { reports.append(progress); };

    const Listing listing = changedFiles(control);

    EXPECT_TRUE(listing);
    EXPECT_EQ(reports, (QList<ListingProgress>{{0, 2}, {1, 2}, {2, 2}}));
}

TEST_F(GitServiceTest, AListingCancelledBeforeItBeginsAsksNothing)
{
    EXPECT_TRUE(changedFiles(cancelledAfter(0)));

    EXPECT_EQ(m_log, QuestionLog());
}

TEST_F(GitServiceTest, AListingCancelledDuringStatusAsksForNoFile)
{
    m_runner.answer(QByteArray(" M a\0?? b\0", 10));

    EXPECT_TRUE(changedFiles(cancelledAfter(1)));

    EXPECT_EQ(m_log, QuestionLog{statusQuestion()});
}

TEST_F(GitServiceTest, AListingCancelledDuringADiffAsksForNoOtherFile)
{
    m_runner.answer(QByteArray(" M a\0 M b\0", 10));
    m_runner.answer({});

    EXPECT_TRUE(changedFiles(cancelledAfter(2)));

    EXPECT_EQ(m_log, (QuestionLog{statusQuestion(), combinedQuestion(u"a"_s)}));
}

TEST_F(GitServiceTest, AListingCancelledDuringADiffThatFailsDoesNotFallBack)
{
    m_runner.answer(QByteArray("A  a\0", 5));
    m_runner.fail(exitFailure(u"combined"_s));

    EXPECT_TRUE(changedFiles(cancelledAfter(2)));

    EXPECT_EQ(m_log, (QuestionLog{statusQuestion(), combinedQuestion(u"a"_s)}));
}

TEST_F(GitServiceTest, AListingCancelledBetweenTheTwoDiffsOfAFileStopsThere)
{
    m_runner.answer(QByteArray("A  a\0", 5));
    m_runner.fail(exitFailure(u"combined"_s));
    m_runner.answer({});

    EXPECT_TRUE(changedFiles(cancelledAfter(3)));

    EXPECT_EQ(m_log,
              (QuestionLog{statusQuestion(), combinedQuestion(u"a"_s), unstagedQuestion(u"a"_s)}));
}

} // namespace
} // namespace vantrel
