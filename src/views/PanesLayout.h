#pragma once

#include "models/Hunk.h"
#include "views/PanesSizes.h"

#include <QList>

#include <optional>

namespace vantrel {

/// A row of a card.
struct PaneRow
{
    int card = 0;
    int row = 0;

    bool operator==(const PaneRow &) const = default;
};

/// Where the cards of a file's hunks lie below one another, in pixels. A card is a head, rows of
/// one height and an end within a border; cards stand apart by a gap. The heights differ from card
/// to card, so the tops are summed up once and found by bisection.
class PanesLayout
{
public:
    PanesLayout() = default;
    PanesLayout(const QList<Hunk> &hunks, const PanesSizes &sizes);

    [[nodiscard]] const PanesSizes &sizes() const { return m_sizes; }
    [[nodiscard]] int cardCount() const { return int(m_bottoms.size()); }
    [[nodiscard]] qreal contentHeight() const;
    [[nodiscard]] qreal cardTop(int card) const;
    [[nodiscard]] qreal rowsTop(int card) const
    {
        return cardTop(card) + m_sizes.border + m_sizes.headHeight;
    }
    [[nodiscard]] qreal cardBottom(int card) const { return m_bottoms.at(card); }

    /// The first card that reaches below `y`; the number of cards when none does.
    [[nodiscard]] int firstCardBelow(qreal y) const;

    [[nodiscard]] int rowCount(int card) const;
    [[nodiscard]] qreal rowTop(PaneRow row) const
    {
        return rowsTop(row.card) + qreal(row.row) * m_sizes.rowHeight;
    }

    /// The row at `y`; none on heads, ends and gaps.
    [[nodiscard]] std::optional<PaneRow> rowAt(qreal y) const;

    /// The row that is nearest to `y`; none when no card has any.
    [[nodiscard]] std::optional<PaneRow> nearestRow(qreal y) const;

private:
    PanesSizes m_sizes{};
    QList<qreal> m_bottoms{};
};

} // namespace vantrel
