#include "Snapshot.h"

#include <algorithm>
#include <cmath>

namespace vantrel::test {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int channels = 3;

/// How many neighbouring blocks are compared together, and by how much their mean may differ.
constexpr int stripLength = 4;
constexpr int tolerance = 4;

int level(const QImage &image, int x, int y, int channel)
{
    return image.constScanLine(y)[x * channels + channel];
}

/// The mean of one channel over a part of the picture, rounded.
int meanLevel(const QImage &picture, const QRect &part, int channel)
{
    int sum = 0;
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            sum += level(picture, x, y, channel);
        }
    }
    const int count = part.width() * part.height();
    return (sum + count / 2) / count;
}

/// The greatest difference of the means of the strip that begins here, over the channels.
double differenceAlong(const QImage &kept, const QImage &actual, QPoint start, QPoint step)
{
    double greatest = 0;
    for (int channel = 0; channel < channels; ++channel) {
        int sum = 0;
        for (int i = 0; i < stripLength; ++i) {
            const QPoint place = start + step * i;
            sum += level(actual, place.x(), place.y(), channel) -
                   level(kept, place.x(), place.y(), channel);
        }
        greatest = std::max(greatest, std::abs(double(sum)) / stripLength);
    }
    return greatest;
}

/// What was found so far.
struct Findings
{
    QImage marks{};
    QRect place{};
    double greatest = 0;

    void add(QPoint start, QPoint step, double difference)
    {
        greatest = std::max(greatest, difference);
        for (int i = 0; i < stripLength; ++i) {
            const QPoint block = start + step * i;
            marks.setPixelColor(block, Qt::red);
            place |= QRect(block, QSize(1, 1));
        }
    }
};

} // namespace

QImage snapshotOf(const QImage &picture)
{
    const QImage pixels = picture.convertToFormat(QImage::Format_RGB888);
    QImage snapshot((pixels.width() + snapshotBlock - 1) / snapshotBlock,
                    (pixels.height() + snapshotBlock - 1) / snapshotBlock, QImage::Format_RGB888);
    for (int y = 0; y < snapshot.height(); ++y) {
        uchar *const line = snapshot.scanLine(y);
        for (int x = 0; x < snapshot.width(); ++x) {
            const QRect block =
                QRect(x * snapshotBlock, y * snapshotBlock, snapshotBlock, snapshotBlock) &
                pixels.rect();
            for (int channel = 0; channel < channels; ++channel) {
                line[x * channels + channel] = uchar(meanLevel(pixels, block, channel));
            }
        }
    }
    return snapshot;
}

std::optional<SnapshotDifference> compareSnapshots(const QImage &kept, const QImage &actual)
{
    Findings findings;
    findings.marks = QImage(actual.size(), QImage::Format_ARGB32);
    findings.marks.fill(Qt::transparent);
    if (kept.size() != actual.size()) {
        return SnapshotDifference{
            u"is %1 × %2 blocks large, the kept one %3 × %4"_s.arg(actual.width())
                .arg(actual.height())
                .arg(kept.width())
                .arg(kept.height()),
            findings.marks};
    }
    const QImage before = kept.convertToFormat(QImage::Format_RGB888);
    const QImage after = actual.convertToFormat(QImage::Format_RGB888);
    for (const QPoint step : {QPoint(1, 0), QPoint(0, 1)}) {
        const QSize room = after.size() - QSize(step.x(), step.y()) * (stripLength - 1);
        for (int y = 0; y < room.height(); ++y) {
            for (int x = 0; x < room.width(); ++x) {
                const double difference = differenceAlong(before, after, {x, y}, step);
                if (difference > tolerance) {
                    findings.add({x, y}, step, difference);
                }
            }
        }
    }
    if (findings.place.isNull()) {
        return std::nullopt;
    }
    const QRect &place = findings.place;
    return SnapshotDifference{
        u"differs by up to %1 levels of 255 within %2 × %3 pixels at (%4, %5)"_s
            .arg(std::ceil(findings.greatest))
            .arg(place.width() * snapshotBlock)
            .arg(place.height() * snapshotBlock)
            .arg(place.x() * snapshotBlock)
            .arg(place.y() * snapshotBlock),
        findings.marks};
}

} // namespace vantrel::test
