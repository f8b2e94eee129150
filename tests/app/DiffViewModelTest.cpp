#include "DiffViewModelFixture.h"

namespace vantrel::test {
namespace {

using DiffViewModelTest = DiffViewModelFixture;

// Loading

TEST_F(DiffViewModelTest, LoadsNothingByItself)
{
    makeViewModel(changedFile(u"b.cpp"_s, 2), listing(2));

    runUntilIdle();

    EXPECT_EQ(services.log.entries(), QStringList());
    EXPECT_EQ(viewModel->hunkCount(), 0);
    EXPECT_EQ(viewModel->selectedHunk(), nullptr);
}

TEST_F(DiffViewModelTest, ShowsTheHunksThatTheFileCarriesAndExplainsTheFirst)
{
    services.notice.acknowledge();
    const FileChange file = changedFile(u"b.cpp"_s, 2);
    makeViewModel(file, listing(2));

    load();
    waitForExplanations(2);

    QList<Hunk> expectedHunks = displayedHunks(file.hunks);
    expectedHunks[0].explanationState = State::loading();
    expectedHunks[1].explanationState = State::loading();
    const QStringList expectedLog{u"isLoadingChanged"_s, u"hunksChanged"_s,
                                  u"isLoadingChanged"_s, u"explanationChanged 0"_s,
                                  asked(u"b.cpp"_s, 0),  u"explanationChanged 1"_s,
                                  asked(u"b.cpp"_s, 1)};
    EXPECT_EQ(viewModel->hunks(), expectedHunks);
    EXPECT_EQ(viewModel->selectedHunkIndex(), 0);
    EXPECT_EQ(viewModel->selectedHunk(), &viewModel->hunks().at(0));
    EXPECT_EQ(viewModel->errorMessage(), QString());
    EXPECT_EQ(services.log.entries(), expectedLog);
}

TEST_F(DiffViewModelTest, AsksGitForTheHunksOfAFileThatCarriesNone)
{
    services.notice.acknowledge();
    const QList<RawHunk> rawHunks = changedFile(u"b.cpp"_s, 1).hunks;
    makeViewModel(changedFile(u"b.cpp"_s, 0), listing(0));
    services.git.answerRawHunks(rawHunks);

    load();
    waitForExplanations(1);

    QList<Hunk> expectedHunks = displayedHunks(rawHunks);
    expectedHunks[0].explanationState = State::loading();
    const QStringList expectedLog{u"isLoadingChanged"_s,     u"rawHunks b.cpp in /orchard"_s,
                                  u"hunksChanged"_s,         u"isLoadingChanged"_s,
                                  u"explanationChanged 0"_s, asked(u"b.cpp"_s, 0)};
    EXPECT_EQ(viewModel->hunks(), expectedHunks);
    EXPECT_EQ(services.log.entries(), expectedLog);
}

TEST_F(DiffViewModelTest, ADiffThatCannotBeReadLeavesTheHunksEmpty)
{
    makeViewModel(changedFile(u"b.cpp"_s, 0), listing(0));
    services.git.answerRawHunks(failure(gitFailure()));

    load();
    runUntilIdle();

    const QStringList expectedLog{u"isLoadingChanged"_s, u"rawHunks b.cpp in /orchard"_s,
                                  u"errorMessageChanged"_s, u"isLoadingChanged"_s};
    EXPECT_EQ(viewModel->errorMessage(), u"Couldn't read diff: "_s + gitFailure().description());
    EXPECT_EQ(viewModel->hunks(), QList<Hunk>());
    EXPECT_EQ(services.log.entries(), expectedLog);
}

TEST_F(DiffViewModelTest, ALoadThatSucceedsClearsTheMessageOfTheOneBefore)
{
    makeViewModel(changedFile(u"b.cpp"_s, 0), listing(0));
    services.git.answerRawHunks(failure(gitFailure()));
    load();
    newEntries();

    services.git.answerRawHunks(QList<RawHunk>());
    load();

    const QStringList expectedLog{u"isLoadingChanged"_s, u"rawHunks b.cpp in /orchard"_s,
                                  u"errorMessageChanged"_s, u"isLoadingChanged"_s};
    EXPECT_EQ(viewModel->errorMessage(), QString());
    EXPECT_EQ(newEntries(), expectedLog);
}

TEST_F(DiffViewModelTest, OpeningWithLastSelectsAndExplainsTheLastHunk)
{
    services.notice.acknowledge();
    makeViewModel(changedFile(u"b.cpp"_s, 3), listing(3), Selection::last);

    load();
    waitForExplanations(2);

    const QStringList expectedLog{u"isLoadingChanged"_s,         u"hunksChanged"_s,
                                  u"selectedHunkIndexChanged"_s, u"isLoadingChanged"_s,
                                  u"explanationChanged 2"_s,     asked(u"b.cpp"_s, 2),
                                  u"explanationChanged 0"_s,     asked(u"b.cpp"_s, 0)};
    EXPECT_EQ(viewModel->selectedHunkIndex(), 2);
    EXPECT_EQ(services.log.entries(), expectedLog);
}

TEST_F(DiffViewModelTest, OpeningAFileWithLastAndNoHunksSelectsIndex0AndExplainsNothing)
{
    services.notice.acknowledge();
    makeViewModel(changedFile(u"b.cpp"_s, 0), listing(0), Selection::last);
    services.git.answerRawHunks(QList<RawHunk>());

    load();
    runUntilIdle();

    const QStringList expectedLog{u"isLoadingChanged"_s, u"rawHunks b.cpp in /orchard"_s,
                                  u"isLoadingChanged"_s};
    EXPECT_EQ(viewModel->selectedHunkIndex(), 0);
    EXPECT_EQ(viewModel->selectedHunk(), nullptr);
    EXPECT_EQ(services.log.entries(), expectedLog);
}

TEST_F(DiffViewModelTest, ASecondLoadBesideARunningOneStartsNothing)
{
    makeViewModel(changedFile(u"b.cpp"_s, 0), listing(0));
    viewModel->load();
    runUntilIdle();
    services.log.waitFor(u"rawHunks b.cpp in /orchard"_s);

    viewModel->load();
    services.git.answerRawHunks(QList<RawHunk>());
    services.git.answerRawHunks(QList<RawHunk>());
    runUntil([this] { return !viewModel->isLoading(); });

    EXPECT_EQ(services.log.entries().count(u"rawHunks b.cpp in /orchard"_s), 1);
    EXPECT_EQ(services.log.entries().count(u"isLoadingChanged"_s), 2);
}

TEST_F(DiffViewModelTest, WhoeverHearsOfTheHunksSeesTheWholeLoad)
{
    makeViewModel(changedFile(u"b.cpp"_s, 3), listing(3), Selection::last);
    QList<State> statesSeen;
    int selectionSeen = -1;
    bool isLoadingSeen = true;
    QObject::connect(viewModel.get(), &DiffViewModel::hunksChanged, viewModel.get(), [&] {
        statesSeen = states();
        selectionSeen = viewModel->selectedHunkIndex();
        isLoadingSeen = viewModel->isLoading();
    });

    load();

    const QList<State> expected{State::idle(), State::idle(), State::loading()};
    EXPECT_EQ(statesSeen, expected);
    EXPECT_EQ(selectionSeen, 2);
    EXPECT_FALSE(isLoadingSeen);
}

TEST_F(DiffViewModelTest, LoadingAgainEndsTheExplanationsOfTheHunksBefore)
{
    open(2);
    push(0, prose(u"Keeps"_s));
    newEntries();

    load();
    waitForExplanations(3);

    const QList<State> expected{State::loading(), State::loading()};
    EXPECT_EQ(states(), expected);
    EXPECT_EQ(viewModel->streamingExplanationText(0), std::nullopt);
    EXPECT_TRUE(newEntries().contains(u"explainHunk 0 released"_s));
}

// Explaining

TEST_F(DiffViewModelTest, AnExplanationWaitsForTheKeychainNotice)
{
    makeViewModel(changedFile(u"b.cpp"_s, 1), listing(1));
    load();
    runUntil([this] { return services.notice.isShowingNotice(); });
    runUntilIdle();
    EXPECT_EQ(services.ai.explanations.size(), 0U);
    newEntries();

    services.notice.acknowledge();
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList{asked(u"b.cpp"_s, 0)});
    EXPECT_EQ(state(0), State::loading());
}

TEST_F(DiffViewModelTest, EachEventOfAnExplanationIsPublishedOnce)
{
    open(1);
    QStringList published;
    QObject::connect(
        viewModel.get(), &DiffViewModel::explanationChanged, viewModel.get(), [&](int index) {
            published.append(viewModel->streamingExplanationText(index).value_or(u"no prose"_s));
            published.append(viewModel->isExplanationProseFinished(index) ? u"finished"_s
                                                                          : u"unfinished"_s);
        });

    push(0, prose(u"Keeps the "_s));
    push(0, prose(u"last plum."_s));
    push(0, ProseFinished());
    push(0, completed());

    const QStringList expected{u"Keeps the "_s,
                               u"unfinished"_s,
                               u"Keeps the last plum."_s,
                               u"unfinished"_s,
                               u"Keeps the last plum."_s,
                               u"finished"_s,
                               u"no prose"_s,
                               u"unfinished"_s};
    const QStringList expectedLog{u"explanationChanged 0"_s, u"explanationChanged 0"_s,
                                  u"explanationChanged 0"_s, u"explanationChanged 0"_s,
                                  u"explainHunk 0 released"_s};
    EXPECT_EQ(published, expected);
    EXPECT_EQ(newEntries(), expectedLog);
    EXPECT_EQ(state(0), State::loaded(sampleExplanation()));
}

TEST_F(DiffViewModelTest, AnExplanationHasNoProseBeforeItsFirstPiece)
{
    open(1);

    EXPECT_EQ(viewModel->streamingExplanationText(0), std::nullopt);
    EXPECT_EQ(viewModel->streamingExplanationView(0), std::nullopt);
}

TEST_F(DiffViewModelTest, AnEventThatChangesNothingIsNotPublished)
{
    open(1);
    push(0, ProseFinished());
    newEntries();

    push(0, prose(QString()));
    push(0, ProseFinished());

    EXPECT_EQ(newEntries(), QStringList());
}

TEST_F(DiffViewModelTest, AFailedExplanationDropsItsProse)
{
    open(1);
    push(0, prose(u"Keeps the "_s));
    push(0, ProseFinished());
    newEntries();

    fail(0, missingKey());

    const QStringList expectedLog{u"explainHunk 0 released"_s, u"explanationChanged 0"_s};
    EXPECT_EQ(state(0), State::failed(u"Add an API key in Settings to use AI features."_s));
    EXPECT_EQ(viewModel->streamingExplanationText(0), std::nullopt);
    EXPECT_FALSE(viewModel->isExplanationProseFinished(0));
    EXPECT_EQ(newEntries(), expectedLog);
}

TEST_F(DiffViewModelTest, AFailureOfTheNetworkShowsThePlatformsSentence)
{
    open(1);

    fail(0, networkFailure());

    EXPECT_EQ(state(0), State::failed(u"Connection refused"_s));
}

TEST_F(DiffViewModelTest, AnExplanationThatStopsWithoutItsRecordHasFailed)
{
    open(1);
    push(0, prose(u"Keeps the "_s));

    services.ai.explanations.at(0).finish();
    runUntilIdle();

    EXPECT_EQ(state(0), State::failed(u"The AI provider returned an unexpected response."_s));
    EXPECT_EQ(viewModel->streamingExplanationText(0), std::nullopt);
}

TEST_F(DiffViewModelTest, WhatAReaderHoldsNeitherChangesNorMakesTheNextPieceCopyTheText)
{
    open(1);
    push(0, prose(u"x"_s));
    QList<QString> held;
    int moves = 0;
    const QChar *data = viewModel->streamingExplanationView(0)->data();
    QObject::connect(viewModel.get(), &DiffViewModel::explanationChanged, viewModel.get(), [&] {
        const QChar *const now = viewModel->streamingExplanationView(0)->data();
        moves += now == data ? 0 : 1;
        data = now;
        held = {*viewModel->streamingExplanationText(0)};
    });

    for (int piece = 0; piece < 4096; ++piece) {
        services.ai.explanations.at(0).push(prose(u"x"_s));
    }
    runUntilIdle();

    EXPECT_EQ(held, QList<QString>{QString(4097, u'x')});
    EXPECT_LT(moves, 32); // A buffer that doubles moves 12 times, one that is copied 4096 times.
}

TEST_F(DiffViewModelTest, ATextThatWasReadStaysAsItWas)
{
    open(1);
    push(0, prose(u"Keeps "_s));
    const std::optional<QString> read = viewModel->streamingExplanationText(0);

    push(0, prose(u"plums."_s));

    EXPECT_EQ(read, u"Keeps "_s);
}

// Selecting

TEST_F(DiffViewModelTest, SelectingAHunkExplainsIt)
{
    open(3);

    viewModel->select(2);
    waitForExplanations(2);

    const QStringList expectedLog{u"selectedHunkIndexChanged"_s, u"explanationChanged 2"_s,
                                  asked(u"b.cpp"_s, 2)};
    const QList<State> expected{State::loading(), State::idle(), State::loading()};
    EXPECT_EQ(newEntries(), expectedLog);
    EXPECT_EQ(states(), expected);
}

TEST_F(DiffViewModelTest, SelectingOutOfRangeDoesNothing)
{
    open(2);

    viewModel->select(-1);
    viewModel->select(2);
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(viewModel->selectedHunkIndex(), 0);
}

TEST_F(DiffViewModelTest, SelectingAHunkThatIsBeingExplainedStartsNoSecondJob)
{
    open(2);
    viewModel->select(1);
    waitForExplanations(2);
    newEntries();

    viewModel->select(0);
    viewModel->select(0);
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList{u"selectedHunkIndexChanged"_s});
    EXPECT_EQ(services.ai.explanations.size(), 2U);
}

