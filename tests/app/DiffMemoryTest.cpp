#include "DiffViewModelFixture.h"

namespace vantrel::test {
namespace {

const QString firstHunk = u"-old 0\n+new 0"_s;
const QString secondHunk = u"-old 1\n+new 1"_s;

/// What a diff screen finds in the cache and the stored conversations, and leaves there.
class DiffMemoryTest : public DiffViewModelFixture
{
protected:
    DiffMemoryTest() { services.notice.acknowledge(); }

    void openTwoHunks()
    {
        makeViewModel(changedFile(u"b.cpp"_s, 2), listing(2));
        load();
        runUntilIdle();
    }

    [[nodiscard]] AIResultCache &cache() { return *services.coordinator.aiResultCache(); }

    void storeThread(const QString &path, const QString &diffText,
                     const std::optional<HunkExplanation> &explanation)
    {
        PersistedChatThread thread;
        thread.filePath = path;
        thread.diffText = diffText;
        thread.suggestedQuestions = {u"Stored?"_s};
        thread.explanation = explanation;
        services.chatHistory.store(thread);
    }
};

TEST_F(DiffMemoryTest, AnExplanationOfAnEarlierRunIsShownAtOnceAndNeverAskedFor)
{
    storeThread(u"b.cpp"_s, firstHunk, sampleExplanation());
    storeThread(u"b.cpp"_s, secondHunk, sampleExplanation());

    openTwoHunks();
    runUntilIdle();

    const State loaded = State::loaded(sampleExplanation());
    EXPECT_EQ(states(), (QList<State>{loaded, loaded}));
    EXPECT_EQ(cache().hunkExplanation({u"b.cpp"_s, firstHunk}), sampleExplanation());
    EXPECT_EQ(services.ai.explanations.size(), 0U);
}

TEST_F(DiffMemoryTest, AnExplanationInTheCacheIsShownAtOnce)
{
    cache().setHunkExplanation({u"b.cpp"_s, firstHunk}, sampleExplanation());

    openTwoHunks();
    waitForExplanations(1);

    EXPECT_EQ(states(), (QList<State>{State::loaded(sampleExplanation()), State::loading()}));
    EXPECT_EQ(services.log.entries().last(), asked(u"b.cpp"_s, 1));
}

TEST_F(DiffMemoryTest, TheSameHunkOfAnotherFileIsAnotherHunk)
{
    cache().setHunkExplanation({u"a.cpp"_s, firstHunk}, sampleExplanation());
    storeThread(u"c.cpp"_s, firstHunk, sampleExplanation());

    openTwoHunks();
    waitForExplanations(2);

    EXPECT_EQ(states(), (QList<State>{State::loading(), State::loading()}));
}

TEST_F(DiffMemoryTest, AStoredConversationWithoutAnExplanationSeedsNothing)
{
    storeThread(u"b.cpp"_s, firstHunk, std::nullopt);

    openTwoHunks();
    waitForExplanations(2);

    EXPECT_EQ(state(0), State::loading());
}

TEST_F(DiffMemoryTest, AFinishedExplanationGoesToTheCacheAndNotToTheHistory)
{
    open(1);

    push(0, completed());

    EXPECT_EQ(cache().hunkExplanation({u"b.cpp"_s, firstHunk}), sampleExplanation());
    EXPECT_EQ(services.chatHistory.threads(), QList<PersistedChatThread>());
}

TEST_F(DiffMemoryTest, AFailedExplanationIsNotRemembered)
{
    open(1);

    fail(0, networkFailure());

    EXPECT_EQ(cache().hunkExplanation({u"b.cpp"_s, firstHunk}), std::nullopt);
}

TEST_F(DiffMemoryTest, TheHunksAreShownOnceTheHistoryIsLoaded)
{
    storeThread(u"b.cpp"_s, firstHunk, sampleExplanation());
    services.chatHistory.holdBack();
    makeViewModel(changedFile(u"b.cpp"_s, 1), listing(1));
    viewModel->load();
    runUntilIdle();
    EXPECT_TRUE(viewModel->isLoading());

    services.chatHistory.letGo();
    runUntil([this] { return !viewModel->isLoading(); });

    EXPECT_EQ(state(0), State::loaded(sampleExplanation()));
}

TEST_F(DiffMemoryTest, LeavingWhileTheHistoryIsLoadedShowsNothing)
{
    services.chatHistory.holdBack();
    makeViewModel(changedFile(u"b.cpp"_s, 1), listing(1));
    viewModel->load();
    runUntilIdle();

    viewModel.reset();
    services.chatHistory.letGo();
    runUntilIdle();

    EXPECT_EQ(services.log.entries(), QStringList{u"isLoadingChanged"_s});
}

// The narrative

TEST_F(DiffMemoryTest, TheNarrativeIsAskedForOnceByTwoExplanations)
{
    makeViewModelWithoutNarrative(changedFile(u"b.cpp"_s, 2), listing(2));
    load();
    runUntil([this] { return services.ai.completions.size() == 1; });
    EXPECT_EQ(services.ai.explanations.size(), 0U);

    services.ai.completions.at(0).push(narrative);
    waitForExplanations(2);

    EXPECT_EQ(services.ai.completions.size(), 1U);
    EXPECT_TRUE(services.log.entries().contains(asked(u"b.cpp"_s, 0)));
}

TEST_F(DiffMemoryTest, ANarrativeThatFailsLeavesTheExplanationsWithoutOne)
{
    makeViewModelWithoutNarrative(changedFile(u"b.cpp"_s, 1), listing(1));
    load();
    runUntil([this] { return services.ai.completions.size() == 1; });

    services.ai.completions.at(0).fail(networkFailure());
    waitForExplanations(1);

    EXPECT_EQ(services.log.entries().last(), u"explainHunk b.cpp | -old 0\n+new 0 | "_s);
}

TEST_F(DiffMemoryTest, TheNarrativeGoesOnWhenTheScreenThatAskedForItIsLeft)
{
    makeViewModelWithoutNarrative(changedFile(u"b.cpp"_s, 1), listing(1));
    load();
    runUntil([this] { return services.ai.completions.size() == 1; });
    viewModel.reset();

    makeViewModelWithoutNarrative(changedFile(u"a.cpp"_s, 1), listing(1));
    load();
    services.ai.completions.at(0).push(narrative);
    waitForExplanations(1);

    EXPECT_EQ(services.ai.completions.size(), 1U);
    EXPECT_EQ(services.log.entries().last(), asked(u"a.cpp"_s, 0));
}

// Conversations

TEST_F(DiffMemoryTest, AHunkHasOneConversation)
{
    open(2);

    ChatThreadViewModel *const first = viewModel->chatViewModel(0);

    EXPECT_NE(first, nullptr);
    EXPECT_EQ(viewModel->chatViewModel(0), first);
    EXPECT_NE(viewModel->chatViewModel(1), first);
}

TEST_F(DiffMemoryTest, ThereIsNoConversationWithoutAHunk)
{
    open(1);

    EXPECT_EQ(viewModel->chatViewModel(-1), nullptr);
    EXPECT_EQ(viewModel->chatViewModel(1), nullptr);
}

TEST_F(DiffMemoryTest, AConversationStartsWithTheExplanationThatIsLoaded)
{
    open(1);
    push(0, completed());

    const ChatThreadViewModel *const chat = viewModel->chatViewModel(0);

    EXPECT_EQ(chat->explanation(), sampleExplanation());
    EXPECT_EQ(chat->suggestedQuestions(), sampleExplanation().suggestedQuestions);
}

TEST_F(DiffMemoryTest, AConversationTakesTheExplanationThatCompletesLater)
{
    open(1);
    const ChatThreadViewModel *const chat = viewModel->chatViewModel(0);
    EXPECT_EQ(chat->explanation(), std::nullopt);

    push(0, completed());

    EXPECT_EQ(chat->explanation(), sampleExplanation());
    EXPECT_EQ(chat->suggestedQuestions(), sampleExplanation().suggestedQuestions);
}

TEST_F(DiffMemoryTest, AConversationIsRestored)
{
    storeThread(u"b.cpp"_s, firstHunk, sampleExplanation());
    openTwoHunks();

    EXPECT_EQ(viewModel->chatViewModel(0)->suggestedQuestions(), QStringList{u"Stored?"_s});
}

TEST_F(DiffMemoryTest, AConversationAsksAboutItsHunk)
{
    open(2);
    ChatThreadViewModel *const chat = viewModel->chatViewModel(1);
    chat->setDraft(u"Why?"_s);

    chat->send();
    runUntil([this] { return services.ai.chats.size() == 1; });

    EXPECT_EQ(newEntries().last(), u"chatAboutHunk b.cpp | -old 1\n+new 1 | user: Why?"_s);
}

TEST_F(DiffMemoryTest, AChangedConfigurationClearsTheFailuresOfConversationsThatItMayMend)
{
    open(2);
    for (const int hunkIndex : {0, 1}) {
        viewModel->chatViewModel(hunkIndex)->setDraft(u"Why?"_s);
        viewModel->chatViewModel(hunkIndex)->send();
    }
    runUntil([this] { return services.ai.chats.size() == 2; });
    services.ai.chats.at(0).fail(missingKey());
    services.ai.chats.at(1).fail(networkFailure());
    runUntilIdle();

    changeConfiguration();

    EXPECT_EQ(viewModel->chatViewModel(0)->errorMessage(), QString());
    EXPECT_EQ(viewModel->chatViewModel(1)->errorMessage(), u"Connection refused"_s);
}

TEST_F(DiffMemoryTest, LeavingTheScreenEndsTheAnswersOfItsConversations)
{
    open(1);
    viewModel->chatViewModel(0)->setDraft(u"Why?"_s);
    viewModel->chatViewModel(0)->send();
    runUntil([this] { return services.ai.chats.size() == 1; });

    viewModel->cancelAll();

    EXPECT_TRUE(services.ai.chats.at(0).isTerminated());
}

} // namespace
} // namespace vantrel::test
