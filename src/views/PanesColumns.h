#pragma once

#include "views/CodeSelection.h"
#include "views/PanesSizes.h"

#include <QRectF>

namespace vantrel {

/// Where both sides of a row lie beside one another, in pixels: within a card's border, two cells
/// of a gutter, a sign and text. Text moves to the left by the scrolled distance; the rest stays.
struct PanesColumns
{
    const PanesSizes &sizes;
    qreal width = 0; ///< Of both panes together.
    qreal gutterWidth = 0;
    qreal columnWidth = 1;
    qreal contentX = 0; ///< How far the text is scrolled.

    [[nodiscard]] QRectF cell(CodeSide side, qreal top) const;
    [[nodiscard]] qreal signLeft(CodeSide side) const;
    [[nodiscard]] qreal textLeft(CodeSide side) const;
    [[nodiscard]] qreal textWidth(CodeSide side) const;

    /// Where a column begins.
    [[nodiscard]] qreal columnLeft(CodeSide side, qreal column) const
    {
        return textLeft(side) + column * columnWidth - contentX;
    }

    /// How far the text can be scrolled when its longest line has so many columns.
    [[nodiscard]] qreal maximumContentX(qsizetype longestLine) const;

    [[nodiscard]] CodeSide sideAt(qreal x) const;
    [[nodiscard]] bool isGutter(CodeSide side, qreal x) const { return x < signLeft(side); }
    /// In columns from the start of the line; 0 before it.
    [[nodiscard]] qreal columnAt(CodeSide side, qreal x) const;
};

} // namespace vantrel
