// The whole application but its window: real child processes on a real repository, real sockets to
// the sample provider, preferences in a folder of their own.

#include "SampleProcesses.h"
#include "ai/AIPrompts.h"
#include "app/OrbiskApp.h"
#include "git/GitEnvironment.h"
#include "models/DiffText.h"
#include "support/ProcessRun.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QJsonArray>
#include <QTemporaryDir>

#include <algorithm>

namespace vantrel {
namespace {

using namespace Qt::Literals::StringLiterals;

class ReviewWalk : public testing::Test
{
protected:
    static void SetUpTestSuite() { pinGitEnvironment(); }

    /// Starts the application, set up for the provider at `baseURL`.
    void start(const QString &baseURL)
    {
        m_repository = test::makeDemoRepository(m_folder.path());
        OrbiskApp::Places places;
        places.preferencesFolder = m_folder.filePath(u"preferences"_s);
        places.keychainService = u"com.orbisk.apikeys.tests"_s;
        UserDefaults defaults(places.preferencesFolder);
        ASSERT_TRUE(defaults.setText(u"aiProvider"_s, u"custom"_s));
        ASSERT_TRUE(defaults.setText(u"aiBaseURL"_s, baseURL));
        ASSERT_TRUE(defaults.setText(u"aiModel"_s, u"sample"_s));
        ASSERT_TRUE(defaults.setBoolean(u"keychainAccessNotice.hasAcknowledged"_s, true));
        m_app.emplace(places);
    }

    RootViewModel &root() { return m_app->rootViewModel(); }

    void openRepository()
    {
        root().openFolder(QUrl::fromLocalFile(m_repository));
        test::spinUntil([this] { return root().fileList() != nullptr; });
        root().fileList()->load();
        test::spinUntil([this] { return !root().fileList()->isLoading(); });
    }

    void openFile(const QString &path)
    {
        const QList<FileChange> &files = root().fileList()->files();
        const auto found = std::find_if(files.cbegin(), files.cend(),
                                        [&](const FileChange &file) { return file.path == path; });
        ASSERT_NE(found, files.cend());
        root().fileList()->openFile(int(found - files.cbegin()));
        loadDiff();
    }

    void loadDiff()
    {
        ASSERT_NE(root().diff(), nullptr);
        root().diff()->load();
        test::spinUntil([this] { return !root().diff()->isLoading(); });
    }

    void awaitExplanation()
    {
        test::spinUntil([this] {
            const Hunk *const hunk = root().diff()->selectedHunk();
            return hunk != nullptr && !hunk->explanationState.isLoading() &&
                   !hunk->explanationState.isIdle();
        });
    }

    QTemporaryDir m_folder{};
    QString m_repository{};
    std::optional<OrbiskApp> m_app{};
};

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
    const test::SampleProvider provider;
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

TEST_F(ReviewWalk, ExplainsTheSelectedHunkWithTheExpectedRequest)
{
    const test::SampleProvider provider;
    start(provider.baseURL());
    openRepository();

    openFile(u"src/auth/token_store.cpp"_s);
    awaitExplanation();

    const Hunk &hunk = root().diff()->hunks().at(0);
    HunkExplanation expected;
    expected.tag = u"Behaviour"_s;
    expected.explanation =
        u"This is a sample answer; no model was asked. The hunk in "
        "`src/auth/token_store.cpp` adds 2 lines and removes 1 line. Its first changed word is "
        "`constexpr`."_s;
    expected.points = {u"2 lines added, 1 line removed."_s, u"Made by fixed rules."_s};
    expected.suggestedQuestions = {u"What could break?"_s, u"How is it tested?"_s};
    ASSERT_TRUE(hunk.explanationState.isLoaded());
    EXPECT_EQ(*hunk.explanationState.value(), expected);
    const QList<QJsonObject> requests = provider.requests();
    ASSERT_EQ(requests.size(), 1);
    const QString message = prompts::hunkExplanationMessage(u"src/auth/token_store.cpp"_s,
                                                            hunkDiffText(hunk), QString());
    const QJsonObject body{
        {u"model"_s, u"sample"_s},
        {u"stream"_s, true},
        {u"messages"_s,
         QJsonArray{
             QJsonObject{{u"role"_s, u"system"_s}, {u"content"_s, prompts::hunkExplanation()}},
             QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, message}},
         }},
    };
    EXPECT_EQ(requests.first()["body"_L1].toObject(), body);
    EXPECT_EQ(requests.first()["path"_L1].toString(), u"/v1/chat/completions"_s);
    EXPECT_FALSE(requests.first()["hasAuthorization"_L1].toBool());
}

TEST_F(ReviewWalk, StepsThroughTheHunksAndAcrossTheFilesInBothDirections)
{
    const test::SampleProvider provider;
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
    const test::SampleProvider provider({u"--status"_s, u"401"_s});
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
    test::SampleProvider provider;
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
    const test::SampleProvider provider;
    start(provider.baseURL());

    root().openFolder(QUrl::fromLocalFile(m_folder.path()));
    test::spinUntil([this] { return !root().picker()->errorMessage().isEmpty(); });

    EXPECT_EQ(root().fileList(), nullptr);
    EXPECT_EQ(root().coordinator()->routeKind(), AppCoordinator::RouteKind::picker);
}

TEST_F(ReviewWalk, TellsThatTheRepositoryVanished)
{
    const test::SampleProvider provider;
    start(provider.baseURL());
    openRepository();

    ASSERT_TRUE(QDir(m_repository).removeRecursively());
    root().fileList()->load();
    test::spinUntil([this] { return !root().fileList()->isLoading(); });

    EXPECT_TRUE(root().fileList()->errorMessage().startsWith(u"Couldn't read git status: "_s));
    EXPECT_TRUE(root().fileList()->files().isEmpty());
}

TEST_F(ReviewWalk, LeavesTheRepositoryAsItWas)
{
    const test::SampleProvider provider;
    start(provider.baseURL());
    const auto snapshot = [this] {
        const test::ProcessRun list = test::run(
            u"find"_s, {m_repository, u"-type"_s, u"f"_s, u"-printf"_s, u"%p %s %T@ %i\\n"_s});
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

} // namespace
} // namespace vantrel
