#pragma once

#include "models/Hunk.h"

#include <QList>

namespace vantrel {

/// Where the cards of a file's hunks lie below one another, in pixels. A card is a head, rows of
/// one height and an end within a border; cards stand apart by a gap. The heights differ from card
/// to card, so the tops are summed up once and found by bisection.
class PanesLayout
{
public:
    static constexpr qreal gap = 12;
    static constexpr qreal border = 1;
    static constexpr qreal headHeight = 32;
    static constexpr qreal rowHeight = 20;
    static constexpr qreal endHeight = 6;

    PanesLayout() = default;
    explicit PanesLayout(const QList<Hunk> &hunks);

    [[nodiscard]] int cardCount() const { return int(m_bottoms.size()); }
    [[nodiscard]] qreal contentHeight() const;
    [[nodiscard]] qreal cardTop(int card) const;
    [[nodiscard]] qreal rowsTop(int card) const { return cardTop(card) + border + headHeight; }
    [[nodiscard]] qreal cardBottom(int card) const { return m_bottoms.at(card); }

    /// The first card that reaches below `y`; the number of cards when none does.
    [[nodiscard]] int firstCardBelow(qreal y) const;

private:
    QList<qreal> m_bottoms{};
};

} // namespace vantrel
