#include "app/AppCoordinator.h"

#include "Samples.h"
#include "ai/AIResultCache.h"
#include "support/CallLog.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;
using Selection = AppCoordinator::InitialHunkSelection;

void recordSignals(const AppCoordinator &coordinator, CallLog &log)
{
    QObject::connect(&coordinator, &AppCoordinator::routeChanged,
                     [&log] { log.append(u"routeChanged"_s); });
    QObject::connect(&coordinator, &AppCoordinator::currentBranchChanged,
                     [&log] { log.append(u"currentBranchChanged"_s); });
}

AppCoordinator::DiffRoute sampleDiffRoute()
{
    const QList<FileChange> files{changedFile(u"a.cpp"_s, 1), changedFile(u"b.cpp"_s, 2)};
    return {sampleRepo(u"orchard"_s), files.at(0), files, Changeset(files), Selection::first};
}

TEST(AppCoordinator, StartsOnThePickerWithoutABranch)
{
    const AppCoordinator coordinator;

    EXPECT_EQ(coordinator.route(), AppCoordinator::Route(AppCoordinator::PickerRoute()));
    EXPECT_EQ(coordinator.routeKind(), AppCoordinator::RouteKind::picker);
    EXPECT_EQ(coordinator.currentBranch(), std::nullopt);
    EXPECT_EQ(coordinator.repositoryName(), QString());
    EXPECT_EQ(coordinator.branchName(), QString());
}

TEST(AppCoordinator, WritingARouteShowsItAndNotifiesOnce)
{
    AppCoordinator coordinator;
    CallLog log;
    recordSignals(coordinator, log);

    coordinator.setRoute(sampleDiffRoute());

    EXPECT_EQ(coordinator.route(), AppCoordinator::Route(sampleDiffRoute()));
    EXPECT_EQ(log.entries(), QStringList{u"routeChanged"_s});
}

TEST(AppCoordinator, WritingAnEqualRouteAgainNotifiesNobody)
{
    AppCoordinator coordinator;
    CallLog log;
    coordinator.setRoute(sampleDiffRoute());
    recordSignals(coordinator, log);

    coordinator.setRoute(sampleDiffRoute());

    EXPECT_EQ(log.entries(), QStringList());
}

TEST(AppCoordinator, WritingThePickerAgainNotifiesNobody)
{
    AppCoordinator coordinator;
    CallLog log;
    recordSignals(coordinator, log);

    coordinator.setRoute(AppCoordinator::PickerRoute());

    EXPECT_EQ(log.entries(), QStringList());
}

TEST(AppCoordinator, RoutesToFilesAreEqualWhenTheirRepositoriesAre)
{
    const AppCoordinator::Route route = AppCoordinator::FilesRoute{sampleRepo(u"orchard"_s)};
    const AppCoordinator::Route same = AppCoordinator::FilesRoute{sampleRepo(u"orchard"_s)};
    const AppCoordinator::Route other = AppCoordinator::FilesRoute{sampleRepo(u"meadow"_s)};

    EXPECT_EQ(route, same);
    EXPECT_NE(route, other);
}

TEST(AppCoordinator, RoutesToADiffDifferInEachPartOfTheirPayload)
{
    AppCoordinator::DiffRoute otherRepo = sampleDiffRoute();
    otherRepo.repo = sampleRepo(u"meadow"_s);
    AppCoordinator::DiffRoute otherFile = sampleDiffRoute();
    otherFile.file = otherFile.allFiles.at(1);
    AppCoordinator::DiffRoute otherListing = sampleDiffRoute();
    otherListing.allFiles[1].summaryState = LoadableState<QString>::loading();
    AppCoordinator::DiffRoute otherChangeset = sampleDiffRoute();
    otherChangeset.changeset = Changeset({otherChangeset.file});
    AppCoordinator::DiffRoute otherSelection = sampleDiffRoute();
    otherSelection.initialHunkSelection = Selection::last;

    EXPECT_NE(otherRepo, sampleDiffRoute());
    EXPECT_NE(otherFile, sampleDiffRoute());
    EXPECT_NE(otherListing, sampleDiffRoute());
    EXPECT_NE(otherChangeset, sampleDiffRoute());
    EXPECT_NE(otherSelection, sampleDiffRoute());
}

TEST(AppCoordinator, WritingTheBranchNotifiesOnlyOnAChange)
{
    AppCoordinator coordinator;
    CallLog log;
    recordSignals(coordinator, log);

    coordinator.setCurrentBranch(std::nullopt);
    coordinator.setCurrentBranch(u"main"_s);
    coordinator.setCurrentBranch(u"main"_s);
    coordinator.setCurrentBranch(std::nullopt);

    const QStringList expected{u"currentBranchChanged"_s, u"currentBranchChanged"_s};
    EXPECT_EQ(log.entries(), expected);
}

