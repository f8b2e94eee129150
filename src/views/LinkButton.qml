pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// Words in a line that lead somewhere.
T.AbstractButton {
    id: root

    implicitWidth: implicitContentWidth
    implicitHeight: Theme.bodyLine
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus
    Accessible.role: Accessible.Link
    Accessible.name: root.text
    Accessible.onPressAction: root.clicked()
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: PlainLabel {
        text: root.text
        color: root.hovered || root.down ? Theme.accentHover : Theme.accent
        font: root.hovered ? Theme.bodyUnderlinedFont : Theme.bodyFont
        Accessible.ignored: true
    }

    background: Item {
        FocusRing {
            anchors.margins: -Theme.focusRingWidth
            visible: root.visualFocus
            radius: Theme.badgeRadius
        }
    }

    HoverHandler {
        cursorShape: Qt.PointingHandCursor
    }
}