TEST_F(DiffViewModelTest, SelectingAHunkThatIsExplainedAsksNoMore)
{
    open(2);
    push(0, completed());
    viewModel->selectNext();
    waitForExplanations(2);
    newEntries();

    viewModel->selectPrevious();
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList{u"selectedHunkIndexChanged"_s});
    EXPECT_EQ(state(0), State::loaded(sampleExplanation()));
}

TEST_F(DiffViewModelTest, SelectingAHunkWhoseExplanationFailedKeepsTheFailure)
{
    open(1);
    fail(0, networkFailure());
    newEntries();

    viewModel->select(0);
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(state(0), failedWith(networkFailure()));
}

TEST_F(DiffViewModelTest, SelectNextOnTheLastHunkDoesNothing)
{
    open(2, Selection::last);

    viewModel->selectNext();
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(viewModel->selectedHunkIndex(), 1);
}

TEST_F(DiffViewModelTest, SelectPreviousOnTheFirstHunkDoesNothing)
{
    open(2);

    viewModel->selectPrevious();
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(viewModel->selectedHunkIndex(), 0);
}

TEST_F(DiffViewModelTest, AnExplanationStreamsOnWhenAnotherHunkIsSelected)
{
    open(2);

    viewModel->selectNext();
    waitForExplanations(2);
    push(0, prose(u"first"_s));
    push(1, prose(u"second"_s));
    push(0, completed());

    const QList<State> expected{State::loaded(sampleExplanation()), State::loading()};
    EXPECT_EQ(states(), expected);
    EXPECT_EQ(viewModel->streamingExplanationText(0), std::nullopt);
    EXPECT_EQ(viewModel->streamingExplanationText(1), u"second"_s);
}

