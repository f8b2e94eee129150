#include "app/PickerViewModel.h"

#include "FakeRecentRepos.h"
#include "ScreenServices.h"

#include "app/AppCoordinator.h"
#include "support/FakeRepositoryGuard.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <memory>
#include <optional>
#include <utility>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

const QString refusalSentence = u"That folder doesn't contain a .git directory."_s;

Task<> keep(Task<std::optional<Repo>> opening, std::optional<Repo> *repo)
{
    std::optional<Repo> opened = co_await std::move(opening);
    *repo = std::move(opened);
}

/// The picker over a store in memory and real folders. It has loaded what the store holds from the
/// start: the repository "barn".
class PickerViewModelTest : public testing::Test
{
protected:
    PickerViewModelTest()
    {
        store->record(u"barn"_s, u"/barn"_s);
        makePicker();
        runUntil([this] { return !picker->recentRepos().isEmpty(); });
        published.clear();
    }

    ~PickerViewModelTest() override { store->letGo(); }

    /// Made anew, as at the start of the application.
    void makePicker()
    {
        picker = std::make_unique<PickerViewModel>(store, guard, coordinator);
        QObject::connect(picker.get(), &PickerViewModel::recentReposChanged,
                         [this] { published.append(u"recentRepos"_s); });
        QObject::connect(picker.get(), &PickerViewModel::errorMessageChanged,
                         [this] { published.append(u"errorMessage"_s); });
        QObject::connect(picker.get(), &PickerViewModel::questionChanged, [this] {
            published.append(picker->isAsking() ? u"asking"_s : u"asked"_s);
        });
        QObject::connect(picker.get(), &PickerViewModel::isOpeningChanged, [this] {
            published.append(picker->isOpening() ? u"opening"_s : u"opened"_s);
        });
    }

    /// A folder in the test's own, without a `.git` entry.
    QString makeFolder(const QString &name) const
    {
        QDir(folders.path()).mkpath(name);
        return folders.filePath(name);
    }

    QString makeRepository(const QString &name) const
    {
        makeFolder(name + u"/.git"_s);
        return folders.filePath(name);
    }

    static void makeFile(const QString &path)
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    }

    /// What `open` gives.
    std::optional<Repo> openedAt(const QUrl &url)
    {
        std::optional<Repo> repo;
        const Job opening(keep(picker->open(url), &repo));
        runUntil([&opening] { return !opening.isActive(); });
        return repo;
    }

    void openAndWait(const QString &path)
    {
        picker->openFolder(QUrl::fromLocalFile(path));
        runUntil([this] { return !picker->isOpening(); });
    }

    [[nodiscard]] QStringList recentNames() const
    {
        QStringList names;
        for (const RecentRepo &repo : picker->recentRepos()) {
            names.append(repo.name);
        }
        return names;
    }

    /// The name of the repository whose files are shown; empty on the picker.
    [[nodiscard]] QString openName() const { return coordinator.repositoryName(); }

    QTemporaryDir folders{};
    std::shared_ptr<FakeRecentRepos> store = std::make_shared<FakeRecentRepos>();
    std::shared_ptr<FakeRepositoryGuard> guard = std::make_shared<FakeRepositoryGuard>();
    AppCoordinator coordinator{};
    std::unique_ptr<PickerViewModel> picker{};
    QStringList published{}; ///< Signals in their order.
};

TEST_F(PickerViewModelTest, IsEmptyUntilTheDiskHasAnswered)
{
    makePicker();

    EXPECT_EQ(picker->recentRepos(), QList<RecentRepo>());
    EXPECT_EQ(picker->errorMessage(), QString());
    EXPECT_FALSE(picker->isOpening());
}

TEST_F(PickerViewModelTest, LoadsTheRecentRepositoriesWhenItIsMade)
{
    store->record(u"orchard"_s, u"/orchard"_s);
    makePicker();

    runUntil([this] { return !picker->recentRepos().isEmpty(); });

    EXPECT_EQ(recentNames(), QStringList({u"orchard"_s, u"barn"_s}));
    EXPECT_EQ(published, QStringList{u"recentRepos"_s});
}

