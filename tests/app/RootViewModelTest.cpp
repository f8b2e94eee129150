#include "app/RootViewModel.h"

#include "Samples.h"
#include "ScreenServices.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QDir>
#include <QEvent>
#include <QFile>
#include <QPointer>

#include <memory>
#include <variant>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Selection = AppCoordinator::InitialHunkSelection;

const QString refusalSentence = u"That folder doesn't contain a .git directory."_s;

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
        QObject::connect(root.get(), &RootViewModel::refusalChanged,
                         [this] { services.log.append(u"refusalChanged"_s); });
    }

    /// A folder in the test's own, without a `.git` entry.
    QString makeFolder(const QString &name) const
    {
        QDir(folders.path()).mkpath(name);
        return QDir(folders.path()).filePath(name);
    }

    QString makeRepository(const QString &name) const
    {
        makeFolder(name + u"/.git"_s);
        return QDir(folders.path()).filePath(name);
    }

    void refuse(const QUrl &folder)
    {
        root->openFolder(folder);
        runUntil([this] { return !root->isOpening(); });
    }

    void accept(const QUrl &folder)
    {
        root->openFolder(folder);
        runUntil([this] { return !root->isOpening(); });
    }

    [[nodiscard]] Repo openRepo() const
    {
        return std::get<AppCoordinator::FilesRoute>(services.coordinator.route()).repo;
    }

    QTemporaryDir folders{};
    ScreenServices services{};
    std::unique_ptr<RootViewModel> root =
        std::make_unique<RootViewModel>(services.coordinator, services.gitWorker, services.aiWorker,
                                        services.notice, services.notificationCenter);
    const QList<FileChange> files{changedFile(u"a.cpp"_s, 1), changedFile(u"b.cpp"_s, 1)};
    const AppCoordinator::DiffRoute diffRoute{sampleRepo(u"orchard"_s), files.at(0), files,
                                              Selection::first};
};

TEST_F(RootViewModelTest, ThePickerHasNoViewModel)
{
    EXPECT_EQ(root->fileList(), nullptr);
    EXPECT_EQ(root->diff(), nullptr);
    EXPECT_EQ(root->coordinator(), &services.coordinator);
    EXPECT_EQ(root->keychainAccessNotice(), &services.notice);
    EXPECT_EQ(root->refusal(), QString());
}

