#include "views/VisibleCardModel.h"

#include "OpenedFile.h"
#include "Samples.h"

#include <gtest/gtest.h>

#include <QAbstractItemModelTester>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// Cards of a file with six hunks, and what the model announces, in words.
class VisibleCardModelTest : public testing::Test
{
protected:
    VisibleCardModelTest()
    {
        model.setDiff(&file.diff());
        QObject::connect(&model, &QAbstractItemModel::rowsInserted,
                         [this](const QModelIndex &, int first, int last) {
                             signalled.append(u"inserted %1-%2"_s.arg(first).arg(last));
                         });
        QObject::connect(&model, &QAbstractItemModel::rowsRemoved,
                         [this](const QModelIndex &, int first, int last) {
                             signalled.append(u"removed %1-%2"_s.arg(first).arg(last));
                         });
        QObject::connect(&model, &QAbstractItemModel::dataChanged,
                         [this](const QModelIndex &first, const QModelIndex &last) {
                             signalled.append(u"changed %1-%2"_s.arg(first.row()).arg(last.row()));
                         });
    }

    void show(int first, int end) { model.setWindow(PanesLayout(file.diff().hunks()), first, end); }

    QVariant value(int row, int role) const { return model.data(model.index(row), role); }

    OpenedFile file{changedFile(u"a.cpp"_s, 6)};
    VisibleCardModel model{};
    QAbstractItemModelTester tester{&model,
                                    QAbstractItemModelTester::FailureReportingMode::Warning};
    QStringList signalled{};
};

TEST_F(VisibleCardModelTest, ShowsTheCardsOfItsWindow)
{
    show(2, 4);

    EXPECT_EQ(model.rowCount(), 2);
    EXPECT_EQ(value(0, VisibleCardModel::HunkIndexRole), 2);
    EXPECT_EQ(value(0, VisibleCardModel::RangeRole), u"@@ -21 +21 @@"_s);
    EXPECT_EQ(value(0, VisibleCardModel::SectionRole), QString());
    EXPECT_EQ(value(0, VisibleCardModel::IsSelectedRole), false);
    EXPECT_EQ(value(0, VisibleCardModel::AccessibleNameRole), u"Change 3 of 6, @@ -21 +21 @@"_s);
    EXPECT_EQ(value(1, VisibleCardModel::HunkIndexRole), 3);
}

TEST_F(VisibleCardModelTest, AnnouncesOnlyTheCardsThatComeAndGo)
{
    show(0, 3);
    show(1, 4);
    show(0, 2);

    EXPECT_EQ(signalled, (QStringList{u"inserted 0-2"_s, u"removed 0-0"_s, u"inserted 2-2"_s,
                                      u"removed 1-2"_s, u"inserted 0-0"_s}));
}

TEST_F(VisibleCardModelTest, StartsAnewWhenNothingOfTheWindowStays)
{
    show(0, 2);
    show(4, 6);

    EXPECT_EQ(signalled, (QStringList{u"inserted 0-1"_s, u"removed 0-1"_s, u"inserted 0-1"_s}));
    EXPECT_EQ(value(0, VisibleCardModel::HunkIndexRole), 4);
}

TEST_F(VisibleCardModelTest, AnnouncesAnExplanationOnItsCardAlone)
{
    runUntil([this] { return file.services().ai.explanations.size() == 2; });
    show(0, 2);
    signalled.clear();
    HunkExplanation explanation;
    explanation.tag = u"Bug fix"_s;
    explanation.explanation = u"Keeps the plum."_s;

    file.complete(explanation);

    EXPECT_EQ(signalled, QStringList(u"changed 0-0"_s));
    EXPECT_EQ(value(0, VisibleCardModel::TagRole), u"Bug fix"_s);
    EXPECT_EQ(value(0, VisibleCardModel::IsExplainingRole), false);
    EXPECT_EQ(value(0, VisibleCardModel::AccessibleNameRole),
              u"Change 1 of 6, Bug fix, @@ -1 +1 @@"_s);
}

TEST_F(VisibleCardModelTest, AnnouncesNothingOfACardOutOfView)
{
    show(3, 5);
    signalled.clear();

    file.complete(HunkExplanation());

    EXPECT_EQ(signalled, QStringList());
}

TEST_F(VisibleCardModelTest, MovesTheSelectionFromCardToCard)
{
    show(0, 3);
    signalled.clear();

    file.diff().select(2);

    EXPECT_EQ(signalled.first(2), (QStringList{u"changed 0-0"_s, u"changed 2-2"_s}));
    EXPECT_EQ(value(0, VisibleCardModel::IsSelectedRole), false);
    EXPECT_EQ(value(2, VisibleCardModel::IsSelectedRole), true);
}

TEST_F(VisibleCardModelTest, SplitsAHeaderBehindItsClosingMarker)
{
    RawHunk hunk = changedLine(1, u"a"_s, u"b"_s);
    hunk.header = TextSlice::fromString(u"@@ -1 +1 @@ void f() { @@"_s);
    OpenedFile other(changedFile(u"b.cpp"_s, {hunk}));
    model.setDiff(&other.diff());

    model.setWindow(PanesLayout(other.diff().hunks()), 0, 1);

    EXPECT_EQ(value(0, VisibleCardModel::RangeRole), u"@@ -1 +1 @@"_s);
    EXPECT_EQ(value(0, VisibleCardModel::SectionRole), u"void f() { @@"_s);
    model.setDiff(nullptr);
}

} // namespace
} // namespace vantrel::test
