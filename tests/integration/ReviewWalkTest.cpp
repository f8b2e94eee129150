// The whole application but its window: real child processes on a real repository, real sockets to
// the sample provider, preferences in a folder of their own.

#include "ReviewWalkFixture.h"
#include "support/ProcessRun.h"

#include <QDir>

#include <algorithm>

namespace vantrel::test {
namespace {

using ReviewWalk = ReviewWalkFixture;

QStringList described(const QList<FileChange> &files)
{
    QStringList lines;
    for (const FileChange &file : files) {
        lines.append(rawValue(file.status) + u' ' + file.path + u" +"_s +
                     QString::number(file.additions) + u" -"_s + QString::number(file.deletions));
    }
    return lines;
}

TEST_F(ReviewWalk, ListsEveryKindOfChangeOfTheSampleRepository)
{
    const SampleProvider provider;
    start(provider.baseURL());

    openRepository();

    const QStringList expected{
        u"M CMakeLists.txt +1 -1"_s,
        u"M assets/keys.json +1 -1"_s,
        u"M assets/sign-in.png +0 -0"_s,
        u"M docs/Größe und Maß.md +1 -1"_s,
        u"A docs/overview.txt +4 -0"_s,
        u"D docs/readme.txt +0 -4"_s,
        u"M docs/start +1 -1"_s,
        u"M serve.sh +0 -0"_s,
        u"A src/auth/refresh_gate.h +15 -0"_s,
        u"M src/auth/token_store.cpp +15 -8"_s,
        u"M src/http/client.cpp +2 -2"_s,
        u"D src/http/legacy_retry.cpp +0 -13"_s,
        u"A tests/auth/refresh_gate_test.cpp +4 -0"_s,
    };
    EXPECT_EQ(described(root().fileList()->files()), expected);
    EXPECT_EQ(root().coordinator()->branchName(), u"feature/token-refresh"_s);
    EXPECT_EQ(root().fileList()->errorMessage(), QString());
}

TEST_F(ReviewWalk, StepsThroughTheHunksAndAcrossTheFilesInBothDirections)
{
    const SampleProvider provider;
    start(provider.baseURL());
    openRepository();
    openFile(u"src/auth/token_store.cpp"_s);
    QStringList walk;
    const auto note = [&] {
        walk.append(root().diff()->file().path + u' ' +
                    QString::number(root().diff()->selectedHunkIndex()));
    };

    note();
    root().diff()->goNext();
    note();
    root().diff()->goNext();
    note();
    root().diff()->goNext();
    loadDiff();
    note();
    root().diff()->goPrevious();
    loadDiff();
    note();

    const QStringList expected{
        u"src/auth/token_store.cpp 0"_s, u"src/auth/token_store.cpp 1"_s,
        u"src/auth/token_store.cpp 2"_s, u"src/http/client.cpp 0"_s,
        u"src/auth/token_store.cpp 2"_s,
    };
    EXPECT_EQ(walk, expected);
}

TEST_F(ReviewWalk, ShowsTheSentenceOfAProviderThatRefusesTheKey)
{
    const SampleProvider provider({u"--status"_s, u"401"_s});
    start(provider.baseURL());
    openRepository();

    openFile(u"src/http/client.cpp"_s);
    awaitExplanation();

    const Hunk *const hunk = root().diff()->selectedHunk();
    ASSERT_TRUE(hunk->explanationState.isFailed());
    EXPECT_EQ(*hunk->explanationState.message(),
              u"This API key was rejected by the provider. Check it in Settings."_s);
}

TEST_F(ReviewWalk, ShowsAFailureOfADeadProviderAndKeepsTheHunks)
{
    SampleProvider provider;
    start(provider.baseURL());
    openRepository();
    provider.kill();

    openFile(u"src/http/client.cpp"_s);
    awaitExplanation();

    const Hunk *const hunk = root().diff()->selectedHunk();
    EXPECT_TRUE(hunk->explanationState.isFailed());
    EXPECT_FALSE(hunk->rows.isEmpty());
}

TEST_F(ReviewWalk, RefusesAFolderWithoutARepositoryAndStaysWhereItWas)
{
    const SampleProvider provider;
    start(provider.baseURL());

    root().openFolder(QUrl::fromLocalFile(m_folder.path()));
    spinUntil([this] { return !root().picker()->errorMessage().isEmpty(); });

    EXPECT_EQ(root().fileList(), nullptr);
    EXPECT_EQ(root().coordinator()->routeKind(), AppCoordinator::RouteKind::picker);
}

TEST_F(ReviewWalk, TellsThatTheRepositoryVanished)
{
    const SampleProvider provider;
    start(provider.baseURL());
    openRepository();

    ASSERT_TRUE(QDir(m_repository).removeRecursively());
    root().fileList()->load();
    spinUntil([this] { return !root().fileList()->isLoading(); });

    EXPECT_TRUE(root().fileList()->errorMessage().startsWith(u"Couldn't read git status: "_s));
    EXPECT_TRUE(root().fileList()->files().isEmpty());
}

TEST_F(ReviewWalk, AFileThatChangesAfterTheListingIsShownAsItWasListed)
{
    const SampleProvider provider;
    start(provider.baseURL());
    openRepository();
    const QString path = u"src/http/client.cpp"_s;
    const QList<RawHunk> listed = root().fileList()->files().at(rowOf(path)).hunks;

    ASSERT_TRUE(QFile::remove(m_repository + u'/' + path));
    openFile(path);
    awaitExplanation();

    EXPECT_EQ(root().diff()->errorMessage(), QString());
    EXPECT_EQ(root().diff()->hunks().size(), listed.size());
    EXPECT_TRUE(root().diff()->selectedHunk()->explanationState.isLoaded());
    root().diff()->goBack();
    root().fileList()->load();
    spinUntil([this] { return !root().fileList()->isLoading(); });
    EXPECT_EQ(root().fileList()->files().at(rowOf(path)).status, ChangeStatus::deleted);
}

TEST_F(ReviewWalk, LeavesTheRepositoryAsItWas)
{
    const SampleProvider provider;
    start(provider.baseURL());
    const auto snapshot = [this] {
        const ProcessRun list =
            run(u"find"_s, {m_repository, u"-type"_s, u"f"_s, u"-printf"_s, u"%p %s %T@ %i\\n"_s});
        EXPECT_EQ(list.exitCode, 0);
        QByteArrayList lines = list.output.split('\n');
        std::sort(lines.begin(), lines.end());
        return lines;
    };
    const QByteArrayList before = snapshot();

    openRepository();
    openFile(u"src/auth/token_store.cpp"_s);
    awaitExplanation();

    EXPECT_EQ(snapshot(), before);
}

/// The sample repository with programs in its configuration, each of which would leave a mark.
class TrappedReviewWalk : public ReviewWalkFixture
{
protected:
    void startTrapped()
    {
        start(m_provider.baseURL());
        openRepository();
        m_filesBefore = described(root().fileList()->files());
        root().fileList()->goBack();
        configure(u"diff.external"_s, u"touch '%1'; :"_s.arg(mark(u"diff"_s)));
        configure(u"filter.all.clean"_s, u"touch '%1'; cat"_s.arg(mark(u"filter"_s)));
        QFile attributes(m_repository + u"/.git/info/attributes"_s);
        ASSERT_TRUE(attributes.open(QFile::WriteOnly));
        attributes.write("* filter=all\n");
    }

