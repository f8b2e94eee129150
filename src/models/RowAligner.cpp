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

/// Counts the line numbers of one side. An absurd start in a header may pass the largest number,
/// which has to be harmless.
class LineNumbers
{
public:
    explicit LineNumbers(std::int64_t start)
        : m_next(std::uint64_t(start))
    {}

    std::int64_t next() { return std::int64_t(m_next++); }

private:
    std::uint64_t m_next;
};

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
    rows.reserve(lines.size()); // Every row shows at least one line.
    LineNumbers oldNumbers(oldStart);
    LineNumbers newNumbers(newStart);
    for (qsizetype position = 0; position < lines.size();) {
        const RawDiffLine &line = lines[position];
        if (line.kind == RawLineKind::context) {
            rows.append(DiffRow{rows.size(),
                                DiffLine{oldNumbers.next(), line.text, DiffLineKind::context},
                                DiffLine{newNumbers.next(), line.text, DiffLineKind::context}});
            ++position;
            continue;
        }
        const qsizetype additions = runEnd(lines, position, RawLineKind::deletion);
        const qsizetype end = runEnd(lines, additions, RawLineKind::addition);
        const qsizetype height = std::max(additions - position, end - additions);
        for (qsizetype i = 0; i < height; ++i) {
            const qsizetype left = position + i;
            const qsizetype right = additions + i;
            rows.append(DiffRow{
                rows.size(),
                left < additions
                    ? DiffLine{oldNumbers.next(), lines[left].text, DiffLineKind::deletion}
                    : filler(),
                right < end ? DiffLine{newNumbers.next(), lines[right].text, DiffLineKind::addition}
                            : filler()});
        }
        position = end;
    }
    // Paired lines leave room unused. Giving back a little would cost more than it holds.
    if (rows.size() < lines.size() / 4 * 3) {
        rows.squeeze();
    }
    return rows;
}

} // namespace vantrel
