#pragma once

#include <QtGlobal>

namespace vantrel {

/// How large the parts of the code panes are, in pixels. The theme names them.
struct PanesSizes
{
    qreal gap = 0; ///< Between cards, and around them.
    qreal sideMargin = 0;
    qreal border = 0; ///< Of a card.
    qreal cornerRadius = 0;
    qreal headHeight = 0;
    qreal rowHeight = 1;
    qreal endHeight = 0;   ///< Below the rows of a card.
    qreal gutterWidth = 0; ///< For line numbers of few digits.
    qreal gutterDigitWidth = 0;
    qreal numberMargin = 0; ///< At the right of a line number.
    qreal signWidth = 0;
    qreal textIndent = 0;
    qreal cutMarkRoom = 0; ///< At the right of a text, for the mark of a cut one.
    qreal cutMarkMargin = 0;
    qreal cutMarkWidth = 0;
    qreal cutMarkHeight = 0; ///< Of one of its two arms.

    bool operator==(const PanesSizes &) const = default;
};

} // namespace vantrel