TEST_F(DiffViewModelTest, HunksThatAreSelectedWhileTheNoticeShowsAreExplainedInTheirOrder)
{
    makeViewModel(changedFile(u"b.cpp"_s, 4), listing(4));
    load();
    runUntil([this] { return services.notice.isShowingNotice(); });
    runUntilIdle(); // The background run waits with hunk 1.
    viewModel->select(3);
    viewModel->select(2);
    runUntilIdle();
    newEntries();

    services.notice.acknowledge();
    waitForExplanations(4);

    const QStringList expectedLog{asked(u"b.cpp"_s, 0), asked(u"b.cpp"_s, 1), asked(u"b.cpp"_s, 3),
                                  asked(u"b.cpp"_s, 2)};
    EXPECT_EQ(newEntries(), expectedLog);
}

// Stepping

TEST_F(DiffViewModelTest, InTheMiddleBothStepsArePossible)
{
    open(3);
    viewModel->select(1);

    EXPECT_TRUE(viewModel->canGoPrevious());
    EXPECT_TRUE(viewModel->canGoNext());
}

TEST_F(DiffViewModelTest, AtTheEndsOfTheListingTheStepsEnd)
{
    const QList<FileChange> alone{changedFile(u"b.cpp"_s, 2)};
    makeViewModel(alone.at(0), alone);
    EXPECT_FALSE(viewModel->canGoNext());
    load();
    EXPECT_FALSE(viewModel->canGoPrevious());
    EXPECT_TRUE(viewModel->canGoNext());

    viewModel->selectNext();

    EXPECT_TRUE(viewModel->canGoPrevious());
    EXPECT_FALSE(viewModel->canGoNext());
    EXPECT_EQ(viewModel->previousFile(), nullptr);
    EXPECT_EQ(viewModel->nextFile(), nullptr);
    EXPECT_EQ(services.log.entries().count(u"canGoChanged"_s), 2);
}

