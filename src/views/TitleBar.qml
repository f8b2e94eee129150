pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// The strip on top of every screen: the menu, the title, the repository and its branch.
TitleStrip {
    id: root

    required property AppCoordinator coordinator

    /// Whether another folder may be chosen now.
    property bool canChooseFolder: true
    property SoftwareUpdating updater: null

    signal folderRequested
    signal settingsRequested
    signal shortcutsRequested

    /// The branch of a repository that was left is not that of the next.
    readonly property string shownBranch: root.coordinator.repositoryName === "" ? "" : root.coordinator.branchName

    function openMenu(): void {
        menu.open();
    }

    function listed(part: string): string {
        return part === "" ? "" : ", " + part;
    }

    Accessible.name: title.text + root.listed(root.coordinator.repositoryName) + root.listed(root.shownBranch)

    QuietButton {
        id: menuButton

        x: Theme.spaceS
        anchors.verticalCenter: parent.verticalCenter
        width: Theme.menuButtonSize
        height: Theme.controlCompactSize
        display: T.AbstractButton.IconOnly
        labelColor: Theme.inkHeading
        fillColor: menu.visible ? Theme.rowPressed : "transparent"
        iconName: "menu"
        text: qsTr("Menu")
        onClicked: menu.visible ? menu.close() : menu.open()

        AppMenu {
            id: menu

            y: menuButton.height + Theme.spaceXs
            canChooseFolder: root.canChooseFolder
            updater: root.updater
            onFolderRequested: root.folderRequested()
            onSettingsRequested: root.settingsRequested()
            onShortcutsRequested: root.shortcutsRequested()
            onClosed: if (menuButton.activeFocus) {
                menuButton.forceActiveFocus(Qt.OtherFocusReason);
            }
        }
    }

    PlainLabel {
        id: title

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: menuButton.right
        anchors.leftMargin: Theme.spaceS
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
        width: Math.min(Math.ceil(implicitWidth), Math.round((root.contentRight - x) / 2))
        text: root.coordinator.repositoryName
        elide: Text.ElideMiddle
    }

    Rectangle {
        anchors.verticalCenter: parent.verticalCenter
        anchors.left: repositoryLabel.right
        anchors.leftMargin: Theme.spaceM
        width: Math.min(Math.ceil(branchLabel.implicitWidth) + Theme.branchPaddingSize, root.contentRight - x - Theme.spaceL)
        height: Theme.branchLabelSize
        visible: root.shownBranch !== ""
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
            x: Theme.branchTextInsetSize
            width: parent.width - x - Theme.spaceS
            text: root.shownBranch
            font: Theme.smallFont
            line: Theme.smallLine
            color: Theme.inkSecondary
            elide: Text.ElideMiddle
        }
    }
}
