pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// The bar of the diff screen: the way back, the file, the position, and the steps.
ScreenToolbar {
    id: root

    required property DiffViewModel viewModel

    readonly property string filePath: words.folder + words.name

    backText: qsTr("All files")
    onBack: root.viewModel.goBack()

    DiffToolbarPresenter {
        id: words

        diff: root.viewModel
    }

    Rectangle {
        id: divider

        anchors.verticalCenter: parent.verticalCenter
        x: Theme.spaceS
        width: Theme.hairlineWidth
        height: Theme.spaceXl
        color: Theme.lineStrong
    }

    StatusBadge {
        id: badge

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: divider.right
        anchors.leftMargin: Theme.rowGapSize
        status: words.status
    }

    PathLabel {
        id: path

        anchors.verticalCenter: parent.verticalCenter
        anchors.left: badge.right
        anchors.leftMargin: Theme.fieldPaddingSize
        width: Math.min(implicitWidth, position.x - x - Theme.countsRoomSize)
        folder: words.folder
        name: words.name
        Accessible.role: Accessible.StaticText
        Accessible.name: root.filePath
    }

    Row {
        anchors.verticalCenter: parent.verticalCenter
        anchors.left: path.right
        anchors.leftMargin: Theme.spaceM
        spacing: Theme.spaceM

        CountLabel {
            count: words.additions
            isAddition: true
        }
        CountLabel {
            count: words.deletions
            isAddition: false
        }
    }

    PlainLabel {
        id: position

        anchors.verticalCenter: parent.verticalCenter
        anchors.right: steps.left
        anchors.rightMargin: Theme.spaceM
        text: words.position
        color: Theme.inkSecondary
    }

    Rectangle {
        id: steps

        anchors.verticalCenter: parent.verticalCenter
        anchors.right: parent.right
        anchors.rightMargin: Theme.spaceM
        width: 2 * Theme.stepButtonSize + 3 * Theme.hairlineWidth
        height: Theme.controlCompactSize
        radius: Theme.controlRadius
        color: Theme.card
        border.width: Theme.hairlineWidth
        border.color: Theme.lineStrong

        Rectangle {
            anchors.centerIn: parent
            width: Theme.hairlineWidth
            height: parent.height
            color: Theme.lineStrong
        }

        QuietButton {
            x: Theme.hairlineWidth
            y: Theme.hairlineWidth
            width: Theme.stepButtonSize
            height: parent.height - 2 * Theme.hairlineWidth
            radius: Theme.controlRadius - Theme.hairlineWidth
            display: T.AbstractButton.IconOnly
            labelColor: Theme.inkHeading
            fillColor: enabled ? Theme.card : Theme.sunken
            iconName: "chevron-up"
            text: words.previousName
            enabled: root.viewModel.canGoPrevious
            onClicked: root.viewModel.goPrevious()
        }

        QuietButton {
            x: parent.width - width - Theme.hairlineWidth
            y: Theme.hairlineWidth
            width: Theme.stepButtonSize
            height: parent.height - 2 * Theme.hairlineWidth
            radius: Theme.controlRadius - Theme.hairlineWidth
            display: T.AbstractButton.IconOnly
            labelColor: Theme.inkHeading
            fillColor: enabled ? Theme.card : Theme.sunken
            iconName: "chevron-down"
            text: words.nextName
            enabled: root.viewModel.canGoNext
            onClicked: root.viewModel.goNext()
        }
    }
}