TEST_F(DiffViewModelTest, AStepThatStaysPossibleIsNotAnnounced)
{
    open(2);

    viewModel->selectNext();

    EXPECT_EQ(newEntries().count(u"canGoChanged"_s), 0);
    EXPECT_TRUE(viewModel->canGoPrevious());
    EXPECT_TRUE(viewModel->canGoNext());
}

TEST_F(DiffViewModelTest, TheNeighboursAreThoseOfTheListing)
{
    const QList<FileChange> files = listing(1);
    makeViewModel(files.at(1), files);

    EXPECT_EQ(*viewModel->previousFile(), files.at(0));
    EXPECT_EQ(*viewModel->nextFile(), files.at(2));
}

TEST_F(DiffViewModelTest, TheShownFileIsFoundInTheListingByItsPath)
{
    const QList<FileChange> files = listing(1);
    FileChange summarised = files.at(1);
    summarised.summaryState = LoadableState<QString>::loaded(u"Keeps plums."_s);
    makeViewModel(summarised, files);

    EXPECT_EQ(*viewModel->nextFile(), files.at(2));
}

TEST_F(DiffViewModelTest, AFileThatIsNotInTheListingHasNoNeighbours)
{
    makeViewModel(changedFile(u"gone.cpp"_s, 1), listing(1));

    EXPECT_EQ(viewModel->previousFile(), nullptr);
    EXPECT_EQ(viewModel->nextFile(), nullptr);
    EXPECT_FALSE(viewModel->canGoPrevious());
    EXPECT_FALSE(viewModel->canGoNext());
}

