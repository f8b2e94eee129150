pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// What came of looking for a newer version, step by step, and the ways on.
FocusScope {
    id: root

    required property FeedSoftwareUpdater updater
    required property string title

    /// The button that the keyboard begins on: what the person most likely came for.
    readonly property Item firstButton: root.updater.isAvailable ? downloadButton : root.updater.isReady ? openButton : root.updater.isFailed ? againButton : closeButton

    signal closed

    Keys.onEscapePressed: root.closed()

    Connections {
        function onPhaseChanged(): void {
            root.firstButton.forceActiveFocus(Qt.OtherFocusReason);
        }

        target: root.updater
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.surface
    }

    Column {
        id: words

        x: Theme.spaceXxl
        y: strip.height + Theme.spaceXxl
        width: root.width - 2 * x

        PlainLabel {
            width: words.width
            text: root.updater.headline
            font: Theme.titleFont
            line: Theme.titleLine
            color: Theme.inkHeading
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.role: Accessible.Heading
        }
        Item {
            width: 1
            height: Theme.spaceXs
            visible: explanation.visible
        }
        PlainLabel {
            id: explanation

            width: words.width
            visible: text !== ""
            text: root.updater.explanation
            color: Theme.inkSecondary
            wrapMode: Text.Wrap
            elide: Text.ElideNone
        }
        Item {
            width: 1
            height: Theme.spaceL
        }
        ActivityDots {
            visible: root.updater.isChecking
        }
        ProgressTrack {
            width: words.width
            visible: root.updater.isDownloading
            label: root.updater.headline
            progress: root.updater.progress
            progressText: root.updater.progressText
        }
        Item {
            width: 1
            height: Theme.spaceS
            visible: root.updater.isDownloading
        }
        PlainLabel {
            visible: root.updater.isDownloading
            text: root.updater.progressText
            font: Theme.smallFont
            line: Theme.smallLine
            color: Theme.inkSecondary
        }
        ErrorBox {
            width: words.width
            visible: message !== ""
            message: root.updater.errorMessage
        }
    }

    Rectangle {
        id: notesCard

        anchors.top: words.bottom
        anchors.bottom: foot.top
        anchors.bottomMargin: Theme.spaceXxl
        x: words.x
        width: words.width
        visible: root.updater.isAvailable
        radius: Theme.cardRadius
        color: Theme.card
        border.width: Theme.hairlineWidth
        border.color: Theme.line
        Accessible.role: Accessible.Section
        Accessible.name: qsTr("What's new")

        FocusRing {
            visible: notes.activeFocus
        }

        Flickable {
            id: notes

            anchors.fill: parent
            anchors.margins: Theme.hairlineWidth
            activeFocusOnTab: contentHeight > height
            clip: true
            boundsBehavior: Flickable.StopAtBounds
            contentWidth: width
            contentHeight: prose.y + prose.height + Theme.spaceL

            T.ScrollBar.vertical: ThinScrollBar {}

            Keys.onDownPressed: notes.flick(0, -Theme.windowMinHeightSize)
            Keys.onUpPressed: notes.flick(0, Theme.windowMinHeightSize)

            ProseText {
                id: prose

                x: Theme.spaceL
                y: Theme.spaceM
                width: notes.width - 2 * x
                isMarkdown: true
                source: root.updater.notes === "" ? qsTr("No notes came with this version.") : root.updater.notes
            }
        }
    }

    Item {
        id: foot

        anchors.bottom: parent.bottom
        width: root.width
        height: Theme.hairlineWidth + Theme.controlSize + 2 * Theme.footPaddingSize

        Rectangle {
            width: parent.width
            height: Theme.hairlineWidth
            color: Theme.line
        }
        // Apart from the others, so that none comes to lie where the pointer waits to cancel.
        SecondaryButton {
            id: closeButton

            x: Theme.spaceXxl
            y: Theme.hairlineWidth + Theme.footPaddingSize
            text: root.updater.canCheckForUpdates ? root.updater.isAvailable ? qsTr("Not Now") : qsTr("Close") : qsTr("Cancel")
            onClicked: root.closed()
        }
        Row {
            anchors.right: parent.right
            anchors.rightMargin: Theme.spaceXxl
            y: Theme.hairlineWidth + Theme.footPaddingSize
            spacing: Theme.spaceS

            SecondaryButton {
                visible: root.updater.isReady
                text: qsTr("Show in Folder")
                onClicked: root.updater.showInFolder()
            }
            PrimaryButton {
                id: openButton

                visible: root.updater.isReady
                text: qsTr("Open Installer")
                onClicked: root.updater.openInstaller()
            }
            PrimaryButton {
                id: downloadButton

                visible: root.updater.isAvailable
                text: qsTr("Download")
                onClicked: root.updater.download()
            }
            PrimaryButton {
                id: againButton

                visible: root.updater.isFailed
                text: qsTr("Try Again")
                onClicked: root.updater.tryAgain()
            }
        }
    }

    SubWindowTitle {
        id: strip

        width: root.width
        title: root.title
    }
}