TEST_F(RootViewModelTest, ShowsTheRouteThatTheCoordinatorHasAlready)
{
    services.coordinator.setRoute(diffRoute);
    const RootViewModel later(services.coordinator, services.gitWorker, services.aiWorker,
                              services.notice, services.notificationCenter);

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

TEST_F(RootViewModelTest, OpensAFolderThatHoldsAGitFolder)
{
    const QString path = makeRepository(u"orchard"_s);

    accept(QUrl::fromLocalFile(path));

    EXPECT_EQ(openRepo().name, u"orchard"_s);
    EXPECT_EQ(openRepo().url, QUrl::fromLocalFile(path));
    EXPECT_FALSE(openRepo().id.isNull());
    EXPECT_EQ(root->refusal(), QString());
}

TEST_F(RootViewModelTest, OpensAFolderThatHoldsAGitFile)
{
    const QString path = makeFolder(u"worktree"_s);
    QFile file(path + u"/.git"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();

    accept(QUrl::fromLocalFile(path));

    EXPECT_EQ(openRepo().name, u"worktree"_s);
}

TEST_F(RootViewModelTest, RefusesASubfolderOfARepository)
{
    makeRepository(u"orchard"_s);
    const QString path = makeFolder(u"orchard/trees"_s);

    refuse(QUrl::fromLocalFile(path));

    EXPECT_EQ(root->refusal(), refusalSentence);
    EXPECT_EQ(services.log.entries(), QStringList{u"refusalChanged"_s});
}

TEST_F(RootViewModelTest, RefusesAFolderThatIsNotThere)
{
    refuse(QUrl::fromLocalFile(folders.path() + u"/nowhere"_s));

    EXPECT_EQ(root->refusal(), refusalSentence);
}

TEST_F(RootViewModelTest, RefusesAFile)
{
    makeRepository(u"orchard"_s);
    QFile file(folders.path() + u"/orchard/plum.txt"_s);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.close();

    refuse(QUrl::fromLocalFile(file.fileName()));

    EXPECT_EQ(root->refusal(), refusalSentence);
}

TEST_F(RootViewModelTest, RefusesAnAddressThatIsNoFolderOfThisMachine)
{
    refuse(QUrl(u"https://example.org/orchard"_s));

    EXPECT_EQ(root->refusal(), refusalSentence);
}

TEST_F(RootViewModelTest, TheSameRefusalAgainNotifiesNobody)
{
    refuse(QUrl::fromLocalFile(makeFolder(u"plain"_s)));

    refuse(QUrl::fromLocalFile(makeFolder(u"other"_s)));

    EXPECT_EQ(services.log.entries(), QStringList{u"refusalChanged"_s});
}

TEST_F(RootViewModelTest, ARefusalStaysUntilAFolderIsOpened)
{
    refuse(QUrl::fromLocalFile(makeFolder(u"plain"_s)));
    const QUrl repository = QUrl::fromLocalFile(makeRepository(u"orchard"_s));

    root->openFolder(repository);
    EXPECT_EQ(root->refusal(), refusalSentence);
    runUntil([this] { return !root->isOpening(); });

    EXPECT_EQ(root->refusal(), QString());
}

TEST_F(RootViewModelTest, TheRepositoryIsNamedByItsCleanAbsolutePath)
{
    const QString path = makeRepository(u"orchard"_s);
    makeFolder(u"meadow"_s);

    accept(QUrl::fromLocalFile(folders.path() + u"/meadow/../orchard/"_s));

    EXPECT_EQ(openRepo().name, u"orchard"_s);
    EXPECT_EQ(openRepo().url, QUrl::fromLocalFile(path));
}

TEST_F(RootViewModelTest, OpeningTheSameFolderAgainIsANewOpening)
{
    const QUrl folder = QUrl::fromLocalFile(makeRepository(u"orchard"_s));
    accept(folder);
    const Repo first = openRepo();
    services.coordinator.setRoute(AppCoordinator::PickerRoute());

    accept(folder);

    EXPECT_NE(openRepo().id, first.id);
    EXPECT_EQ(openRepo().url, first.url);
}

TEST_F(RootViewModelTest, ANewerFolderReplacesOneThatWaitsForItsAnswer)
{
    const QString older = makeRepository(u"orchard"_s);
    const QString newer = makeRepository(u"meadow"_s);

    root->openFolder(QUrl::fromLocalFile(older));
    accept(QUrl::fromLocalFile(newer));
    runUntilIdle();

    const QStringList expectedLog{u"screenChanged"_s, u"routeChanged"_s};
    EXPECT_EQ(openRepo().name, u"meadow"_s);
    EXPECT_EQ(services.log.entries(), expectedLog);
}

TEST_F(RootViewModelTest, AFolderIsBeingOpenedUntilTheDiskHasAnswered)
{
    QList<bool> published;
    QObject::connect(root.get(), &RootViewModel::isOpeningChanged, root.get(),
                     [&] { published.append(root->isOpening()); });

    root->openFolder(QUrl::fromLocalFile(makeFolder(u"plain"_s)));
    accept(QUrl::fromLocalFile(makeRepository(u"orchard"_s)));

    const QList<bool> expected{true, false};
    EXPECT_EQ(published, expected);
}

TEST_F(RootViewModelTest, LeavingWhileTheDiskIsAskedOpensNothing)
{
    root->openFolder(QUrl::fromLocalFile(makeRepository(u"orchard"_s)));

    root.reset();
    runUntilIdle();

    EXPECT_EQ(services.coordinator.routeKind(), AppCoordinator::RouteKind::picker);
}

} // namespace
} // namespace vantrel::test