TEST_F(DiffViewModelTest, GoingNextInsideTheFileSelectsTheNextHunk)
{
    open(2);

    viewModel->goNext();

    EXPECT_EQ(viewModel->selectedHunkIndex(), 1);
    EXPECT_EQ(services.coordinator.routeKind(), AppCoordinator::RouteKind::picker);
}

TEST_F(DiffViewModelTest, GoingNextPastTheLastHunkOpensTheNextFileOnItsFirst)
{
    open(2, Selection::last);

    viewModel->goNext();

    const AppCoordinator::Route expected =
        diffRoute(listing(2).at(2), listing(2), Selection::first);
    EXPECT_EQ(services.coordinator.route(), expected);
}

TEST_F(DiffViewModelTest, GoingPreviousInsideTheFileSelectsThePreviousHunk)
{
    open(2, Selection::last);

    viewModel->goPrevious();

    EXPECT_EQ(viewModel->selectedHunkIndex(), 0);
    EXPECT_EQ(services.coordinator.routeKind(), AppCoordinator::RouteKind::picker);
}

TEST_F(DiffViewModelTest, GoingPreviousBeforeTheFirstHunkOpensThePreviousFileOnItsLast)
{
    open(2);

    viewModel->goPrevious();

    const AppCoordinator::Route expected = diffRoute(listing(2).at(0), listing(2), Selection::last);
    EXPECT_EQ(services.coordinator.route(), expected);
}

