pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// One recent repository.
Item {
    id: root

    required property string name
    required property string path
    required property url folder
    required property string openedAt
    required property bool isMissing
    required property bool isCurrent

    signal opened

    implicitHeight: Theme.recentRowSize
    Accessible.role: Accessible.ListItem
    Accessible.name: root.name
    Accessible.description: root.path + ", " + when.text
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
        opacity: root.isMissing ? Theme.stillOpacity : 1
    }

    PlainLabel {
        id: nameLabel

        anchors.left: icon.right
        anchors.leftMargin: Theme.rowGapSize
        anchors.right: when.left
        anchors.rightMargin: Theme.spaceM
        y: Theme.rowNameTopSize
        text: root.name
        font: Theme.bodyBoldFont
        color: root.isMissing ? Theme.inkTertiary : Theme.inkHeading
        Accessible.ignored: true
    }

    PlainLabel {
        id: pathLabel

        anchors.left: nameLabel.left
        anchors.right: nameLabel.right
        anchors.top: nameLabel.bottom
        text: root.path
        font: Theme.smallFont
        line: Theme.smallLine
        color: root.isMissing ? Theme.inkTertiary : Theme.inkSecondary
        elide: Text.ElideMiddle
        Accessible.ignored: true

        ToolTipLabel {
            visible: pathLabel.truncated && pointer.containsMouse
            text: root.path
        }
    }

    PlainLabel {
        id: when

        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceM
        anchors.verticalCenter: parent.verticalCenter
        width: Math.ceil(implicitWidth)
        text: root.isMissing ? qsTr("Folder not found") : root.openedAt
        font: Theme.smallFont
        line: Theme.smallLine
        color: Theme.inkTertiary
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
