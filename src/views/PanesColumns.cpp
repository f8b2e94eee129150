#include "views/PanesColumns.h"

#include <algorithm>
#include <cmath>

namespace vantrel {

QRectF PanesColumns::cell(CodeSide side, qreal top) const
{
    const qreal left = sizes.sideMargin + sizes.border;
    const qreal inner = width - 2 * left;
    const qreal half = std::floor(inner / 2);
    return side == CodeSide::before ? QRectF(left, top, half, sizes.rowHeight)
                                    : QRectF(left + half, top, inner - half, sizes.rowHeight);
}

qreal PanesColumns::signLeft(CodeSide side) const
{
    return cell(side, 0).left() + gutterWidth;
}

qreal PanesColumns::textLeft(CodeSide side) const
{
    return signLeft(side) + sizes.signWidth + sizes.textIndent;
}

qreal PanesColumns::textWidth(CodeSide side) const
{
    return std::max<qreal>(0, cell(side, 0).right() - textLeft(side) - sizes.cutMarkRoom);
}

qreal PanesColumns::maximumContentX(qsizetype longestLine) const
{
    const qreal longest = std::ceil(qreal(longestLine) * columnWidth);
    // The left pane is the narrower one.
    return std::max<qreal>(0, longest - textWidth(CodeSide::before));
}

CodeSide PanesColumns::sideAt(qreal x) const
{
    return x < cell(CodeSide::after, 0).left() ? CodeSide::before : CodeSide::after;
}

qreal PanesColumns::columnAt(CodeSide side, qreal x) const
{
    return std::max<qreal>(0, (x - columnLeft(side, 0)) / columnWidth);
}

} // namespace vantrel