TEST_F(PickerViewModelTest, TellsWhichRecentRepositoriesAreNotThereAnyMore)
{
    const QString orchard = makeRepository(u"orchard"_s);
    store->record(u"orchard"_s, orchard);

    picker->reloadRecents();
    runUntil([this] { return picker->isMissing(u"/barn"_s) && picker->recentRepos().size() == 2; });

    EXPECT_FALSE(picker->isMissing(orchard));
    EXPECT_EQ(recentNames(), QStringList({u"orchard"_s, u"barn"_s}));
}

TEST_F(PickerViewModelTest, ARepositoryThatIsBackIsNotMissingAnyMore)
{
    const QString orchard = makeRepository(u"orchard"_s);
    const QString elsewhere = folders.filePath(u"elsewhere"_s);
    store->record(u"orchard"_s, orchard);
    ASSERT_TRUE(QDir().rename(orchard, elsewhere));
    picker->reloadRecents();
    runUntil([&] { return picker->isMissing(orchard); });

    ASSERT_TRUE(QDir().rename(elsewhere, orchard));
    picker->reloadRecents();
    runUntil([&] { return !picker->isMissing(orchard); });

    EXPECT_TRUE(openedAt(QUrl::fromLocalFile(orchard)).has_value());
}

TEST_F(PickerViewModelTest, AMissingRecentRepositoryIsRefusedAndStaysInTheList)
{
    openAndWait(u"/barn"_s);

    EXPECT_EQ(picker->errorMessage(), refusalSentence);
    EXPECT_EQ(recentNames(), QStringList{u"barn"_s});
    EXPECT_EQ(openName(), QString());
}

TEST_F(PickerViewModelTest, EachRefusalIsAnnounced)
{
    int refusals = 0;
    QObject::connect(picker.get(), &PickerViewModel::refused, [&refusals] { ++refusals; });

    openAndWait(makeFolder(u"orchard"_s));
    openAndWait(makeFolder(u"meadow"_s));
    openAndWait(makeRepository(u"field"_s));

    EXPECT_EQ(refusals, 2);
}

TEST_F(PickerViewModelTest, ReloadingShowsWhatWasRecordedElsewhere)
{
    store->record(u"orchard"_s, u"/orchard"_s);

    picker->reloadRecents();
    runUntil([this] { return picker->recentRepos().size() == 2; });

    EXPECT_EQ(recentNames(), QStringList({u"orchard"_s, u"barn"_s}));
    EXPECT_EQ(published, QStringList{u"recentRepos"_s});
}

TEST_F(PickerViewModelTest, ANewerReloadReplacesOneThatHangs)
{
    store->hangNext(u"load"_s);
    picker->reloadRecents();
    runUntilIdle();
    store->waitForHang();
    store->record(u"orchard"_s, u"/orchard"_s);

    picker->reloadRecents();
    runUntil([this] { return picker->recentRepos().size() == 2; });
    store->letGo();
    openAndWait(makeFolder(u"plain"_s));

    EXPECT_EQ(recentNames(), QStringList({u"orchard"_s, u"barn"_s}));
    EXPECT_EQ(published.count(u"recentRepos"_s), 1);
}

TEST_F(PickerViewModelTest, AFolderWithAGitFolderIsAccepted)
{
    const QString path = makeRepository(u"orchard"_s);

    const auto repo = openedAt(QUrl::fromLocalFile(path));

    ASSERT_NE(repo, std::nullopt);
    EXPECT_FALSE(repo->id.isNull());
    EXPECT_EQ(*repo, (Repo{repo->id, QUrl::fromLocalFile(path), u"orchard"_s}));
    EXPECT_EQ(picker->errorMessage(), QString());
}

TEST_F(PickerViewModelTest, AFolderWithAGitFileIsAccepted)
{
    const QString path = makeFolder(u"worktree"_s);
    makeFile(path + u"/.git"_s);

    const auto repo = openedAt(QUrl::fromLocalFile(path));

    ASSERT_NE(repo, std::nullopt);
    EXPECT_EQ(repo->name, u"worktree"_s);
}

