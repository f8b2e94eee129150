// The commands, their order and what is made of their answers, with a scripted runner and reader.

#include "git/GitService.h"

#include <gtest/gtest.h>

#include <map>
#include <utility>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

const QUrl root = QUrl(QStringLiteral("file:///repo"));

ProcessFailure exitFailure(const QString &message)
{
    ProcessRunnerError error;
    error.status = 128;
    error.message = message;
    return error;
}

/// Answers commands, told by their words behind the common prefix; an unknown one fails the test.
class FakeProcessRunner final : public ProcessRunning
{
public:
    using Answer = Result<TextSlice, ProcessFailure>;

    void answer(const QStringList &arguments, const QByteArray &output)
    {
        m_answers.insert_or_assign(arguments.join(u' '), Answer(TextSlice::fromUtf8(output)));
    }
    void fail(const QStringList &arguments, const QString &message)
    {
        m_answers.insert_or_assign(arguments.join(u' '), Answer(failure(exitFailure(message))));
    }

    Answer run(const QString &command, const QStringList &arguments,
               const QUrl &directory) const override
    {
        EXPECT_EQ(command, u"git"_s);
        EXPECT_EQ(directory, root);
        EXPECT_EQ(arguments.first(5), (QStringList{u"-c"_s, u"core.fsmonitor="_s, u"-c"_s,
                                                   u"core.pager=cat"_s, u"--no-optional-locks"_s}));
        const QString words = arguments.sliced(5).join(u' ');
        commands.append(words);
        const auto found = m_answers.find(words);
        if (found == m_answers.end()) {
            ADD_FAILURE() << "unscripted: " << qPrintable(words);
            return TextSlice();
        }
        return found->second;
    }

    mutable QStringList commands{};

private:
    std::map<QString, Answer> m_answers{};
};

class FakeFileReader final : public FileReading
{
public:
    Result<QByteArray, PlatformError> read(const QUrl &file, std::int64_t maxBytes) const override
    {
        EXPECT_EQ(maxBytes, 2'000'000);
        files.append(file.toLocalFile());
        return answer;
    }

    Result<QByteArray, PlatformError> answer{QByteArray()};
    mutable QStringList files{};
};

class GitServiceTest : public testing::Test
{
protected:
    static QStringList status()
    {
        return {u"status"_s, u"--porcelain=v1"_s, u"-z"_s, u"--untracked-files=all"_s,
                u"--no-renames"_s};
    }
    static QStringList headDiff(const QString &path)
    {
        return {u"diff"_s, u"HEAD"_s, u"--no-renames"_s, u"--"_s, path};
    }
    static QStringList unstagedDiff(const QString &path)
    {
        return {u"diff"_s, u"--no-renames"_s, u"--"_s, path};
    }
    static QStringList stagedDiff(const QString &path)
    {
        return {u"diff"_s, u"--cached"_s, u"--no-renames"_s, u"--"_s, path};
    }
    static RawHunk placeholder()
    {
        RawHunk hunk;
        hunk.header = TextSlice::fromUtf8("@@ -0,0 +1,0 @@");
        hunk.newStart = 1;
        hunk.lines = {
            {RawLineKind::addition, TextSlice::fromUtf8("(file too large or binary to display)")}};
        return hunk;
    }
    static FileChange untracked()
    {
        FileChange file;
        file.path = u"new.txt"_s;
        file.status = ChangeStatus::added;
        file.isUntracked = true;
        return file;
    }

    FakeProcessRunner runner{};
    FakeFileReader reader{};
    GitService service{runner, reader};
};

