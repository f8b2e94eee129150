pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// What was set up.
SetupPage {
    id: root

    signal dismissed

    name: root.viewModel.readyMessage
    onEscaped: root.dismissed()

    Item {
        width: parent.width
        height: words.implicitHeight

        Rectangle {
            width: Theme.circleSize
            height: Theme.circleSize
            radius: height / 2
            color: Theme.badgeAdded

            Icon {
                anchors.centerIn: parent
                name: "check"
                tint: Theme.success
            }
        }

        Column {
            id: words

            x: Theme.circleSize + Theme.rowGapSize
            width: parent.width - x

            PlainLabel {
                width: words.width
                topPadding: Theme.spaceXs
                text: root.viewModel.readyMessage
                font: Theme.headingFont
                line: Theme.headingLine
                color: Theme.inkHeading
                wrapMode: Text.Wrap
                elide: Text.ElideNone
                Accessible.role: Accessible.Heading
            }
            Item {
                width: 1
                height: Theme.bulletSize
            }
            PlainLabel {
                width: words.width
                text: qsTr("You can change the provider or model any time in Settings.")
                color: Theme.inkSecondary
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
            Item {
                width: 1
                height: Theme.spaceL
                visible: note.visible
            }
            NoteBox {
                id: note

                width: words.width
                visible: root.viewModel.isOpenRouterSetUp
                message: qsTr("New OpenRouter accounts need credits before the first review.")

                links: ExternalLink {
                    text: qsTr("Add OpenRouter credits →")
                    onClicked: root.viewModel.openCreditsPage()
                }
            }
        }
    }

    wayOn: PrimaryButton {
        focus: true
        text: qsTr("Done")
        onClicked: root.dismissed()
    }
}