TEST_F(PickerViewModelTest, ASubfolderOfARepositoryIsRefused)
{
    makeRepository(u"orchard"_s);

    const auto repo = openedAt(QUrl::fromLocalFile(makeFolder(u"orchard/trees"_s)));

    EXPECT_EQ(repo, std::nullopt);
    EXPECT_EQ(picker->errorMessage(), refusalSentence);
}

TEST_F(PickerViewModelTest, AFolderThatIsNotThereIsRefused)
{
    EXPECT_EQ(openedAt(QUrl::fromLocalFile(folders.filePath(u"nowhere"_s))), std::nullopt);
    EXPECT_EQ(picker->errorMessage(), refusalSentence);
}

TEST_F(PickerViewModelTest, AFileIsRefused)
{
    makeRepository(u"orchard"_s);
    const QString path = folders.filePath(u"orchard/plum.txt"_s);
    makeFile(path);

    EXPECT_EQ(openedAt(QUrl::fromLocalFile(path)), std::nullopt);
    EXPECT_EQ(picker->errorMessage(), refusalSentence);
}

TEST_F(PickerViewModelTest, AnAddressThatIsNoFolderOfThisMachineIsRefused)
{
    EXPECT_EQ(openedAt(QUrl(u"https://example.org/orchard"_s)), std::nullopt);
    EXPECT_EQ(picker->errorMessage(), refusalSentence);
}

TEST_F(PickerViewModelTest, ARefusedFolderIsNotRecorded)
{
    openAndWait(makeFolder(u"plain"_s));

    EXPECT_EQ(store->log.entries(), QStringList({u"record barn /barn"_s, u"load"_s}));
    EXPECT_EQ(recentNames(), QStringList{u"barn"_s});
    EXPECT_EQ(published, QStringList({u"opening"_s, u"opened"_s, u"errorMessage"_s}));
    EXPECT_EQ(coordinator.routeKind(), AppCoordinator::RouteKind::picker);
}

TEST_F(PickerViewModelTest, AnOpenedRepositoryIsRecordedByNameAndPathAndShown)
{
    const QString path = makeRepository(u"orchard"_s);

    openAndWait(path);

    EXPECT_EQ(store->log.entries(), QStringList({u"record barn /barn"_s, u"load"_s,
                                                 u"record orchard "_s + path, u"load"_s}));
    EXPECT_EQ(recentNames(), QStringList({u"orchard"_s, u"barn"_s}));
    EXPECT_EQ(published, QStringList({u"opening"_s, u"opened"_s, u"recentRepos"_s}));
    EXPECT_EQ(openName(), u"orchard"_s);
}

TEST_F(PickerViewModelTest, OpeningTheSameFolderAgainMovesItToTheTopWithoutDuplicatingIt)
{
    openAndWait(makeRepository(u"orchard"_s));
    openAndWait(makeRepository(u"meadow"_s));

    openAndWait(folders.filePath(u"orchard"_s));

    EXPECT_EQ(recentNames(), QStringList({u"orchard"_s, u"meadow"_s, u"barn"_s}));
}

TEST_F(PickerViewModelTest, AListThatStaysTheSameNotifiesNobody)
{
    const QString path = makeRepository(u"orchard"_s);
    openAndWait(path);

    openAndWait(path);

    EXPECT_EQ(published.count(u"recentRepos"_s), 1);
}

TEST_F(PickerViewModelTest, OpeningTheSameFolderAgainIsANewOpening)
{
    const QUrl folder = QUrl::fromLocalFile(makeRepository(u"orchard"_s));
    const auto first = openedAt(folder);

    const auto second = openedAt(folder);

    ASSERT_TRUE(first && second);
    EXPECT_NE(first->id, second->id);
    EXPECT_EQ(first->url, second->url);
}

