// That the comparison lets pass what it should and nothing else, on a drawn sample of a screen.

#include "Snapshot.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QColor>
#include <QPainter>

#include <algorithm>
#include <random>

namespace vantrel::test {
namespace {

using namespace Qt::Literals::StringLiterals;

/// What a sample is drawn with; each test changes one of these.
struct Sample
{
    QRect button{121, 70, 90, 32};
    QColor fill{0x2C, 0x5A, 0x88};
    QColor ink{0x2A, 0x27, 0x23};
    QColor ground{0xFA, 0xF8, 0xF3};
    QPoint words{20, 30};
    bool hasLine = true;
};

QImage draw(const Sample &sample)
{
    QImage image(330, 130, QImage::Format_RGB32);
    image.fill(sample.ground);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setFont(QFont(u"Noto Sans"_s, 10));
    painter.setPen(sample.ink);
    painter.drawText(sample.words, u"Refreshes expired access tokens once."_s);
    if (sample.hasLine) {
        painter.fillRect(20, 50, 290, 1, QColor(0xE3, 0xDC, 0xCF));
    }
    painter.setBrush(sample.fill);
    painter.setPen(Qt::NoPen);
    painter.drawRoundedRect(sample.button, 6, 6);
    painter.setPen(Qt::white);
    painter.drawText(sample.button, Qt::AlignCenter, u"Send"_s);
    return image;
}

/// How it differs from the sample as it is; an empty sentence when it does not.
SnapshotDifference difference(const QImage &actual)
{
    return compareSnapshots(snapshotOf(draw({})), snapshotOf(actual))
        .value_or(SnapshotDifference());
}

bool differs(const QImage &actual)
{
    return !difference(actual).sentence.isEmpty();
}

/// Whether all pixels about this one have its colour.
bool isFlat(const QImage &image, int x, int y)
{
    const QRect about = QRect(x - 1, y - 1, 3, 3) & image.rect();
    for (int i = about.left(); i <= about.right(); ++i) {
        for (int j = about.top(); j <= about.bottom(); ++j) {
            if (image.pixel(i, j) != image.pixel(x, y)) {
                return false;
            }
        }
    }
    return true;
}

/// Every edge drawn a little otherwise, as another version of the font library would.
QImage withOtherEdges(const QImage &image, int levels)
{
    QImage result = image;
    std::mt19937 random(1);
    std::uniform_int_distribution<int> change(-levels, levels);
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (!isFlat(image, x, y)) {
                const int by = change(random);
                const QColor colour = image.pixelColor(x, y);
                result.setPixelColor(x, y,
                                     QColor(std::clamp(colour.red() + by, 0, 255),
                                            std::clamp(colour.green() + by, 0, 255),
                                            std::clamp(colour.blue() + by, 0, 255)));
            }
        }
    }
    return result;
}

TEST(Snapshot, IsASixteenthOfThePicture)
{
    const QImage picture = draw({});

    EXPECT_EQ(snapshotOf(picture).size(), QSize(83, 33));
}

TEST(Snapshot, SurvivesBeingStored)
{
    const QImage snapshot = snapshotOf(draw({}));
    QByteArray bytes;
    QBuffer buffer(&bytes);

    ASSERT_TRUE(snapshot.save(&buffer, "png"));

    EXPECT_EQ(QImage::fromData(bytes).convertToFormat(QImage::Format_RGB888), snapshot);
}

TEST(CompareSnapshots, TheSamePictureIsTheSame)
{
    EXPECT_FALSE(differs(draw({})));
}

TEST(CompareSnapshots, OtherEdgesOfLettersAreTheSame)
{
    const QImage other = withOtherEdges(draw({}), 16);

    EXPECT_NE(other, draw({}));
    EXPECT_FALSE(differs(other));
}

TEST(CompareSnapshots, AButtonThatMovedByOnePixelDiffers)
{
    Sample sample;
    sample.button.translate(1, 0);

    const SnapshotDifference found = difference(draw(sample));

    EXPECT_TRUE(found.sentence.startsWith(u"differs by up to "_s)) << qPrintable(found.sentence);
}

TEST(CompareSnapshots, AButtonThatIsNotThereDiffersWhereItWas)
{
    // Its blocks, and the three on each side that were compared together with one of them.
    Sample sample;
    sample.button = {};

    const SnapshotDifference found = difference(draw(sample));

    EXPECT_TRUE(found.sentence.endsWith(u"within 116 × 60 pixels at (108, 56)"_s))
        << qPrintable(found.sentence);
    EXPECT_EQ(found.marks.pixelColor(160 / snapshotBlock, 84 / snapshotBlock), QColor(Qt::red));
    EXPECT_EQ(found.marks.pixelColor(0, 0).alpha(), 0);
}

TEST(CompareSnapshots, AHairlineThatIsNotThereDiffers)
{
    Sample sample;
    sample.hasLine = false;

    EXPECT_TRUE(differs(draw(sample)));
}

TEST(CompareSnapshots, WordsThatMovedByOnePixelDiffer)
{
    Sample sample;
    sample.words += QPoint(0, 1);

    EXPECT_TRUE(differs(draw(sample)));
}

TEST(CompareSnapshots, AGroundOfAnotherShadeDiffers)
{
    Sample sample;
    sample.ground = QColor(0xF4, 0xF0, 0xE8);

    EXPECT_TRUE(differs(draw(sample)));
}

TEST(CompareSnapshots, WordsOfAnotherInkDiffer)
{
    Sample sample;
    sample.ink = QColor(0x5C, 0x56, 0x4C);

    EXPECT_TRUE(differs(draw(sample)));
}

TEST(CompareSnapshots, AButtonOfAnotherBlueDiffers)
{
    Sample sample;
    sample.fill = QColor(0x24, 0x4C, 0x75);

    EXPECT_TRUE(differs(draw(sample)));
}

TEST(CompareSnapshots, AnotherSizeDiffers)
{
    const SnapshotDifference found = difference(draw({}).copy(0, 0, 320, 130));

    EXPECT_EQ(found.sentence, u"is 80 × 33 blocks large, the kept one 83 × 33"_s);
}

} // namespace
} // namespace vantrel::test
