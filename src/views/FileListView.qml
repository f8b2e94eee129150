pragma ComponentBehavior: Bound
import QtQuick
import Vantrel

/// The uncommitted changes of a repository, one row for each file.
FocusScope {
    id: root

    required property FileListViewModel viewModel

    readonly property int columnWidth: Math.min(Theme.listColumnMaxSize, root.width - 2 * Theme.spaceXxl)

    function openCurrent(): void {
        root.viewModel.openFile(list.currentIndex);
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

    Item {
        id: heading

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: toolbar.bottom
        anchors.topMargin: Theme.spaceXxl
        width: root.columnWidth
        height: Theme.titleLine

        PlainLabel {
            text: qsTr("Working changes")
            font: Theme.titleFont
            lineHeight: Theme.titleLine
            color: Theme.inkHeading
            Accessible.role: Accessible.Heading
        }

        Row {
            anchors.right: parent.right
            anchors.bottom: parent.bottom
            spacing: Theme.spaceM

            PlainLabel {
                visible: root.viewModel.isLoading
                text: root.viewModel.totalFiles > 0 ? qsTr("Reading changes…") + " " + root.viewModel.finishedFiles + " / " + root.viewModel.totalFiles : qsTr("Reading changes…")
                color: Theme.inkTertiary
            }
            PlainLabel {
                visible: !root.viewModel.isLoading && files.count > 0
                text: files.count === 1 ? qsTr("1 file") : qsTr("%1 files").arg(files.count)
                color: Theme.inkSecondary
            }
            CountLabel {
                visible: !root.viewModel.isLoading && files.count > 0
                count: files.additions
                isAddition: true
            }
            CountLabel {
                visible: !root.viewModel.isLoading && files.count > 0
                count: files.deletions
                isAddition: false
            }
        }
    }

    ErrorBox {
        id: failure

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: heading.bottom
        anchors.topMargin: Theme.spaceL
        width: root.columnWidth
        visible: message !== ""
        message: root.viewModel.errorMessage
    }

    SecondaryButton {
        anchors.left: failure.left
        anchors.top: failure.bottom
        anchors.topMargin: Theme.spaceM
        visible: failure.visible
        text: qsTr("Try Again")
        onClicked: root.viewModel.load()
    }

    Column {
        anchors.centerIn: parent
        visible: root.viewModel.hasLoaded && !root.viewModel.isLoading && files.count === 0 && !failure.visible
        spacing: Theme.spaceS

        Icon {
            anchors.horizontalCenter: parent.horizontalCenter
            name: "clean"
            size: 24
        }
        PlainLabel {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("No changes")
            font: Theme.headingFont
            lineHeight: Theme.headingLine
            color: Theme.inkHeading
        }
        PlainLabel {
            anchors.horizontalCenter: parent.horizontalCenter
            text: qsTr("Everything in this repository is committed. Changed files appear here.")
            color: Theme.inkSecondary
        }
    }

    Rectangle {
        anchors.fill: list
        visible: list.count > 0
        radius: Theme.cardRadius
        color: Theme.card
        border.width: Theme.hairlineWidth
        border.color: Theme.line
    }

    ListView {
        id: list

        anchors.horizontalCenter: parent.horizontalCenter
        anchors.top: heading.bottom
        anchors.topMargin: Theme.spaceL
        width: root.columnWidth
        height: Math.min(contentHeight + topMargin + bottomMargin, root.height - y - Theme.spaceXxl)
        topMargin: Theme.spaceXs
        bottomMargin: Theme.spaceXs
        clip: true
        focus: true
        reuseItems: true
        boundsBehavior: Flickable.StopAtBounds
        model: files
        activeFocusOnTab: true
        keyNavigationEnabled: true
        highlightMoveDuration: Theme.instantDuration
        Accessible.role: Accessible.List
        Accessible.name: qsTr("Working changes")

        delegate: FileRow {
            width: ListView.view.width
            isCurrent: list.activeFocus && list.currentIndex === index
            isLast: index === list.count - 1
            onOpened: {
                list.currentIndex = index;
                root.openCurrent();
            }
        }

        Keys.onReturnPressed: root.openCurrent()
        Keys.onEnterPressed: root.openCurrent()
        Keys.onRightPressed: root.openCurrent()
        Keys.onPressed: event => {
            const page = Math.max(1, Math.floor(list.height / Theme.fileRowSize) - 1);
            const last = list.count - 1;
            const steps = {
                [Qt.Key_J]: 1,
                [Qt.Key_K]: -1,
                [Qt.Key_PageDown]: page,
                [Qt.Key_PageUp]: -page,
                [Qt.Key_End]: list.count,
                [Qt.Key_Home]: -list.count
            };
            if (event.key in steps) {
                list.currentIndex = Math.max(0, Math.min(last, list.currentIndex + steps[event.key]));
                event.accepted = true;
            }
        }
    }

    ThinScrollBar {
        anchors.top: list.top
        anchors.bottom: list.bottom
        anchors.left: list.right
        anchors.leftMargin: Theme.spaceXs
        size: list.visibleArea.heightRatio
        position: list.visibleArea.yPosition
        onPositionChanged: if (pressed) {
            list.contentY = position * (list.contentHeight + list.topMargin + list.bottomMargin) - list.topMargin;
        }
    }

    Shortcut {
        sequences: ["Alt+Left"]
        onActivated: root.viewModel.goBack()
    }
}
