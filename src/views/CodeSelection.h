#pragma once

#include "models/Hunk.h"
#include "views/CodeText.h"

#include <QList>
#include <QString>

#include <compare>
#include <functional>
#include <optional>

namespace vantrel {

/// The side of a file: how it was, left, or how it is now, right.
enum class CodeSide { before, after };

/// The line of a row on one side.
[[nodiscard]] inline const DiffLine &lineOn(const DiffRow &row, CodeSide side)
{
    return side == CodeSide::before ? row.left : row.right;
}

/// A place between two characters of a file's rows.
struct CodePosition
{
    int card = 0;
    int row = 0;
    qsizetype offset = 0; ///< In the line, as `CodeText.h` counts.

    auto operator<=>(const CodePosition &) const = default;
};

/// What a selection begins with and grows by.
enum class SelectionUnit { character, word, line };

/// A step of the selection's moving end.
enum class SelectionStep { left, right, up, down, lineStart, lineEnd, pageUp, pageDown };

/// The text that is selected on one side of a file: a range from one place to another, so that it
/// costs the same in files of any length. The hunks are those of the file at every call; when they
/// are replaced, the selection is to be cleared. Thread: interface.
class CodeSelection
{
public:
    [[nodiscard]] bool isEmpty() const { return m_start == m_end; }
    [[nodiscard]] CodeSide side() const { return m_side; } ///< The one that was used last.
    [[nodiscard]] CodePosition start() const { return m_start; }
    [[nodiscard]] CodePosition end() const { return m_end; }
    /// The end that moves, for scrolling it into view.
    [[nodiscard]] CodePosition focus() const { return m_focus; }

    void clear();

    /// Begins with the unit at `position`: nothing, a word, or a line.
    void begin(const QList<Hunk> &hunks, CodeSide side, CodePosition position, SelectionUnit unit);

    /// Reaches from what it began with to the unit at `position`.
    void extendTo(const QList<Hunk> &hunks, CodePosition position);

    /// Moves the end; without a selection, from `origin`. A page has `pageRows` rows.
    void move(const QList<Hunk> &hunks, SelectionStep step, CodePosition origin, int pageRows);

    void selectCard(const QList<Hunk> &hunks, int card);

    /// What is selected of a row's line, if the row lies within the selection.
    [[nodiscard]] std::optional<CodeSpan> spanIn(const QList<Hunk> &hunks, int card, int row) const;

    /// Whether the selection goes on behind this row.
    [[nodiscard]] bool goesOnBehind(int card, int row) const;

private:
    void assign(const QList<Hunk> &hunks, CodePosition first, CodePosition second);

    CodeSide m_side = CodeSide::after;
    SelectionUnit m_unit = SelectionUnit::character;
    CodePosition m_start{};
    CodePosition m_end{};
    CodePosition m_anchor{};
    CodePosition m_focus{};
    std::optional<qsizetype> m_column{}; ///< Where steps up and down want to be.
};

/// The selected characters as they stand in the file, lines joined by a line feed; rows that have
/// no line on that side give nothing. Asks at every row whether to give up, and then answers what
/// it has. Thread: any.
[[nodiscard]] QString selectedText(const QList<Hunk> &hunks, const CodeSelection &selection,
                                   const std::function<bool()> &isAbandoned = {});

} // namespace vantrel
