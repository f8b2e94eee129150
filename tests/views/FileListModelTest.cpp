#include "views/FileListModel.h"

#include "Samples.h"
#include "ScreenServices.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>
#include <QSignalSpy>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

class FileListModelTest : public testing::Test
{
protected:
    void load(const QList<FileChange> &files)
    {
        services.git.answerChangedFiles(files);
        services.git.answerCurrentBranch(std::optional<QString>());
        viewModel.load();
        runUntil([this] { return !viewModel.isLoading(); });
    }

    QVariant value(int row, int role) const { return model.data(model.index(row), role); }

    ScreenServices services{};
    FileListViewModel viewModel{sampleRepo(u"repo"_s), services.review};
    FileListModel model{};
    QAbstractItemModelTester tester{&model,
                                    QAbstractItemModelTester::FailureReportingMode::Warning};
};

TEST_F(FileListModelTest, HasARowForEachFileWithItsPathInTwoParts)
{
    FileChange deleted = changedFile(u"src/a/old.cpp"_s, 2);
    deleted.status = ChangeStatus::deleted;
    deleted.additions = 0;
    deleted.deletions = 143;
    model.setSource(&viewModel);

    load({deleted, changedFile(u"logo.png"_s, 0)});

    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(value(0, FileListModel::FolderRole), u"src/a/"_s);
    EXPECT_EQ(value(0, FileListModel::NameRole), u"old.cpp"_s);
    EXPECT_EQ(value(0, FileListModel::PathRole), u"src/a/old.cpp"_s);
    EXPECT_EQ(value(0, FileListModel::StatusRole), u"D"_s);
    EXPECT_EQ(value(0, FileListModel::AdditionsRole), 0);
    EXPECT_EQ(value(0, FileListModel::DeletionsRole), 143);
    EXPECT_EQ(value(0, FileListModel::HasHunksRole), true);
    EXPECT_EQ(value(0, FileListModel::AccessibleNameRole),
              u"src/a/old.cpp, Deleted, 143 lines deleted"_s);
    EXPECT_EQ(value(1, FileListModel::FolderRole), QString());
    EXPECT_EQ(value(1, FileListModel::NameRole), u"logo.png"_s);
    EXPECT_EQ(value(1, FileListModel::HasHunksRole), false);
    EXPECT_EQ(value(1, FileListModel::AccessibleNameRole), u"logo.png, Modified"_s);
}

TEST_F(FileListModelTest, SumsTheLinesOfAllFiles)
{
    FileChange grown = changedFile(u"a.cpp"_s, 2);
    grown.additions = 40;
    model.setSource(&viewModel);

    load({grown, changedFile(u"b.cpp"_s, 3)});

    EXPECT_EQ(model.count(), 2);
    EXPECT_EQ(model.additions(), 43);
    EXPECT_EQ(model.deletions(), 5);
}

TEST_F(FileListModelTest, FindsTheRowOfAPath)
{
    model.setSource(&viewModel);

    load({changedFile(u"a.cpp"_s, 1), changedFile(u"b.cpp"_s, 1)});

    EXPECT_EQ(model.rowOf(u"b.cpp"_s), 1);
    EXPECT_EQ(model.rowOf(u"c.cpp"_s), -1);
}

TEST_F(FileListModelTest, IsResetOnlyWhenTheFilesChange)
{
    model.setSource(&viewModel);
    load({changedFile(u"a.cpp"_s, 1)});
    const QSignalSpy resets(&model, &QAbstractItemModel::modelReset);

    load({changedFile(u"a.cpp"_s, 1)});

    EXPECT_EQ(resets.count(), 0);
}

TEST_F(FileListModelTest, CountsTheFilesOfEachStatus)
{
    FileChange added = changedFile(u"new.cpp"_s, 1);
    added.status = ChangeStatus::added;
    FileChange deleted = changedFile(u"old.cpp"_s, 1);
    deleted.status = ChangeStatus::deleted;
    model.setSource(&viewModel);

    load({changedFile(u"a.cpp"_s, 1), added, changedFile(u"b.cpp"_s, 1), deleted});

    EXPECT_EQ(model.modifiedCount(), 2);
    EXPECT_EQ(model.addedCount(), 1);
    EXPECT_EQ(model.deletedCount(), 1);
}

/// The same with the model of the summaries at hand.
class FileListModelSummaryTest : public FileListModelTest
{
protected:
    FileListModelSummaryTest()
    {
        services.notice.acknowledge();
        const QList<FileChange> files{changedFile(u"a.cpp"_s, 1), changedFile(u"b.cpp"_s, 1)};
        services.knowNarrative(files, u"Two  halves."_s);
        model.setSource(&viewModel);
        load(files);
        QObject::connect(&model, &QAbstractItemModel::dataChanged, &model,
                         [this](const QModelIndex &first, const QModelIndex &last) {
                             changed.append(u"%1-%2"_s.arg(first.row()).arg(last.row()));
                         });
    }

    void ask()
    {
        viewModel.requestSummary(u"b.cpp"_s);
        runUntil([this] { return services.ai.summaries.size() == 1; });
    }

    QStringList changed{};
};

TEST_F(FileListModelSummaryTest, ASummaryChangesItsRowAlone)
{
    ask();
    EXPECT_EQ(changed, QStringList{u"1-1"_s});
    EXPECT_EQ(value(1, FileListModel::SummaryStateRole), FileListModel::Loading);
    EXPECT_EQ(value(1, FileListModel::AccessibleDescriptionRole), u"Summarising"_s);

    services.ai.summaries.at(0).push(u"Renames\nthe plum."_s);
    runUntilIdle();

    EXPECT_EQ(changed, (QStringList{u"1-1"_s, u"1-1"_s}));
    EXPECT_EQ(value(0, FileListModel::SummaryStateRole), FileListModel::Idle);
    EXPECT_EQ(value(1, FileListModel::SummaryStateRole), FileListModel::Loaded);
    EXPECT_EQ(value(1, FileListModel::SummaryRole), u"Renames the plum."_s);
    EXPECT_EQ(value(1, FileListModel::RecoveryLabelRole), QString());
    EXPECT_EQ(value(1, FileListModel::AccessibleDescriptionRole), u"Renames the plum."_s);
}

TEST_F(FileListModelSummaryTest, AFailureIsShownWithTheWordsThatLeadToTheSettings)
{
    ask();
    AIServiceError error;
    error.kind = AIServiceError::Case::missingAPIKey;

    services.ai.summaries.at(0).fail(AIFailure(error));
    runUntilIdle();

    EXPECT_EQ(value(1, FileListModel::SummaryStateRole), FileListModel::Failed);
    EXPECT_EQ(value(1, FileListModel::SummaryRole),
              u"Add an API key in Settings to use AI features."_s);
    EXPECT_EQ(value(1, FileListModel::RecoveryLabelRole), u"Add an API key in Settings →"_s);
}

TEST_F(FileListModelSummaryTest, ASummaryOfMegabytesIsShownUpToAMeasure)
{
    ask();

    services.ai.summaries.at(0).push(QString(2'000'000, u'x'));
    runUntilIdle();

    EXPECT_LT(value(1, FileListModel::SummaryRole).toString().size(), 21'000);
}

TEST_F(FileListModelSummaryTest, ShowsTheNarrative)
{
    EXPECT_EQ(model.narrative(), u"Two  halves."_s);

    model.setSource(nullptr);

    EXPECT_EQ(model.narrative(), QString());
}

} // namespace
} // namespace vantrel::test
