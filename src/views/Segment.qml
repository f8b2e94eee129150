pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// One of the choices of a segmented control, which has the keyboard. A control would be announced as
/// what Qt takes it for, so an item around it stands for it.
Item {
    id: root

    required property int index
    required property string modelData
    required property bool isChosen

    signal pressed
    signal clicked

    implicitWidth: button.implicitWidth
    Accessible.role: Accessible.RadioButton
    Accessible.name: root.modelData
    Accessible.checkable: true
    Accessible.checked: root.isChosen
    Accessible.onPressAction: root.clicked()
    Accessible.onToggleAction: root.clicked()

    // The chosen one is bold; as wide as that from the start, nothing moves.
    PlainLabel {
        id: widest

        visible: false
        text: root.modelData
        font: Theme.bodyBoldFont
        Accessible.ignored: true
    }

    T.AbstractButton {
        id: button

        implicitWidth: Math.ceil(widest.implicitWidth) + leftPadding + rightPadding
        width: root.width
        height: root.height
        leftPadding: Theme.buttonPaddingSize + Theme.hairlineWidth
        rightPadding: leftPadding
        text: root.modelData
        focusPolicy: Qt.NoFocus
        hoverEnabled: true
        Accessible.ignored: true
        onPressed: root.pressed()
        onClicked: root.clicked()

        background: Rectangle {
            radius: Theme.badgeRadius
            color: root.isChosen ? Theme.card : button.hovered ? Theme.rowPressed : "transparent"
            border.width: root.isChosen ? Theme.hairlineWidth : 0
            border.color: Theme.lineStrong
        }

        contentItem: PlainLabel {
            horizontalAlignment: Text.AlignHCenter
            text: root.modelData
            font: root.isChosen ? Theme.bodyBoldFont : Theme.bodyFont
            color: !button.enabled ? Theme.inkDisabled : root.isChosen ? Theme.inkHeading : Theme.inkSecondary
            Accessible.ignored: true
        }
    }
}
