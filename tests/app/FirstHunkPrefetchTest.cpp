#include "FileListViewModelFixture.h"

namespace vantrel::test {
namespace {

const QString firstHunk = u"-old 0\n+new 0"_s;
const QString fullPicture = u"The orchard gets a second gate."_s;

HunkExplanation sampleExplanation()
{
    return {u"Bug fix"_s, u"Keeps the last plum."_s, {u"No more loss"_s}, {u"Tested?"_s}};
}

/// What the file list explains in advance. The narrative is known.
class FirstHunkPrefetchTest : public FileListViewModelFixture
{
protected:
    FirstHunkPrefetchTest() { services.notice.acknowledge(); }

    void open(const QList<FileChange> &shown)
    {
        services.knowNarrative(shown, fullPicture);
        load(shown, mainBranch);
    }

    void openAndWait(const QList<FileChange> &shown)
    {
        open(shown);
        runUntil([this] { return services.ai.explanations.size() == 1; });
    }

    void storeExplanation(const QString &path)
    {
        PersistedChatThread thread;
        thread.filePath = path;
        thread.diffText = firstHunk;
        thread.explanation = sampleExplanation();
        services.chatHistory.store(thread);
    }

    [[nodiscard]] AIResultCache &cache() { return *services.coordinator.aiResultCache(); }

    /// The requests for explanations so far.
    [[nodiscard]] QStringList asked()
    {
        QStringList requests = services.log.entries().filter(u"explainHunk "_s);
        requests.removeIf([](const QString &entry) { return entry.endsWith(u"released"); });
        return requests;
    }
};

TEST_F(FirstHunkPrefetchTest, ExplainsTheFirstHunkOfTheFirstFile)
{
    openAndWait(files);

    services.ai.explanations.at(0).push(ProseDelta{u"Keeps "_s});
    services.ai.explanations.at(0).push(ExplanationCompleted{sampleExplanation()});
    runUntilIdle();

    EXPECT_EQ(asked(), QStringList{u"explainHunk a.cpp | "_s + firstHunk + u" | "_s + fullPicture});
    EXPECT_EQ(cache().hunkExplanation({u"a.cpp"_s, firstHunk}), sampleExplanation());
}

TEST_F(FirstHunkPrefetchTest, ExplainsAtMostOneHunk)
{
    openAndWait(files);

    services.ai.explanations.at(0).push(ExplanationCompleted{sampleExplanation()});
    runUntilIdle();

    EXPECT_EQ(services.ai.explanations.size(), 1U);
}

TEST_F(FirstHunkPrefetchTest, WritesNothingToTheHistory)
{
    openAndWait(files);
    services.ai.explanations.at(0).push(ExplanationCompleted{sampleExplanation()});
    runUntilIdle();

    EXPECT_EQ(services.chatHistory.threads(), QList<PersistedChatThread>());
}

TEST_F(FirstHunkPrefetchTest, PassesOverFilesWithoutHunks)
{
    openAndWait({changedFile(u"logo.png"_s, 0), files.at(0)});

    EXPECT_TRUE(asked().first().startsWith(u"explainHunk a.cpp"));
}

TEST_F(FirstHunkPrefetchTest, PassesOverAHunkThatTheCacheKnows)
{
    cache().setHunkExplanation({u"a.cpp"_s, firstHunk}, sampleExplanation());

    openAndWait(files);

    EXPECT_TRUE(asked().first().startsWith(u"explainHunk b.cpp"));
}

TEST_F(FirstHunkPrefetchTest, CopiesAStoredExplanationIntoTheCacheAndGoesOn)
{
    storeExplanation(u"a.cpp"_s);

    openAndWait(files);

    EXPECT_EQ(cache().hunkExplanation({u"a.cpp"_s, firstHunk}), sampleExplanation());
    EXPECT_TRUE(asked().first().startsWith(u"explainHunk b.cpp"));
}

TEST_F(FirstHunkPrefetchTest, EndsWhenEveryFirstHunkIsKnown)
{
    storeExplanation(u"a.cpp"_s);
    storeExplanation(u"b.cpp"_s);

    open(files);
    runUntil([this] { return cache().hunkExplanation({u"b.cpp"_s, firstHunk}).has_value(); });
    runUntilIdle();

    EXPECT_EQ(asked(), QStringList());
}

TEST_F(FirstHunkPrefetchTest, ACleanWorkingTreeStartsNone)
{
    open({});
    runUntilIdle();

    EXPECT_EQ(asked(), QStringList());
}

TEST_F(FirstHunkPrefetchTest, WaitsForTheNarrative)
{
    load(files, mainBranch);
    runUntil([this] { return services.ai.completions.size() == 1; });
    runUntilIdle();
    EXPECT_EQ(asked(), QStringList());

    services.ai.completions.at(0).push(fullPicture);
    runUntil([this] { return services.ai.explanations.size() == 1; });

    EXPECT_TRUE(asked().first().endsWith(fullPicture));
}

TEST_F(FirstHunkPrefetchTest, WaitsForTheHistory)
{
    storeExplanation(u"a.cpp"_s);
    services.chatHistory.holdBack();
    open(files);
    runUntilIdle();
    EXPECT_EQ(asked(), QStringList());

    services.chatHistory.letGo();
    runUntil([this] { return services.ai.explanations.size() == 1; });

    EXPECT_TRUE(asked().first().startsWith(u"explainHunk b.cpp"));
}

TEST_F(FirstHunkPrefetchTest, AFailureIsNotShownAndTriesNoOther)
{
    openAndWait(files);
    newEntries();
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;

    services.ai.explanations.at(0).fail(AIFailure(error));
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList{u"explainHunk 0 released"_s});
    EXPECT_EQ(viewModel->errorMessage(), QString());
}

TEST_F(FirstHunkPrefetchTest, AReloadWhileItRunsStartsNoSecondOne)
{
    openAndWait(files);

    load(files, mainBranch);
    runUntilIdle();

    EXPECT_EQ(services.ai.explanations.size(), 1U);
}

TEST_F(FirstHunkPrefetchTest, AReloadAfterItEndedTakesTheNextHunk)
{
    openAndWait(files);
    services.ai.explanations.at(0).push(ExplanationCompleted{sampleExplanation()});
    runUntilIdle();

    load(files, mainBranch);
    runUntil([this] { return services.ai.explanations.size() == 2; });

    EXPECT_TRUE(asked().last().startsWith(u"explainHunk b.cpp"));
}

TEST_F(FirstHunkPrefetchTest, LeavingEndsItsRequest)
{
    openAndWait(files);

    viewModel->cancelAll();

    EXPECT_TRUE(services.ai.explanations.at(0).isTerminated());
}

TEST_F(FirstHunkPrefetchTest, LeavingWhileTheNarrativeIsMadeExplainsNothing)
{
    load(files, mainBranch);
    runUntil([this] { return services.ai.completions.size() == 1; });

    viewModel->cancelAll();
    services.ai.completions.at(0).push(fullPicture);
    runUntilIdle();

    EXPECT_EQ(asked(), QStringList());
}

TEST_F(FirstHunkPrefetchTest, LeavingWhileTheHistoryIsLoadedExplainsNothing)
{
    services.chatHistory.holdBack();
    open(files);
    runUntilIdle();

    viewModel.reset();
    services.chatHistory.letGo();
    runUntilIdle();

    EXPECT_EQ(asked(), QStringList());
}

} // namespace
} // namespace vantrel::test