TEST_F(GitServiceTest, ListsWithOneStatusAndOneDiffPerTrackedFile)
{
    runner.answer(status(), QByteArray(" M a b.txt\0?? new.txt\0", 22));
    runner.answer(headDiff(u"a b.txt"_s), "--- a\n+++ b\n@@ -1,2 +1,2 @@ f\n x\n-y\n+z\n+w\n");
    reader.answer = QByteArray("one\ntwo");

    const auto files = service.changedFiles(root, {});

    ASSERT_TRUE(files.has_value());
    ASSERT_EQ(files->size(), 2);
    EXPECT_EQ(files->at(0).path, u"a b.txt"_s);
    EXPECT_EQ(files->at(0).status, ChangeStatus::modified);
    EXPECT_EQ(files->at(0).additions, 2);
    EXPECT_EQ(files->at(0).deletions, 1);
    EXPECT_EQ(files->at(0).hunks.size(), 1);
    EXPECT_TRUE(files->at(0).summaryState.isIdle());
    EXPECT_TRUE(files->at(1).isUntracked);
    EXPECT_EQ(files->at(1).additions, 2);
    EXPECT_EQ(files->at(1).hunks.at(0).header, TextSlice::fromUtf8("@@ -0,0 +1,2 @@"));
    EXPECT_EQ(runner.commands,
              (QStringList{status().join(u' '), headDiff(u"a b.txt"_s).join(u' ')}));
    EXPECT_EQ(reader.files, QStringList{u"/repo/new.txt"_s});
}

TEST_F(GitServiceTest, FailsAsAWholeWhenTheStatusFails)
{
    runner.fail(status(), u"not a repository\n"_s);

    const auto files = service.changedFiles(root, {});

    ASSERT_FALSE(files.has_value());
    EXPECT_EQ(files.error().description(), u"Command exited with status 128: not a repository\n"_s);
}

TEST_F(GitServiceTest, FailsAsAWholeWhenOneFileFails)
{
    runner.answer(status(), QByteArray(" M a\0 M b\0", 10));
    runner.fail(headDiff(u"a"_s), u"no HEAD"_s);
    runner.fail(unstagedDiff(u"a"_s), u"broken"_s);

    const auto files = service.changedFiles(root, {});

    ASSERT_FALSE(files.has_value());
    EXPECT_EQ(files.error(), exitFailure(u"broken"_s));
}

TEST_F(GitServiceTest, FallsBackToTheUnstagedAndThenTheStagedHunks)
{
    FileChange file;
    file.path = u"a"_s;
    runner.fail(headDiff(u"a"_s), u"no HEAD"_s);
    runner.answer(unstagedDiff(u"a"_s), "@@ -5 +5 @@\n-u\n+v\n");
    runner.answer(stagedDiff(u"a"_s), "@@ -0,0 +1 @@\n+s\n");

    const auto hunks = service.rawHunks(file, root);

    ASSERT_TRUE(hunks.has_value());
    ASSERT_EQ(hunks->size(), 2);
    EXPECT_EQ(hunks->at(0).oldStart, 5);
    EXPECT_EQ(hunks->at(1).oldStart, 0);
    EXPECT_EQ(runner.commands,
              (QStringList{headDiff(u"a"_s).join(u' '), unstagedDiff(u"a"_s).join(u' '),
                           stagedDiff(u"a"_s).join(u' ')}));
}

TEST_F(GitServiceTest, FailsWithTheErrorOfTheStagedDiff)
{
    FileChange file;
    file.path = u"a"_s;
    runner.fail(headDiff(u"a"_s), u"first"_s);
    runner.answer(unstagedDiff(u"a"_s), "");
    runner.fail(stagedDiff(u"a"_s), u"second"_s);

    const auto hunks = service.rawHunks(file, root);

    ASSERT_FALSE(hunks.has_value());
    EXPECT_EQ(hunks.error(), exitFailure(u"second"_s));
}

TEST_F(GitServiceTest, ShowsAnUntrackedFileOfExactlyTheLimit)
{
    reader.answer = QByteArray(2'000'000, 'x');

    const auto hunks = service.rawHunks(untracked(), root);

    ASSERT_TRUE(hunks.has_value());
    EXPECT_EQ(hunks->at(0).lines.at(0).text.size(), 2'000'000);
}

