import QtQuick
import Vantrel

/// The mark of one choice among rows.
Rectangle {
    id: root

    required property bool isChosen

    width: Theme.iconSize
    height: Theme.iconSize
    radius: height / 2
    color: !root.enabled ? Theme.sunken : root.isChosen ? Theme.accentFill : Theme.card
    border.width: Theme.hairlineWidth
    border.color: !root.enabled ? Theme.lineStrong : root.isChosen ? Theme.accentFill : Theme.controlBorder

    Rectangle {
        anchors.centerIn: parent
        width: Theme.bulletSize
        height: Theme.bulletSize
        radius: height / 2
        visible: root.isChosen
        color: Theme.inkOnAccent
    }
}