TEST_F(PickerViewModelTest, TheRepositoryIsNamedByItsCleanAbsolutePath)
{
    const QString path = makeRepository(u"orchard"_s);
    makeFolder(u"meadow"_s);

    const auto repo = openedAt(QUrl::fromLocalFile(folders.path() + u"/meadow/../orchard/"_s));

    ASSERT_NE(repo, std::nullopt);
    EXPECT_EQ(*repo, (Repo{repo->id, QUrl::fromLocalFile(path), u"orchard"_s}));
    EXPECT_EQ(picker->recentRepos().first().path, path);
}

TEST_F(PickerViewModelTest, ARefusalStaysUntilTheNextFolderIsOpened)
{
    openAndWait(makeFolder(u"plain"_s));

    picker->openFolder(QUrl::fromLocalFile(makeRepository(u"orchard"_s)));
    EXPECT_EQ(picker->errorMessage(), refusalSentence);
    runUntil([this] { return !picker->isOpening(); });

    EXPECT_EQ(picker->errorMessage(), QString());
}

TEST_F(PickerViewModelTest, TheSameRefusalAgainNotifiesNobody)
{
    openAndWait(makeFolder(u"plain"_s));

    openAndWait(makeFolder(u"other"_s));

    EXPECT_EQ(published.count(u"errorMessage"_s), 1);
}

TEST_F(PickerViewModelTest, ANewerFolderReplacesOneThatWasNotLookedAtYet)
{
    const QString older = makeRepository(u"orchard"_s);

    picker->openFolder(QUrl::fromLocalFile(older));
    openAndWait(makeRepository(u"meadow"_s));

    EXPECT_EQ(openName(), u"meadow"_s);
    EXPECT_EQ(recentNames(), QStringList({u"meadow"_s, u"barn"_s}));
    EXPECT_FALSE(store->log.entries().contains(u"record orchard "_s + older));
}

TEST_F(PickerViewModelTest, ANewerFolderIsOpenedWhileTheDiskOfTheOlderHangs)
{
    const QString older = makeRepository(u"orchard"_s);
    store->hangNext(u"record orchard "_s + older);
    picker->openFolder(QUrl::fromLocalFile(older));
    runUntilIdle();
    store->waitForHang();

    openAndWait(makeRepository(u"meadow"_s));

    EXPECT_EQ(openName(), u"meadow"_s);
    EXPECT_EQ(recentNames(), QStringList({u"meadow"_s, u"barn"_s}));
    EXPECT_EQ(published, QStringList({u"opening"_s, u"opened"_s, u"recentRepos"_s}));
}

TEST_F(PickerViewModelTest, AReloadThatReadBeforeAnOpeningDoesNotUndoItsList)
{
    store->hangNext(u"load"_s);
    makePicker();
    runUntilIdle();
    store->waitForHang();
    openAndWait(makeRepository(u"orchard"_s));

    store->letGo();
    openAndWait(makeFolder(u"plain"_s));

    EXPECT_EQ(recentNames(), QStringList({u"orchard"_s, u"barn"_s}));
}

TEST_F(PickerViewModelTest, LeavingWhileTheDiskIsAskedOpensNothing)
{
    const QString path = makeRepository(u"orchard"_s);
    store->hangNext(u"record orchard "_s + path);
    picker->openFolder(QUrl::fromLocalFile(path));
    runUntilIdle();
    store->waitForHang();

    picker.reset();
    store->letGo();
    runUntilIdle();

    EXPECT_EQ(coordinator.routeKind(), AppCoordinator::RouteKind::picker);
}

/// A repository whose own configuration names a filter.
class PickerQuestion : public PickerViewModelTest
{
protected:
    PickerQuestion() { guard->setPrograms(programs); }

    void openAndWaitForQuestion()
    {
        picker->openFolder(url);
        runUntil([this] { return picker->isAsking(); });
    }

    const QString path = makeRepository(u"orchard"_s);
    const QUrl url = QUrl::fromLocalFile(path);
    const QList<RepositoryProgram> programs{{{}, u"filter.images.clean"_s, u"png -s %f"_s}};
};

TEST_F(PickerQuestion, NamesTheRepositoryAndItsPrograms)
{
    openAndWaitForQuestion();

    EXPECT_EQ(picker->question(), (PickerViewModel::Question{u"orchard"_s, programs}));
    EXPECT_FALSE(picker->isOpening());
    EXPECT_EQ(published, QStringList({u"opening"_s, u"opened"_s, u"asking"_s}));
}

