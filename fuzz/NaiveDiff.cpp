#include "NaiveDiff.h"

#include <algorithm>

namespace vantrel::fuzz {

namespace {

QByteArrayList piecesOf(const QByteArray &text, char separator)
{
    QByteArrayList pieces = text.split(separator);
    pieces.removeAll(QByteArray());
    return pieces;
}

std::int64_t naiveNumber(const QByteArray &range)
{
    const QByteArray digits = piecesOf(range, ',').value(0, "0");
    const bool isDecimal = std::all_of(digits.cbegin(), digits.cend(), [](char character) {
        return character >= '0' && character <= '9';
    });
    return isDecimal ? digits.toLongLong() : 0; // 0 when it does not fit.
}

/// The next number of a side, wrapping at the largest one.
std::int64_t following(std::int64_t number)
{
    return std::int64_t(std::uint64_t(number) + 1);
}

DiffLine filler()
{
    return DiffLine{std::nullopt, TextSlice(), DiffLineKind::filler};
}

} // namespace

QList<RawHunk> naiveParseUnifiedDiff(const QByteArray &text)
{
    QList<RawHunk> hunks;
    for (const QByteArray &line : text.split('\n')) {
        const TextSlice rest = TextSlice::fromUtf8(line.mid(1));
        if (line.startsWith("@@")) {
            const HunkStarts starts = naiveParseHunkHeader(line);
            hunks.append(RawHunk{TextSlice::fromUtf8(line), starts.oldStart, starts.newStart, {}});
        } else if (hunks.isEmpty()) {
            continue;
        } else if (line.startsWith('+')) {
            hunks.last().lines.append(RawDiffLine{RawLineKind::addition, rest});
        } else if (line.startsWith('-')) {
            hunks.last().lines.append(RawDiffLine{RawLineKind::deletion, rest});
        } else if (line.startsWith(' ')) {
            hunks.last().lines.append(RawDiffLine{RawLineKind::context, rest});
        }
    }
    return hunks;
}

HunkStarts naiveParseHunkHeader(const QByteArray &header)
{
    HunkStarts starts;
    const qsizetype first = header.indexOf("@@");
    const qsizetype second = first < 0 ? -1 : header.indexOf("@@", first + 2);
    if (second < 0) {
        return starts;
    }
    for (const QByteArray &piece : piecesOf(header.mid(first + 2, second - first - 2), ' ')) {
        if (piece.startsWith('-')) {
            starts.oldStart = naiveNumber(piece.mid(1));
        }
        if (piece.startsWith('+')) {
            starts.newStart = naiveNumber(piece.mid(1));
        }
    }
    return starts;
}

RawHunk naiveUntrackedHunk(const QByteArray &text)
{
    RawHunk hunk;
    hunk.newStart = 1;
    for (const QByteArray &line : text.split('\n')) {
        hunk.lines.append(RawDiffLine{RawLineKind::addition, TextSlice::fromUtf8(line)});
    }
    hunk.header = TextSlice::fromString(QStringLiteral("@@ -0,0 +1,%1 @@").arg(hunk.lines.size()));
    return hunk;
}

QList<DiffRow> naiveAlignRows(const RawHunk &hunk)
{
    QList<DiffRow> rows;
    QList<RawDiffLine> rest = hunk.lines;
    std::int64_t oldNumber = hunk.oldStart;
    std::int64_t newNumber = hunk.newStart;
    const auto append = [&](const RawDiffLine *left, const RawDiffLine *right, bool isContext) {
        DiffRow row{rows.size(), filler(), filler()};
        if (left != nullptr) {
            row.left = DiffLine{oldNumber, left->text,
                                isContext ? DiffLineKind::context : DiffLineKind::deletion};
            oldNumber = following(oldNumber);
        }
        if (right != nullptr) {
            row.right = DiffLine{newNumber, right->text,
                                 isContext ? DiffLineKind::context : DiffLineKind::addition};
            newNumber = following(newNumber);
        }
        rows.append(row);
    };
    const auto takeAll = [&](RawLineKind kind) {
        QList<RawDiffLine> taken;
        while (!rest.isEmpty() && rest.first().kind == kind) {
            taken.append(rest.takeFirst());
        }
        return taken;
    };
    while (!rest.isEmpty()) {
        for (const RawDiffLine &line : takeAll(RawLineKind::context)) {
            append(&line, &line, true);
        }
        const QList<RawDiffLine> deletions = takeAll(RawLineKind::deletion);
        const QList<RawDiffLine> additions = takeAll(RawLineKind::addition);
        for (qsizetype i = 0; i < std::max(deletions.size(), additions.size()); ++i) {
            append(i < deletions.size() ? &deletions[i] : nullptr,
                   i < additions.size() ? &additions[i] : nullptr, false);
        }
    }
    return rows;
}

QString naiveFileDiffText(const QList<RawHunk> &hunks)
{
    QByteArrayList lines;
    for (const RawHunk &hunk : hunks) {
        for (const RawDiffLine &line : hunk.lines) {
            const char *const prefix = line.kind == RawLineKind::addition   ? "+"
                                       : line.kind == RawLineKind::deletion ? "-"
                                                                            : " ";
            lines.append(prefix + line.text.utf8().toByteArray());
        }
    }
    return QString::fromUtf8(lines.join('\n'));
}

} // namespace vantrel::fuzz
