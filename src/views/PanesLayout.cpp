#include "views/PanesLayout.h"

#include <algorithm>

namespace vantrel {

PanesLayout::PanesLayout(const QList<Hunk> &hunks)
{
    m_bottoms.reserve(hunks.size());
    qreal bottom = 0;
    for (const Hunk &hunk : hunks) {
        bottom += gap + headHeight + qreal(hunk.rows.size()) * rowHeight + endHeight + 2 * border;
        m_bottoms.append(bottom);
    }
}

qreal PanesLayout::contentHeight() const
{
    return m_bottoms.isEmpty() ? 0 : m_bottoms.last() + gap;
}

qreal PanesLayout::cardTop(int card) const
{
    return (card == 0 ? 0 : m_bottoms.at(card - 1)) + gap;
}

int PanesLayout::firstCardBelow(qreal y) const
{
    return int(std::upper_bound(m_bottoms.cbegin(), m_bottoms.cend(), y) - m_bottoms.cbegin());
}

} // namespace vantrel