TEST_F(DiffViewModelTest, SteppingPastTheEndsOfTheListingDoesNothing)
{
    services.notice.acknowledge();
    const QList<FileChange> alone{changedFile(u"b.cpp"_s, 1)};
    makeViewModel(alone.at(0), alone);
    load();

    viewModel->goNext();
    viewModel->goPrevious();

    EXPECT_EQ(services.coordinator.routeKind(), AppCoordinator::RouteKind::picker);
    EXPECT_EQ(viewModel->selectedHunkIndex(), 0);
}

TEST_F(DiffViewModelTest, GoesBackToTheFileList)
{
    open(1);

    viewModel->goBack();

    const AppCoordinator::Route expected = AppCoordinator::FilesRoute{repo};
    EXPECT_EQ(services.coordinator.route(), expected);
}

// Changes of the configuration

TEST_F(DiffViewModelTest, AChangedConfigurationExplainsTheSelectedHunkAgain)
{
    open(1);
    fail(0, missingKey());
    newEntries();

    changeConfiguration();
    waitForExplanations(2);

    const QStringList expectedLog{u"explanationChanged 0"_s, asked(u"b.cpp"_s, 0)};
    EXPECT_EQ(newEntries(), expectedLog);
    EXPECT_EQ(state(0), State::loading());
}

TEST_F(DiffViewModelTest, AChangedConfigurationResetsTheOtherHunksThatFailedForIt)
{
    open(2);
    fail(0, missingKey());
    viewModel->selectNext();
    waitForExplanations(2);
    push(1, completed());
    newEntries();

    changeConfiguration();

    const QList<State> expected{State::idle(), State::loaded(sampleExplanation())};
    EXPECT_EQ(states(), expected);
    EXPECT_EQ(newEntries(), QStringList{u"explanationChanged 0"_s});
}

TEST_F(DiffViewModelTest, AHunkThatWasResetIsExplainedWhenItIsSelected)
{
    open(2);
    fail(0, missingKey());
    viewModel->selectNext();
    waitForExplanations(2);
    changeConfiguration();

    viewModel->selectPrevious();
    waitForExplanations(3);

    EXPECT_EQ(state(0), State::loading());
}

TEST_F(DiffViewModelTest, AFailureOfTheNetworkOutlivesAChangedConfiguration)
{
    open(1);
    fail(0, networkFailure());
    newEntries();

    changeConfiguration();

    EXPECT_EQ(state(0), failedWith(networkFailure()));
    EXPECT_EQ(newEntries(), QStringList());
}

TEST_F(DiffViewModelTest, AChangedConfigurationInMidExplanationLeavesItAlone)
{
    open(1);
    push(0, prose(u"Keeps "_s));
    newEntries();

    changeConfiguration();
    push(0, prose(u"plums."_s));

    EXPECT_EQ(newEntries(), QStringList{u"explanationChanged 0"_s});
    EXPECT_EQ(viewModel->streamingExplanationText(0), u"Keeps plums."_s);
}

TEST_F(DiffViewModelTest, AnExplanationThatFailsAfterTheChangeIsRetriedAtTheNextOne)
{
    open(1);
    changeConfiguration();
    fail(0, missingKey());
    EXPECT_EQ(state(0), failedWith(missingKey()));

    changeConfiguration();
    waitForExplanations(2);

    EXPECT_EQ(state(0), State::loading());
}

