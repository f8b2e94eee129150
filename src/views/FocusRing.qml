pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The mark of the control that the keyboard is on, around its parent.
Rectangle {
    anchors.fill: parent
    anchors.margins: -(Theme.focusRingWidth + Theme.focusOffsetWidth)
    color: "transparent"
    border.width: Theme.focusRingWidth
    border.color: Theme.focusRing
}