TEST_F(PickerQuestion, NothingIsOpenedOrRecordedBeforeTheAnswer)
{
    openAndWaitForQuestion();
    runUntilIdle();

    EXPECT_EQ(coordinator.routeKind(), AppCoordinator::RouteKind::picker);
    EXPECT_EQ(recentNames(), QStringList{u"barn"_s});
    EXPECT_EQ(guard->allowed(), QList<FakeRepositoryGuard::Allowed>());
}

TEST_F(PickerQuestion, OpenAnywayAllowsTheProgramsAndOpens)
{
    openAndWaitForQuestion();

    picker->openAnyway();
    EXPECT_FALSE(picker->isAsking());
    EXPECT_TRUE(picker->isOpening());
    runUntil([this] { return !picker->isOpening(); });

    EXPECT_EQ(guard->allowed(), (QList<FakeRepositoryGuard::Allowed>{{url, programs}}));
    EXPECT_EQ(openName(), u"orchard"_s);
    EXPECT_EQ(recentNames(), QStringList({u"orchard"_s, u"barn"_s}));
}

TEST_F(PickerQuestion, CancelLeavesEverythingAsItWas)
{
    openAndWaitForQuestion();

    picker->cancelOpening();
    runUntilIdle();

    EXPECT_FALSE(picker->isAsking());
    EXPECT_FALSE(picker->isOpening());
    EXPECT_EQ(guard->allowed(), QList<FakeRepositoryGuard::Allowed>());
    EXPECT_EQ(coordinator.routeKind(), AppCoordinator::RouteKind::picker);
    EXPECT_EQ(recentNames(), QStringList{u"barn"_s});
    EXPECT_EQ(picker->errorMessage(), QString());
}

TEST_F(PickerQuestion, IsAskedAgainAfterACancel)
{
    openAndWaitForQuestion();
    picker->cancelOpening();
    runUntilIdle();

    openAndWaitForQuestion();

    EXPECT_EQ(picker->question(), (PickerViewModel::Question{u"orchard"_s, programs}));
}

TEST_F(PickerQuestion, IsNotAskedWhereNothingIsLeftToAllow)
{
    openAndWaitForQuestion();
    picker->openAnyway();
    runUntil([this] { return !picker->isOpening(); });

    openAndWait(path);

    EXPECT_EQ(published.count(u"asking"_s), 1);
    EXPECT_EQ(openName(), u"orchard"_s);
}

TEST_F(PickerQuestion, ANewerFolderTakesItAway)
{
    openAndWaitForQuestion();
    guard->setPrograms(QList<RepositoryProgram>());

    picker->openFolder(QUrl::fromLocalFile(makeRepository(u"meadow"_s)));
    EXPECT_FALSE(picker->isAsking());
    runUntil([this] { return !picker->isOpening(); });

    EXPECT_EQ(openName(), u"meadow"_s);
    EXPECT_EQ(recentNames(), QStringList({u"meadow"_s, u"barn"_s}));
}

TEST_F(PickerQuestion, AnAnswerThatNobodyWaitsForDoesNothing)
{
    picker->openAnyway();
    runUntilIdle();

    EXPECT_EQ(published, QStringList());
    EXPECT_EQ(coordinator.routeKind(), AppCoordinator::RouteKind::picker);
}

TEST_F(PickerQuestion, LeavingWhileItIsShownOpensNothing)
{
    openAndWaitForQuestion();

    picker.reset();
    runUntilIdle();

    EXPECT_EQ(coordinator.routeKind(), AppCoordinator::RouteKind::picker);
}

TEST_F(PickerQuestion, WhereGitCannotAnswerTheRepositoryIsOpenedAndTheListingTellsWhy)
{
    guard->setPrograms(failure(ProcessFailure(PlatformError{u"no git"_s})));

    openAndWait(path);

    EXPECT_EQ(openName(), u"orchard"_s);
}

} // namespace
} // namespace vantrel::test
