pragma ComponentBehavior: Bound

import QtQuick
import Vantrel

/// A question or an explanation over everything else, which comes first: the pointer and the keyboard
/// stay in it. It is there as long as it is visible.
FocusScope {
    id: root

    required property string title
    property string message: ""
    /// Commands that the message is about.
    property string commands: ""
    property string iconName: ""
    required property string acceptLabel
    /// Accepting it cannot be undone.
    property bool isDestructive: false
    /// Empty for an alert with one way out.
    property string cancelLabel: ""

    /// The keyboard begins on the way out that does no harm.
    readonly property Item firstButton: root.cancelLabel === "" ? acceptButton : cancelButton

    signal accepted
    signal cancelled
    signal escaped

    focus: visible
    onVisibleChanged: if (visible) {
        root.firstButton.forceActiveFocus(root.isDestructive ? Qt.TabFocusReason : Qt.OtherFocusReason);
    }

    Keys.onEscapePressed: root.escaped()
    Keys.onUpPressed: commandBox.scrollBy(-Theme.codeLine)
    Keys.onDownPressed: commandBox.scrollBy(Theme.codeLine)

    /// To the other button; a single one keeps the keyboard.
    function goOn(reason: int): void {
        const next = cancelButton.visible && acceptButton.activeFocus ? cancelButton : acceptButton;
        next.forceActiveFocus(reason);
    }

    Rectangle {
        anchors.fill: parent
        color: Theme.scrim

        MouseArea {
            anchors.fill: parent
            acceptedButtons: Qt.AllButtons
            hoverEnabled: true
            onWheel: event => event.accepted = true
        }
    }

    FloatingSheet {
        id: card

        anchors.horizontalCenter: parent.horizontalCenter
        y: Math.max(Theme.spaceM, (parent.height - height) / 2 - Theme.alertRiseSize)
        width: Math.min(Theme.alertWidthSize, parent.width - 2 * Theme.spaceM)
        height: words.implicitHeight + 2 * Theme.spaceXxl
        radius: Theme.sheetRadius
        Accessible.role: Accessible.Dialog
        Accessible.name: root.title
        Accessible.description: root.message

        Column {
            id: words

            x: Theme.spaceXxl
            y: Theme.spaceXxl
            width: parent.width - 2 * x

            Rectangle {
                width: Theme.alertIconSize
                height: Theme.alertIconSize
                radius: height / 2
                visible: root.iconName !== ""
                color: Theme.accentSoft

                Icon {
                    anchors.centerIn: parent
                    name: root.iconName
                    size: Theme.iconLargeSize
                    tint: Theme.accent
                }
            }
            Item {
                width: 1
                height: Theme.spaceL
                visible: root.iconName !== ""
            }
            PlainLabel {
                width: words.width
                text: root.title
                font: Theme.headingFont
                line: Theme.headingLine
                color: Theme.inkHeading
                wrapMode: Text.Wrap
                elide: Text.ElideNone
                Accessible.role: Accessible.Heading
            }
            Item {
                width: 1
                height: Theme.spaceXs
                visible: root.message !== ""
            }
            PlainLabel {
                width: words.width
                visible: text !== ""
                text: root.message
                wrapMode: Text.Wrap
                elide: Text.ElideNone
            }
            Item {
                width: 1
                height: Theme.spaceM
                visible: commandBox.visible
            }
            CommandBox {
                id: commandBox

                width: words.width
                visible: root.commands !== ""
                commands: root.commands
            }
            Item {
                width: 1
                height: Theme.spaceXl
            }
            Row {
                anchors.right: parent.right
                spacing: Theme.spaceM

                SecondaryButton {
                    id: cancelButton

                    visible: text !== ""
                    text: root.cancelLabel
                    Keys.onTabPressed: root.goOn(Qt.TabFocusReason)
                    Keys.onBacktabPressed: root.goOn(Qt.BacktabFocusReason)
                    onClicked: root.cancelled()
                }
                PrimaryButton {
                    id: acceptButton

                    text: root.acceptLabel
                    fillColor: root.isDestructive ? Theme.danger : Theme.accentFill
                    hoverColor: root.isDestructive ? Theme.dangerHover : Theme.accentFillHover
                    pressedColor: root.isDestructive ? Theme.dangerHover : Theme.accentFillPressed
                    labelColor: root.isDestructive ? Theme.inkOnDanger : Theme.inkOnAccent
                    Keys.onTabPressed: root.goOn(Qt.TabFocusReason)
                    Keys.onBacktabPressed: root.goOn(Qt.BacktabFocusReason)
                    onClicked: root.accepted()
                }
            }
        }
    }
}
