pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// One recent repository.
Item {
    id: root

    required property string name
    required property string path
    required property url folder
    required property bool isCurrent

    signal opened

    implicitHeight: Theme.recentRowSize
    Accessible.role: Accessible.ListItem
    Accessible.name: root.name
    Accessible.description: root.path
    Accessible.onPressAction: root.opened()

    Rectangle {
        anchors.fill: parent
        radius: Theme.cardRadius
        color: pointer.pressed ? Theme.rowPressed : pointer.containsMouse ? Theme.rowHover : root.isCurrent ? Theme.rowSelected : "transparent"
    }

    Icon {
        id: icon

        x: Theme.spaceM
        anchors.verticalCenter: parent.verticalCenter
        name: "folder"
    }

    PlainLabel {
        id: nameLabel

        anchors.left: icon.right
        anchors.leftMargin: 14
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceM
        y: 9
        text: root.name
        font: Theme.bodyBoldFont
        color: Theme.inkHeading
        Accessible.ignored: true
    }

    PlainLabel {
        anchors.left: nameLabel.left
        anchors.right: nameLabel.right
        anchors.top: nameLabel.bottom
        text: root.path
        font: Theme.smallFont
        line: Theme.smallLine
        color: Theme.inkSecondary
        elide: Text.ElideMiddle
        Accessible.ignored: true
    }

    MouseArea {
        id: pointer

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: root.opened()
    }
}
