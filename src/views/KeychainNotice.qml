pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// The explanation before the first keychain access, over everything else.
FocusScope {
    id: root

    required property KeychainAccessNotice notice

    visible: root.notice.isShowingNotice
    focus: visible
    onVisibleChanged: if (visible) {
        button.forceActiveFocus();
    }

    Keys.onEscapePressed: root.notice.acknowledge()
    Keys.onReturnPressed: root.notice.acknowledge()

    Rectangle {
        anchors.fill: parent
        color: Theme.scrim

        MouseArea {
            anchors.fill: parent
            hoverEnabled: true
        }
    }

    RaisedPanel {
        anchors.fill: card
    }

    Item {
        id: card

        anchors.horizontalCenter: parent.horizontalCenter
        y: (parent.height - height) / 2 - 60
        width: Theme.alertWidthSize
        height: words.implicitHeight + 2 * Theme.spaceXxl
        Accessible.role: Accessible.Dialog
        Accessible.name: title.text
        Accessible.description: message.text

        Column {
            id: words

            x: Theme.spaceXxl
            y: Theme.spaceXxl
            width: parent.width - 2 * x

            Rectangle {
                width: 40
                height: 40
                radius: 20
                color: Theme.accentSoft

                Icon {
                    anchors.centerIn: parent
                    name: "key"
                    size: 20
                    tint: Theme.accent
                }
            }
            Item {
                width: 1
                height: Theme.spaceL
            }
            PlainLabel {
                id: title

                width: words.width
                text: qsTr("Vantrel Needs Keychain Access")
                font: Theme.headingFont
                line: Theme.headingLine
                color: Theme.inkHeading
                Accessible.role: Accessible.Heading
            }
            Item {
                width: 1
                height: Theme.spaceXs
            }
            PlainLabel {
                id: message

                width: words.width
                text: qsTr("Vantrel is about to check your API key in the macOS Keychain. Your Mac may ask for your login password — choose \"Always Allow\" so it won't ask again.")
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
            Item {
                width: 1
                height: Theme.spaceXl
            }
            PrimaryButton {
                id: button

                anchors.right: parent.right
                text: qsTr("Continue")
                // The keyboard does not leave it while it shows.
                KeyNavigation.tab: button
                KeyNavigation.backtab: button
                onClicked: root.notice.acknowledge()
            }
        }
    }
}
