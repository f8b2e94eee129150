#pragma once

#include "models/RawHunk.h"

#include <QByteArrayView>
#include <QList>

#include <cstdint>

namespace vantrel {

/// The line numbers at which a hunk begins.
struct HunkStarts
{
    std::int64_t oldStart = 0;
    std::int64_t newStart = 0;

    bool operator==(const HunkStarts &) const = default;
};

/// The hunks in `diff`, the whole standard output of one `git diff` for one path, in order; none
/// when no line begins with "@@". The lines are slices of `diff`. One pass; thread: any.
[[nodiscard]] QList<RawHunk> parseUnifiedDiff(const TextSlice &diff);

/// The starts in a hunk's header line; a start that is missing or not a run of
/// digits that fits is 0.
[[nodiscard]] HunkStarts parseHunkHeader(QByteArrayView header);

/// The one hunk that shows an untracked file of this text as all added.
[[nodiscard]] RawHunk untrackedHunk(const TextSlice &text);

} // namespace vantrel
