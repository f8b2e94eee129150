// The service over real repositories and the real git.

#include "git/FileSystemReader.h"
#include "git/GitEnvironment.h"
#include "git/GitService.h"
#include "git/ProcessRunner.h"
#include "support/TemporaryRepository.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>
#include <unistd.h>

#include <map>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Counts the child processes that a listing starts.
class CountingRunner final : public ProcessRunning
{
public:
    Result<TextSlice, ProcessFailure> run(const QString &command, const QStringList &arguments,
                                          const QUrl &directory) const override
    {
        ++count;
        return m_runner.run(command, arguments, directory);
    }

    mutable int count = 0;

private:
    ProcessRunner m_runner{};
};

class GitRepository : public testing::Test
{
protected:
    static void SetUpTestSuite() { pinGitEnvironment(); }

    QList<FileChange> changes()
    {
        const auto files = service.changedFiles(repository.root(), {});
        EXPECT_TRUE(files.has_value()) << (files ? "" : qPrintable(files.error().description()));
        return files.value_or(QList<FileChange>());
    }

    /// Every change as "<status><?> <path>: <lines with their signs>".
    QStringList described()
    {
        QStringList all;
        const QList<FileChange> files = changes();
        for (const FileChange &file : files) {
            QStringList lines;
            for (const RawHunk &hunk : file.hunks) {
                for (const RawDiffLine &line : hunk.lines) {
                    const char sign = " +-"[int(line.kind)];
                    lines.append(QChar::fromLatin1(sign) + line.text.toString());
                }
            }
            all.append(rawValue(file.status) + (file.isUntracked ? u"? "_s : u" "_s) + file.path +
                       u": "_s + lines.join(u'|'));
        }
        return all;
    }

    test::TemporaryRepository repository{};
    CountingRunner runner{};
    FileSystemReader reader{};
    GitService service{runner, reader};
};

TEST_F(GitRepository, OfACleanTreeHasNoChanges)
{
    repository.write(u"a"_s, "1\n");
    repository.commitAll();

    EXPECT_EQ(described(), QStringList());
}

TEST_F(GitRepository, ShowsModifiedDeletedAddedAndNestedUntrackedFiles)
{
    repository.write(u"gone"_s, "x\n");
    repository.write(u"kept"_s, "1\n2\n");
    repository.commitAll();
    QFile::remove(repository.path(u"gone"_s));
    repository.write(u"kept"_s, "1\n3\n");
    repository.write(u"staged"_s, "s\n");
    repository.git({u"add"_s, u"staged"_s});
    repository.write(u"sub/deeper/new.txt"_s, "n");

    EXPECT_EQ(described(), (QStringList{u"D gone: -x"_s, u"M kept:  1|-2|+3"_s, u"A staged: +s"_s,
                                        u"A? sub/deeper/new.txt: +n"_s}));
}

class OddName : public GitRepository, public testing::WithParamInterface<const char *>
{};

TEST_P(OddName, ShowsItsOwnChangeTrackedAndUntracked)
{
    const QString name = QString::fromUtf8(GetParam());
    repository.write(u"a.txt"_s, "decoy\n");
    repository.write(u"a1.txt"_s, "decoy\n");
    repository.write(name, "old\n");
    repository.git({u"--literal-pathspecs"_s, u"add"_s, u"--"_s, u"a.txt"_s, u"a1.txt"_s, name});
    repository.git({u"commit"_s, u"--quiet"_s, u"--message"_s, u"x"_s});
    repository.write(name, "new\n");
    repository.write(u"a.txt"_s, "decoy changed\n");
    repository.write(u"zz/"_s + name, "fresh");

    const QStringList all = described();

    EXPECT_TRUE(all.contains(u"M "_s + name + u": -old|+new"_s)) << qPrintable(all.join(u'\n'));
    EXPECT_TRUE(all.contains(u"A? zz/"_s + name + u": +fresh"_s)) << qPrintable(all.join(u'\n'));
}

INSTANTIATE_TEST_SUITE_P(All, OddName,
                         testing::Values("a b.txt", "quo\"te's.txt", "line\nfeed", "tab\tbed",
                                         "grün ✓.txt", "-dash", "a -> b", "@@x", "[br]ackets",
                                         ":!a.txt", "*.txt", "a[1].txt", ":(top)x", "back\\slash"));

TEST_F(GitRepository, ShowsASubmoduleAsOnePairOfLines)
{
    const test::TemporaryRepository inner;
    inner.write(u"f"_s, "1\n");
    inner.commitAll();
    repository.git({u"-c"_s, u"protocol.file.allow=always"_s, u"submodule"_s, u"--quiet"_s,
                    u"add"_s, inner.path(), u"module"_s});
    repository.commitAll();
    inner.write(u"f"_s, "2\n");
    inner.commitAll();
    repository.git(
        {u"-C"_s, u"module"_s, u"-c"_s, u"protocol.file.allow=always"_s, u"pull"_s, u"--quiet"_s});

    const QStringList all = described();

    ASSERT_EQ(all.size(), 1);
    EXPECT_TRUE(all.first().startsWith(u"M module: -Subproject commit "_s));
    EXPECT_TRUE(all.first().contains(u"|+Subproject commit "_s));
}

