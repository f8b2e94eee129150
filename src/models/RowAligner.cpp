// The lines of a hunk, as git prints them, are runs of context, deletions and additions. A changed
// block is a run of deletions and the additions that follow it; inside it the n-th deletion stands
// beside the n-th addition, whatever their texts, and fillers pad the shorter side at the bottom.
//
//   context a        10 a | 10 a
//   deletion b       11 b | 11 B
//   deletion c  ->   12 c |
//   addition B       13 d | 12 d
//   context d
//
// One pass; a line number is used up only by a real line.

#include "models/RowAligner.h"

#include <algorithm>

namespace vantrel {

namespace {

DiffLine cell(std::int64_t number, const TextSlice &text, DiffLineKind kind)
{
    return DiffLine{number, text, kind};
}

DiffLine filler()
{
    return DiffLine{std::nullopt, TextSlice(), DiffLineKind::filler};
}

/// The end of the run of lines of `kind` that begins at `position`.
qsizetype runEnd(const QList<RawDiffLine> &lines, qsizetype position, RawLineKind kind)
{
    while (position < lines.size() && lines[position].kind == kind) {
        ++position;
    }
    return position;
}

} // namespace

QList<DiffRow> alignRows(std::int64_t oldStart, std::int64_t newStart,
                         const QList<RawDiffLine> &lines)
{
    QList<DiffRow> rows;
    std::int64_t oldNumber = oldStart;
    std::int64_t newNumber = newStart;
    for (qsizetype position = 0; position < lines.size();) {
        const RawDiffLine &line = lines[position];
        if (line.kind == RawLineKind::context) {
            rows.append(DiffRow{rows.size(), cell(oldNumber++, line.text, DiffLineKind::context),
                                cell(newNumber++, line.text, DiffLineKind::context)});
            ++position;
            continue;
        }
        const qsizetype deletions = position;
        const qsizetype additions = runEnd(lines, deletions, RawLineKind::deletion);
        const qsizetype end = runEnd(lines, additions, RawLineKind::addition);
        const qsizetype height = std::max(additions - deletions, end - additions);
        for (qsizetype i = 0; i < height; ++i) {
            DiffRow row{rows.size(), filler(), filler()};
            if (deletions + i < additions) {
                row.left = cell(oldNumber++, lines[deletions + i].text, DiffLineKind::deletion);
            }
            if (additions + i < end) {
                row.right = cell(newNumber++, lines[additions + i].text, DiffLineKind::addition);
            }
            rows.append(row);
        }
        position = end;
    }
    rows.squeeze();
    return rows;
}

} // namespace vantrel
