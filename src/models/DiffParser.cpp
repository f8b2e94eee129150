#include "models/DiffParser.h"

#include <QByteArray>

#include <charconv>
#include <cstring>
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

/// Moves the finished hunk into the list. A listing holds its lines for long, so they keep no room
/// to grow.
void close(QList<RawHunk> &hunks, RawHunk &hunk)
{
    hunk.lines.squeeze();
    hunks.append(std::exchange(hunk, {}));
}

} // namespace

QList<RawHunk> parseUnifiedDiff(const TextSlice &diff)
{
    const QByteArrayView text = diff.utf8();
    QList<RawHunk> hunks;
    RawHunk hunk;
    bool isOpen = false;
    for (qsizetype position = 0; position < text.size();) {
        const qsizetype end = lineEnd(text, position);
        const char first = text[position];
        if (first == '@' && end - position >= markerLength && text[position + 1] == '@') {
            if (isOpen) {
                close(hunks, hunk);
            }
            isOpen = true;
            hunk.header = diff.slice(position, end - position);
            const HunkStarts starts = parseHunkHeader(hunk.header.utf8());
            hunk.oldStart = starts.oldStart;
            hunk.newStart = starts.newStart;
        } else if (isOpen && (first == '+' || first == '-' || first == ' ')) {
            const RawLineKind kind = first == '+'   ? RawLineKind::addition
                                     : first == '-' ? RawLineKind::deletion
                                                    : RawLineKind::context;
            hunk.lines.append(RawDiffLine{kind, diff.slice(position + 1, end - position - 1)});
        }
        position = end + 1;
    }
    if (isOpen) {
        close(hunks, hunk);
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
    for (qsizetype position = 0; position <= bytes.size();) {
        const qsizetype end = lineEnd(bytes, position);
        hunk.lines.append(RawDiffLine{RawLineKind::addition, text.slice(position, end - position)});
        position = end + 1;
    }
    hunk.lines.squeeze();
    hunk.header =
        TextSlice::fromUtf8("@@ -0,0 +1," + QByteArray::number(hunk.lines.size()) + " @@");
    return hunk;
}

} // namespace vantrel
