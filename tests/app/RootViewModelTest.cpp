#include "app/RootViewModel.h"

#include "Samples.h"
#include "ScreenServices.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QPointer>
#include <QTemporaryDir>

#include <memory>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Selection = AppCoordinator::InitialHunkSelection;

void deleteLeftObjects()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The root over scripted services, with its signals and the coordinator's in their log.
class RootViewModelTest : public testing::Test
{
protected:
    RootViewModelTest()
    {
        QObject::connect(&services.coordinator, &AppCoordinator::routeChanged,
                         [this] { services.log.append(u"routeChanged"_s); });
        QObject::connect(root.get(), &RootViewModel::screenChanged,
                         [this] { services.log.append(u"screenChanged"_s); });
    }

    QString makeRepository(const QString &name) const
    {
        QDir(folders.path()).mkpath(name + u"/.git"_s);
        return QDir(folders.path()).filePath(name);
    }

    QTemporaryDir folders{};
    ScreenServices services{};
    std::unique_ptr<RootViewModel> root = std::make_unique<RootViewModel>(
        services.review, services.recentRepos, services.repositoryGuard, services.settings,
        services.setup);
    const QList<FileChange> files{changedFile(u"a.cpp"_s, 1), changedFile(u"b.cpp"_s, 1)};
    const AppCoordinator::DiffRoute diffRoute{sampleRepo(u"orchard"_s), files.at(0), files,
                                              Changeset(files), Selection::first};
};

TEST_F(RootViewModelTest, ThePickerNeedsNoOtherScreen)
{
    EXPECT_EQ(root->fileList(), nullptr);
    EXPECT_EQ(root->diff(), nullptr);
    EXPECT_EQ(root->coordinator(), &services.coordinator);
    EXPECT_EQ(root->keychainAccessNotice(), &services.notice);
    EXPECT_EQ(root->settings(), &services.settings);
    EXPECT_EQ(root->setup(), &services.setup);
    EXPECT_NE(root->picker(), nullptr);
}

TEST_F(RootViewModelTest, ShowsTheRouteThatTheCoordinatorHasAlready)
{
    services.coordinator.setRoute(diffRoute);
    const RootViewModel later(services.review, services.recentRepos, services.repositoryGuard,
                              services.settings, services.setup);

    ASSERT_NE(later.diff(), nullptr);
    EXPECT_EQ(later.diff()->file(), files.at(0));
}

TEST_F(RootViewModelTest, TheRouteToFilesMakesAFileListThatHasNotLoaded)
{
    services.coordinator.openRepository(sampleRepo(u"orchard"_s));
    runUntilIdle();

    const QStringList expectedLog{u"screenChanged"_s, u"routeChanged"_s};
    ASSERT_NE(root->fileList(), nullptr);
    EXPECT_EQ(root->diff(), nullptr);
    EXPECT_EQ(services.log.entries(), expectedLog);
}

TEST_F(RootViewModelTest, TheFileListBelongsToTheRoutesRepository)
{
    services.coordinator.openRepository(sampleRepo(u"orchard"_s));

    root->fileList()->load();
    runUntilIdle();

    services.log.waitFor(u"changedFiles /orchard"_s);
}

TEST_F(RootViewModelTest, TheRouteToADiffMakesTheDiffOfItsFile)
{
    services.coordinator.setRoute(diffRoute);
    runUntilIdle();

    ASSERT_NE(root->diff(), nullptr);
    EXPECT_EQ(root->fileList(), nullptr);
    EXPECT_EQ(root->diff()->file(), files.at(0));
}

TEST_F(RootViewModelTest, SteppingIntoAnotherFileMakesANewViewModel)
{
    services.coordinator.setRoute(diffRoute);
    const QPointer<DiffViewModel> former = root->diff();

    former->goNext();

    ASSERT_NE(root->diff(), former);
    EXPECT_EQ(root->diff()->file(), files.at(1));
}

TEST_F(RootViewModelTest, AViewModelThatIsLeftLivesUntilTheEventLoopTurns)
{
    services.coordinator.setRoute(diffRoute);
    const QPointer<DiffViewModel> former = root->diff();

    former->goBack();
    EXPECT_NE(former, nullptr);
    deleteLeftObjects();

    EXPECT_EQ(former, nullptr);
    EXPECT_NE(root->fileList(), nullptr);
}

TEST_F(RootViewModelTest, AFileListThatIsLeftIsCancelledAtOnce)
{
    services.coordinator.openRepository(sampleRepo(u"orchard"_s));
    const QPointer<FileListViewModel> former = root->fileList();
    former->load();
    runUntilIdle();
    services.log.waitFor(u"changedFiles /orchard"_s);

    former->goBack();
    services.git.answerChangedFiles(files);
    runUntilIdle();

    EXPECT_FALSE(former->isLoading());
    EXPECT_EQ(former->files(), QList<FileChange>());
    EXPECT_EQ(root->fileList(), nullptr);
}

TEST_F(RootViewModelTest, ADiffThatIsLeftIsCancelledAtOnce)
{
    services.notice.acknowledge();
    services.knowNarrative(files, u"The full picture."_s);
    services.coordinator.setRoute(diffRoute);
    root->diff()->load();
    runUntil([this] { return services.ai.explanations.size() == 1; });

    root->diff()->goBack();

    EXPECT_TRUE(services.ai.explanations.at(0).isTerminated());
}

