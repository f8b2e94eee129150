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
    required property int summaryState
    required property string summary
    required property string recoveryLabel
    required property string accessibleName
    required property string accessibleDescription
    required property bool isCurrent
    required property bool isLast

    readonly property int countWidth: Theme.countColumnSize // Six digits and the sign.

    signal opened

    /// A row has come to show this path.
    signal appeared(string path)

    /// The way to the remedy of a failed summary was taken.
    signal recoveryRequested

    implicitHeight: Theme.fileRowSize + Theme.hairlineWidth
    Accessible.role: Accessible.ListItem
    Accessible.name: root.accessibleName
    Accessible.description: root.accessibleDescription
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
        anchors.leftMargin: Theme.rowGapSize
        anchors.right: added.left
        anchors.rightMargin: Theme.spaceM
        y: Theme.spaceS
        folder: root.folder
        name: root.name

        ToolTipLabel {
            visible: path.isCut && pointer.containsMouse && pointer.mouseY < summaryLabel.y
            text: root.path
        }
    }

    PlainLabel {
        anchors.left: path.left
        anchors.right: path.right
        y: Theme.rowSecondLineSize
        visible: !root.hasHunks
        text: qsTr("No text changes")
        color: Theme.inkSecondary
        Accessible.ignored: true
    }

    PlainLabel {
        id: summaryLabel

        anchors.left: path.left
        anchors.right: path.right
        y: Theme.rowSecondLineSize
        visible: root.summaryState === FileListModel.Loaded
        text: root.summary
        color: Theme.inkSecondary
        Accessible.ignored: true

        ToolTipLabel {
            visible: summaryLabel.visible && summaryLabel.truncated && pointer.containsMouse && pointer.mouseY >= summaryLabel.y
            text: root.summary
        }
    }

    SkeletonBar {
        anchors.left: path.left
        y: Theme.rowBarTopSize
        width: Math.min(path.width, root.index % 2 === 0 ? Theme.skeletonWideSize : Theme.skeletonNarrowSize)
        visible: root.summaryState === FileListModel.Loading
    }

    Icon {
        anchors.left: path.left
        y: Theme.rowIconTopSize
        visible: root.summaryState === FileListModel.Failed
        name: "warning"
        size: Theme.iconSmallSize
        tint: Theme.error
    }
    PlainLabel {
        id: failure

        anchors.left: path.left
        anchors.leftMargin: Theme.iconSmallSize + Theme.bulletSize
        y: Theme.rowSecondLineSize
        width: Math.min(implicitWidth, path.width - anchors.leftMargin - (recovery.visible ? recovery.width + Theme.spaceS : 0))
        visible: root.summaryState === FileListModel.Failed
        text: root.summary
        color: Theme.error
        Accessible.ignored: true
    }
    CountLabel {
        id: added

        anchors.right: deleted.left
        y: Theme.rowCountTopSize
        width: Math.max(root.countWidth, implicitWidth)
        count: root.additions
        isAddition: true
        Accessible.ignored: true
    }

    CountLabel {
        id: deleted

        anchors.right: chevron.left
        anchors.rightMargin: Theme.spaceM
        y: Theme.rowCountTopSize
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

    // Over the row's own area, so that a click on it does not open the file.
    LinkButton {
        id: recovery

        anchors.left: failure.right
        anchors.leftMargin: Theme.spaceS
        y: Theme.rowSecondLineSize
        visible: text !== ""
        text: root.recoveryLabel
        onClicked: root.recoveryRequested()
    }

    onPathChanged: root.appeared(root.path)
    Component.onCompleted: root.appeared(root.path)
}
