pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// What every button shares: its size, its focus ring, and that screen readers can press it.
T.AbstractButton {
    id: root

    property string iconName: ""
    property color labelColor: Theme.inkHeading
    property color fillColor: "transparent"
    property color hoverColor: Theme.rowHover
    property color pressedColor: Theme.rowPressed
    property color borderColor: "transparent"
    property font labelFont: Theme.bodyFont
    property int radius: Theme.controlRadius

    implicitWidth: implicitContentWidth + leftPadding + rightPadding
    implicitHeight: Theme.controlSize
    leftPadding: Theme.buttonPaddingSize
    rightPadding: Theme.buttonPaddingSize
    hoverEnabled: true
    focusPolicy: Qt.StrongFocus

    Accessible.role: Accessible.Button
    Accessible.name: root.text
    Accessible.description: root.enabled ? "" : qsTr("unavailable")
    Accessible.onPressAction: root.clicked()

    // Beside the space bar, which every button knows.
    Keys.onReturnPressed: root.clicked()
    Keys.onEnterPressed: root.clicked()

    contentItem: ButtonLabel {
        text: root.display === T.AbstractButton.IconOnly ? "" : root.text
        iconName: root.iconName
        font: root.labelFont
        ink: root.enabled ? root.labelColor : Theme.inkDisabled
    }

    ToolTipLabel {
        objectName: "toolTip"
        visible: root.hovered && root.display === T.AbstractButton.IconOnly
        text: root.text
    }

    background: Rectangle {
        radius: root.radius
        color: !root.enabled ? root.fillColor : root.down ? root.pressedColor : root.hovered ? root.hoverColor : root.fillColor
        border.width: Theme.hairlineWidth
        border.color: root.borderColor

        FocusRing {
            visible: root.visualFocus
            radius: root.radius
        }
    }
}
