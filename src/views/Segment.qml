pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// One of the choices of a segmented control, which has the keyboard.
T.AbstractButton {
    id: root

    required property int index
    required property string modelData
    required property bool isChosen

    implicitWidth: Math.ceil(widest.implicitWidth) + leftPadding + rightPadding
    leftPadding: 14 + Theme.hairlineWidth
    rightPadding: leftPadding
    text: root.modelData
    focusPolicy: Qt.NoFocus
    hoverEnabled: true
    Accessible.role: Accessible.RadioButton
    Accessible.name: root.text
    Accessible.checkable: true
    Accessible.checked: root.isChosen
    Accessible.onPressAction: root.clicked()
    Accessible.onToggleAction: root.clicked()

    // The chosen one is bold; as wide as that from the start, nothing moves.
    PlainLabel {
        id: widest

        visible: false
        text: root.text
        font: Theme.bodyBoldFont
        Accessible.ignored: true
    }

    background: Rectangle {
        radius: Theme.badgeRadius
        color: root.isChosen ? Theme.card : root.hovered ? Theme.rowPressed : "transparent"
        border.width: root.isChosen ? Theme.hairlineWidth : 0
        border.color: Theme.lineStrong
    }

    contentItem: PlainLabel {
        horizontalAlignment: Text.AlignHCenter
        text: root.text
        font: root.isChosen ? Theme.bodyBoldFont : Theme.bodyFont
        color: !root.enabled ? Theme.inkDisabled : root.isChosen ? Theme.inkHeading : Theme.inkSecondary
        Accessible.ignored: true
    }
}
