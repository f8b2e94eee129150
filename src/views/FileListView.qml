pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The uncommitted changes of a repository, one row for each file.
FocusScope {
    id: root

    required property FileListViewModel viewModel

    /// Where the list was left, and the file that the keyboard goes to.
    property string initialPath: ""
    property real initialPosition: 0

    readonly property real position: list.contentY

    signal settingsRequested

    readonly property int columnWidth: Math.min(Theme.listColumnMaxSize, root.width - 2 * Theme.spaceXxl)

    function openCurrent(): void {
        root.viewModel.openFile(list.currentIndex);
    }

    /// Puts the keyboard on a row near the current one; the heading shows with the first row.
    function moveBy(rows: int): void {
        list.currentIndex = Math.max(0, Math.min(list.count - 1, list.currentIndex + rows));
        list.showCurrent();
    }

    function restorePlace(): void {
        list.forceLayout();
        const row = files.rowOf(root.initialPath);
        list.currentIndex = Math.min(Math.max(0, row), list.count - 1);
        if (row >= 0) {
            list.contentY = Math.max(-list.topMargin, Math.min(root.initialPosition, list.contentHeight + list.bottomMargin - list.height));
        }
        list.showCurrent();
    }

    Component.onCompleted: root.viewModel.load()

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    FileListModel {
        id: files

        source: root.viewModel
    }

    ScreenToolbar {
        id: toolbar

        width: root.width
        backText: qsTr("All projects")
        onBack: root.viewModel.goBack()
    }

    ListView {
        id: list

        property real formerTopMargin: 0

        function showCurrent(): void {
            if (list.currentIndex === 0) {
                list.contentY = list.originY - list.topMargin;
            } else {
                list.positionViewAtIndex(list.currentIndex, ListView.Contain);
            }
        }

        anchors.top: toolbar.bottom
        anchors.bottom: parent.bottom
        width: root.width
        topMargin: heading.height + Theme.spaceL + Theme.spaceXs + Theme.hairlineWidth + Theme.spaceXxl
        bottomMargin: Theme.spaceXs + Theme.hairlineWidth + Theme.spaceXxl
        focus: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        model: files
        activeFocusOnTab: true
        // The heading belongs to the first row, which the view's own following does not know.
        highlightFollowsCurrentItem: false
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Working changes")
        onCountChanged: root.restorePlace()
        // What comes or goes above the rows does not move them, unless it is what is in view.
        onTopMarginChanged: {
            if (list.contentY <= list.originY - list.formerTopMargin) {
                list.contentY = list.originY - list.topMargin;
            }
            list.formerTopMargin = list.topMargin;
        }

        delegate: FileRow {
            x: Math.round((list.width - root.columnWidth) / 2)
            width: root.columnWidth
            isCurrent: list.activeFocus && ListView.isCurrentItem
            isLast: index === list.count - 1
            onOpened: {
                list.currentIndex = index;
                root.openCurrent();
            }
            onAppeared: path => root.viewModel.requestSummary(path)
            onRecoveryRequested: root.settingsRequested()
        }

        Keys.onReturnPressed: root.openCurrent()
        Keys.onEnterPressed: root.openCurrent()
        Keys.onRightPressed: root.openCurrent()
        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(list.height / Theme.fileRowSize) - 1);
            const steps = {
                [Qt.Key_Down]: 1,
                [Qt.Key_J]: 1,
                [Qt.Key_Up]: -1,
                [Qt.Key_K]: -1,
                [Qt.Key_PageDown]: page,
                [Qt.Key_PageUp]: -page,
                [Qt.Key_End]: list.count,
                [Qt.Key_Home]: -list.count
            };
            if (event.key in steps) {
                root.moveBy(steps[event.key]);
                event.accepted = true;
            }
        }

        // Both scroll with the rows, which are of one height.
        FileListHeading {
            id: heading

            parent: list.contentItem
            x: Math.round((list.width - root.columnWidth) / 2)
            y: Theme.spaceXxl - list.topMargin
            width: root.columnWidth
            viewModel: root.viewModel
            files: files
        }
        Rectangle {
            parent: list.contentItem
            z: -1
            x: Math.round((list.width - root.columnWidth) / 2)
            y: -Theme.spaceXs - Theme.hairlineWidth
            width: root.columnWidth
            height: list.count * (Theme.fileRowSize + Theme.hairlineWidth) + 2 * Theme.spaceXs + Theme.hairlineWidth
            visible: list.count > 0
            radius: Theme.cardRadius
            color: Theme.card
            border.width: Theme.hairlineWidth
            border.color: Theme.line
        }
    }

    Item {
        id: place

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: list.top
        anchors.topMargin: Theme.spaceXxl + Theme.titleLine + Theme.spaceL
        anchors.bottom: list.bottom
        anchors.bottomMargin: Theme.spaceXxl
        width: root.columnWidth

        SkeletonRows {
            width: place.width
            height: Math.min(implicitHeight, place.height)
            isActive: root.viewModel.isLoading && list.count === 0
        }

        ErrorBox {
            id: failure

            width: place.width
            visible: message !== ""
            message: root.viewModel.errorMessage
        }

        SecondaryButton {
            anchors.top: failure.bottom
            anchors.topMargin: Theme.spaceM
            visible: failure.visible
            text: qsTr("Try Again")
            onClicked: root.viewModel.load()
        }
    }

    Column {
        anchors.centerIn: list
        anchors.verticalCenterOffset: -Theme.emptyRiseSize
        visible: root.viewModel.hasLoaded && !root.viewModel.isLoading && files.count === 0 && !failure.visible

        Rectangle {
            anchors.horizontalCenter: parent.horizontalCenter
            width: Theme.emblemSize
            height: Theme.emblemSize
            radius: height / 2
            color: Theme.sunken

            Icon {
                anchors.centerIn: parent
                name: "clean"
                size: Theme.iconHeroSize
            }
        }
        Item {
            width: 1
            height: Theme.spaceL
        }
        PlainLabel {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("No changes")
            font: Theme.headingFont
            line: Theme.headingLine
            color: Theme.inkHeading
        }
        Item {
            width: 1
            height: Theme.spaceXs
        }
        PlainLabel {
            width: Theme.emptyTextWidthSize
            horizontalAlignment: Text.AlignHCenter
            text: qsTr("Everything in this repository is committed. Changed files appear here.")
            color: Theme.inkSecondary
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
    }

    ThinScrollBar {
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.right: parent.right
        size: list.visibleArea.heightRatio
        position: list.visibleArea.yPosition
        onPositionChanged: if (pressed) {
            list.contentY = Math.round(position * (list.contentHeight + list.topMargin + list.bottomMargin)) - list.topMargin;
        }
    }

    Shortcut {
        sequences: ["Alt+Left"]
        enabled: root.enabled
        onActivated: root.viewModel.goBack()
    }
}