    void chooseFolder()
    {
        root().openFolder(QUrl::fromLocalFile(m_repository));
        spinUntil([this] { return root().picker()->isAsking(); });
    }

    [[nodiscard]] QString mark(const QString &name) const { return m_marks.filePath(name); }

    [[nodiscard]] QStringList marks() const
    {
        return QDir(m_marks.path()).entryList(QDir::Files, QDir::Name);
    }

    const SampleProvider m_provider{};
    QTemporaryDir m_marks{};
    QStringList m_filesBefore{};

private:
    void configure(const QString &key, const QString &value) const
    {
        ASSERT_EQ(run(u"git"_s, {u"-C"_s, m_repository, u"config"_s, key, value}).exitCode, 0);
    }
};

TEST_F(TrappedReviewWalk, ARepositoryWithAFilterIsNotReadBeforeTheAnswer)
{
    startTrapped();

    chooseFolder();
    root().picker()->cancelOpening();

    EXPECT_EQ(root().fileList(), nullptr);
    EXPECT_EQ(marks(), QStringList());
}

TEST_F(TrappedReviewWalk, OnceItIsAllowedTheChangesAreTheSameAndNothingElseHasRun)
{
    startTrapped();

    chooseFolder();
    root().picker()->openAnyway();
    spinUntil([this] { return root().fileList() != nullptr; });
    root().fileList()->load();
    spinUntil([this] { return !root().fileList()->isLoading(); });

    EXPECT_EQ(root().fileList()->errorMessage(), QString());
    EXPECT_EQ(described(root().fileList()->files()), m_filesBefore);
    EXPECT_EQ(marks(), QStringList{u"filter"_s});
}

} // namespace
} // namespace vantrel::test
