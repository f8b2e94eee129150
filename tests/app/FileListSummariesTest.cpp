#include "FileListViewModelFixture.h"

#include <algorithm>

namespace vantrel::test {
namespace {

using State = LoadableState<QString>;

AIFailure missingKey()
{
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;
    return error;
}

AIFailure networkFailure()
{
    PlatformError error;
    error.message = u"Connection refused"_s;
    return error;
}

class FileListSummariesTest : public FileListViewModelFixture
{
protected:
    FileListSummariesTest() { services.notice.acknowledge(); }

    /// Shows the files with every row in view, and forgets the log so far.
    void show(const QList<FileChange> &shown)
    {
        open(shown);
        for (const FileChange &file : shown) {
            viewModel->requestSummary(file.path);
        }
        runUntilIdle();
        newEntries();
    }

    void open(const QList<FileChange> &shown)
    {
        services.knowNarrative(shown, QString());
        QObject::connect(viewModel.get(), &FileListViewModel::summaryChanged, viewModel.get(),
                         [this](int row) { services.log.append(u"summaryChanged %1"_s.arg(row)); });
        load(shown, mainBranch);
        // The first hunk is explained in advance, once a worker has gone through the change set.
        if (std::any_of(shown.cbegin(), shown.cend(),
                        [](const FileChange &file) { return !file.hunks.isEmpty(); })) {
            runUntil([this] { return !services.ai.explanations.empty(); });
        }
        newEntries();
    }

    void answer(std::size_t number, const QString &summary)
    {
        services.ai.summaries.at(number).push(summary);
        runUntilIdle();
    }

    void fail(std::size_t number, const AIFailure &aiFailure)
    {
        services.ai.summaries.at(number).fail(aiFailure);
        runUntilIdle();
    }

    void changeConfiguration()
    {
        services.notificationCenter.post(aiConfigurationDidChange);
        runUntilIdle();
    }

    [[nodiscard]] QList<State> states() const
    {
        QList<State> all;
        for (const FileChange &file : viewModel->files()) {
            all.append(file.summaryState);
        }
        return all;
    }

