#include "views/PanesLayout.h"

#include <algorithm>

namespace vantrel {

PanesLayout::PanesLayout(const QList<Hunk> &hunks, const PanesSizes &sizes)
    : m_sizes(sizes)
{
    m_bottoms.reserve(hunks.size());
    qreal bottom = 0;
    for (const Hunk &hunk : hunks) {
        bottom += sizes.gap + sizes.headHeight + qreal(hunk.rows.size()) * sizes.rowHeight +
                  sizes.endHeight + 2 * sizes.border;
        m_bottoms.append(bottom);
    }
}

qreal PanesLayout::contentHeight() const
{
    return m_bottoms.isEmpty() ? 0 : m_bottoms.last() + m_sizes.gap;
}

qreal PanesLayout::cardTop(int card) const
{
    return (card == 0 ? 0 : m_bottoms.at(card - 1)) + m_sizes.gap;
}

int PanesLayout::firstCardBelow(qreal y) const
{
    return int(std::upper_bound(m_bottoms.cbegin(), m_bottoms.cend(), y) - m_bottoms.cbegin());
}

int PanesLayout::rowCount(int card) const
{
    return int((cardBottom(card) - m_sizes.endHeight - m_sizes.border - rowsTop(card)) /
               m_sizes.rowHeight);
}

std::optional<PaneRow> PanesLayout::rowAt(qreal y) const
{
    const int card = firstCardBelow(y);
    if (card == cardCount() || y < rowsTop(card)) {
        return std::nullopt;
    }
    const int row = int((y - rowsTop(card)) / m_sizes.rowHeight);
    return row < rowCount(card) ? std::optional(PaneRow{card, row}) : std::nullopt;
}

std::optional<PaneRow> PanesLayout::nearestRow(qreal y) const
{
    const int found = std::min(firstCardBelow(y), cardCount() - 1);
    for (int card = found; card >= 0; --card) {
        // A gap belongs to the card above it, a head to its own.
        if (rowCount(card) > 0 && (y >= cardTop(card) || card == 0)) {
            const int row = y < rowsTop(card) ? 0 : int((y - rowsTop(card)) / m_sizes.rowHeight);
            return PaneRow{card, std::min(row, rowCount(card) - 1)};
        }
    }
    for (int card = 0; card < cardCount(); ++card) {
        if (rowCount(card) > 0) {
            return PaneRow{card, 0};
        }
    }
    return std::nullopt;
}

} // namespace vantrel