TEST_F(RootViewModelTest, TheOldScreenIsGoneWhenTheNewOneIsAnnounced)
{
    services.coordinator.setRoute(diffRoute);
    bool isOldGone = false;
    QObject::connect(root.get(), &RootViewModel::screenChanged, root.get(),
                     [&] { isOldGone = root->diff() == nullptr && root->fileList() != nullptr; });

    root->diff()->goBack();

    EXPECT_TRUE(isOldGone);
}

TEST_F(RootViewModelTest, ABranchThatBecomesKnownChangesNoScreen)
{
    services.coordinator.openRepository(sampleRepo(u"orchard"_s));
    const FileListViewModel *const fileList = root->fileList();

    services.coordinator.setCurrentBranch(u"main"_s);

    EXPECT_EQ(root->fileList(), fileList);
    EXPECT_EQ(services.log.entries().count(u"screenChanged"_s), 1);
}

TEST_F(RootViewModelTest, LeavingAScreenThatIsStillThereAtTheEndIsHarmless)
{
    services.coordinator.setRoute(diffRoute);
    root->diff()->load();
    root->diff()->goNext();

    root.reset();
    runUntilIdle();

    EXPECT_EQ(services.ai.explanations.size(), 0U);
}

TEST_F(RootViewModelTest, AChosenFolderIsOpenedByThePicker)
{
    root->openFolder(QUrl::fromLocalFile(makeRepository(u"orchard"_s)));
    EXPECT_TRUE(root->picker()->isOpening());
    runUntil([this] { return !root->picker()->isOpening(); });

    EXPECT_EQ(services.coordinator.repositoryName(), u"orchard"_s);
    EXPECT_NE(root->fileList(), nullptr);
}

TEST_F(RootViewModelTest, ARefusedFolderLeavesTheScreenAsItIs)
{
    services.coordinator.openRepository(sampleRepo(u"orchard"_s));
    const FileListViewModel *const fileList = root->fileList();

    root->openFolder(QUrl::fromLocalFile(folders.path()));
    runUntil([this] { return !root->picker()->isOpening(); });

    EXPECT_EQ(root->fileList(), fileList);
    EXPECT_EQ(root->picker()->errorMessage(), u"That folder doesn't contain a .git directory."_s);
}

TEST_F(RootViewModelTest, AFolderCanBeOpenedOverAnotherRepository)
{
    services.coordinator.setRoute(diffRoute);

    root->openFolder(QUrl::fromLocalFile(makeRepository(u"meadow"_s)));
    runUntil([this] { return !root->picker()->isOpening(); });

    EXPECT_EQ(services.coordinator.repositoryName(), u"meadow"_s);
    EXPECT_EQ(root->diff(), nullptr);
}

TEST_F(RootViewModelTest, AFolderFromOutsideIsOpenedAtOnceWhenTheScreenIsInFront)
{
    root->openFolderInTurn(QUrl::fromLocalFile(makeRepository(u"meadow"_s)));

    EXPECT_TRUE(root->picker()->isOpening());
}

TEST_F(RootViewModelTest, AFolderFromOutsideWaitsForTheEndOfTheSetup)
{
    services.setup.open();

    root->openFolderInTurn(QUrl::fromLocalFile(makeRepository(u"orchard"_s)));
    root->openFolderInTurn(QUrl::fromLocalFile(makeRepository(u"meadow"_s)));
    EXPECT_FALSE(root->picker()->isOpening());
    services.setup.close();
    runUntil([this] { return !root->picker()->isOpening(); });

    EXPECT_EQ(services.coordinator.repositoryName(), u"meadow"_s);
}

TEST_F(RootViewModelTest, AFolderFromOutsideWaitsForTheKeychainNotice)
{
    services.notice.setIsShowingNotice(true);

    root->openFolderInTurn(QUrl::fromLocalFile(makeRepository(u"meadow"_s)));
    EXPECT_FALSE(root->picker()->isOpening());
    services.notice.acknowledge();
    runUntil([this] { return !root->picker()->isOpening(); });

    EXPECT_EQ(services.coordinator.repositoryName(), u"meadow"_s);
}

TEST_F(RootViewModelTest, AFolderThatWaitedIsOpenedOnce)
{
    services.setup.open();
    root->openFolderInTurn(QUrl::fromLocalFile(makeRepository(u"meadow"_s)));
    services.setup.close();
    runUntil([this] { return !root->picker()->isOpening(); });

    services.setup.open();
    services.setup.close();

    EXPECT_FALSE(root->picker()->isOpening());
}

TEST_F(RootViewModelTest, ReturningToThePickerLoadsTheRecentRepositoriesAgain)
{
    services.coordinator.openRepository(sampleRepo(u"orchard"_s));
    services.recentRepos->record(u"meadow"_s, u"/meadow"_s);

    services.coordinator.setRoute(AppCoordinator::PickerRoute());
    runUntil([this] { return !root->picker()->recentRepos().isEmpty(); });

    EXPECT_EQ(root->picker()->recentRepos(), services.recentRepos->load());
}

} // namespace
} // namespace vantrel::test
