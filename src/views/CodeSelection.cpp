#include "views/CodeSelection.h"

#include "models/Utf8.h"

#include <algorithm>
#include <utility>

namespace vantrel {

namespace {

bool isLine(const QList<Hunk> &hunks, CodeSide side, const CodePosition &position)
{
    const DiffLine &line = lineOn(hunks.at(position.card).rows.at(position.row), side);
    return line.kind != DiffLineKind::filler;
}

const TextSlice &textAt(const QList<Hunk> &hunks, CodeSide side, const CodePosition &position)
{
    return lineOn(hunks.at(position.card).rows.at(position.row), side).text;
}

qsizetype lineEnd(const QList<Hunk> &hunks, CodeSide side, const CodePosition &position)
{
    return textAt(hunks, side, position).size();
}

/// The start of the next row in the file, of any card.
std::optional<CodePosition> rowBehind(const QList<Hunk> &hunks, CodePosition position)
{
    CodePosition next{position.card, position.row + 1, 0};
    while (next.card < hunks.size() && next.row >= hunks.at(next.card).rows.size()) {
        next = CodePosition{next.card + 1, 0, 0};
    }
    return next.card < hunks.size() ? std::optional(next) : std::nullopt;
}

std::optional<CodePosition> rowBefore(const QList<Hunk> &hunks, CodePosition position)
{
    CodePosition former{position.card, position.row - 1, 0};
    while (former.row < 0 && former.card > 0) {
        former.card -= 1;
        former.row = int(hunks.at(former.card).rows.size()) - 1;
    }
    return former.row >= 0 ? std::optional(former) : std::nullopt;
}

/// The nearest row with a line of this side, in one direction; `position` itself where none is.
template<typename Next>
CodePosition nearestLine(const QList<Hunk> &hunks, CodeSide side, CodePosition position, Next next)
{
    for (auto row = next(hunks, position); row; row = next(hunks, *row)) {
        if (isLine(hunks, side, *row)) {
            return *row;
        }
    }
    return position;
}

bool isSameRow(const CodePosition &a, const CodePosition &b)
{
    return a.card == b.card && a.row == b.row;
}

CodePosition stepLeft(const QList<Hunk> &hunks, CodeSide side, CodePosition position)
{
    if (position.offset > 0) {
        position.offset = codeOffsetBefore(textAt(hunks, side, position), position.offset);
        return position;
    }
    CodePosition former = nearestLine(hunks, side, position, rowBefore);
    if (!isSameRow(former, position)) {
        former.offset = lineEnd(hunks, side, former);
    }
    return former;
}

CodePosition stepRight(const QList<Hunk> &hunks, CodeSide side, CodePosition position)
{
    const TextSlice &text = textAt(hunks, side, position);
    if (position.offset < text.size()) {
        position.offset = codeOffsetAfter(text, position.offset);
        return position;
    }
    return nearestLine(hunks, side, position, rowBehind);
}

/// Up or down by `rows` lines of this side; by fewer at the ends of the file.
template<typename Next>
CodePosition stepRows(const QList<Hunk> &hunks, CodeSide side, CodePosition position, Next next,
                      int rows, qsizetype column)
{
    CodePosition reached = position;
    for (int i = 0; i < rows; ++i) {
        const CodePosition found = nearestLine(hunks, side, reached, next);
        if (isSameRow(found, reached)) {
            break;
        }
        reached = found;
    }
    reached.offset = codeOffsetAt(textAt(hunks, side, reached), qreal(column));
    return reached;
}

CodeSpan unitAt(const QList<Hunk> &hunks, CodeSide side, const CodePosition &position,
                SelectionUnit unit)
{
    const TextSlice &text = textAt(hunks, side, position);
    switch (unit) {
    case SelectionUnit::character:
        return {position.offset, position.offset};
    case SelectionUnit::word:
        return codeWordAt(text, position.offset);
    case SelectionUnit::line:
        return {0, text.size()};
    }
    Q_UNREACHABLE();
}

} // namespace

void CodeSelection::clear()
{
    m_end = m_start;
    m_anchor = m_start;
    m_focus = m_start;
    m_column.reset();
}

void CodeSelection::begin(const QList<Hunk> &hunks, CodeSide side, CodePosition position,
                          SelectionUnit unit)
{
    m_side = side;
    m_unit = unit;
    m_anchor = position;
    extendTo(hunks, position);
}

void CodeSelection::extendTo(const QList<Hunk> &hunks, CodePosition position)
{
    assign(hunks, m_anchor, position);
    m_focus = position;
    m_column.reset();
}

void CodeSelection::move(const QList<Hunk> &hunks, SelectionStep step, CodePosition origin,
                         int pageRows)
{
    if (isEmpty()) {
        m_anchor = origin;
        m_focus = origin;
        m_column.reset();
    } else if (m_unit != SelectionUnit::character) {
        // Steps go on from the edges of the words or lines that were selected.
        const bool isForward = m_focus >= m_anchor;
        m_anchor = isForward ? m_start : m_end;
        m_focus = isForward ? m_end : m_start;
    }
    m_unit = SelectionUnit::character;
    const qsizetype column =
        m_column ? *m_column : codeColumnAt(textAt(hunks, m_side, m_focus), m_focus.offset);
    CodePosition focus = m_focus;
    m_column.reset();
    switch (step) {
    case SelectionStep::left:
        focus = stepLeft(hunks, m_side, focus);
        break;
    case SelectionStep::right:
        focus = stepRight(hunks, m_side, focus);
        break;
    case SelectionStep::lineStart:
        focus.offset = 0;
        break;
    case SelectionStep::lineEnd:
        focus.offset = lineEnd(hunks, m_side, focus);
        break;
    case SelectionStep::up:
    case SelectionStep::pageUp:
        focus = stepRows(hunks, m_side, focus, rowBefore, step == SelectionStep::up ? 1 : pageRows,
                         column);
        m_column = column;
        break;
    case SelectionStep::down:
    case SelectionStep::pageDown:
        focus = stepRows(hunks, m_side, focus, rowBehind,
                         step == SelectionStep::down ? 1 : pageRows, column);
        m_column = column;
        break;
    }
    assign(hunks, m_anchor, focus);
    m_focus = focus;
}

void CodeSelection::selectCard(const QList<Hunk> &hunks, int card)
{
    const int last = int(hunks.at(card).rows.size()) - 1;
    if (last < 0) {
        return;
    }
    m_unit = SelectionUnit::character;
    m_anchor = CodePosition{card, 0, 0};
    CodePosition end{card, last, 0};
    end.offset = lineEnd(hunks, m_side, end);
    extendTo(hunks, end);
}

std::optional<CodeSpan> CodeSelection::spanIn(const QList<Hunk> &hunks, int card, int row) const
{
    const CodePosition lineStart{card, row, 0};
    if (isEmpty() || (lineStart < m_start && !isSameRow(lineStart, m_start)) || lineStart > m_end) {
        return std::nullopt;
    }
    CodeSpan span;
    span.start = isSameRow(lineStart, m_start) ? m_start.offset : 0;
    span.end = isSameRow(lineStart, m_end) ? m_end.offset : lineEnd(hunks, m_side, lineStart);
    return span;
}

bool CodeSelection::goesOnBehind(int card, int row) const
{
    const CodePosition lineStart{card, row, 0};
    return !isEmpty() && lineStart < m_end && !isSameRow(lineStart, m_end) &&
           (lineStart >= m_start || isSameRow(lineStart, m_start));
}

void CodeSelection::assign(const QList<Hunk> &hunks, CodePosition first, CodePosition second)
{
    if (second < first) {
        std::swap(first, second);
    }
    m_start = first;
    m_start.offset = unitAt(hunks, m_side, first, m_unit).start;
    m_end = second;
    m_end.offset = unitAt(hunks, m_side, second, m_unit).end;
}

QString selectedText(const QList<Hunk> &hunks, const CodeSelection &selection,
                     const std::function<bool()> &isAbandoned)
{
    QString text;
    if (selection.isEmpty()) {
        return text;
    }
    bool hasLines = false;
    std::optional<CodePosition> row = selection.start();
    while (row && *row <= selection.end() && !(isAbandoned && isAbandoned())) {
        const auto span = selection.spanIn(hunks, row->card, row->row);
        if (span && isLine(hunks, selection.side(), *row)) {
            if (std::exchange(hasLines, true)) {
                text += u'\n';
            }
            const TextSlice &line = textAt(hunks, selection.side(), *row);
            text += textFromUtf8(line.utf8().sliced(span->start, span->end - span->start));
        }
        row = rowBehind(hunks, *row);
    }
    return text;
}

} // namespace vantrel