TEST_F(GitServiceTest, ShowsAPlaceholderForAFileBeyondTheLimit)
{
    reader.answer = QByteArray(2'000'001, 'x');

    EXPECT_EQ(service.rawHunks(untracked(), root).value(), QList{placeholder()});
}

TEST_F(GitServiceTest, ShowsAPlaceholderForAFileThatIsNotUtf8)
{
    reader.answer = QByteArray("caf\xe9");

    EXPECT_EQ(service.rawHunks(untracked(), root).value(), QList{placeholder()});
}

TEST_F(GitServiceTest, ShowsAPlaceholderForAFileThatVanished)
{
    reader.answer = failure(PlatformError{u"No such file or directory"_s});

    EXPECT_EQ(service.rawHunks(untracked(), root).value(), QList{placeholder()});
}

TEST_F(GitServiceTest, CountsAPlaceholderAsOneAddition)
{
    runner.answer(status(), QByteArray("?? new.txt\0", 11));
    reader.answer = QByteArray("\xff");

    EXPECT_EQ(service.changedFiles(root, {})->at(0).additions, 1);
}

TEST_F(GitServiceTest, ShowsAnEmptyUntrackedFileAsOneEmptyAddedLine)
{
    runner.answer(status(), QByteArray("?? new.txt\0", 11));
    reader.answer = QByteArray();

    const FileChange file = service.changedFiles(root, {})->at(0);

    EXPECT_EQ(file.additions, 1);
    EXPECT_EQ(file.hunks.at(0).header, TextSlice::fromUtf8("@@ -0,0 +1,1 @@"));
    EXPECT_EQ(file.hunks.at(0).lines, (QList<RawDiffLine>{{RawLineKind::addition, TextSlice()}}));
}

TEST_F(GitServiceTest, NamesTheBranchWithoutItsLineFeed)
{
    runner.answer({u"rev-parse"_s, u"--abbrev-ref"_s, u"HEAD"_s}, "feature/x\n");

    EXPECT_EQ(service.currentBranch(root).value(), u"feature/x"_s);
}

TEST_F(GitServiceTest, NamesNoBranchWhenGitPrintsBlanks)
{
    runner.answer({u"rev-parse"_s, u"--abbrev-ref"_s, u"HEAD"_s}, " \n");

    EXPECT_EQ(service.currentBranch(root).value(), std::nullopt);
}

TEST_F(GitServiceTest, PassesOnAFailureToNameTheBranch)
{
    runner.fail({u"rev-parse"_s, u"--abbrev-ref"_s, u"HEAD"_s}, u"no commit"_s);

    EXPECT_EQ(service.currentBranch(root).error(), exitFailure(u"no commit"_s));
}

TEST_F(GitServiceTest, ReportsProgressAfterEachFileAndStopsWhenCancelled)
{
    runner.answer(status(), QByteArray(" M a\0 M b\0 M c\0", 15));
    runner.answer(headDiff(u"a"_s), "");
    runner.answer(headDiff(u"b"_s), "");
    QList<ListingProgress> reports;
    ListingControl control;
    control.report = [&](const ListingProgress &progress) { reports.append(progress); };
    control.isCancelled = [&] { return reports.last().finishedFiles == 2; };

    const auto files = service.changedFiles(root, control);

    ASSERT_TRUE(files.has_value());
    EXPECT_EQ(reports, (QList<ListingProgress>{{0, 3}, {1, 3}, {2, 3}}));
    EXPECT_EQ(runner.commands.size(), 3);
}

TEST(ProcessRunnerError, DescribesTheStatusAndTheMessageUntrimmed)
{
    EXPECT_EQ(exitFailure(u"fatal\n"_s).description(),
              u"Command exited with status 128: fatal\n"_s);
}

} // namespace
} // namespace vantrel