TEST_F(GitRepository, ShowsANestedRepositoryAsAPlaceholder)
{
    repository.commitAll();
    repository.git({u"init"_s, u"--quiet"_s, u"inner"_s});
    repository.write(u"inner/f"_s, "x");

    EXPECT_EQ(described(), QStringList{u"A? inner/: +(file too large or binary to display)"_s});
}

TEST_F(GitRepository, ShowsTheTargetsOfLinksAndNeverFollowsThem)
{
    ASSERT_EQ(::symlink("one", repository.path(u"tracked"_s).toUtf8().constData()), 0);
    repository.commitAll();
    QFile::remove(repository.path(u"tracked"_s));
    ASSERT_EQ(::symlink("two", repository.path(u"tracked"_s).toUtf8().constData()), 0);
    ASSERT_EQ(::symlink("/etc/hostname", repository.path(u"fresh"_s).toUtf8().constData()), 0);

    EXPECT_EQ(described(), (QStringList{u"M tracked: -one|+two"_s, u"A? fresh: +/etc/hostname"_s}));
}

TEST_F(GitRepository, ListsAModeChangeAndABinaryFileWithoutHunks)
{
    repository.write(u"binary"_s, QByteArray("\0\1\2", 3));
    repository.write(u"script"_s, "x\n");
    repository.commitAll();
    repository.write(u"binary"_s, QByteArray("\0\1\3", 3));
    ASSERT_EQ(::chmod(repository.path(u"script"_s).toUtf8().constData(), 0755), 0);

    EXPECT_EQ(described(), (QStringList{u"M binary: "_s, u"M script: "_s}));
}

TEST_F(GitRepository, ShowsAConflictWithItsMarkers)
{
    repository.write(u"f"_s, "base\n");
    repository.commitAll();
    repository.git({u"checkout"_s, u"--quiet"_s, u"-b"_s, u"other"_s});
    repository.write(u"f"_s, "theirs\n");
    repository.commitAll();
    repository.git({u"checkout"_s, u"--quiet"_s, u"main"_s});
    repository.write(u"f"_s, "ours\n");
    repository.commitAll();
    ProcessRunner merge;
    EXPECT_FALSE(merge.run(u"git"_s, {u"merge"_s, u"other"_s}, repository.root()).has_value());

    EXPECT_EQ(described(),
              QStringList{u"M f: +<<<<<<< HEAD| ours|+=======|+theirs|+>>>>>>> other"_s});
}

TEST_F(GitRepository, WithoutACommitShowsUnstagedHunksBeforeStagedOnes)
{
    repository.write(u"f"_s, "staged\n");
    repository.write(u"g"_s, "only staged\n");
    repository.git({u"add"_s, u"--all"_s});
    repository.write(u"f"_s, "edited\n");

    EXPECT_EQ(described(),
              (QStringList{u"A f: -staged|+edited|+staged"_s, u"A g: +only staged"_s}));
    EXPECT_FALSE(service.currentBranch(repository.root()).has_value());
}

