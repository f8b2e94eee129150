#include "models/DisplayedHunks.h"

#include "models/RowAligner.h"

#include <utility>

namespace vantrel {

QList<Hunk> displayedHunks(const QList<RawHunk> &rawHunks)
{
    QList<Hunk> hunks;
    hunks.reserve(rawHunks.size());
    for (const RawHunk &raw : rawHunks) {
        Hunk hunk;
        hunk.index = hunks.size();
        hunk.header = raw.header;
        hunk.rows = alignRows(raw.oldStart, raw.newStart, raw.lines);
        hunks.append(std::move(hunk));
    }
    return hunks;
}

} // namespace vantrel