TEST(AppCoordinator, WritingTheCacheNotifiesOnlyOfAnotherOne)
{
    AppCoordinator coordinator;
    int changes = 0;
    QObject::connect(&coordinator, &AppCoordinator::aiResultCacheChanged, [&] { ++changes; });
    const auto other = std::make_shared<AIResultCache>();

    coordinator.setAiResultCache(coordinator.aiResultCache());
    EXPECT_EQ(changes, 0);
    coordinator.setAiResultCache(other);
    coordinator.setAiResultCache(other);

    EXPECT_EQ(changes, 1);
    EXPECT_EQ(coordinator.aiResultCache(), other);
}

TEST(AppCoordinator, EachOpeningStartsWithACacheOfItsOwn)
{
    AppCoordinator coordinator;
    const auto first = coordinator.aiResultCache();
    coordinator.openRepository(sampleRepo(u"orchard"_s));
    const auto second = coordinator.aiResultCache();

    coordinator.openRepository(sampleRepo(u"orchard"_s));

    EXPECT_NE(first, nullptr);
    EXPECT_NE(second, first);
    EXPECT_NE(coordinator.aiResultCache(), second);
}

TEST(AppCoordinator, GoingBackToThePickerKeepsTheCache)
{
    AppCoordinator coordinator;
    coordinator.openRepository(sampleRepo(u"orchard"_s));
    const auto cache = coordinator.aiResultCache();

    coordinator.setRoute(AppCoordinator::PickerRoute());

    EXPECT_EQ(coordinator.aiResultCache(), cache);
}

TEST(AppCoordinator, OpeningARepositoryShowsItsFilesAndForgetsTheBranch)
{
    AppCoordinator coordinator;
    CallLog log;
    coordinator.setCurrentBranch(u"main"_s);
    recordSignals(coordinator, log);

    coordinator.openRepository(sampleRepo(u"orchard"_s));

    const AppCoordinator::Route expectedRoute =
        AppCoordinator::FilesRoute{sampleRepo(u"orchard"_s)};
    const QStringList expectedLog{u"routeChanged"_s, u"currentBranchChanged"_s};
    EXPECT_EQ(coordinator.route(), expectedRoute);
    EXPECT_EQ(coordinator.currentBranch(), std::nullopt);
    EXPECT_EQ(log.entries(), expectedLog);
}

TEST(AppCoordinator, OpeningTheRepositoryThatIsAlreadyOpenClearsTheBranch)
{
    AppCoordinator coordinator;
    CallLog log;
    coordinator.openRepository(sampleRepo(u"orchard"_s));
    coordinator.setCurrentBranch(u"main"_s);
    recordSignals(coordinator, log);

    coordinator.openRepository(sampleRepo(u"orchard"_s));

    EXPECT_EQ(coordinator.currentBranch(), std::nullopt);
    EXPECT_EQ(log.entries(), QStringList{u"currentBranchChanged"_s});
}

TEST(AppCoordinator, WhoeverHearsOfANewRepositorySeesNoOldBranch)
{
    AppCoordinator coordinator;
    QString branchAtRouteChange = u"nothing heard"_s;
    coordinator.setCurrentBranch(u"main"_s);
    QObject::connect(&coordinator, &AppCoordinator::routeChanged,
                     [&] { branchAtRouteChange = coordinator.branchName(); });

    coordinator.openRepository(sampleRepo(u"orchard"_s));

    EXPECT_EQ(branchAtRouteChange, QString());
}

TEST(AppCoordinator, NamesTheRepositoryAndTheBranchOfTheRoute)
{
    AppCoordinator coordinator;

    coordinator.setRoute(sampleDiffRoute());
    coordinator.setCurrentBranch(u"feature/plums"_s);

    EXPECT_EQ(coordinator.routeKind(), AppCoordinator::RouteKind::diff);
    EXPECT_EQ(coordinator.repositoryName(), u"orchard"_s);
    EXPECT_EQ(coordinator.branchName(), u"feature/plums"_s);
}

TEST(AppCoordinator, NamesTheRepositoryOfTheFileList)
{
    AppCoordinator coordinator;

    coordinator.setRoute(AppCoordinator::FilesRoute{sampleRepo(u"meadow"_s)});

    EXPECT_EQ(coordinator.routeKind(), AppCoordinator::RouteKind::files);
    EXPECT_EQ(coordinator.repositoryName(), u"meadow"_s);
}

} // namespace
} // namespace vantrel::test