    const QString textOfA = u"-old 0\n+new 0"_s;
};

TEST_F(FileListSummariesTest, AFileIsSummarisedOnlyWhenItsRowAppears)
{
    open(files);
    EXPECT_EQ(services.ai.summaries.size(), 0U);

    viewModel->requestSummary(u"b.cpp"_s);
    runUntilIdle();

    EXPECT_EQ(states(), (QList<State>{State::idle(), State::loading()}));
    EXPECT_EQ(services.ai.summaries.size(), 1U);
}

TEST_F(FileListSummariesTest, ASummaryIsShownAndRemembered)
{
    open({files.at(0)});

    viewModel->requestSummary(u"a.cpp"_s);
    runUntil([this] { return services.ai.summaries.size() == 1; });
    answer(0, u"Renames the plum."_s);

    const QStringList expected{u"summaryChanged 0"_s, u"summarizeFile a.cpp | "_s + textOfA,
                               u"summaryChanged 0"_s};
    QStringList log = newEntries();
    log.removeIf([](const QString &entry) { return !entry.startsWith(u"summar"); });
    log.removeOne(u"summarizeFile 0 released"_s);
    EXPECT_EQ(log, expected);
    EXPECT_EQ(states(), QList<State>{State::loaded(u"Renames the plum."_s)});
    EXPECT_EQ(services.coordinator.aiResultCache()->fileSummary({u"a.cpp"_s, textOfA}),
              u"Renames the plum."_s);
}

TEST_F(FileListSummariesTest, AFileWithoutHunksIsNeverSummarised)
{
    show({changedFile(u"logo.png"_s, 0)});

    EXPECT_EQ(states(), QList<State>{State::idle()});
    EXPECT_EQ(services.ai.summaries.size(), 0U);
}

TEST_F(FileListSummariesTest, APathThatIsNotListedIsNotSummarised)
{
    open(files);

    viewModel->requestSummary(u"elsewhere.cpp"_s);
    runUntilIdle();

    EXPECT_EQ(services.ai.summaries.size(), 0U);
}

TEST_F(FileListSummariesTest, ARowThatAppearsAgainWhileItsSummaryLoadsStartsNothing)
{
    show({files.at(0)});

    viewModel->requestSummary(u"a.cpp"_s);
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(services.ai.summaries.size(), 1U);
}

TEST_F(FileListSummariesTest, ARowThatAppearsAgainWithItsSummaryStartsNothing)
{
    show({files.at(0)});
    answer(0, u"Renames the plum."_s);
    newEntries();

    viewModel->requestSummary(u"a.cpp"_s);
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList());
}

TEST_F(FileListSummariesTest, SummariesAreAskedForOneAfterAnother)
{
    show(files);
    EXPECT_EQ(services.ai.summaries.size(), 1U);

    answer(0, u"Renames the plum."_s);

    EXPECT_EQ(services.ai.summaries.size(), 2U);
    EXPECT_EQ(states(), (QList<State>{State::loaded(u"Renames the plum."_s), State::loading()}));
}

TEST_F(FileListSummariesTest, AFailureOfTheServiceIsItsSentence)
{
    show(files);

    fail(0, missingKey());

    EXPECT_EQ(states(),
              (QList<State>{State::failed(u"Add an API key in Settings to use AI features."_s),
                            State::loading()}));
}

TEST_F(FileListSummariesTest, AFailureOfTheNetworkIsThePlatformsSentence)
{
    show({files.at(0)});

    fail(0, networkFailure());

    EXPECT_EQ(states(), QList<State>{State::failed(u"Connection refused"_s)});
    EXPECT_EQ(services.coordinator.aiResultCache()->fileSummary({u"a.cpp"_s, textOfA}),
              std::nullopt);
}

TEST_F(FileListSummariesTest, ASummaryOfBlanksIsNoReply)
{
    show({files.at(0)});

    answer(0, u" \n"_s);

    EXPECT_EQ(states(),
              QList<State>{State::failed(u"The AI provider returned an unexpected response."_s)});
}

TEST_F(FileListSummariesTest, WaitsForTheKeychainNotice)
{
    ScreenServices fresh;
    fresh.knowNarrative(files, QString());
    FileListViewModel list(sampleRepo(u"orchard"_s), fresh.review);
    fresh.git.answerChangedFiles(files);
    fresh.git.answerCurrentBranch(mainBranch);
    list.load();
    runUntil([&] { return !list.isLoading(); });

    list.requestSummary(u"a.cpp"_s);
    runUntil([&] { return fresh.notice.isShowingNotice(); });
    EXPECT_EQ(fresh.ai.summaries.size(), 0U);

    fresh.notice.acknowledge();
    runUntil([&] { return fresh.ai.summaries.size() == 1; });

    EXPECT_TRUE(list.files().at(0).summaryState.isLoading());
}

// Reloading

TEST_F(FileListSummariesTest, ReloadingAnUnchangedSetTakesEverySummaryFromTheCache)
{
    show({files.at(0)});
    answer(0, u"Renames the plum."_s);
    newEntries();

    load(QList<FileChange>{files.at(0)}, mainBranch);
    viewModel->requestSummary(u"a.cpp"_s);
    runUntilIdle();

    EXPECT_EQ(states(), QList<State>{State::loaded(u"Renames the plum."_s)});
    EXPECT_FALSE(newEntries().contains(u"filesChanged"_s)) << "nothing has changed";
    EXPECT_EQ(services.ai.summaries.size(), 1U);
}

TEST_F(FileListSummariesTest, AScreenThatIsMadeAgainFindsTheSummaries)
{
    show({files.at(0)});
    answer(0, u"Renames the plum."_s);

    makeViewModel();
    load(QList<FileChange>{files.at(0)}, mainBranch);

    EXPECT_EQ(states(), QList<State>{State::loaded(u"Renames the plum."_s)});
}

TEST_F(FileListSummariesTest, AFileThatHasChangedIsSummarisedAgain)
{
    show({files.at(0)});
    answer(0, u"Renames the plum."_s);
    const QList<FileChange> changed{changedFile(u"a.cpp"_s, {changedLine(1, u"x"_s, u"y"_s)})};
    services.knowNarrative(changed, QString());

    load(changed, mainBranch);
    EXPECT_EQ(states(), QList<State>{State::idle()});
    viewModel->requestSummary(u"a.cpp"_s);
    runUntil([this] { return services.ai.summaries.size() == 2; });

    EXPECT_EQ(states(), QList<State>{State::loading()});
}

TEST_F(FileListSummariesTest, TheSummaryOfAFileThatIsGoneIsWrittenNowhere)
{
    show({files.at(0)});
    load(QList<FileChange>(), mainBranch);
    newEntries();

    answer(0, u"Renames the plum."_s);

    EXPECT_FALSE(newEntries().contains(u"summaryChanged 0"_s));
    EXPECT_EQ(viewModel->files(), QList<FileChange>());
}

TEST_F(FileListSummariesTest, AFileThatHasMovedInTheListGetsItsSummary)
{
    show({files.at(0)});
    const QList<FileChange> longer{changedFile(u"0.cpp"_s, 0), files.at(0)};
    load(longer, mainBranch);
    newEntries();

    answer(0, u"Renames the plum."_s);

    EXPECT_EQ(states(), (QList<State>{State::idle(), State::loaded(u"Renames the plum."_s)}));
    EXPECT_TRUE(newEntries().contains(u"summaryChanged 1"_s));
}

// Changes of the configuration

TEST_F(FileListSummariesTest, AKeyThatIsAddedRetriesTheSummariesThatFailedForIt)
{
    show(files);
    fail(0, missingKey());
    fail(1, networkFailure());

    changeConfiguration();

    EXPECT_EQ(states(), (QList<State>{State::loading(), State::failed(u"Connection refused"_s)}));
    EXPECT_EQ(services.ai.summaries.size(), 3U);
}

TEST_F(FileListSummariesTest, AChangedConfigurationLeavesLoadedAndRunningSummariesAlone)
{
    show(files);
    answer(0, u"Renames the plum."_s);
    newEntries();

    changeConfiguration();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(services.ai.summaries.size(), 2U);
}

TEST_F(FileListSummariesTest, ASummaryThatFailsAfterTheChangeWaitsForTheNext)
{
    show({files.at(0)});
    changeConfiguration();
    fail(0, missingKey());
    EXPECT_TRUE(viewModel->files().at(0).summaryState.isFailed());

    changeConfiguration();

    EXPECT_EQ(states(), QList<State>{State::loading()});
}

// Leaving

TEST_F(FileListSummariesTest, LeavingEndsTheRunningSummaryAndTouchesNoState)
{
    show(files);

    viewModel->cancelAll();
    runUntilIdle();

    EXPECT_EQ(states(), (QList<State>{State::loading(), State::loading()}));
    EXPECT_TRUE(services.ai.summaries.at(0).isTerminated());
    EXPECT_EQ(services.ai.summaries.size(), 1U) << "the one that waited is never asked for";
}

TEST_F(FileListSummariesTest, AfterLeavingTheConfigurationIsNotHeardAnyMore)
{
    show({files.at(0)});
    fail(0, missingKey());

    viewModel->cancelAll();
    changeConfiguration();

    EXPECT_TRUE(viewModel->files().at(0).summaryState.isFailed());
}

TEST_F(FileListSummariesTest, LeavingWhileTheNoticeShowsAsksNothing)
{
    ScreenServices fresh;
    auto list = std::make_unique<FileListViewModel>(sampleRepo(u"orchard"_s), fresh.review);
    fresh.git.answerChangedFiles(files);
    fresh.git.answerCurrentBranch(mainBranch);
    list->load();
    runUntil([&] { return !list->isLoading(); });
    list->requestSummary(u"a.cpp"_s);
    runUntil([&] { return fresh.notice.isShowingNotice(); });

    list.reset();
    fresh.notice.acknowledge();
    runUntilIdle();

    EXPECT_EQ(fresh.ai.summaries.size(), 0U);
}

TEST_F(FileListSummariesTest, LeavingFromTheSignalOfASummaryHarmsNothing)
{
    show(files);
    QObject::connect(viewModel.get(), &FileListViewModel::summaryChanged, viewModel.get(),
                     [this] { viewModel->cancelAll(); });

    answer(0, u"Renames the plum."_s);

    EXPECT_EQ(services.ai.summaries.size(), 1U);
}

} // namespace
} // namespace vantrel::test