TEST_F(DiffViewModelTest, AChangedConfigurationBeforeTheLoadDoesNothing)
{
    makeViewModel(changedFile(u"b.cpp"_s, 1), listing(1));

    changeConfiguration();

    EXPECT_EQ(services.log.entries(), QStringList());
}

TEST_F(DiffViewModelTest, HearsOfAChangeThatComesBeforeItsFirstTurn)
{
    services.notice.acknowledge();
    makeViewModel(changedFile(u"b.cpp"_s, 1), listing(1));
    services.notificationCenter.post(aiConfigurationDidChange);
    load();
    waitForExplanations(1);
    fail(0, missingKey());

    changeConfiguration();
    waitForExplanations(2);

    EXPECT_EQ(state(0), State::loading());
}

// Leaving

TEST_F(DiffViewModelTest, ACancelledExplanationRecordsNothing)
{
    open(1);
    push(0, prose(u"Keeps "_s));
    newEntries();

    viewModel->cancelAll();
    services.ai.explanations.at(0).push(completed());
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList{u"explainHunk 0 released"_s});
    EXPECT_EQ(state(0), State::loading());
    EXPECT_EQ(viewModel->streamingExplanationText(0), u"Keeps "_s);
}

TEST_F(DiffViewModelTest, AfterCancellingTheConfigurationIsNotHeardAnyMore)
{
    open(1);
    fail(0, missingKey());
    newEntries();

    viewModel->cancelAll();
    changeConfiguration();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(state(0), failedWith(missingKey()));
}

TEST_F(DiffViewModelTest, ACancelledLoadHasEndedAndRecordsNothing)
{
    makeViewModel(changedFile(u"b.cpp"_s, 0), listing(0));
    viewModel->load();
    runUntilIdle();
    services.log.waitFor(u"rawHunks b.cpp in /orchard"_s);

    viewModel->cancelAll();
    services.git.answerRawHunks(failure(gitFailure()));
    services.waitForGit();

    const QStringList expectedLog{u"isLoadingChanged"_s, u"rawHunks b.cpp in /orchard"_s,
                                  u"isLoadingChanged"_s, u"currentBranch "_s};
    EXPECT_EQ(services.log.entries(), expectedLog);
    EXPECT_EQ(viewModel->errorMessage(), QString());
    EXPECT_FALSE(viewModel->isLoading());
}

TEST_F(DiffViewModelTest, CancellingFromAnEventOfAnExplanationReadsNoFurther)
{
    open(1);
    QObject::connect(viewModel.get(), &DiffViewModel::explanationChanged, viewModel.get(),
                     [this] { viewModel->cancelAll(); });

    services.ai.explanations.at(0).push(prose(u"Keeps "_s));
    services.ai.explanations.at(0).push(prose(u"plums."_s));
    runUntilIdle();

    const QStringList expectedLog{u"explanationChanged 0"_s, u"explainHunk 0 released"_s};
    EXPECT_EQ(newEntries(), expectedLog);
    EXPECT_EQ(viewModel->streamingExplanationText(0), u"Keeps "_s);
}

TEST_F(DiffViewModelTest, LeavingBeforeTheFirstTurnAsksNothing)
{
    makeViewModel(changedFile(u"b.cpp"_s, 0), listing(0));
    viewModel->load();

    viewModel.reset();
    runUntilIdle();

    EXPECT_EQ(services.log.entries(), QStringList{u"isLoadingChanged"_s});
}

TEST_F(DiffViewModelTest, LeavingWhileGitReadsTheHunksExplainsNothing)
{
    makeViewModel(changedFile(u"b.cpp"_s, 0), listing(0));
    viewModel->load();
    runUntilIdle();
    services.log.waitFor(u"rawHunks b.cpp in /orchard"_s);

    viewModel.reset();
    services.git.answerRawHunks(changedFile(u"b.cpp"_s, 2).hunks);
    services.git.answerRawHunks(QList<RawHunk>());
    makeViewModel(changedFile(u"c.cpp"_s, 0), listing(0));
    load(); // Ends after the abandoned question on git's thread.

    const QStringList expectedLog{u"isLoadingChanged"_s, u"rawHunks b.cpp in /orchard"_s,
                                  u"isLoadingChanged"_s, u"rawHunks c.cpp in /orchard"_s,
                                  u"isLoadingChanged"_s};
    EXPECT_EQ(services.log.entries(), expectedLog);
}

