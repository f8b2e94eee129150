#include "DiffViewModelFixture.h"

namespace vantrel::test {
namespace {

using DiffBackgroundRunTest = DiffViewModelFixture;

const QString invalidResponse = u"The AI provider returned an unexpected response."_s;

TEST_F(DiffBackgroundRunTest, ExplainsTheOtherHunksOneAfterAnother)
{
    openWithBackgroundRun(4);
    EXPECT_EQ(states(),
              (QList<State>{State::loading(), State::loading(), State::idle(), State::idle()}));

    push(1, completed());
    waitForExplanations(3);
    push(2, completed());
    waitForExplanations(4);

    const QStringList expectedLog{u"explanationChanged 1"_s, u"explainHunk 1 released"_s,
                                  u"explanationChanged 2"_s, asked(u"b.cpp"_s, 2),
                                  u"explanationChanged 2"_s, u"explainHunk 2 released"_s,
                                  u"explanationChanged 3"_s, asked(u"b.cpp"_s, 3)};
    EXPECT_EQ(newEntries(), expectedLog);
}

TEST_F(DiffBackgroundRunTest, EndsWithTheLastHunk)
{
    openWithBackgroundRun(2);

    push(1, completed());

    EXPECT_EQ(states(), (QList<State>{State::loading(), State::loaded(sampleExplanation())}));
    EXPECT_EQ(services.ai.explanations.size(), 2U);
}

TEST_F(DiffBackgroundRunTest, TakesTheHunksBeforeTheSelectedOneToo)
{
    openWithBackgroundRun(3, Selection::last);

    push(1, completed());
    waitForExplanations(3);

    EXPECT_EQ(states(), (QList<State>{State::loaded(sampleExplanation()), State::loading(),
                                      State::loading()}));
}

TEST_F(DiffBackgroundRunTest, SelectingTheHunkThatItExplainsStartsNoSecondJob)
{
    openWithBackgroundRun(3);

    viewModel->select(1);
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList{u"selectedHunkIndexChanged"_s});
    EXPECT_EQ(services.ai.explanations.size(), 2U);
}

TEST_F(DiffBackgroundRunTest, WaitsForAHunkThatWasSelectedMeanwhile)
{
    openWithBackgroundRun(4);
    viewModel->select(2);
    waitForExplanations(3);

    push(1, completed());
    EXPECT_EQ(services.ai.explanations.size(), 3U) << "it waits for hunk 2";
    push(2, completed());
    waitForExplanations(4);

    EXPECT_EQ(state(3), State::loading());
}

TEST_F(DiffBackgroundRunTest, PassesOverAHunkThatIsExplainedAlready)
{
    openWithBackgroundRun(4);
    viewModel->select(2);
    waitForExplanations(3);
    push(2, completed());

    push(1, completed());
    waitForExplanations(4);

    EXPECT_EQ(state(3), State::loading());
}

TEST_F(DiffBackgroundRunTest, AFailureLeavesItsHunkIdleAndStopsTheRun)
{
    openWithBackgroundRun(3);

    fail(1, networkFailure());

    EXPECT_EQ(states(), (QList<State>{State::loading(), State::idle(), State::idle()}));
    EXPECT_EQ(services.ai.explanations.size(), 2U);
}

TEST_F(DiffBackgroundRunTest, AHunkThatItLeftIdleIsExplainedWhenItIsSelected)
{
    openWithBackgroundRun(3);
    fail(1, networkFailure());

    viewModel->select(1);
    waitForExplanations(3);

    EXPECT_EQ(state(1), State::loading());
}

TEST_F(DiffBackgroundRunTest, AFailureOfTheSelectedHunkStaysVisibleAndTheRunGoesOn)
{
    openWithBackgroundRun(3);
    viewModel->select(1);

    fail(1, networkFailure());
    waitForExplanations(3);

    EXPECT_EQ(states(),
              (QList<State>{State::loading(), failedWith(networkFailure()), State::loading()}));
}

TEST_F(DiffBackgroundRunTest, AHunkThatFailedWhileItWasSelectedIsNotTriedAgain)
{
    openWithBackgroundRun(4);
    viewModel->select(2);
    waitForExplanations(3);
    fail(2, networkFailure());
    viewModel->select(0);

    push(1, completed());
    waitForExplanations(4);

    EXPECT_EQ(state(2), failedWith(networkFailure()));
    EXPECT_EQ(state(3), State::loading());
}

TEST_F(DiffBackgroundRunTest, DoesNotStartForAFileOfOneHunk)
{
    openWithBackgroundRun(1);

    push(0, completed());

    EXPECT_EQ(services.ai.explanations.size(), 1U);
}

TEST_F(DiffBackgroundRunTest, StopsWhenTheScreenIsLeft)
{
    openWithBackgroundRun(3);

    viewModel->cancelAll();
    services.ai.explanations.at(1).push(completed());
    runUntilIdle();

    EXPECT_EQ(services.ai.explanations.size(), 2U);
    EXPECT_EQ(state(1), State::loading());
}

TEST_F(DiffBackgroundRunTest, LeavingFromTheEventThatItWaitsForHarmsNothing)
{
    openWithBackgroundRun(3);
    QObject::connect(viewModel.get(), &DiffViewModel::explanationChanged, viewModel.get(),
                     [this](int hunkIndex) {
                         if (hunkIndex == 1) {
                             viewModel->cancelAll();
                         }
                     });

    push(1, completed());

    EXPECT_EQ(services.ai.explanations.size(), 2U);
}

TEST_F(DiffBackgroundRunTest, IsNotBegunAgainByAChangedConfiguration)
{
    openWithBackgroundRun(3);
    fail(1, missingKey());

    changeConfiguration();

    EXPECT_EQ(states(), (QList<State>{State::loading(), State::idle(), State::idle()}));
    EXPECT_EQ(services.ai.explanations.size(), 2U);
}

TEST_F(DiffBackgroundRunTest, AReplyThatSaysNothingIsAFailure)
{
    open(1);

    push(0, ExplanationCompleted{HunkExplanation{u"Change"_s, u" \n"_s, {}, {}}});

    EXPECT_EQ(state(0), State::failed(invalidResponse));
}

} // namespace
} // namespace vantrel::test
