#include "views/CodePanesItem.h"

#include "OpenedFile.h"
#include "SamplePanesTheme.h"
#include "Samples.h"
#include "support/Spin.h"

#include <gtest/gtest.h>

#include <QClipboard>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QImage>
#include <QMouseEvent>
#include <QPainter>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

constexpr QSize viewport(900, 400);

/// A theme of plain colours, each of which stands for one meaning only.
void fillTheme(QObject &theme)
{
    const QList<QPair<const char *, QColor>> colors = {
        {"inkTertiary", Qt::darkGray},
        {"ink", Qt::black},
        {"line", Qt::gray},
        {"accent", Qt::blue},
        {"card", Qt::white},
        {"diffContextGutter", QColor(240, 240, 240)},
        {"accentSoft", QColor(200, 200, 255)},
        {"diffContext", Qt::white},
        {"diffAdded", QColor(200, 255, 200)},
        {"diffDeleted", QColor(255, 200, 200)},
        {"diffFiller", QColor(230, 230, 230)},
        {"diffAddedGutter", QColor(150, 255, 150)},
        {"diffDeletedGutter", QColor(255, 150, 150)},
        {"diffFillerGutter", QColor(220, 220, 220)},
        {"diffAddedInk", Qt::darkGreen},
        {"diffDeletedInk", Qt::darkRed},
        {"diffSelected", Qt::white},
        {"diffSelectedGutter", QColor(210, 210, 255)},
        {"selection", QColor(100, 100, 255)}};
    for (const auto &[name, color] : colors) {
        theme.setProperty(name, color);
    }
    fillSizesAndFonts(theme);
}

FileChange fileWithLine(const QString &line)
{
    return changedFile(u"a.cpp"_s, {changedLine(7, line, line)});
}

/// The panes over an opened file.
class Panes
{
public:
    explicit Panes(const FileChange &file)
        : m_file(file)
    {
        fillTheme(m_theme);
        m_item.setSize(viewport);
        m_item.setTheme(&m_theme);
        m_item.setDiff(&m_file.diff());
        runUntil([this] { return m_item.longestLine() > 0; });
    }

    [[nodiscard]] CodePanesItem &item() { return m_item; }
    [[nodiscard]] DiffViewModel &diff() { return m_file.diff(); }

    [[nodiscard]] QImage picture()
    {
        QImage image(viewport, QImage::Format_RGB32);
        image.fill(Qt::white);
        QPainter painter(&image);
        m_item.paint(&painter);
        return image;
    }

    /// Where a column of the first card's row is drawn on the left or right side.
    [[nodiscard]] QPointF place(CodeSide side, int row, qreal column) const
    {
        const qreal cell = side == CodeSide::before ? 13 : 450;
        return {cell + 44 + 18 + 3 + column * m_item.columnWidth() - m_item.contentX(),
                12 + 1 + 32 + row * 20 + 10 - m_item.contentY()};
    }

    void send(QEvent::Type type, QPointF point, quint64 time = 0)
    {
        const auto held = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        QMouseEvent event(type, point, point, Qt::LeftButton, held, Qt::NoModifier);
        event.setTimestamp(time);
        QCoreApplication::sendEvent(&m_item, &event);
    }