TEST_F(DiffViewModelTest, LeavingWhileTheHunksAreLaidOutShowsNothing)
{
    makeViewModel(changedFile(u"b.cpp"_s, 1), listing(1));
    runUntilIdle();
    viewModel->load();
    afterTurns(1, [this] { viewModel.reset(); });

    runUntilIdle();

    EXPECT_EQ(services.log.entries(), QStringList{u"isLoadingChanged"_s});
}

TEST_F(DiffViewModelTest, LeavingBeforeTheFirstTurnOfAnExplanationAsksNothing)
{
    open(2);
    viewModel->selectNext();

    viewModel.reset();
    runUntilIdle();

    EXPECT_EQ(services.ai.explanations.size(), 1U);
}

TEST_F(DiffViewModelTest, LeavingAtTheEndOfTheLoadAsksNothing)
{
    services.notice.acknowledge();
    makeViewModel(changedFile(u"b.cpp"_s, 1), listing(1));
    // From the signal on, since the thread that lays out may answer before `load` returns.
    QObject::connect(viewModel.get(), &DiffViewModel::isLoadingChanged, [this] {
        if (!viewModel->isLoading()) {
            afterTurns(0, [this] { viewModel.reset(); });
        }
    });

    viewModel->load();
    runUntil([this] { return viewModel == nullptr; });
    runUntilIdle();

    EXPECT_EQ(services.ai.explanations.size(), 0U);
}

TEST_F(DiffViewModelTest, LeavingWhileTheNarrativeIsMadeExplainsNothing)
{
    services.notice.acknowledge();
    makeViewModelWithoutNarrative(changedFile(u"b.cpp"_s, 1), listing(1));
    load();
    runUntil([this] { return services.ai.completions.size() == 1; });

    viewModel.reset();
    services.ai.completions.at(0).push(narrative);
    runUntilIdle();

    EXPECT_EQ(services.ai.explanations.size(), 0U);
}

TEST_F(DiffViewModelTest, LeavingWhileTheNoticeShowsAsksNothing)
{
    makeViewModel(changedFile(u"b.cpp"_s, 1), listing(1));
    load();
    runUntil([this] { return services.notice.isShowingNotice(); });

    viewModel.reset();
    services.notice.acknowledge();
    runUntilIdle();

    EXPECT_EQ(services.ai.explanations.size(), 0U);
}

TEST_F(DiffViewModelTest, LeavingBeforeTheFirstEventEndsTheRequest)
{
    open(1);

    viewModel.reset();
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList{u"explainHunk 0 released"_s});
}

TEST_F(DiffViewModelTest, LeavingBetweenTwoEventsEndsTheRequest)
{
    open(1);
    push(0, prose(u"Keeps "_s));
    newEntries();

    viewModel.reset();
    services.ai.explanations.at(0).push(completed());
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList{u"explainHunk 0 released"_s});
}

TEST_F(DiffViewModelTest, LeavingWithEventsThatWaitEndsTheRequest)
{
    open(1);
    services.ai.explanations.at(0).push(prose(u"Keeps "_s));
    services.ai.explanations.at(0).push(completed());

    viewModel.reset();
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList{u"explainHunk 0 released"_s});
}

TEST_F(DiffViewModelTest, LeavingWithAChangeOfTheConfigurationThatWaitsDoesNothing)
{
    open(1);
    fail(0, missingKey());
    newEntries();
    services.notificationCenter.post(aiConfigurationDidChange);

    viewModel.reset();
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(services.ai.explanations.size(), 1U);
}

} // namespace
} // namespace vantrel::test
