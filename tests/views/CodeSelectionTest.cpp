#include "views/CodeSelection.h"

#include <gtest/gtest.h>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr CodeSide before = CodeSide::before;
constexpr CodeSide after = CodeSide::after;

DiffLine line(const QString &text)
{
    DiffLine made;
    made.text = TextSlice::fromString(text);
    return made;
}

DiffLine filler()
{
    DiffLine made;
    made.kind = DiffLineKind::filler;
    return made;
}

Hunk hunkOf(const QList<QPair<DiffLine, DiffLine>> &rows)
{
    Hunk hunk;
    for (const auto &[left, right] : rows) {
        DiffRow row;
        row.left = left;
        row.right = right;
        hunk.rows.append(row);
    }
    return hunk;
}

/// Two cards; on the left the second row of the first is a filler, on the right none.
const QList<Hunk> hunks = {hunkOf({{line(u"one old"_s), line(u"one new"_s)},
                                   {filler(), line(u"added\tline"_s)},
                                   {line(u"three"_s), line(u"three"_s)}}),
                           hunkOf({{line(u"漢字 four"_s), line(QString())},
                                   {line(u"five"_s), line(u"five_six-seven"_s)}})};

CodeSelection selected(CodeSide side, CodePosition from, CodePosition to,
                       SelectionUnit unit = SelectionUnit::character)
{
    CodeSelection selection;
    selection.begin(hunks, side, from, unit);
    selection.extendTo(hunks, to);
    return selection;
}

QString textOf(const CodeSelection &selection)
{
    return selectedText(hunks, selection);
}

TEST(CodeSelection, ItsTextHasTheByteOrderMarksOfItsLines)
{
    const QList<Hunk> marked = {hunkOf(
        {{line(u"\uFEFFint"_s), line(QString())}, {line(u"\uFEFF\uFEFFa"_s), line(QString())}})};
    CodeSelection selection;
    selection.begin(marked, before, {0, 0, 0}, SelectionUnit::character);
    selection.extendTo(marked, {0, 1, 7});

    EXPECT_EQ(selectedText(marked, selection), u"\uFEFFint\n\uFEFF\uFEFFa"_s);
}

TEST(CodeSelection, IsEmptyUntilItIsExtended)
{
    CodeSelection selection;
    EXPECT_TRUE(selection.isEmpty());

    selection.begin(hunks, before, {0, 0, 3}, SelectionUnit::character);

    EXPECT_TRUE(selection.isEmpty());
    EXPECT_EQ(textOf(selection), QString());
    EXPECT_EQ(selection.spanIn(hunks, 0, 0), std::nullopt);
}

TEST(CodeSelection, HoldsTheCharactersBetweenBothEndsInEitherDirection)
{
    EXPECT_EQ(textOf(selected(before, {0, 0, 1}, {0, 0, 5})), u"ne o"_s);
    EXPECT_EQ(textOf(selected(before, {0, 0, 5}, {0, 0, 1})), u"ne o"_s);
}

TEST(CodeSelection, ReachesOverRowsAndCardsOfItsSide)
{
    EXPECT_EQ(textOf(selected(after, {0, 0, 4}, {1, 1, 4})), u"new\nadded\tline\nthree\n\nfive"_s);
}

TEST(CodeSelection, FillersGiveNothing)
{
    EXPECT_EQ(textOf(selected(before, {0, 0, 4}, {0, 2, 2})), u"old\nth"_s);
    EXPECT_EQ(textOf(selected(before, {0, 1, 0}, {0, 2, 2})), u"th"_s);
}

TEST(CodeSelection, ASpanIsWhatIsSelectedOfARow)
{
    const CodeSelection selection = selected(after, {0, 0, 4}, {0, 2, 2});

    EXPECT_EQ(selection.spanIn(hunks, 0, 0), (CodeSpan{4, 7}));
    EXPECT_EQ(selection.spanIn(hunks, 0, 1), (CodeSpan{0, 10}));
    EXPECT_EQ(selection.spanIn(hunks, 0, 2), (CodeSpan{0, 2}));
    EXPECT_EQ(selection.spanIn(hunks, 1, 0), std::nullopt);
    EXPECT_TRUE(selection.goesOnBehind(0, 0));
    EXPECT_TRUE(selection.goesOnBehind(0, 1));
    EXPECT_FALSE(selection.goesOnBehind(0, 2));
    EXPECT_FALSE(selection.goesOnBehind(1, 0));
}

TEST(CodeSelection, ADoubleClickSelectsAWordAndGrowsByWords)
{
    EXPECT_EQ(textOf(selected(after, {1, 1, 6}, {1, 1, 6}, SelectionUnit::word)), u"five_six"_s);
    EXPECT_EQ(textOf(selected(after, {1, 1, 6}, {1, 1, 10}, SelectionUnit::word)),
              u"five_six-seven"_s);
    EXPECT_EQ(textOf(selected(after, {1, 1, 10}, {1, 1, 6}, SelectionUnit::word)),
              u"five_six-seven"_s);
}

