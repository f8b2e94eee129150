pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// Where a repository is chosen: any folder at the left, a recent one at the right.
FocusScope {
    id: root

    required property PickerViewModel viewModel

    readonly property bool hasRecents: recents.count > 0
    readonly property int contentTop: Math.max(Theme.pickerTopMinSize, Math.min(Theme.pickerTopMaxSize, Theme.pickerTopRatio * (root.height + Theme.titleBarSize - Theme.pickerTopStartSize)))
    signal folderRequested

    readonly property int blockDistance: root.width < Theme.pickerWideSize ? Theme.pickerGapRatio * root.width : Theme.spaceHero

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    Rectangle {
        id: half

        width: Math.round(Theme.pickerHalfRatio * root.width)
        height: root.height
        visible: root.hasRecents
        color: Theme.window

        Rectangle {
            anchors.right: parent.right
            width: Theme.hairlineWidth
            height: root.height
            color: Theme.line
        }
    }

    RecentRepoListModel {
        id: recentRepos

        source: root.viewModel
    }

    Column {
        id: block

        x: root.hasRecents ? half.width - root.blockDistance - width : Math.round((root.width - width) / 2)
        y: root.contentTop
        width: root.hasRecents ? Math.max(Theme.pickerBlockMinSize, Math.min(Theme.pickerBlockSize, half.width - root.blockDistance - Theme.pickerGapSize)) : Theme.pickerBlockSize

        Image {
            width: Theme.emblemSize
            height: Theme.emblemSize
            sourceSize.width: Theme.emblemSize * Screen.devicePixelRatio
            sourceSize.height: Theme.emblemSize * Screen.devicePixelRatio
            source: "qrc:/qt/qml/Vantrel/icons/app.svg"
            Accessible.ignored: true
        }
        Item {
            width: 1
            height: Theme.spaceXl
        }
        PlainLabel {
            width: block.width
            text: qsTr("Open a repository to read its working changes.")
            font: Theme.displayFont
            line: Theme.displayLine
            color: Theme.inkHeading
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.role: Accessible.Heading
        }
        Item {
            width: 1
            height: Theme.spaceM
        }
        PlainLabel {
            width: block.width
            text: qsTr("Pick any folder containing a .git directory. Every uncommitted file is summarised, and each hunk gets an explanation you can question.")
            font: Theme.proseFont
            line: Theme.proseLine
            color: Theme.inkSecondary
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        Item {
            width: 1
            height: Theme.spaceXxl
        }
        PrimaryButton {
            id: chooser

            focus: true
            height: Theme.controlLargeSize
            leftPadding: Theme.buttonLargePaddingSize
            rightPadding: Theme.buttonLargePaddingSize
            text: qsTr("Choose Folder…")
            onClicked: root.folderRequested()
        }
        Item {
            width: 1
            height: Theme.fieldPaddingSize
        }
        PlainLabel {
            width: block.width
            text: qsTr("or drop a folder anywhere in the window")
            font: Theme.smallFont
            line: Theme.smallLine
            color: Theme.inkTertiary
        }
        Item {
            width: 1
            height: Theme.spaceXl
            visible: refusal.visible
        }
        ErrorBox {
            id: refusal

            width: block.width
            visible: message !== ""
            message: root.viewModel.errorMessage
        }
    }

    PlainLabel {
        id: title

        anchors.left: recents.left
        anchors.leftMargin: Theme.spaceM
        y: root.contentTop
        visible: root.hasRecents
        text: qsTr("Recent")
        font: Theme.bodyBoldFont
        color: Theme.inkHeading
        Accessible.role: Accessible.Heading
    }

    ListView {
        id: recents

        x: half.width + Theme.pickerGapSize
        anchors.top: title.bottom
        anchors.topMargin: Theme.spaceS
        width: Math.min(Theme.recentColumnSize, root.width - x - Theme.spaceXxl)
        height: Math.min(contentHeight, root.height - y - Theme.spaceXxl)
        visible: root.hasRecents
        clip: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        highlightMoveDuration: 0
        highlightMoveVelocity: -1
        model: recentRepos
        activeFocusOnTab: true
        Accessible.role: Accessible.List
        Accessible.name: title.text
        // They arrive a moment after the screen; nobody has left the button by then.
        onCountChanged: {
            recents.currentIndex = 0;
            if (root.hasRecents && chooser.focus) {
                recents.forceActiveFocus();
            }
        }

        T.ScrollBar.vertical: ThinScrollBar {}

        delegate: RecentRow {
            width: recents.width
            isCurrent: recents.activeFocus && ListView.isCurrentItem
            onOpened: root.viewModel.openFolder(folder)
        }

        Keys.onReturnPressed: (recents.currentItem as RecentRow).opened()
        Keys.onEnterPressed: (recents.currentItem as RecentRow).opened()
        Keys.onPressed: event => {
            if (event.key === Qt.Key_Home || event.key === Qt.Key_End) {
                recents.currentIndex = event.key === Qt.Key_Home ? 0 : recents.count - 1;
                event.accepted = true;
            }
        }
    }
}
