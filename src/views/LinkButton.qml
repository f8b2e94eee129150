pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// Words in a line that lead somewhere. A control would be announced as what Qt takes it for, so an
/// item around it stands for it.
FocusScope {
    id: root

    property string text: ""
    property bool isSmall: false
    property string iconName: ""

    signal clicked

    implicitWidth: label.implicitWidth + (root.iconName === "" ? 0 : Theme.spaceXs + Theme.iconSmallSize)
    implicitHeight: root.isSmall ? Theme.smallLine : Theme.bodyLine
    Accessible.role: Accessible.Link
    Accessible.name: root.text
    Accessible.focusable: true
    Accessible.focused: button.activeFocus
    Accessible.onPressAction: root.clicked()

    T.AbstractButton {
        id: button

        anchors.fill: parent
        focus: true
        hoverEnabled: true
        focusPolicy: Qt.StrongFocus
        Accessible.ignored: true
        onClicked: root.clicked()
        Keys.onReturnPressed: root.clicked()
        Keys.onEnterPressed: root.clicked()

        // Placed by bindings: a positioner has no width before its first frame.
        PlainLabel {
            id: label

            line: root.implicitHeight
            text: root.text
            color: icon.tint
            font: root.isSmall ? (button.hovered ? Theme.smallUnderlinedFont : Theme.smallFont) : (button.hovered ? Theme.bodyUnderlinedFont : Theme.bodyFont)
            Accessible.ignored: true
        }
        Icon {
            id: icon

            x: label.implicitWidth + Theme.spaceXs
            anchors.verticalCenter: parent.verticalCenter
            visible: name !== ""
            name: root.iconName
            size: Theme.iconSmallSize
            tint: button.hovered || button.down ? Theme.accentHover : Theme.accent
        }

        background: Item {
            FocusRing {
                anchors.margins: -Theme.focusRingWidth
                visible: button.visualFocus
                radius: Theme.badgeRadius
            }
        }

        HoverHandler {
            cursorShape: Qt.PointingHandCursor
        }
    }
}
