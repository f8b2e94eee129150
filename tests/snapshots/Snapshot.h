#pragma once

#include <QImage>
#include <QRect>
#include <QString>

#include <optional>

namespace vantrel::test {

// A snapshot is a window's picture made small enough to be kept: each of its pixels is the mean of
// a block of the window's. What a person would see as another picture still moves some mean, by
// more than the renderings of a letter's edge differ between versions of the font library. It also
// says where, which a checksum of the whole could not.

/// The side of a block, in pixels of the window.
constexpr int snapshotBlock = 4;

/// The snapshot of a picture. Blocks at the right and lower edges may be smaller.
[[nodiscard]] QImage snapshotOf(const QImage &picture);

/// How a snapshot differs from the kept one.
struct SnapshotDifference
{
    QString sentence{}; ///< What differs, and where in the window.
    QImage marks{};     ///< As large as the snapshot, with the blocks that differ in red.
};

/// Compares two snapshots. They are the same when, over every four blocks in a row or a column,
/// their mean levels lie within four of 255 in each colour: a line of one pixel that is not there
/// stands out by more even where its colour is near the ground's.
[[nodiscard]] std::optional<SnapshotDifference> compareSnapshots(const QImage &kept,
                                                                 const QImage &actual);

} // namespace vantrel::test
