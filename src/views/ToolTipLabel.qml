pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// The words of an icon, or the whole of a text that is cut, once the pointer has rested on it.
T.ToolTip {
    id: root

    x: parent ? (parent.width - implicitWidth) / 2 : 0
    y: parent ? parent.height + Theme.spaceXs : 0
    implicitWidth: contentItem.implicitWidth + leftPadding + rightPadding
    implicitHeight: contentItem.implicitHeight + topPadding + bottomPadding
    leftPadding: Theme.spaceS
    rightPadding: Theme.spaceS
    topPadding: Theme.spaceXs
    bottomPadding: Theme.spaceXs
    margins: Theme.spaceXs
    delay: Theme.toolTipDelayDuration
    closePolicy: T.Popup.CloseOnEscape | T.Popup.CloseOnPressOutsideParent

    contentItem: PlainLabel {
        text: root.text
        font: Theme.smallFont
        line: Theme.smallLine
        color: Theme.inkOnTooltip
    }

    background: Rectangle {
        radius: Theme.badgeRadius
        color: Theme.tooltip
    }
}