TEST_F(GitRepository, ShowsTheChangesOfALinkedWorktree)
{
    repository.write(u"f"_s, "1\n");
    repository.commitAll();
    QTemporaryDir elsewhere;
    const QString tree = elsewhere.filePath(u"tree"_s);
    repository.git({u"worktree"_s, u"add"_s, u"--quiet"_s, u"-b"_s, u"side/branch"_s, tree});
    QFile file(tree + u"/f"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write("2\n");
    file.close();

    const auto files = service.changedFiles(QUrl::fromLocalFile(tree), {});

    ASSERT_TRUE(files.has_value());
    EXPECT_EQ(files->size(), 1);
    EXPECT_EQ(service.currentBranch(QUrl::fromLocalFile(tree)).value(), u"side/branch"_s);
}

TEST_F(GitRepository, NamesTheBranchAndADetachedHead)
{
    repository.commitAll();
    EXPECT_EQ(service.currentBranch(repository.root()).value(), u"main"_s);

    repository.git({u"checkout"_s, u"--quiet"_s, u"--detach"_s});

    EXPECT_EQ(service.currentBranch(repository.root()).value(), u"HEAD"_s);
}

TEST_F(GitRepository, OwnedBySomebodyElseFailsWithGitsMessage)
{
    if (::geteuid() != 0) {
        GTEST_SKIP() << "only root can give a folder away";
    }
    repository.commitAll();
    ASSERT_EQ(::chown(repository.path().toUtf8().constData(), 12345, 12345), 0);
    ASSERT_EQ(::chown(repository.path(u".git"_s).toUtf8().constData(), 12345, 12345), 0);

    const auto files = service.changedFiles(repository.root(), {});

    ASSERT_FALSE(files.has_value());
    EXPECT_EQ(files.error().serviceError()->status, 128);
    EXPECT_TRUE(files.error().description().contains(u"dubious ownership"_s));
}

TEST_F(GitRepository, ThatIsNoneFailsWithGitsMessage)
{
    QTemporaryDir plain;

    const auto files = service.changedFiles(QUrl::fromLocalFile(plain.path()), {});

    ASSERT_FALSE(files.has_value());
    EXPECT_TRUE(files.error().description().contains(u"not a git repository"_s));
}

TEST_F(GitRepository, ShowsTheSameHunksWhateverItsConfigurationSays)
{
    QByteArray lines;
    for (int i = 1; i <= 40; ++i) {
        lines += i % 5 == 0 ? "\n" : QByteArray::number(i) + '\n';
    }
    repository.write(u"f"_s, lines);
    repository.commitAll();
    repository.write(u"f"_s,
                     QByteArray(lines).replace("\n9\n", "\nnine\n").replace("\n18\n", "\n-\n"));
    const QList<FileChange> plain = changes();

    const std::map<QString, QString> settings{
        {u"color.ui"_s, u"always"_s},
        {u"color.diff"_s, u"always"_s},
        {u"diff.context"_s, u"0"_s},
        {u"diff.interHunkContext"_s, u"20"_s},
        {u"diff.suppressBlankEmpty"_s, u"true"_s},
        {u"diff.noprefix"_s, u"true"_s},
        {u"diff.mnemonicPrefix"_s, u"true"_s},
        {u"core.quotePath"_s, u"true"_s},
        {u"status.renames"_s, u"true"_s},
        {u"diff.renames"_s, u"copies"_s},
        {u"status.relativePaths"_s, u"true"_s},
    };
    for (const auto &[key, value] : settings) {
        repository.git({u"config"_s, key, value});
        EXPECT_EQ(changes(), plain) << qPrintable(key);
    }
    ASSERT_EQ(plain.first().hunks.size(), 2);
}

TEST_F(GitRepository, ListsAPathOnceWhenItWasTakenOutOfTheIndexOnly)
{
    repository.write(u"f"_s, "1\n");
    repository.commitAll();
    repository.git({u"rm"_s, u"--quiet"_s, u"--cached"_s, u"f"_s});

    const QList<FileChange> files = changes();

    ASSERT_EQ(files.size(), 1);
    EXPECT_EQ(files.first().status, ChangeStatus::deleted);
}

TEST_F(GitRepository, NeverReadsAHugeUntrackedFileAndNeverWaitsForAPipe)
{
    repository.commitAll();
    repository.write(u"huge"_s, "");
    ASSERT_EQ(::truncate(repository.path(u"huge"_s).toUtf8().constData(), 10'000'000'000), 0);
    ASSERT_EQ(::mkfifo(repository.path(u"pipe"_s).toUtf8().constData(), 0600), 0);

    // git itself lists no pipes.
    EXPECT_EQ(described(), QStringList{u"A? huge: +(file too large or binary to display)"_s});
    FileChange pipe;
    pipe.path = u"pipe"_s;
    pipe.isUntracked = true;
    const auto hunks = service.rawHunks(pipe, repository.root());
    EXPECT_EQ(hunks->first().lines.first().text,
              TextSlice::fromUtf8("(file too large or binary to display)"));
}

TEST_F(GitRepository, IsNotWrittenTo)
{
    repository.write(u"f"_s, "1\n");
    repository.commitAll();
    repository.write(u"f"_s, "2\n");
    const QString index = repository.path(u".git/index"_s);
    const QDateTime before = QFileInfo(index).lastModified();
    const QStringList entries = QDir(repository.path(u".git"_s)).entryList();

    (void)changes();

    EXPECT_EQ(QFileInfo(index).lastModified(), before);
    EXPECT_EQ(QDir(repository.path(u".git"_s)).entryList(), entries);
}

TEST_F(GitRepository, RunsOneStatusAndOneDiffPerTrackedFile)
{
    repository.write(u"a"_s, "1\n");
    repository.write(u"b"_s, "1\n");
    repository.commitAll();
    repository.write(u"a"_s, "2\n");
    repository.write(u"b"_s, "2\n");
    repository.write(u"c"_s, "2\n");

    (void)changes();

    EXPECT_EQ(runner.count, 3);
}

TEST_F(GitRepository, StopsAListingOfTwoThousandFilesWithinOneProcess)
{
    for (int i = 0; i < 2000; ++i) {
        repository.write(u"f"_s + QString::number(i), "1\n");
    }
    repository.commitAll();
    for (int i = 0; i < 2000; ++i) {
        repository.write(u"f"_s + QString::number(i), "2\n");
    }
    QList<ListingProgress> reports;
    ListingControl control;
    control.report = [&](const ListingProgress &progress) { reports.append(progress); };
    control.isCancelled = [&] { return reports.last().finishedFiles == 5; };

    (void)service.changedFiles(repository.root(), control);

    EXPECT_EQ(runner.count, 1 + 5);
    EXPECT_EQ(reports.last(), (ListingProgress{5, 2000}));
}

} // namespace
} // namespace vantrel