TEST(CodeSelection, ATripleClickSelectsALineAndGrowsByLines)
{
    EXPECT_EQ(textOf(selected(after, {0, 1, 3}, {0, 1, 3}, SelectionUnit::line)), u"added\tline"_s);
    EXPECT_EQ(textOf(selected(after, {0, 1, 3}, {0, 0, 5}, SelectionUnit::line)),
              u"one new\nadded\tline"_s);
}

TEST(CodeSelection, SelectsOneSideOfACard)
{
    CodeSelection selection = selected(before, {1, 0, 0}, {1, 0, 0});

    selection.selectCard(hunks, 0);

    EXPECT_EQ(textOf(selection), u"one old\nthree"_s);
}

TEST(CodeSelection, IsGoneWhenItIsCleared)
{
    CodeSelection selection = selected(before, {0, 0, 1}, {1, 0, 0});

    selection.clear();

    EXPECT_TRUE(selection.isEmpty());
    EXPECT_EQ(selection.side(), before) << "the side is remembered";
}

/// Steps from a place on one side.
class Steps
{
public:
    Steps(CodeSide side, CodePosition origin)
        : m_origin(origin)
    {
        m_selection.begin(hunks, side, origin, SelectionUnit::character);
    }

    Steps &go(SelectionStep step)
    {
        m_selection.move(hunks, step, m_origin, 3);
        return *this;
    }

    [[nodiscard]] CodePosition focus() const { return m_selection.focus(); }
    [[nodiscard]] QString text() const { return textOf(m_selection); }

private:
    CodePosition m_origin;
    CodeSelection m_selection{};
};

TEST(CodeSelection, StepsGoFromCharacterToCharacterAndLineToLine)
{
    EXPECT_EQ(Steps(before, {0, 0, 1}).go(SelectionStep::right).text(), u"n"_s);
    EXPECT_EQ(Steps(before, {0, 0, 1}).go(SelectionStep::left).text(), u"o"_s);
    EXPECT_EQ(Steps(before, {1, 0, 0}).go(SelectionStep::right).text(), u"漢"_s);
    EXPECT_EQ(Steps(before, {0, 0, 7}).go(SelectionStep::right).focus(), (CodePosition{0, 2, 0}))
        << "past the filler";
    EXPECT_EQ(Steps(before, {1, 0, 0}).go(SelectionStep::left).focus(), (CodePosition{0, 2, 5}))
        << "into the card before";
}

TEST(CodeSelection, StepsStopAtBothEndsOfTheFile)
{
    EXPECT_EQ(Steps(before, {0, 0, 0}).go(SelectionStep::left).focus(), (CodePosition{0, 0, 0}));
    EXPECT_EQ(Steps(before, {1, 1, 4}).go(SelectionStep::right).focus(), (CodePosition{1, 1, 4}));
    EXPECT_EQ(Steps(before, {1, 1, 2}).go(SelectionStep::down).focus(), (CodePosition{1, 1, 2}));
}

TEST(CodeSelection, StepsUpAndDownKeepTheirColumn)
{
    Steps steps(after, {0, 0, 6});

    EXPECT_EQ(steps.go(SelectionStep::down).focus(), (CodePosition{0, 1, 5})) << "beside a tab";
    EXPECT_EQ(steps.go(SelectionStep::down).focus(), (CodePosition{0, 2, 5})) << "a shorter line";
    EXPECT_EQ(steps.go(SelectionStep::down).focus(), (CodePosition{1, 0, 0})) << "an empty line";
    EXPECT_EQ(steps.go(SelectionStep::down).focus(), (CodePosition{1, 1, 6})) << "where it began";
    EXPECT_EQ(steps.go(SelectionStep::up).focus(), (CodePosition{1, 0, 0}));
}

TEST(CodeSelection, StepsLeadToTheEndsOfALineAndByPages)
{
    EXPECT_EQ(Steps(after, {0, 1, 4}).go(SelectionStep::lineEnd).text(), u"d\tline"_s);
    EXPECT_EQ(Steps(after, {0, 1, 4}).go(SelectionStep::lineStart).text(), u"adde"_s);
    EXPECT_EQ(Steps(after, {0, 0, 0}).go(SelectionStep::pageDown).focus(), (CodePosition{1, 0, 0}));
    EXPECT_EQ(Steps(after, {1, 1, 0}).go(SelectionStep::pageUp).focus(), (CodePosition{0, 1, 0}));
}

TEST(CodeSelection, StepsGoOnFromTheEdgeOfAWord)
{
    CodeSelection selection = selected(after, {1, 1, 6}, {1, 1, 6}, SelectionUnit::word);

    selection.move(hunks, SelectionStep::right, {}, 3);

    EXPECT_EQ(textOf(selection), u"five_six-"_s);
}

TEST(CodeSelection, TextThatNobodyWaitsForIsNotGathered)
{
    const CodeSelection selection = selected(after, {0, 0, 0}, {1, 1, 4});

    EXPECT_EQ(selectedText(hunks, selection, [] { return true; }), QString());
}

} // namespace
} // namespace vantrel::test
