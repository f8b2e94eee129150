#pragma once

#include "Walk.h"

namespace vantrel::test {

/// A stretch of more than 100 ms in which the interface thread took no event, less the time in
/// which it waited for a processor: what it computed or waited for itself.
[[nodiscard]] bool isHang(const Stretch &stretch);

/// In one line, with the stack below it.
[[nodiscard]] QString describe(const Stretch &stretch);

/// Whether a line on standard error is one of those that a build without updates and a provider
/// that misbehaves lead to.
[[nodiscard]] bool isExpectedMessage(const QString &line);

/// What grew from quiet point to quiet point. The first third is not judged: there, libraries,
/// fonts and the stores are still met for the first time.
///
/// Threads: at most four more than then, as Qt's pools for work and for lookups of names come and
/// go. Descriptors: no kind of them may ever be more than it was then, but for the one that each
/// thread with an event loop has.
///
/// Memory is judged by what is allocated, since the pages that hold it are returned to the system
/// by chance, less what the kept conversations take: the last fifty are held, each with the text of
/// its hunk, and a hunk may be many megabytes. It may lie higher or lower by what was shown last,
/// so not single points are compared: the median of the slopes between all pairs of points must not
/// lead to 8 MB over all of them.
[[nodiscard]] QStringList findingsOf(const QList<QuietPoint> &points);

} // namespace vantrel::test
