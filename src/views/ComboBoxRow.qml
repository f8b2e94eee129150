pragma ComponentBehavior: Bound

import QtQuick
import QtQuick.Templates as T
import Vantrel

/// A row of an open combo box: a name, with a note or without.
T.ItemDelegate {
    id: root

    required property string name
    required property string note
    required property bool isChosen
    /// What differs in kind is parted from the rows above by a line.
    required property bool hasLineAbove

    readonly property int lineSpace: root.hasLineAbove ? 2 * Theme.spaceXs + Theme.hairlineWidth : 0

    implicitHeight: root.lineSpace + (root.note === "" ? Theme.menuRowSize : Theme.menuNoteRowSize)
    topPadding: root.lineSpace
    hoverEnabled: true
    Accessible.role: Accessible.ListItem
    Accessible.name: root.name
    Accessible.description: root.note
    Accessible.selectable: true
    Accessible.selected: root.isChosen
    Accessible.onPressAction: root.clicked()

    background: Item {
        Rectangle {
            y: Theme.spaceXs
            width: parent.width
            height: Theme.hairlineWidth
            visible: root.hasLineAbove
            color: Theme.line
        }
        Rectangle {
            y: root.lineSpace
            width: parent.width
            height: parent.height - y
            radius: Theme.controlRadius
            color: root.isChosen ? Theme.accentSoft : root.down ? Theme.rowPressed : root.highlighted || root.hovered ? Theme.rowHover : "transparent"
        }
    }

    contentItem: Item {
        Icon {
            anchors.verticalCenter: parent.verticalCenter
            x: 10
            visible: root.isChosen
            name: "check"
            tint: Theme.accent
        }

        Column {
            anchors.verticalCenter: parent.verticalCenter
            x: 36
            width: parent.width - x - Theme.spaceS

            PlainLabel {
                width: parent.width
                line: root.note === "" ? Theme.bodyLine : Theme.smallLine
                text: root.name
                color: Theme.inkHeading
                Accessible.ignored: true
            }
            PlainLabel {
                width: parent.width
                visible: root.note !== ""
                line: Theme.captionLine
                font: Theme.smallFont
                text: root.note
                color: Theme.inkSecondary
                Accessible.ignored: true
            }
        }
    }
}
