pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// One changed file.
Item {
    id: root

    required property int index
    required property string folder
    required property string name
    required property string path
    required property string status
    required property int additions
    required property int deletions
    required property bool hasHunks
    required property string accessibleName
    required property bool isCurrent
    required property bool isLast

    readonly property int countWidth: 56 // Six digits and the sign.

    signal opened

    implicitHeight: Theme.fileRowSize + Theme.hairlineWidth
    Accessible.role: Accessible.ListItem
    Accessible.name: root.accessibleName
    Accessible.onPressAction: root.opened()

    Rectangle {
        x: Theme.spaceXs + Theme.hairlineWidth
        width: root.width - 2 * x
        height: Theme.fileRowSize
        radius: Theme.controlRadius
        color: pointer.pressed ? Theme.rowPressed : pointer.containsMouse ? Theme.rowHover : root.isCurrent ? Theme.rowSelected : "transparent"
    }

    StatusBadge {
        id: badge

        x: Theme.spaceXl + Theme.hairlineWidth
        y: (Theme.fileRowSize - height) / 2
        status: root.status
    }

    PathLabel {
        id: path

        anchors.left: badge.right
        anchors.leftMargin: 14
        anchors.right: added.left
        anchors.rightMargin: Theme.spaceM
        y: root.hasHunks ? 18 : Theme.spaceS
        folder: root.folder
        name: root.name
    }

    PlainLabel {
        anchors.left: path.left
        anchors.right: path.right
        y: 28
        visible: !root.hasHunks
        text: qsTr("No text changes")
        color: Theme.inkSecondary
        Accessible.ignored: true
    }

    CountLabel {
        id: added

        anchors.right: deleted.left
        y: 18
        width: Math.max(root.countWidth, implicitWidth)
        count: root.additions
        isAddition: true
        Accessible.ignored: true
    }

    CountLabel {
        id: deleted

        anchors.right: chevron.left
        anchors.rightMargin: Theme.spaceM
        y: 18
        width: Math.max(root.countWidth, implicitWidth)
        count: root.deletions
        isAddition: false
        Accessible.ignored: true
    }

    Icon {
        id: chevron

        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceL
        y: (Theme.fileRowSize - height) / 2
        name: "chevron-right"
    }

    Rectangle {
        x: Theme.spaceXl + Theme.hairlineWidth
        y: Theme.fileRowSize
        width: root.width - 2 * x
        height: Theme.hairlineWidth
        visible: !root.isLast
        color: Theme.line
    }

    MouseArea {
        id: pointer

        anchors.fill: parent
        hoverEnabled: true
        cursorShape: Qt.PointingHandCursor
        onClicked: root.opened()
    }
}
