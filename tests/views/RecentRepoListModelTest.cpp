#include "views/RecentRepoListModel.h"

#include "ScreenServices.h"
#include "views/MomentText.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class RecentRepoListModelTest : public testing::Test
{
protected:
    void record(const QString &name, const QString &path)
    {
        services.recentRepos->record(name, path);
        viewModel.reloadRecents();
        runUntil([&] {
            const QList<RecentRepo> &repos = viewModel.recentRepos();
            return !repos.isEmpty() && repos.first().path == path;
        });
    }

    QVariant value(int row, int role) const { return model.data(model.index(row), role); }

    ScreenServices services{};
    PickerViewModel viewModel{services.recentRepos, services.repositoryGuard, services.coordinator};
    RecentRepoListModel model{};
    QAbstractItemModelTester tester{&model,
                                    QAbstractItemModelTester::FailureReportingMode::Warning};
};

TEST_F(RecentRepoListModelTest, HasARowForEachRepositoryNewestFirst)
{
    model.setSource(&viewModel);

    record(u"orchard"_s, u"/home/ada/orchard"_s);
    record(u"größe"_s, u"/home/ada/50% größe"_s);

    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(value(0, RecentRepoListModel::NameRole), u"größe"_s);
    EXPECT_EQ(value(0, RecentRepoListModel::PathRole), u"/home/ada/50% größe"_s);
    EXPECT_EQ(value(0, RecentRepoListModel::FolderRole),
              QUrl::fromLocalFile(u"/home/ada/50% größe"_s));
    EXPECT_EQ(value(1, RecentRepoListModel::NameRole), u"orchard"_s);
}

TEST_F(RecentRepoListModelTest, TellsWhenARepositoryWasOpened)
{
    model.setSource(&viewModel);

    record(u"orchard"_s, u"/home/ada/orchard"_s);

    const QDateTime lastOpened = viewModel.recentRepos().first().lastOpened;
    EXPECT_EQ(value(0, RecentRepoListModel::OpenedAtRole),
              momentText(lastOpened, QDateTime::currentDateTime()));
}

TEST_F(RecentRepoListModelTest, MarksARepositoryThatIsNotThereWithoutAReset)
{
    model.setSource(&viewModel);
    record(u"orchard"_s, u"/home/ada/orchard"_s);
    const QSignalSpy resets(&model, &RecentRepoListModel::modelReset);
    const QSignalSpy changes(&model, &RecentRepoListModel::dataChanged);

    runUntil([this] { return value(0, RecentRepoListModel::MissingRole).toBool(); });

    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(changes.count(), 1);
}

TEST_F(RecentRepoListModelTest, TakesWhatItsSourceHasAlready)
{
    record(u"orchard"_s, u"/home/ada/orchard"_s);

    model.setSource(&viewModel);

    EXPECT_EQ(model.rowCount(), 1);
}

TEST_F(RecentRepoListModelTest, WithoutASourceItIsEmptyAndHearsNothing)
{
    record(u"orchard"_s, u"/home/ada/orchard"_s);
    model.setSource(&viewModel);
    model.setSource(nullptr);
    const QSignalSpy resets(&model, &RecentRepoListModel::modelReset);

    record(u"meadow"_s, u"/home/ada/meadow"_s);

    EXPECT_EQ(model.rowCount(), 0);
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(RecentRepoListModelTest, TheSameSourceAgainChangesNothing)
{
    model.setSource(&viewModel);
    const QSignalSpy resets(&model, &RecentRepoListModel::modelReset);
    const QSignalSpy sources(&model, &RecentRepoListModel::sourceChanged);

    model.setSource(&viewModel);

    EXPECT_EQ(resets.count(), 0);
    EXPECT_EQ(sources.count(), 0);
}

} // namespace
} // namespace vantrel::test
