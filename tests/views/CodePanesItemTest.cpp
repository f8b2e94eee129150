#include "views/CodePanesItem.h"

#include "OpenedFile.h"
#include "Samples.h"

#include <gtest/gtest.h>

#include <QFontDatabase>
#include <QImage>
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
        {"diffSelectedGutter", QColor(210, 210, 255)}};
    for (const auto &[name, color] : colors) {
        theme.setProperty(name, color);
    }
    QFont font = QFontDatabase::systemFont(QFontDatabase::FixedFont);
    font.setPixelSize(12);
    theme.setProperty("codeFont", font);
    theme.setProperty("codeNumberFont", font);
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

} // namespace
} // namespace vantrel::test
