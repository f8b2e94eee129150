#include "FileListViewModelFixture.h"

namespace vantrel::test {
namespace {

using FileListViewModelTest = FileListViewModelFixture;

TEST_F(FileListViewModelTest, LoadsNothingByItself)
{
    runUntilIdle();

    EXPECT_EQ(services.log.entries(), QStringList());
    EXPECT_FALSE(viewModel->isLoading());
    EXPECT_FALSE(viewModel->hasLoaded());
}

TEST_F(FileListViewModelTest, LoadsTheFilesAndThenTheBranch)
{
    load(files, mainBranch);

    const QStringList expected{u"isLoadingChanged"_s, listingAsked,       u"filesChanged"_s,
                               branchAsked,           u"branchChanged"_s, u"hasLoadedChanged"_s,
                               u"isLoadingChanged"_s};
    EXPECT_EQ(services.log.entries(), expected);
    EXPECT_EQ(viewModel->files(), files);
    EXPECT_EQ(viewModel->branch(), mainBranch);
    EXPECT_EQ(viewModel->errorMessage(), QString());
    EXPECT_TRUE(viewModel->hasLoaded());
    EXPECT_FALSE(viewModel->isLoading());
}

TEST_F(FileListViewModelTest, TellsTheCoordinatorTheBranch)
{
    load(files, mainBranch);

    EXPECT_EQ(services.coordinator.currentBranch(), mainBranch);
}

TEST_F(FileListViewModelTest, ShowsTheFilesWhileTheBranchIsStillAskedFor)
{
    services.git.answerChangedFiles(files);

    viewModel->load();
    runUntil([this] { return !viewModel->files().isEmpty(); });

    EXPECT_EQ(viewModel->files(), files);
    EXPECT_TRUE(viewModel->isLoading());
    EXPECT_FALSE(viewModel->hasLoaded());
}

TEST_F(FileListViewModelTest, AFailedListingEmptiesTheListAndTheBranch)
{
    load(files, mainBranch);
    newEntries();

    services.git.answerChangedFiles(failure(gitFailure()));
    viewModel->load();
    runUntil([this] { return !viewModel->isLoading(); });

    const QStringList expected{u"isLoadingChanged"_s,    listingAsked,
                               u"filesChanged"_s,        u"branchChanged"_s,
                               u"errorMessageChanged"_s, u"isLoadingChanged"_s};
    EXPECT_EQ(newEntries(), expected);
    EXPECT_EQ(viewModel->errorMessage(),
              u"Couldn't read git status: "_s + gitFailure().description());
    EXPECT_EQ(viewModel->files(), QList<FileChange>());
    EXPECT_EQ(viewModel->branch(), std::nullopt);
    EXPECT_EQ(services.coordinator.currentBranch(), std::nullopt);
}

TEST_F(FileListViewModelTest, AFirstListingThatFailsHasLoadedToo)
{
    services.git.answerChangedFiles(failure(gitFailure()));

    viewModel->load();
    runUntil([this] { return !viewModel->isLoading(); });

    EXPECT_TRUE(viewModel->hasLoaded());
}

TEST_F(FileListViewModelTest, ALaunchThatThePlatformRefusesShowsThePlatformsSentence)
{
    PlatformError error;
    error.message = u"No such file or directory"_s;
    services.git.answerChangedFiles(failure(ProcessFailure(error)));

    viewModel->load();
    runUntil([this] { return !viewModel->isLoading(); });

    EXPECT_EQ(viewModel->errorMessage(), u"Couldn't read git status: No such file or directory"_s);
}

TEST_F(FileListViewModelTest, ABranchThatCannotBeReadIsHiddenSilently)
{
    load(files, mainBranch);
    newEntries();

    load(files, failure(gitFailure()));

    const QStringList expected{u"isLoadingChanged"_s, listingAsked, branchAsked, u"branchChanged"_s,
                               u"isLoadingChanged"_s};
    EXPECT_EQ(newEntries(), expected);
    EXPECT_EQ(viewModel->branch(), std::nullopt);
    EXPECT_EQ(viewModel->errorMessage(), QString());
    EXPECT_EQ(viewModel->files(), files);
}

TEST_F(FileListViewModelTest, ARepositoryWithoutABranchNameShowsNone)
{
    load(files, std::optional<QString>());

    EXPECT_EQ(viewModel->branch(), std::nullopt);
    EXPECT_EQ(services.coordinator.currentBranch(), std::nullopt);
}

TEST_F(FileListViewModelTest, ACleanWorkingTreeYieldsAnEmptyList)
{
    load(QList<FileChange>(), mainBranch);

    const QStringList expected{u"isLoadingChanged"_s, listingAsked,          branchAsked,
                               u"branchChanged"_s,    u"hasLoadedChanged"_s, u"isLoadingChanged"_s};
    EXPECT_EQ(services.log.entries(), expected);
    EXPECT_EQ(viewModel->files(), QList<FileChange>());
}

TEST_F(FileListViewModelTest, ReloadingAnEqualListNotifiesNobody)
{
    load(files, mainBranch);
    newEntries();

    const QList<FileChange> equal{changedFile(u"a.cpp"_s, 1), changedFile(u"b.cpp"_s, 2)};
    load(equal, mainBranch);

    const QStringList expected{u"isLoadingChanged"_s, listingAsked, branchAsked,
                               u"isLoadingChanged"_s};
    EXPECT_EQ(newEntries(), expected);
}

TEST_F(FileListViewModelTest, ALoadThatSucceedsClearsTheMessageOfTheOneBefore)
{
    services.git.answerChangedFiles(failure(gitFailure()));
    viewModel->load();
    runUntil([this] { return !viewModel->isLoading(); });

    load(files, mainBranch);

    EXPECT_EQ(viewModel->errorMessage(), QString());
    EXPECT_EQ(viewModel->files(), files);
}

TEST_F(FileListViewModelTest, KeepsTheMessageUntilTheNextLoadEnds)
{
    services.git.answerChangedFiles(failure(gitFailure()));
    viewModel->load();
    runUntil([this] { return !viewModel->isLoading(); });

    viewModel->load();

    EXPECT_EQ(viewModel->errorMessage(),
              u"Couldn't read git status: "_s + gitFailure().description());
}

TEST_F(FileListViewModelTest, ASecondLoadBesideARunningOneStartsNothing)
{
    viewModel->load();
    viewModel->load();
    runUntilIdle();
    services.log.waitFor(listingAsked);
    viewModel->load();
    services.git.answerChangedFiles(files);
    services.git.answerCurrentBranch(mainBranch);
    runUntil([this] { return !viewModel->isLoading(); });

    EXPECT_EQ(services.log.entries().count(listingAsked), 1);
    EXPECT_EQ(services.log.entries().count(branchAsked), 1);
}

TEST_F(FileListViewModelTest, CanBeLoadedAgainFromTheSignalThatEndsALoad)
{
    QObject::connect(
        viewModel.get(), &FileListViewModel::isLoadingChanged, viewModel.get(), [this] {
            if (!viewModel->isLoading() && services.log.entries().count(listingAsked) == 1) {
                viewModel->load();
            }
        });
    services.git.answerChangedFiles(files);
    services.git.answerCurrentBranch(mainBranch);
    services.git.answerChangedFiles(QList<FileChange>());
    services.git.answerCurrentBranch(mainBranch);

    viewModel->load();
    runUntil([this] { return services.log.entries().count(branchAsked) == 2; });
    runUntil([this] { return !viewModel->isLoading(); });

    EXPECT_EQ(viewModel->files(), QList<FileChange>());
}

TEST_F(FileListViewModelTest, ShowsTheProgressOfTheListing)
{
    viewModel->load();
    services.git.reportProgress(ListingProgress{1, 3});
    runUntil([this] { return viewModel->totalFiles() == 3; });
    EXPECT_EQ(viewModel->finishedFiles(), 1);

    services.git.reportProgress(ListingProgress{1, 3});
    services.git.reportProgress(ListingProgress{2, 3});
    runUntil([this] { return viewModel->finishedFiles() == 2; });

    EXPECT_EQ(viewModel->totalFiles(), 3);
    EXPECT_EQ(services.log.entries().count(u"progressChanged"_s), 2);
}

TEST_F(FileListViewModelTest, TheProgressOfTheNextListingStartsAnew)
{
    services.git.reportProgress(ListingProgress{3, 3});
    load(files, mainBranch);
    EXPECT_EQ(viewModel->finishedFiles(), 3);

    viewModel->load();

    EXPECT_EQ(viewModel->finishedFiles(), 0);
    EXPECT_EQ(viewModel->totalFiles(), 0);
}

TEST_F(FileListViewModelTest, WhoeverHearsOfAFailureSeesAllOfIt)
{
    load(files, mainBranch);
    QStringList seenAtFirstSignal;
    QObject::connect(viewModel.get(), &FileListViewModel::filesChanged, viewModel.get(), [&] {
        seenAtFirstSignal = {viewModel->errorMessage(), viewModel->branch().value_or(u"none"_s),
                             viewModel->isLoading() ? u"loading"_s : u"ended"_s};
    });

    services.git.answerChangedFiles(failure(gitFailure()));
    viewModel->load();
    runUntil([this] { return !viewModel->isLoading(); });

    const QStringList expected{u"Couldn't read git status: "_s + gitFailure().description(),
                               u"none"_s, u"ended"_s};
    EXPECT_EQ(seenAtFirstSignal, expected);
}

TEST_F(FileListViewModelTest, OpensAFileOnItsFirstHunkWithTheWholeListing)
{
    load(files, mainBranch);

    viewModel->openFile(1);

    const AppCoordinator::Route expected =
        AppCoordinator::DiffRoute{sampleRepo(u"orchard"_s), files.at(1), files, Changeset(files),
                                  AppCoordinator::InitialHunkSelection::first};
    EXPECT_EQ(services.coordinator.route(), expected);
}

TEST_F(FileListViewModelTest, OpensNothingForARowThatIsNotThere)
{
    load(files, mainBranch);

    viewModel->openFile(-1);
    viewModel->openFile(2);

    EXPECT_EQ(services.coordinator.routeKind(), AppCoordinator::RouteKind::picker);
}

TEST_F(FileListViewModelTest, GoesBackToThePicker)
{
    services.coordinator.openRepository(sampleRepo(u"orchard"_s));

    viewModel->goBack();

    EXPECT_EQ(services.coordinator.routeKind(), AppCoordinator::RouteKind::picker);
}

TEST_F(FileListViewModelTest, ALoadThatIsCancelledWhileItListsRecordsNothing)
{
    viewModel->load();
    runUntilIdle();
    services.log.waitFor(listingAsked);

    viewModel->cancelAll();
    services.git.answerChangedFiles(files);
    services.git.answerChangedFiles(QList<FileChange>());
    services.git.answerCurrentBranch(mainBranch);
    viewModel->load(); // Runs behind the cancelled one on git's thread, and ends after it.
    runUntil([this] { return !viewModel->isLoading(); });

    const QStringList expected{u"isLoadingChanged"_s, listingAsked,          u"isLoadingChanged"_s,
                               u"isLoadingChanged"_s, listingAsked,          branchAsked,
                               u"branchChanged"_s,    u"hasLoadedChanged"_s, u"isLoadingChanged"_s};
    EXPECT_EQ(services.log.entries(), expected);
    EXPECT_EQ(viewModel->files(), QList<FileChange>());
}

TEST_F(FileListViewModelTest, ALoadThatIsCancelledWhileItAsksForTheBranchKeepsTheFiles)
{
    services.git.answerChangedFiles(files);
    viewModel->load();
    runUntil([this] { return !viewModel->files().isEmpty(); });
    runUntilIdle();
    services.log.waitFor(branchAsked);

    viewModel->cancelAll();
    services.git.answerCurrentBranch(mainBranch);
    runUntilIdle();

    EXPECT_EQ(viewModel->files(), files);
    EXPECT_EQ(viewModel->branch(), std::nullopt);
    EXPECT_EQ(services.coordinator.currentBranch(), std::nullopt);
    EXPECT_FALSE(viewModel->isLoading());
    EXPECT_FALSE(viewModel->hasLoaded());
}

TEST_F(FileListViewModelTest, ALoadThatIsCancelledByWhoeverHearsOfTheFilesAsksNoMore)
{
    QObject::connect(viewModel.get(), &FileListViewModel::filesChanged, viewModel.get(),
                     [this] { viewModel->cancelAll(); });
    services.git.answerChangedFiles(files);

    viewModel->load();
    runUntil([this] { return !viewModel->isLoading(); });
    runUntilIdle();

    const QStringList expected{u"isLoadingChanged"_s, listingAsked, u"filesChanged"_s,
                               u"isLoadingChanged"_s};
    EXPECT_EQ(services.log.entries(), expected);
}

TEST_F(FileListViewModelTest, LeavingBeforeTheFirstTurnAsksNothing)
{
    viewModel->load();

    viewModel.reset();
    runUntilIdle();

    EXPECT_EQ(services.log.entries(), QStringList{u"isLoadingChanged"_s});
}

TEST_F(FileListViewModelTest, LeavingWhileGitListsRecordsNothing)
{
    viewModel->load();
    runUntilIdle();
    services.log.waitFor(listingAsked);

    viewModel.reset();
    services.git.reportProgress(ListingProgress{1, 2});
    services.git.answerChangedFiles(files);
    makeViewModel();
    load(files, mainBranch); // Ends after the abandoned listing on git's thread.

    const QStringList expected{u"isLoadingChanged"_s, listingAsked,          u"isLoadingChanged"_s,
                               listingAsked,          u"filesChanged"_s,     branchAsked,
                               u"branchChanged"_s,    u"hasLoadedChanged"_s, u"isLoadingChanged"_s};
    EXPECT_EQ(services.log.entries(), expected);
}

TEST_F(FileListViewModelTest, LeavingWhileGitNamesTheBranchRecordsNothing)
{
    services.git.answerChangedFiles(files);
    viewModel->load();
    runUntil([this] { return !viewModel->files().isEmpty(); });
    runUntilIdle();
    services.log.waitFor(branchAsked);

    viewModel.reset();
    services.git.answerCurrentBranch(mainBranch);
    runUntilIdle();

    EXPECT_EQ(services.coordinator.currentBranch(), std::nullopt);
}

} // namespace
} // namespace vantrel::test
