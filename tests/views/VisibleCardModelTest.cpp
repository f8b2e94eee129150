#include "views/VisibleCardModel.h"

#include "OpenedFile.h"
#include "SamplePanesTheme.h"
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

    /// The cards from `first` to before `end`, just as high.
    void show(int first, int end)
    {
        const PanesLayout layout(file.diff().hunks(), samplePanesSizes());
        const qreal top = layout.cardTop(first);
        model.setWindow(layout, top, layout.cardBottom(end - 1) - top);
    }

    /// The names of the rows of a card in view.
    QStringList rowsOf(int row) const
    {
        auto *const rows = value(row, VisibleCardModel::RowsRole).value<QAbstractItemModel *>();
        QStringList names;
        for (int i = 0; rows != nullptr && i < rows->rowCount(); ++i) {
            names.append(rows->index(i, 0).data(VisibleRowModel::AccessibleNameRole).toString());
        }
        return names;
    }

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

    model.setWindow(PanesLayout(other.diff().hunks(), samplePanesSizes()), 0, 100);

    EXPECT_EQ(value(0, VisibleCardModel::RangeRole), u"@@ -1 +1 @@"_s);
    EXPECT_EQ(value(0, VisibleCardModel::SectionRole), u"void f() { @@"_s);
    model.setDiff(nullptr);
}

TEST_F(VisibleCardModelTest, ListsRowsOnlyForAReader)
{
    show(0, 2);
    EXPECT_EQ(rowsOf(0), QStringList());

    model.setHasReader(true);
    EXPECT_EQ(rowsOf(0), QStringList(u"Before 1, deleted: old 0 After 1, added: new 0"_s));
    show(1, 3);
    EXPECT_EQ(rowsOf(1), QStringList(u"Before 21, deleted: old 2 After 21, added: new 2"_s));

    model.setHasReader(false);
    EXPECT_EQ(rowsOf(1), QStringList());
}

TEST_F(VisibleCardModelTest, ListsTheRowsOfACardThatAreInView)
{
    RawHunk hunk = changedLine(1, u"a"_s, u"b"_s);
    hunk.lines =
        QList<RawDiffLine>(50, RawDiffLine{RawLineKind::context, TextSlice::fromString(u"same"_s)});
    OpenedFile other(changedFile(u"b.cpp"_s, {hunk}));
    const PanesLayout layout(other.diff().hunks(), samplePanesSizes());
    model.setDiff(&other.diff());
    model.setHasReader(true);

    model.setWindow(layout, layout.rowsTop(0) + 9 * 20 + 1, 20);
    EXPECT_EQ(rowsOf(0),
              (QStringList{u"Before 10, after 10: same"_s, u"Before 11, after 11: same"_s}));
    model.setWindow(layout, layout.rowsTop(0) + 10 * 20, 20);
    EXPECT_EQ(rowsOf(0), (QStringList{u"Before 11, after 11: same"_s}));
    model.setDiff(nullptr);
}

DiffRow rowOf(const DiffLine &left, const DiffLine &right)
{
    DiffRow row;
    row.left = left;
    row.right = right;
    return row;
}

TEST(AccessibleRowName, SaysWhatBecameOfTheLine)
{
    const DiffLine filler{std::nullopt, {}, DiffLineKind::filler};
    const DiffLine deleted{43, TextSlice::fromString(u"a();"_s), DiffLineKind::deletion};
    const DiffLine added{44, TextSlice::fromString(u"b();"_s), DiffLineKind::addition};
    const DiffLine kept{45, TextSlice::fromString(u"c();"_s), DiffLineKind::context};

    EXPECT_EQ(accessibleRowName(rowOf(deleted, added)),
              u"Before 43, deleted: a(); After 44, added: b();"_s);
    EXPECT_EQ(accessibleRowName(rowOf(deleted, filler)), u"Before 43, deleted: a();"_s);
    EXPECT_EQ(accessibleRowName(rowOf(filler, added)), u"After 44, added: b();"_s);
    EXPECT_EQ(accessibleRowName(rowOf(kept, kept)), u"Before 45, after 45: c();"_s);
}

TEST(AccessibleRowName, NamesInvisibleCharactersAndEndsLongLines)
{
    const DiffLine filler{std::nullopt, {}, DiffLineKind::filler};
    const DiffLine marked{1, TextSlice::fromString(u"\ta\u202Eb\r"_s), DiffLineKind::addition};
    const DiffLine endless{2, TextSlice::fromString(QString(100'000, u'x')),
                           DiffLineKind::addition};

    EXPECT_EQ(accessibleRowName(rowOf(filler, marked)), u"After 1, added:     a‹202E›b␍"_s);
    EXPECT_EQ(accessibleRowName(rowOf(filler, endless)),
              u"After 2, added: "_s + QString(500, u'x') + u'…');
}

} // namespace
} // namespace vantrel::test
