pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The strip on top of every screen: the title, the repository and its branch.
Rectangle {
    id: root

    required property AppCoordinator coordinator

    function listed(part: string): string {
        return part === "" ? "" : ", " + part;
    }

    implicitHeight: Theme.titleBarSize
    color: Theme.window
    Accessible.role: Accessible.TitleBar
    Accessible.name: title.text + root.listed(root.coordinator.repositoryName) + root.listed(root.coordinator.branchName)

    PlainLabel {
        id: title

        anchors.verticalCenter: parent.verticalCenter
        x: Theme.spaceL
        width: Math.ceil(implicitWidth)
        text: qsTr("Reviewer")
        font: Theme.bodyBoldFont
        color: Theme.inkHeading
    }

    Rectangle {
        id: divider

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: title.right
        anchors.leftMargin: Theme.spaceM
        width: Theme.hairlineWidth
        height: Theme.spaceL
        visible: root.coordinator.repositoryName !== ""
        color: Theme.lineStrong
    }

    PlainLabel {
        id: repositoryLabel

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: divider.right
        anchors.leftMargin: Theme.spaceM
        width: Math.min(Math.ceil(implicitWidth), Math.round((root.width - x) / 2))
        text: root.coordinator.repositoryName
        elide: Text.ElideMiddle
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        anchors.left: repositoryLabel.right
        anchors.leftMargin: Theme.spaceM
        width: Math.min(Math.ceil(branchLabel.implicitWidth) + 32, root.width - x - Theme.spaceL)
        height: 22
        visible: root.coordinator.branchName !== ""
        radius: Theme.badgeRadius
        color: Theme.sunken

        Icon {
            x: Theme.spaceS - 2
            anchors.verticalCenter: parent.verticalCenter
            size: Theme.iconSmallSize
            name: "branch"
        }

        PlainLabel {
            id: branchLabel

            anchors.verticalCenter: parent.verticalCenter
            x: 24
            width: parent.width - x - Theme.spaceS
            text: root.coordinator.branchName
            font: Theme.smallFont
            line: Theme.smallLine
            color: Theme.inkSecondary
            elide: Text.ElideMiddle
        }
    }

    Rectangle {
        anchors.bottom: parent.bottom
        width: parent.width
        height: Theme.hairlineWidth
        color: Theme.line
    }
}