    void press(QPointF point, quint64 time = 100'000)
    {
        send(QEvent::MouseButtonPress, point, time);
    }

    void click(QPointF point, quint64 time)
    {
        press(point, time);
        send(QEvent::MouseButtonRelease, point, time);
    }

    void drag(QPointF from, QPointF to)
    {
        press(from);
        send(QEvent::MouseMove, from + (to - from) / 2);
        send(QEvent::MouseMove, to);
        send(QEvent::MouseButtonRelease, to);
    }

    bool type(int key, Qt::KeyboardModifiers modifiers = Qt::ShiftModifier)
    {
        return m_item.takeSelectionKey(key, int(modifiers.toInt()));
    }

    /// What Ctrl+C puts into the clipboard.
    QString copied()
    {
        QGuiApplication::clipboard()->clear();
        type(Qt::Key_C, Qt::ControlModifier);
        runUntil([] { return !QGuiApplication::clipboard()->text().isEmpty(); });
        return QGuiApplication::clipboard()->text();
    }

private:
    OpenedFile m_file;
    QObject m_theme{};
    CodePanesItem m_item{};
};

TEST(CodePanesItem, DrawsDeletionsLeftAndAdditionsRight)
{
    Panes panes(fileWithLine(u"x"_s));
    const int middleOfFirstRow = 12 + 1 + 32 + 10;

    const QImage picture = panes.picture();

    EXPECT_EQ(picture.pixelColor(400, middleOfFirstRow), QColor(255, 200, 200));
    EXPECT_EQ(picture.pixelColor(15, middleOfFirstRow - 8), QColor(255, 150, 150));
    EXPECT_EQ(picture.pixelColor(850, middleOfFirstRow), QColor(200, 255, 200));
    EXPECT_EQ(picture.pixelColor(455, middleOfFirstRow - 8), QColor(150, 255, 150));
}

TEST(CodePanesItem, DrawsOfALongLineWhatIsInView)
{
    const QString words = u"0123456789abcdefghijklmnopqrstuvwxyz"_s;
    Panes long_(fileWithLine(words.repeated(100'000 / words.size())));
    Panes cut(fileWithLine(words.repeated(10)));

    EXPECT_EQ(long_.picture(), cut.picture());
}

TEST(CodePanesItem, DrawsFarColumnsOfALongLineAsNearOnes)
{
    const QString words = u"0123456789"_s;
    Panes panes(fileWithLine(words.repeated(10'000)));
    const QImage atStart = panes.picture();

    panes.item().setContentX(10 * 9'000 * panes.item().columnWidth());
    const QImage farRight = panes.picture();

    EXPECT_EQ(panes.item().longestLine(), 100'000);
    EXPECT_EQ(farRight, atStart);
}

TEST(CodePanesItem, DrawsABidirectionalOverrideAsAMark)
{
    Panes hidden(fileWithLine(u"if (\u202Eadmin) {"_s));
    Panes spelled(fileWithLine(u"if (‹202E›admin) {"_s));

    EXPECT_EQ(hidden.picture(), spelled.picture());
}

TEST(CodePanesItem, DrawsTabsAsColumns)
{
    Panes tabs(fileWithLine(u"\tif\tx"_s));
    Panes blanks(fileWithLine(u"    if  x"_s));

    EXPECT_EQ(tabs.picture(), blanks.picture());
}

TEST(CodePanesItem, ScrollsSidewaysOnlyAsFarAsTheLongestLineNeeds)
{
    Panes fitting(fileWithLine(u"x"_s));
    Panes tooLong(fileWithLine(u"x"_s.repeated(200)));

    EXPECT_EQ(fitting.item().maximumContentX(), 0);
    EXPECT_GT(tooLong.item().maximumContentX(), 0);
    EXPECT_LT(tooLong.item().maximumContentX(), 200 * tooLong.item().columnWidth());
}

TEST(CodePanesItem, ScrollsByTheLeastAmountToAHunk)
{
    Panes panes(changedFile(u"a.cpp"_s, 30)); // Cards of 60 pixels with gaps of 12.
    CodePanesItem &item = panes.item();

    EXPECT_EQ(item.contentYShowing(0), 0);
    EXPECT_EQ(item.contentYShowing(4), 0);
    EXPECT_EQ(item.contentYShowing(5), 6 * 72 + 12 - viewport.height());

    item.setContentY(1000);
    EXPECT_EQ(item.contentYShowing(2), 2 * 72);
    EXPECT_EQ(item.contentYShowing(29), item.contentHeight() - viewport.height());
}

TEST(CodePanesItem, ScrollsToTheHeadOfAHunkThatIsHigherThanTheView)
{
    RawHunk high = changedLine(1, u"a"_s, u"b"_s);
    high.lines =
        QList<RawDiffLine>(100, RawDiffLine{RawLineKind::context, TextSlice::fromString(u"x"_s)});
    const RawHunk low = changedLine(500, u"a"_s, u"b"_s);
    Panes panes(changedFile(u"a.cpp"_s, {low, high, low}));

    EXPECT_EQ(panes.item().contentYShowing(1), 72);
}

TEST(CodePanesItem, MarksTheSelectedCard)
{
    Panes panes(changedFile(u"a.cpp"_s, 2));
    const QPoint firstHead(300, 12 + 16);
    const QPoint secondHead(300, 72 + 12 + 16);

    panes.diff().select(1);
    const QImage picture = panes.picture();

    EXPECT_EQ(picture.pixelColor(firstHead), QColor(240, 240, 240));
    EXPECT_EQ(picture.pixelColor(secondHead), QColor(200, 200, 255));
}

/// Rows: a tab and two words; an added line that is not there before; the end.
FileChange fileOfThreeRows()
{
    const auto line = [](RawLineKind kind, const QString &text) {
        return RawDiffLine{kind, TextSlice::fromString(text)};
    };
    RawHunk hunk = changedLine(1, QString(), QString());
    hunk.lines = {line(RawLineKind::context, u"\tif (a_b) {\u200B"_s),
                  line(RawLineKind::addition, u"漢字 = 1;"_s),
                  line(RawLineKind::context, u"} // end"_s)};
    return changedFile(u"a.cpp"_s, {hunk});
}

TEST(CodePanesItem, ADragOverTextSelectsTheCharactersOfItsSide)
{
    Panes panes(fileOfThreeRows());

    panes.drag(panes.place(CodeSide::after, 0, 4), panes.place(CodeSide::before, 2, 3));
    EXPECT_EQ(panes.item().selection().side(), CodeSide::after);
    EXPECT_EQ(panes.copied(), u"if (a_b) {\u200B\n漢字 = 1;\n"_s);

    panes.drag(panes.place(CodeSide::before, 2, 3), panes.place(CodeSide::before, 0, 7));
    EXPECT_EQ(panes.copied(), u"(a_b) {\u200B\n} /"_s);
}

TEST(CodePanesItem, ADragHitsTheCharactersThatAreDrawnThere)
{
    Panes panes(fileOfThreeRows());

    panes.drag(panes.place(CodeSide::after, 1, 2), panes.place(CodeSide::after, 1, 6));
    EXPECT_EQ(panes.copied(), u"字 ="_s) << "wide characters take two columns";

    panes.drag(panes.place(CodeSide::before, 0, 2.2), panes.place(CodeSide::before, 0, 5));
    EXPECT_EQ(panes.copied(), u"i"_s) << "behind the middle of the tab";
}

TEST(CodePanesItem, ADragInAScrolledLineHitsWhatIsInView)
{
    Panes panes(fileWithLine(u"0123456789"_s.repeated(20)));
    panes.item().setContentX(35.5 * panes.item().columnWidth());

    panes.drag(panes.place(CodeSide::before, 0, 42), panes.place(CodeSide::before, 0, 45));

    EXPECT_EQ(panes.copied(), u"234"_s);
}

TEST(CodePanesItem, ADragInTheGutterSelectsLines)
{
    Panes panes(fileOfThreeRows());
    const QPointF gutter(460, panes.place(CodeSide::after, 1, 0).y());

    panes.drag(gutter, gutter + QPointF(0, 20));

    EXPECT_EQ(panes.copied(), u"漢字 = 1;\n} // end"_s);
}

TEST(CodePanesItem, AClickSelectsNothingAndEndsASelection)
{
    Panes panes(fileOfThreeRows());
    panes.drag(panes.place(CodeSide::after, 0, 4), panes.place(CodeSide::after, 2, 3));
    EXPECT_FALSE(panes.item().selection().isEmpty());

    panes.click(QPointF(460, panes.place(CodeSide::after, 1, 0).y()), 100'000);

    EXPECT_TRUE(panes.item().selection().isEmpty());
}

TEST(CodePanesItem, TwoClicksSelectAWordAndThreeALine)
{
    Panes panes(fileOfThreeRows());
    const QPointF place = panes.place(CodeSide::before, 0, 9);
    panes.click(place, 100'000);

    panes.send(QEvent::MouseButtonDblClick, place, 100'100);
    panes.send(QEvent::MouseButtonRelease, place, 100'150);
    EXPECT_EQ(panes.copied(), u"a_b"_s);

    panes.click(place, 100'200);
    EXPECT_EQ(panes.copied(), u"\tif (a_b) {\u200B"_s);

    panes.click(place, 100'300);
    EXPECT_TRUE(panes.item().selection().isEmpty()) << "a fourth click is a first one";
}

TEST(CodePanesItem, ALateThirdClickSelectsNoLine)
{
    Panes panes(fileOfThreeRows());
    const QPointF place = panes.place(CodeSide::before, 0, 9);
    panes.send(QEvent::MouseButtonDblClick, place, 100'100);
    panes.send(QEvent::MouseButtonRelease, place, 100'150);

    panes.click(place, 110'000);

    EXPECT_TRUE(panes.item().selection().isEmpty());
}

TEST(CodePanesItem, AClickAnywhereOnACardIsTold)
{
    Panes panes(changedFile(u"a.cpp"_s, 3));
    QList<int> clicked;
    QObject::connect(&panes.item(), &CodePanesItem::cardClicked, &panes.item(),
                     [&clicked](int card) { clicked.append(card); });

    panes.click(QPointF(300, 20), 100'000);            // On the first head,
    panes.click(QPointF(300, 72 + 57), 110'000);       // the second row,
    panes.click(QPointF(300, 144 + 12 + 58), 120'000); // and the third end.
    panes.drag(QPointF(300, 20), QPointF(300, 60));

    EXPECT_EQ(clicked, (QList<int>{0, 1, 2}));
}

TEST(CodePanesItem, APressBesideTheCardsIsLeftToOthers)
{
    Panes panes(fileOfThreeRows());

    for (const QPointF place : {QPointF(300, 5), QPointF(5, 60), QPointF(300, 390)}) {
        QMouseEvent press(QEvent::MouseButtonPress, place, place, Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(&panes.item(), &press);
        EXPECT_FALSE(press.isAccepted());
    }
}

TEST(CodePanesItem, ADragBeyondTheEdgeScrolls)
{
    RawHunk high = changedLine(1, u"a"_s, u"b"_s);
    high.lines =
        QList<RawDiffLine>(100, RawDiffLine{RawLineKind::context, TextSlice::fromString(u"x"_s)});
    Panes panes(changedFile(u"a.cpp"_s, {high}));
    CodePanesItem &item = panes.item();
    QObject::connect(&item, &CodePanesItem::scrollRequested, &item,
                     [&item](qreal, qreal y) { item.setContentY(y); });
    const QPointF start = panes.place(CodeSide::after, 3, 0);
    panes.press(start);

    panes.send(QEvent::MouseMove, QPointF(start.x(), viewport.height() + 100));
    spinUntil([&item] { return item.contentY() > 500; });
    panes.send(QEvent::MouseButtonRelease, QPointF(start.x(), viewport.height() + 100));

    EXPECT_GT(item.selection().end().row, (500 + viewport.height() - 45) / 20 - 2);
    EXPECT_EQ(item.selection().start(), (CodePosition{0, 3, 0}));
}

TEST(CodePanesItem, KeysExtendFromTheFirstRowInView)
{
    Panes panes(fileOfThreeRows());

    EXPECT_TRUE(panes.type(Qt::Key_Down));
    EXPECT_TRUE(panes.type(Qt::Key_End));
    EXPECT_EQ(panes.copied(), u"\tif (a_b) {\u200B\n漢字 = 1;"_s);

    panes.type(Qt::Key_Up);
    panes.type(Qt::Key_Home);
    panes.type(Qt::Key_Right);
    EXPECT_EQ(panes.copied(), u"\t"_s);
    EXPECT_FALSE(panes.type(Qt::Key_Down, Qt::NoModifier)) << "steps to the next change";
}

TEST(CodePanesItem, KeysBringTheEndOfTheSelectionIntoView)
{
    Panes panes(fileWithLine(u"0123456789"_s.repeated(20)));
    QPointF requested;
    QObject::connect(&panes.item(), &CodePanesItem::scrollRequested, &panes.item(),
                     [&requested](qreal x, qreal y) { requested = {x, y}; });

    panes.type(Qt::Key_End);

    EXPECT_GT(requested.x(), panes.item().maximumContentX() - 1);
    EXPECT_EQ(requested.y(), 0);
}

TEST(CodePanesItem, OneSideOfTheSelectedCardIsSelectedAsAWhole)
{
    Panes panes(fileOfThreeRows());
    panes.click(panes.place(CodeSide::before, 1, 0), 100'000);

    EXPECT_TRUE(panes.type(Qt::Key_A, Qt::ControlModifier));

    EXPECT_EQ(panes.copied(), u"\tif (a_b) {\u200B\n} // end"_s);
}

TEST(CodePanesItem, EscapeClearsASelectionAndIsElseLeftToOthers)
{
    Panes panes(fileOfThreeRows());
    panes.type(Qt::Key_Right);

    EXPECT_TRUE(panes.type(Qt::Key_Escape, Qt::NoModifier));
    EXPECT_TRUE(panes.item().selection().isEmpty());
    EXPECT_FALSE(panes.type(Qt::Key_Escape, Qt::NoModifier));
}

TEST(CodePanesItem, DrawsTheSelectionBelowTheTextOfItsSide)
{
    Panes panes(fileOfThreeRows());
    const QColor selected(100, 100, 255);
    const auto isSelected = [&](const QImage &picture, CodeSide side, int row, qreal column) {
        const QPointF place = panes.place(side, row, column) - QPointF(0, 9);
        return picture.pixelColor(place.toPoint()) == selected;
    };

    panes.drag(panes.place(CodeSide::after, 0, 4), panes.place(CodeSide::after, 2, 3));
    const QImage picture = panes.picture();

    EXPECT_FALSE(isSelected(picture, CodeSide::after, 0, 3));
    EXPECT_TRUE(isSelected(picture, CodeSide::after, 0, 5));
    EXPECT_TRUE(isSelected(picture, CodeSide::after, 0, 40)) << "up to the edge";
    EXPECT_TRUE(isSelected(picture, CodeSide::after, 1, 0.5));
    EXPECT_TRUE(isSelected(picture, CodeSide::after, 2, 2.5));
    EXPECT_FALSE(isSelected(picture, CodeSide::after, 2, 4));
    EXPECT_FALSE(isSelected(picture, CodeSide::before, 0, 5));

    panes.item().setContentY(20);
    EXPECT_TRUE(isSelected(panes.picture(), CodeSide::after, 1, 0.5)) << "it scrolls along";
}

} // namespace
} // namespace vantrel::test
