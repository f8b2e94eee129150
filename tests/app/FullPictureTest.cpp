#include "FileListViewModelFixture.h"

namespace vantrel::test {
namespace {

const QString fullPicture = u"The orchard gets a second gate."_s;

class FullPictureTest : public FileListViewModelFixture
{
protected:
    FullPictureTest()
    {
        services.notice.acknowledge();
        listen();
    }

    void listen()
    {
        record(&FileListViewModel::narrativeChanged, u"narrativeChanged"_s);
        record(&FileListViewModel::isNarrativeLoadingChanged, u"isNarrativeLoadingChanged"_s);
    }

    void open(const QList<FileChange> &shown)
    {
        load(shown, mainBranch);
        runUntilIdle();
    }

    void answer(std::size_t number, const QString &narrative)
    {
        services.ai.completions.at(number).push(narrative);
        runUntilIdle();
    }

    [[nodiscard]] int count(const QString &signal)
    {
        return int(services.log.entries().count(signal));
    }
};

TEST_F(FullPictureTest, IsAskedForAfterTheLoadAndShown)
{
    open(files);
    EXPECT_TRUE(viewModel->isNarrativeLoading());
    EXPECT_EQ(viewModel->narrative(), QString());

    answer(0, fullPicture);

    EXPECT_FALSE(viewModel->isNarrativeLoading());
    EXPECT_EQ(viewModel->narrative(), fullPicture);
    EXPECT_EQ(count(u"narrativeChanged"_s), 1);
    EXPECT_EQ(count(u"isNarrativeLoadingChanged"_s), 2);
}

TEST_F(FullPictureTest, HasItsPlaceAsSoonAsTheFilesAreThere)
{
    services.git.answerChangedFiles(files);
    viewModel->load();
    runUntil([this] { return !viewModel->files().isEmpty(); });

    EXPECT_TRUE(viewModel->isLoading());
    EXPECT_TRUE(viewModel->isNarrativeLoading());
}

TEST_F(FullPictureTest, TellsTheModelAboutEachFileThatHasHunks)
{
    open({files.at(0), changedFile(u"logo.png"_s, 0), files.at(1)});

    EXPECT_TRUE(
        services.log.entries()
            .filter(u"complete "_s)
            .first()
            .endsWith(
                u"| Here are all the changed files in this review:\n\nFile: a.cpp\n\n-old 0\n+new 0"
                "\n\n---\n\nFile: b.cpp\n\n-old 0\n+new 0\n-old 1\n+new 1"_s));
}

TEST_F(FullPictureTest, TellsTheModelASummaryWhereThereIsOne)
{
    services.coordinator.aiResultCache()->setFileSummary({u"a.cpp"_s, u"-old 0\n+new 0"_s},
                                                         u"Renames the plum."_s);
    open({files.at(0)});

    EXPECT_TRUE(services.log.entries()
                    .filter(u"complete "_s)
                    .first()
                    .endsWith(u"File: a.cpp\n\nRenames the plum."_s));
}

TEST_F(FullPictureTest, ACleanWorkingTreeHasNone)
{
    open({});

    EXPECT_EQ(services.ai.completions.size(), 0U);
    EXPECT_FALSE(viewModel->isNarrativeLoading());
}

TEST_F(FullPictureTest, FilesWithoutHunksHaveNone)
{
    open({changedFile(u"logo.png"_s, 0)});

    EXPECT_EQ(services.ai.completions.size(), 0U);
    EXPECT_EQ(services.ai.explanations.size(), 0U);
}

TEST_F(FullPictureTest, AListingThatFailsAsksForNone)
{
    services.git.answerChangedFiles(failure(gitFailure()));
    viewModel->load();
    runUntil([this] { return !viewModel->isLoading(); });
    runUntilIdle();

    EXPECT_EQ(services.ai.completions.size(), 0U);
}

TEST_F(FullPictureTest, ABranchThatCannotBeReadDoesNotPreventIt)
{
    load(files, failure(gitFailure()));
    runUntilIdle();

    EXPECT_EQ(services.ai.completions.size(), 1U);
}

TEST_F(FullPictureTest, AFailureLeavesItOut)
{
    open(files);
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;

    services.ai.completions.at(0).fail(AIFailure(error));
    runUntilIdle();

    EXPECT_FALSE(viewModel->isNarrativeLoading());
    EXPECT_EQ(viewModel->narrative(), QString());
    EXPECT_EQ(count(u"narrativeChanged"_s), 0);
}

TEST_F(FullPictureTest, ReloadingAnUnchangedSetAsksNoMore)
{
    open(files);
    answer(0, fullPicture);

    open({files.at(1), files.at(0)}); // The order does not matter.

    EXPECT_EQ(services.ai.completions.size(), 1U);
    EXPECT_EQ(viewModel->narrative(), fullPicture);
    EXPECT_EQ(count(u"narrativeChanged"_s), 1);
}

TEST_F(FullPictureTest, ReloadingAChangedSetAsksAgainAndDropsTheOldText)
{
    open(files);
    answer(0, fullPicture);

    open({files.at(0)});

    EXPECT_EQ(services.ai.completions.size(), 2U);
    EXPECT_EQ(viewModel->narrative(), QString());
    EXPECT_TRUE(viewModel->isNarrativeLoading());
}

TEST_F(FullPictureTest, ReloadingWhileItIsMadeAsksNoMore)
{
    open(files);

    open(files);
    answer(0, fullPicture);

    EXPECT_EQ(services.ai.completions.size(), 1U);
    EXPECT_EQ(viewModel->narrative(), fullPicture);
}

TEST_F(FullPictureTest, TheTextOfAnotherSetIsNotShown)
{
    open(files);
    open({files.at(0)}); // The job of the set before is still running.

    answer(0, fullPicture);

    EXPECT_EQ(viewModel->narrative(), QString());
    EXPECT_FALSE(viewModel->isNarrativeLoading());
}

TEST_F(FullPictureTest, AScreenThatIsMadeWhileItIsMadeSharesIt)
{
    open(files);
    viewModel->cancelAll();
    makeViewModel();
    open(files);
    EXPECT_TRUE(viewModel->isNarrativeLoading());

    answer(0, fullPicture);

    EXPECT_EQ(services.ai.completions.size(), 1U);
    EXPECT_EQ(viewModel->narrative(), fullPicture);
}

TEST_F(FullPictureTest, AScreenThatIsMadeLaterShowsItAtOnce)
{
    open(files);
    answer(0, fullPicture);

    makeViewModel();
    load(files, mainBranch);

    EXPECT_EQ(viewModel->narrative(), fullPicture);
    EXPECT_FALSE(viewModel->isNarrativeLoading());
}

TEST_F(FullPictureTest, AChangedConfigurationDoesNotTouchIt)
{
    open(files);
    answer(0, fullPicture);
    // The first hunk is explained in advance, once a worker has laid it out.
    runUntil([this] { return !services.ai.explanations.empty(); });
    newEntries();

    services.notificationCenter.post(aiConfigurationDidChange);
    runUntilIdle();

    EXPECT_EQ(newEntries(), QStringList());
    EXPECT_EQ(viewModel->narrative(), fullPicture);
}

TEST_F(FullPictureTest, IsNotLoadingAnyMoreOnceTheScreenIsLeft)
{
    open(files);

    viewModel->cancelAll();

    EXPECT_FALSE(viewModel->isNarrativeLoading());
}

TEST_F(FullPictureTest, LeavingWhileTheChangeSetIsWrittenAsksNothing)
{
    services.git.answerChangedFiles(files);
    viewModel->load();
    runUntilIdle();
    services.log.waitFor(listingAsked);

    viewModel.reset();
    runUntilIdle();

    EXPECT_EQ(services.ai.completions.size(), 0U);
}

} // namespace
} // namespace vantrel::test
