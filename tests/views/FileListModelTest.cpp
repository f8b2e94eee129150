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

} // namespace
} // namespace vantrel::test
