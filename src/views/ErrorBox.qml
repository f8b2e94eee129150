pragma ComponentBehavior: Bound
import QtQuick
import Vantrel

/// A failure in its own words, with the link that leads to its remedy.
Rectangle {
    id: root

    required property string message
    property string linkText: ""

    implicitHeight: column.implicitHeight + 2 * Theme.spaceM
    radius: Theme.cardRadius
    color: Theme.errorSoft
    border.width: Theme.hairlineWidth
    border.color: Theme.errorLine
    Accessible.role: Accessible.AlertMessage
    Accessible.name: root.message

    Icon {
        x: Theme.spaceM
        y: Theme.spaceM + 2
        name: "warning"
        tint: Theme.error
    }

    Column {
        id: column

        x: Theme.spaceM + Theme.iconSize + Theme.spaceS
        y: Theme.spaceM
        width: root.width - x - Theme.spaceM
        spacing: Theme.spaceXs

        PlainLabel {
            width: column.width
            text: root.message
            color: Theme.error
            wrapMode: Text.Wrap
            elide: Text.ElideNone
            Accessible.ignored: true
        }

        PlainLabel {
            width: column.width
            visible: text !== ""
            text: root.linkText
            color: Theme.accent
        }
    }
}
