#include "models/DiffParser.h"

#include <QByteArray>

#include <charconv>
#include <cstring>
#include <iterator>
#include <utility>

namespace vantrel {

namespace {

constexpr char marker[] = "@@";
constexpr qsizetype markerLength = 2;

/// The end of the line that begins at `position`: its line feed, or the end of the text.
qsizetype lineEnd(QByteArrayView text, qsizetype position)
{
    if (position == text.size()) {
        return position;
    }
    const void *const found =
        std::memchr(text.data() + position, '\n', size_t(text.size() - position));
    return found == nullptr ? text.size() : static_cast<const char *>(found) - text.data();
}

/// The integer before the first comma of `range`, which has lost its sign; 0 when there is none. A
/// second sign is no part of a line number.
std::int64_t startOf(QByteArrayView range)
{
    while (range.startsWith(',')) {
        range = range.sliced(1);
    }
    const qsizetype comma = range.indexOf(',');
    const QByteArrayView digits = comma < 0 ? range : range.first(comma);
    std::int64_t start = 0;
    const auto [end, error] = std::from_chars(digits.begin(), digits.end(), start);
    const bool isNumber = error == std::errc() && end == digits.end() && !digits.startsWith('-');
    return isNumber ? start : 0;
}

/// From so many lines on a hunk is long: its lines are not copied where that can be avoided.
constexpr qsizetype longHunk = 4096;

/// Makes room for another line. A long hunk gets room for as many as `left` bytes hold if they are
/// like the `read` bytes of it before, so that its list is filled to near its end and can be kept.
void makeRoom(QList<RawDiffLine> &lines, qsizetype read, qsizetype left)
{
    if (lines.size() < longHunk || lines.size() < lines.capacity()) {
        return;
    }
    const double expected = double(lines.size()) * (1 + double(left) / double(read));
    // By half at least: texts whose lines get ever shorter are read in linear time, too.
    lines.reserve(qMax(qsizetype(expected * 1.02), lines.size() + lines.size() / 2));
}

/// A list of the lines, which are moved out. A listing holds its lines for long, so they keep
/// little room to grow; `lines` is empty again and keeps its room where it can, for the next hunk.
QList<RawDiffLine> takeLines(QList<RawDiffLine> &lines)
{
    if (lines.size() >= longHunk && lines.capacity() - lines.size() <= lines.size() / 16) {
        return std::exchange(lines, {});
    }
    QList<RawDiffLine> taken(std::make_move_iterator(lines.begin()),
                             std::make_move_iterator(lines.end()));
    lines.clear();
    return taken;
}

} // namespace

QList<RawHunk> parseUnifiedDiff(const TextSlice &diff)
{
    const QByteArrayView text = diff.utf8();
    TextSliceCutter cutter(diff);
    QList<RawHunk> hunks;
    QList<RawDiffLine> lines; // Of the last hunk.
    qsizetype bodyStart = 0;  // Of the last hunk.
    for (qsizetype position = 0; position < text.size();) {
        const qsizetype end = lineEnd(text, position);
        const char first = text[position];
        if (first == '@' && end - position >= markerLength && text[position + 1] == '@') {
            if (!hunks.isEmpty()) {
                hunks.last().lines = takeLines(lines);
            }
            const HunkStarts starts = parseHunkHeader(text.sliced(position, end - position));
            hunks.append(RawHunk{
                cutter.cut(position, end - position), starts.oldStart, starts.newStart, {}});
            bodyStart = end;
        } else if (!hunks.isEmpty() && (first == '+' || first == '-' || first == ' ')) {
            const RawLineKind kind = first == '+'   ? RawLineKind::addition
                                     : first == '-' ? RawLineKind::deletion
                                                    : RawLineKind::context;
            makeRoom(lines, position - bodyStart, text.size() - position);
            lines.append(RawDiffLine{kind, cutter.cut(position + 1, end - position - 1)});
        }
        position = end + 1;
    }
    if (!hunks.isEmpty()) {
        hunks.last().lines = takeLines(lines);
    }
    hunks.squeeze();
    return hunks;
}

HunkStarts parseHunkHeader(QByteArrayView header)
{
    HunkStarts starts;
    const qsizetype opening = header.indexOf(marker);
    if (opening < 0) {
        return starts;
    }
    const qsizetype rangesBegin = opening + markerLength;
    const qsizetype closing = header.indexOf(marker, rangesBegin);
    if (closing < 0) {
        return starts;
    }
    QByteArrayView rest = header.sliced(rangesBegin, closing - rangesBegin);
    while (!rest.isEmpty()) {
        const qsizetype space = rest.indexOf(' ');
        const QByteArrayView piece = space < 0 ? rest : rest.first(space);
        rest = space < 0 ? QByteArrayView() : rest.sliced(space + 1);
        if (piece.startsWith('-')) {
            starts.oldStart = startOf(piece.sliced(1));
        } else if (piece.startsWith('+')) {
            starts.newStart = startOf(piece.sliced(1));
        }
    }
    return starts;
}

RawHunk untrackedHunk(const TextSlice &text)
{
    const QByteArrayView bytes = text.utf8();
    RawHunk hunk;
    hunk.newStart = 1;
    TextSliceCutter cutter(text);
    for (qsizetype position = 0; position <= bytes.size();) {
        const qsizetype end = lineEnd(bytes, position);
        hunk.lines.append(RawDiffLine{RawLineKind::addition, cutter.cut(position, end - position)});
        position = end + 1;
    }
    hunk.lines.squeeze();
    hunk.header =
        TextSlice::fromUtf8("@@ -0,0 +1," + QByteArray::number(hunk.lines.size()) + " @@");
    return hunk;
}

} // namespace vantrel
