#pragma once

#include "models/TextSlice.h"

#include <QList>
#include <QString>

namespace vantrel {

/// A line of code as it is drawn, in columns of one width: tabs reach to the next multiple of four
/// columns, and characters that are invisible or that would reorder the text (controls,
/// bidirectional marks, zero-width ones) stand there as visible marks. East Asian characters and
/// pictures take two columns, combining marks none. Nothing is measured here, so that where a
/// character stands does not depend on fonts. Offsets count the bytes of the line's UTF-8 and lie
/// between characters that stand on their own, never before a combining mark.

/// The number of columns that the whole line takes.
[[nodiscard]] qsizetype codeColumns(const TextSlice &line);

/// A part of a drawn line that is laid out as one.
struct CodeRun
{
    qsizetype column = 0; ///< Where it begins.
    qsizetype endColumn = 0;
    QString text{};

    bool operator==(const CodeRun &) const = default;
};

/// What is drawn of a line from `firstColumn`, `count` columns at most. Characters that fonts may
/// draw wider or narrower than their columns have runs of their own, so that what follows them
/// stands where it belongs. Costs the bytes before its end, never the rest of a long line.
[[nodiscard]] QList<CodeRun> codeRuns(const TextSlice &line, qsizetype firstColumn,
                                      qsizetype count);

/// The text of these runs.
[[nodiscard]] QString visibleCode(const TextSlice &line, qsizetype firstColumn, qsizetype count);

/// The column where the character at `offset` begins, or the line ends.
[[nodiscard]] qsizetype codeColumnAt(const TextSlice &line, qsizetype offset);

/// The offset that is nearest to a place within or behind the drawn line.
[[nodiscard]] qsizetype codeOffsetAt(const TextSlice &line, qreal column);

/// The next offset behind and before `offset`, within the line.
[[nodiscard]] qsizetype codeOffsetAfter(const TextSlice &line, qsizetype offset);
[[nodiscard]] qsizetype codeOffsetBefore(const TextSlice &line, qsizetype offset);

/// From one offset of a line to another.
struct CodeSpan
{
    qsizetype start = 0;
    qsizetype end = 0;

    bool operator==(const CodeSpan &) const = default;
};

/// The word, blanks or sign behind `offset`; at the line's end those before it.
[[nodiscard]] CodeSpan codeWordAt(const TextSlice &line, qsizetype offset);

} // namespace vantrel
